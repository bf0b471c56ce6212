#pragma once

#include "platform/api.h"
#include "platform/system/types.h"

/// Root of the framework's classes. Not provided: run-time classes, serialisation, diagnostics.
class ZEL_PLATFORM_API CObject {
  public:
    virtual ~CObject();

    CObject(const CObject&) = delete;
    CObject& operator=(const CObject&) = delete;

  protected:
    CObject() = default;
};

struct AFX_MSGMAP;

/// An object that can receive commands. Not provided: automation, idle commands, routing of a command to other objects.
class ZEL_PLATFORM_API CCmdTarget : public CObject {
  public:
    /// Shows the wait cursor. Calls nest: the last EndWaitCursor hides it.
    void BeginWaitCursor();
    void EndWaitCursor();

    /// Calls the handler of a command in the message maps of the object's class and of its bases.
    /// @return FALSE if there is no handler.
    virtual BOOL OnCmdMsg(UINT id, int code);

  protected:
    static const AFX_MSGMAP* GetThisMessageMap();
    virtual const AFX_MSGMAP* GetMessageMap() const;
};
