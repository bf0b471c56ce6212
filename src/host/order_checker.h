#pragma once

#include <string>
#include <vector>

#include "host/target.h"
#include "platform/system/types.h"

namespace zel::host {

/// Checks that messages and characters come in the order of the contract, and notes each breach. Zero breaches is a
/// pass.
class OrderChecker {
  public:
    /// A message has arrived.
    void OnMessage(Target target, UINT message, WPARAM wParam);
    /// A character has arrived.
    void OnCharacter();
    /// The call into the module has returned: an import that is under way was not brought to its end.
    void OnReturn();
    /// An exception has left the module; whatever was under way is over.
    void OnException() noexcept;

    const std::vector<std::string>& Breaches() const noexcept { return m_breaches; }

  private:
    enum class Stage {
        kIdle,
        kCharacters,  ///< behind 1157
        kRowsDone,    ///< behind 1181
        kTabs,        ///< behind 1158
        kHandedOver,  ///< behind 1180 or 1211
        kImportDone,  ///< behind 1213
    };

    void OnImportMessage(UINT message, WPARAM wParam);
    void OnToolMessage(UINT message);
    void Step(bool right, Stage next, UINT message);
    void Breach(const std::string& what);

    Stage m_stage = Stage::kIdle;
    UINT m_last = 0;  ///< the message that came last, 0 for a character.
    std::vector<std::string> m_breaches;
};

}  // namespace zel::host
