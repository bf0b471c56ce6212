#pragma once

#include <cstdint>
#include <string>

#include "module_environment.h"

namespace zel::faults {

/// A disk with a message in two fonts, run-coded and stored, and a host that draws what it is given. The host is
/// made anew for each import, so that a block that is left belongs to the module.
class Machine {
  public:
    Machine();

    /// Imports the message without a dialog, draws its characters, and reads one font alone.
    /// @return what the host received and how each of the three ended, such as "1157 c c 1181 1180 ; 2 drawn; alone; ".
    std::string Import();

    /// Blocks that the last import left.
    std::int64_t BlocksLeft() const noexcept { return m_blocks_left; }

  private:
    fuzz::ModuleEnvironment m_room;
    std::string m_log;
    std::int64_t m_blocks_left = 0;
};

}  // namespace zel::faults
