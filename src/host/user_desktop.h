#pragma once

#include <optional>
#include <span>
#include <string>

#include "host/host_observer.h"
#include "platform/script/headless_desktop.h"

namespace zel::host {

/// The answer to a prompt for a missing font.
enum class BoxAnswer { kYes, kNo, kCancel };

/// A desktop without a screen, with the program's options as the user's answers. It is the current desktop while it
/// exists.
class UserDesktop : public script::HeadlessDesktop {
  public:
    /// @param browse     this system's path of the file chosen in file dialogs; empty: they are cancelled.
    /// @param observers  receive boxes and file dialogs; not owned, must outlive the desktop.
    UserDesktop(BoxAnswer answer, const std::optional<std::string>& browse, std::span<HostObserver* const> observers);
    ~UserDesktop() override { seam::SetDesktop(m_previous); }
    UserDesktop(const UserDesktop&) = delete;
    UserDesktop& operator=(const UserDesktop&) = delete;

  private:
    seam::Desktop* m_previous;
};

}  // namespace zel::host
