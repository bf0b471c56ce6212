#pragma once

#include "platform/framework/cobject.h"
#include "platform/system/messages.h"

/// Message maps: which handler of a class handles which command, notification or message. Provided: ON_COMMAND,
/// ON_CONTROL, ON_BN_CLICKED, ON_EN_CHANGE, ON_EN_UPDATE and ON_WM_CLOSE, for handlers without arguments and without a
/// result.

/// A handler, cast to a member of the common base class.
using AFX_PMSG = void (CCmdTarget::*)();

/// One entry of a map. The last entry has nMessage 0.
struct AFX_MSGMAP_ENTRY {
    /// WM_COMMAND, or the message itself.
    UINT nMessage;
    /// Notification code; 0 for a command or a click.
    UINT nCode;
    /// Range of control ids, both included.
    UINT nID;
    UINT nLastID;
    AFX_PMSG pfn;
};

struct AFX_MSGMAP {
    /// Null for the root class.
    const AFX_MSGMAP* (*pfnGetBaseMap)();
    const AFX_MSGMAP_ENTRY* lpEntries;
};

namespace zel::framework {

/// Finds the handler of a message in a map, then in the maps of the base classes.
/// @return null for none.
AFX_PMSG FindHandler(const AFX_MSGMAP* map, UINT message, UINT code, UINT id);

}  // namespace zel::framework

#define afx_msg

/// Declares the map of a class.
#define DECLARE_MESSAGE_MAP()                     \
  protected:                                      \
    static const AFX_MSGMAP* GetThisMessageMap(); \
    const AFX_MSGMAP* GetMessageMap() const override;

#define BEGIN_MESSAGE_MAP(theClass, baseClass)          \
    const AFX_MSGMAP* theClass::GetMessageMap() const { \
        return GetThisMessageMap();                     \
    }                                                   \
    const AFX_MSGMAP* theClass::GetThisMessageMap() {   \
        using ThisClass [[maybe_unused]] = theClass;    \
        using TheBaseClass = baseClass;                 \
        static const AFX_MSGMAP_ENTRY entries[] = {
#define END_MESSAGE_MAP()                                                      \
    { 0, 0, 0, 0, nullptr }                                                    \
    }                                                                          \
    ;                                                                          \
    static const AFX_MSGMAP map = {&TheBaseClass::GetThisMessageMap, entries}; \
    return &map;                                                               \
    }

#define ZEL_MSG_HANDLER(memberFxn) static_cast<AFX_PMSG>(static_cast<void (ThisClass::*)()>(memberFxn))
#define ON_CONTROL(code, id, memberFxn) {WM_COMMAND, code, id, id, ZEL_MSG_HANDLER(memberFxn)},
#define ON_COMMAND(id, memberFxn) ON_CONTROL(0, id, memberFxn)
#define ON_BN_CLICKED(id, memberFxn) ON_CONTROL(BN_CLICKED, id, memberFxn)
#define ON_EN_CHANGE(id, memberFxn) ON_CONTROL(EN_CHANGE, id, memberFxn)
#define ON_EN_UPDATE(id, memberFxn) ON_CONTROL(EN_UPDATE, id, memberFxn)
#define ON_WM_CLOSE() {WM_CLOSE, 0, 0, 0, ZEL_MSG_HANDLER(&ThisClass::OnClose)},
