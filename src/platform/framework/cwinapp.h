#pragma once

#include "platform/framework/cobject.h"
#include "platform/framework/cstring.h"
#include "platform/framework/dialog_template.h"

class CWnd;
class CWinApp;
class CDynLinkLibrary;
struct CRuntimeClass;     // run-time classes aren't offered; their list is
class COleObjectFactory;  // nor are factories

/// Head of a list of the framework's.
template <class T>
struct CTypedSimpleList {
    T m_pHead = nullptr;
    T GetHead() const noexcept { return m_pHead; }
};

/// State that the host and its extension modules share, one for the process.
struct AFX_MODULE_STATE {
    CWinApp* m_pCurrentWinApp = nullptr;           // never null
    HINSTANCE m_hCurrentResourceHandle = nullptr;  // dialog templates are found through it
    CTypedSimpleList<CRuntimeClass*> m_classList;
    CTypedSimpleList<COleObjectFactory*> m_factoryList;
    CRuntimeClass* m_pClassInit = nullptr;  // heads kept by a module's attach hook, put back by AfxInitExtensionModule
    COleObjectFactory* m_pFactoryInit = nullptr;
    CTypedSimpleList<CDynLinkLibrary*> m_libraryList;
};
ZEL_PLATFORM_API AFX_MODULE_STATE* AfxGetModuleState();

/// The user-interface thread.
class ZEL_PLATFORM_API CWinThread : public CCmdTarget {
  public:
    CWnd* m_pMainWnd = nullptr;  // set by the host; not owned
};

/// The application. The newest object is the current one; until a program makes its own, there is one named "Tavro".
class ZEL_PLATFORM_API CWinApp : public CWinThread {
  public:
    explicit CWinApp(const char* appName = nullptr);
    ~CWinApp() override;  // makes the one before it current again

    CString m_pszAppName;  // caption of AfxMessageBox

    /// Values of the application's profile, kept by the current SettingsStore. One that is missing or of the other kind
    /// gives the default; a null default text is the empty text.
    UINT GetProfileIntA(const char* section, const char* entry, int defaultValue);
    CString GetProfileStringA(const char* section, const char* entry, const char* defaultText = nullptr);
    /// @return FALSE when the store didn't take it.
    BOOL WriteProfileInt(const char* section, const char* entry, int value);
    BOOL WriteProfileStringA(const char* section, const char* entry, const char* text);

    /// Counts wait cursors: 1 begins one, -1 ends one.
    void DoWaitCursor(int code);

  private:
    CWinApp* m_previous;
};

ZEL_PLATFORM_API CWinApp* AfxGetApp();
ZEL_PLATFORM_API CWinThread* AfxGetThread();  // the current application, so never null
ZEL_PLATFORM_API CWnd* AfxGetMainWnd();

/// An extension module's record with the framework.
struct AFX_EXTENSION_MODULE {
    BOOL bInitialized;
    HINSTANCE hModule;
    HINSTANCE hResource;
    CRuntimeClass* pFirstSharedClass;
    COleObjectFactory* pFirstSharedFactory;
};

/// Fills a module's record and puts the heads of the shared lists back. FALSE for a null handle.
ZEL_PLATFORM_API BOOL AfxInitExtensionModule(AFX_EXTENSION_MODULE& state, HINSTANCE module);
/// Frees the module's CDynLinkLibrary objects and clears its record. `all` has no further effect.
ZEL_PLATFORM_API void AfxTermExtensionModule(AFX_EXTENSION_MODULE& state, BOOL all = FALSE);

/// An extension module in the framework's list. It is made on the heap and freed by AfxTermExtensionModule.
class ZEL_PLATFORM_API CDynLinkLibrary : public CCmdTarget {
  public:
    explicit CDynLinkLibrary(AFX_EXTENSION_MODULE& state, BOOL system = FALSE);
    ~CDynLinkLibrary() override;

    HINSTANCE m_hModule;
    HINSTANCE m_hResource;
    BOOL m_bSystem;
    CDynLinkLibrary* m_pNextDLL;
};
