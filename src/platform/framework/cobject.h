#pragma once

#include "platform/api.h"
#include "platform/system/types.h"

/// Root of the framework's classes. Left out: run-time classes, serialisation, diagnostics.
class ZEL_PLATFORM_API CObject {
  public:
    virtual ~CObject();

    CObject(const CObject&) = delete;
    CObject& operator=(const CObject&) = delete;

  protected:
    CObject() = default;
};

struct AFX_MSGMAP;

/// An object that commands can reach. Left out: automation, idle commands, command routing beyond the object itself.
class ZEL_PLATFORM_API CCmdTarget : public CObject {
  public:
    /// Shows the wait cursor through the desktop; calls nest, and the last EndWaitCursor takes it away.
    void BeginWaitCursor();
    void EndWaitCursor();

    /// Calls the handler of a command in the message maps of the object's class and its bases.
    /// @return FALSE when there is none.
    virtual BOOL OnCmdMsg(UINT id, int code);

  protected:
    static const AFX_MSGMAP* GetThisMessageMap();
    virtual const AFX_MSGMAP* GetMessageMap() const;
};
