// OLE property pages (olectl.h, ocidl.h): IPropertyPage and its site, ISpecifyPropertyPages, the
// stock pages' class identifiers, the control site's ShowPropertyFrame and the in-place site's
// window and modeless state, and the task allocator that page strings live in.
#pragma once
#include "base/rect.h"
#include "unknwn.h"

typedef OLECHAR* LPOLESTR;
typedef CLSID* LPCLSID;

struct MSG;

void* CoTaskMemAlloc(size_t cb);
void CoTaskMemFree(void* pv);

struct PROPPAGEINFO {
    ULONG cb;
    LPOLESTR pszTitle;       // CoTaskMemAlloc'd; the caller frees it
    SIZE size;               // pixels
    LPOLESTR pszDocString;
    LPOLESTR pszHelpFile;
    DWORD dwHelpContext;
};

struct CAUUID {
    ULONG cElems;
    GUID* pElems;            // CoTaskMemAlloc'd; the caller frees it
};

#define PROPPAGESTATUS_DIRTY 0x1
#define PROPPAGESTATUS_VALIDATE 0x2
#define PROPPAGESTATUS_CLEAN 0x4

inline constexpr IID IID_IPropertyPage = {0xB196B28D, 0xBAB4, 0x101A, {0xB6, 0x9C, 0x00, 0xAA, 0x00, 0x34, 0x1D, 0x07}};
inline constexpr IID IID_IPropertyPageSite = {0xB196B28C, 0xBAB4, 0x101A, {0xB6, 0x9C, 0x00, 0xAA, 0x00, 0x34, 0x1D, 0x07}};
inline constexpr IID IID_ISpecifyPropertyPages = {0xB196B28B, 0xBAB4, 0x101A, {0xB6, 0x9C, 0x00, 0xAA, 0x00, 0x34, 0x1D, 0x07}};
inline constexpr IID IID_IOleControlSite = {0xB196B289, 0xBAB4, 0x101A, {0xB6, 0x9C, 0x00, 0xAA, 0x00, 0x34, 0x1D, 0x07}};
inline constexpr IID IID_IOleInPlaceSite = {0x00000119, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

// The standard pages of the platform: font, colours and picture.
inline constexpr CLSID CLSID_StockFontPage = {0x0BE35200, 0x8F91, 0x11CE, {0x9D, 0xE3, 0x00, 0xAA, 0x00, 0x4B, 0xB8, 0x51}};
inline constexpr CLSID CLSID_StockColorPage = {0x0BE35201, 0x8F91, 0x11CE, {0x9D, 0xE3, 0x00, 0xAA, 0x00, 0x4B, 0xB8, 0x51}};
inline constexpr CLSID CLSID_StockPicturePage = {0x0BE35202, 0x8F91, 0x11CE, {0x9D, 0xE3, 0x00, 0xAA, 0x00, 0x4B, 0xB8, 0x51}};

struct IPropertyPageSite : IUnknown {
    virtual HRESULT OnStatusChange(DWORD dwFlags) = 0;
    virtual HRESULT GetLocaleID(LCID* pLocaleID) = 0;
    virtual HRESULT GetPageContainer(IUnknown** ppUnk) = 0;
    virtual HRESULT TranslateAccelerator(MSG* pMsg) = 0;
protected:
    ~IPropertyPageSite() = default;
};

struct IPropertyPage : IUnknown {
    virtual HRESULT SetPageSite(IPropertyPageSite* pPageSite) = 0;
    virtual HRESULT Activate(HWND hWndParent, LPCRECT pRect, BOOL bModal) = 0;
    virtual HRESULT Deactivate() = 0;
    virtual HRESULT GetPageInfo(PROPPAGEINFO* pPageInfo) = 0;
    virtual HRESULT SetObjects(ULONG cObjects, IUnknown** ppUnk) = 0;
    virtual HRESULT Show(UINT nCmdShow) = 0;
    virtual HRESULT Move(LPCRECT pRect) = 0;
    virtual HRESULT IsPageDirty() = 0;
    virtual HRESULT Apply() = 0;
    virtual HRESULT Help(LPCOLESTR pszHelpDir) = 0;
    virtual HRESULT TranslateAccelerator(MSG* pMsg) = 0;
protected:
    ~IPropertyPage() = default;
};

struct ISpecifyPropertyPages : IUnknown {
    virtual HRESULT GetPages(CAUUID* pPages) = 0;
protected:
    ~ISpecifyPropertyPages() = default;
};

// Stand-in: of the control site, only the call that lets a container show its own frame.
struct IOleControlSite : IUnknown {
    virtual HRESULT ShowPropertyFrame() = 0;
protected:
    ~IOleControlSite() = default;
};

// Stand-in: the in-place site stands for itself, its frame and its document: GetWindow is asked of
// each in turn, and EnableModeless is the frame's (IOleInPlaceFrame::EnableModeless).
struct IOleInPlaceSite : IUnknown {
    virtual HRESULT GetWindow(HWND* phwnd) = 0;
    virtual HRESULT EnableModeless(BOOL fEnable) = 0;
protected:
    ~IOleInPlaceSite() = default;
};

// Shows the modal tabbed frame over the objects, with one tab per page made from its class
// identifier, and OK, Cancel and Apply. x, y place it in the owner's client area.
HRESULT OleCreatePropertyFrame(HWND hwndOwner, UINT x, UINT y, LPCOLESTR lpszCaption, ULONG cObjects, IUnknown** ppUnk,
                               ULONG cPages, const CLSID* pPageClsID, LCID lcid, DWORD dwReserved, void* pvReserved);

// The frame answers these messages of a property sheet (prsht.h), so that whoever stands for the
// person can pick a tab and press its buttons. Each page's window carries its tab's title.
#define PSM_SETCURSEL (WM_USER + 101)
#define PSM_PRESSBUTTON (WM_USER + 113)
#define PSM_GETCURRENTPAGEHWND (WM_USER + 118)
#define PSM_INDEXTOHWND (WM_USER + 130)
#define PSM_GETPAGECOUNT_STANDIN (WM_USER + 190)   // stand-in: the number of pages
#define PSBTN_OK 1
#define PSBTN_APPLYNOW 4
#define PSBTN_CANCEL 5
#define ID_APPLY_NOW 0x3021
