#pragma once

#include "platform/api.h"

/// Shows the wait cursor as long as the object lives.
class ZEL_PLATFORM_API CWaitCursor {
  public:
    CWaitCursor();
    ~CWaitCursor();

    CWaitCursor(const CWaitCursor&) = delete;
    CWaitCursor& operator=(const CWaitCursor&) = delete;
};
