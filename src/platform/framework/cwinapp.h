#pragma once

#include "platform/framework/cobject.h"
#include "platform/framework/cstring.h"
#include "platform/framework/dialog_template.h"

class CWnd;
class CWinApp;
class CDynLinkLibrary;
// Run-time classes and factories are not provided, only the lists of them.
struct CRuntimeClass;
class COleObjectFactory;

/// Head of a linked list of the framework.
template <class T>
struct CTypedSimpleList {
    T m_pHead = nullptr;
    T GetHead() const noexcept { return m_pHead; }
};

/// State that the host and its extension modules share, one for the process.
struct AFX_MODULE_STATE {
    /// The current application; AfxGetModuleState creates one if there is none.
    CWinApp* m_pCurrentWinApp = nullptr;
    /// The module whose dialog templates are used.
    HINSTANCE m_hCurrentResourceHandle = nullptr;
    CTypedSimpleList<CRuntimeClass*> m_classList;
    CTypedSimpleList<COleObjectFactory*> m_factoryList;
    /// List heads that a module's attach hook saves and AfxInitExtensionModule restores.
    CRuntimeClass* m_pClassInit = nullptr;
    COleObjectFactory* m_pFactoryInit = nullptr;
    CTypedSimpleList<CDynLinkLibrary*> m_libraryList;
};
ZEL_PLATFORM_API AFX_MODULE_STATE* AfxGetModuleState();

/// The user-interface thread.
class ZEL_PLATFORM_API CWinThread : public CCmdTarget {
  public:
    /// Set by the host, which owns it.
    CWnd* m_pMainWnd = nullptr;
};

/// The application. The object created last is the current one. A program that creates none has one named "Tavro".
class ZEL_PLATFORM_API CWinApp : public CWinThread {
  public:
    explicit CWinApp(const char* appName = nullptr);
    /// Makes the previous application current again.
    ~CWinApp() override;

    /// Caption of AfxMessageBox.
    CString m_pszAppName;

    /// Read a value of the application's profile, which the current SettingsStore keeps.
    /// @return the default for a value that is missing or of the other kind; a null default text is the empty text.
    UINT GetProfileIntA(const char* section, const char* entry, int defaultValue);
    CString GetProfileStringA(const char* section, const char* entry, const char* defaultText = nullptr);
    /// Write a value of the profile.
    /// @return FALSE if the store could not keep it.
    BOOL WriteProfileInt(const char* section, const char* entry, int value);
    BOOL WriteProfileStringA(const char* section, const char* entry, const char* text);

    /// Counts wait cursors, which are shown while the count is above 0.
    /// @param code  1 begins one, -1 ends one.
    void DoWaitCursor(int code);

  private:
    CWinApp* m_previous;
};

/// The current application; never null.
ZEL_PLATFORM_API CWinApp* AfxGetApp();
/// The current application, which is its own thread object; never null.
ZEL_PLATFORM_API CWinThread* AfxGetThread();
/// The main window; null until the host sets it.
ZEL_PLATFORM_API CWnd* AfxGetMainWnd();
