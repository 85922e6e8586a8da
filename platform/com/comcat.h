// Component categories as comcat.h names them: the category manager's ICatRegister, which enters
// categories under "Component Categories" and classes under their "Implemented Categories" keys.
#pragma once
#include "unknwn.h"

typedef GUID CATID;
typedef const GUID& REFCATID;

struct CATEGORYINFO {
    CATID catid;
    LCID lcid;
    OLECHAR szDescription[128];
};

struct ICatRegister : IUnknown {
    virtual HRESULT RegisterCategories(ULONG cCategories, CATEGORYINFO rgCategoryInfo[]) = 0;
    virtual HRESULT RegisterClassImplCategories(REFCLSID rclsid, ULONG cCategories, CATID rgcatid[]) = 0;
    virtual HRESULT UnRegisterClassImplCategories(REFCLSID rclsid, ULONG cCategories, CATID rgcatid[]) = 0;
protected:
    ~ICatRegister() = default;
};

inline constexpr IID IID_ICatRegister = {0x0002E012, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr CLSID CLSID_StdComponentCategoriesMgr = {0x0002E005, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr CATID CATID_SafeForScripting = {0x7DD95801, 0x9882, 0x11CF, {0x9F, 0xA9, 0x00, 0xAA, 0x00, 0x6C, 0x42, 0xC4}};
inline constexpr CATID CATID_SafeForInitializing = {0x7DD95802, 0x9882, 0x11CF, {0x9F, 0xA9, 0x00, 0xAA, 0x00, 0x6C, 0x42, 0xC4}};

// The category manager's server, known to COM from the start like the DOM's.
HRESULT ComcatDllGetClassObject(REFCLSID rclsid, REFIID riid, void** ppv);
