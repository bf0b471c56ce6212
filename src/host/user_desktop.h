#pragma once

#include <optional>
#include <span>
#include <string>

#include "host/host_observer.h"
#include "platform/script/headless_desktop.h"

namespace zel::host {

/// How a prompt for a missing font is answered.
enum class BoxAnswer { kYes, kNo, kCancel };

/// A desktop without a screen whose user answers as the program was told to. It is the current one for as long as it
/// lives.
class UserDesktop : public script::HeadlessDesktop {
  public:
    /// @param browse     this system's path of the file that file dialogs give; without it they are cancelled.
    /// @param observers  hear of boxes and file dialogs; not owned, must outlive the desktop.
    UserDesktop(BoxAnswer answer, const std::optional<std::string>& browse, std::span<HostObserver* const> observers);
    ~UserDesktop() override { seam::SetDesktop(m_previous); }
    UserDesktop(const UserDesktop&) = delete;
    UserDesktop& operator=(const UserDesktop&) = delete;

  private:
    seam::Desktop* m_previous;
};

}  // namespace zel::host
