#pragma once

#include "platform/framework/cobject.h"

struct CRuntimeClass;
class COleObjectFactory;

/// The framework's record of an extension module.
struct AFX_EXTENSION_MODULE {
    BOOL bInitialized;
    HINSTANCE hModule;
    HINSTANCE hResource;
    CRuntimeClass* pFirstSharedClass;
    COleObjectFactory* pFirstSharedFactory;
};

/// Fills a module's record and restores the heads of the shared lists, which the module's attach hook saved.
/// @return FALSE for a null handle.
ZEL_PLATFORM_API BOOL AfxInitExtensionModule(AFX_EXTENSION_MODULE& state, HINSTANCE module);
/// Deletes the module's CDynLinkLibrary objects and clears its record.
/// @param all  ignored.
ZEL_PLATFORM_API void AfxTermExtensionModule(AFX_EXTENSION_MODULE& state, BOOL all = FALSE);

/// An extension module in the framework's list of modules. Created by `new`; AfxTermExtensionModule deletes it.
class ZEL_PLATFORM_API CDynLinkLibrary : public CCmdTarget {
  public:
    explicit CDynLinkLibrary(AFX_EXTENSION_MODULE& state, BOOL system = FALSE);
    ~CDynLinkLibrary() override;

    HINSTANCE m_hModule;
    HINSTANCE m_hResource;
    BOOL m_bSystem;
    CDynLinkLibrary* m_pNextDLL;
};
