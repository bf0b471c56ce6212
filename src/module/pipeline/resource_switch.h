#pragma once

#include "platform/system/types.h"

namespace zel::pipeline {

/// Makes the module's resources the current ones: permanently, or as long as the object lives.
class ResourceSwitch {
  public:
    enum class After { kKeep, kRestore };
    explicit ResourceSwitch(After after);
    ~ResourceSwitch();
    ResourceSwitch(const ResourceSwitch&) = delete;
    ResourceSwitch& operator=(const ResourceSwitch&) = delete;

  private:
    HINSTANCE m_saved;
    After m_after;
};

}  // namespace zel::pipeline
