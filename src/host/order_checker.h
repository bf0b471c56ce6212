#pragma once

#include <string>
#include <vector>

#include "host/host_event.h"

namespace zel::host {

/// Checks that messages and characters arrive in the order of the contract and at the right windows.
class OrderChecker {
  public:
    /// A message has arrived at this window.
    void OnEvent(const HostEvent& event, Target target);
    /// A character has arrived.
    void OnCharacter();
    /// The call into the module has returned. An import that has begun and not ended is a breach.
    void OnReturn();
    /// An exception has left the module, which ends an import.
    void OnException() noexcept;

    /// One line for each breach.
    const std::vector<std::string>& Breaches() const noexcept { return m_breaches; }

  private:
    /// The last event of the import under way.
    enum class Stage { kIdle, kFontsReady, kRowsDone, kTabsReady, kHandedOver, kImportDone };

    void Check(const FontsReady& event);
    void Check(const RowsDone& event);
    void Check(const TabsReady& event);
    void Check(const MessageDone& event);
    void Check(const RgbaChosen& event);
    void Check(const ImportDone& event);
    void Check(const Paint& event);
    void Check(const RecordMessage& event);
    void Check(const ExportFlagged& event);
    void Check(const ExportPlain& event);
    void Check(const ExportFinish& event);
    /// The other events may come at any time outside an import.
    template <class Event>
    void Check(const Event& /*event*/) {
        CheckOutsideImport(true, Event::kMessage);
    }

    void Step(bool in_order, Stage next, UINT message);
    void CheckOutsideImport(bool in_order, UINT message);
    void AddBreach(const std::string& what);

    Stage m_stage = Stage::kIdle;
    /// Number of the last message; 0 after a character or at the beginning of a call.
    UINT m_last = 0;
    std::vector<std::string> m_breaches;
};

}  // namespace zel::host
