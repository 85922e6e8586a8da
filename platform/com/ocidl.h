// OLE control interfaces: persistence, property bags, streams, notification, sites, fonts and pictures.
#pragma once
#include "base/rect.h"
#include "variant.h"

// OLEMISC: what a container is told of an object's needs before it creates one.
#define OLEMISC_RECOMPOSEONRESIZE 0x1
#define OLEMISC_CANTLINKINSIDE 0x10
#define OLEMISC_INSIDEOUT 0x80
#define OLEMISC_ACTIVATEWHENVISIBLE 0x100
#define OLEMISC_SETCLIENTSITEFIRST 0x20000

inline constexpr IID IID_IStream = {0x0000000C, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr IID IID_IPersistStream = {0x00000109, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr IID IID_IPersistStreamInit = {0x7FD52380, 0x4E07, 0x101B, {0xAE, 0x2D, 0x08, 0x00, 0x2B, 0x2E, 0xC7, 0x13}};
inline constexpr IID IID_IPropertyBag = {0x55272A00, 0x42CB, 0x11CE, {0x81, 0x35, 0x00, 0xAA, 0x00, 0x4B, 0xB8, 0x51}};
inline constexpr IID IID_IPersistPropertyBag = {0x37D84F60, 0x42CB, 0x11CE, {0x81, 0x35, 0x00, 0xAA, 0x00, 0x4B, 0xB8, 0x51}};
inline constexpr IID IID_IPropertyNotifySink = {0x9BFBBC02, 0xEFF1, 0x101A, {0x84, 0xED, 0x00, 0xAA, 0x00, 0x34, 0x1D, 0x07}};
inline constexpr IID IID_IConnectionPoint = {0xB196B286, 0xBAB4, 0x101A, {0xB6, 0x9C, 0x00, 0xAA, 0x00, 0x34, 0x1D, 0x07}};
inline constexpr IID IID_IConnectionPointContainer = {0xB196B284, 0xBAB4, 0x101A, {0xB6, 0x9C, 0x00, 0xAA, 0x00, 0x34, 0x1D, 0x07}};
inline constexpr IID IID_IOleClientSite = {0x00000118, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr IID IID_IOleObject = {0x00000112, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr IID IID_IProvideClassInfo = {0xB196B283, 0xBAB4, 0x101A, {0xB6, 0x9C, 0x00, 0xAA, 0x00, 0x34, 0x1D, 0x07}};
inline constexpr IID IID_IFont = {0xBEF6E002, 0xA874, 0x101A, {0x8B, 0xBA, 0x00, 0xAA, 0x00, 0x30, 0x0C, 0xAB}};
inline constexpr IID IID_IFontDisp = {0xBEF6E003, 0xA874, 0x101A, {0x8B, 0xBA, 0x00, 0xAA, 0x00, 0x30, 0x0C, 0xAB}};
inline constexpr IID IID_IPicture = {0x7BF80980, 0xBF32, 0x101A, {0x8B, 0xBB, 0x00, 0xAA, 0x00, 0x30, 0x0C, 0xAB}};
inline constexpr IID IID_IPictureDisp = {0x7BF80981, 0xBF32, 0x101A, {0x8B, 0xBB, 0x00, 0xAA, 0x00, 0x30, 0x0C, 0xAB}};

enum STREAM_SEEK { STREAM_SEEK_SET = 0, STREAM_SEEK_CUR = 1, STREAM_SEEK_END = 2 };

// A byte stream. Only the sequential part of IStream that persistence uses.
struct IStream : IUnknown {
    virtual HRESULT Read(void* pv, ULONG cb, ULONG* pcbRead) = 0;
    virtual HRESULT Write(const void* pv, ULONG cb, ULONG* pcbWritten) = 0;
    virtual HRESULT Seek(LONGLONG dlibMove, DWORD dwOrigin, uint64_t* plibNewPosition) = 0;
protected:
    ~IStream() = default;
};
typedef IStream* LPSTREAM;

struct IPersistStream : IUnknown {
    virtual HRESULT GetClassID(CLSID* pClassID) = 0;
    virtual HRESULT IsDirty() = 0;
    virtual HRESULT Load(IStream* pStm) = 0;
    virtual HRESULT Save(IStream* pStm, BOOL fClearDirty) = 0;
protected:
    ~IPersistStream() = default;
};

struct IPersistStreamInit : IUnknown {
    virtual HRESULT GetClassID(CLSID* pClassID) = 0;
    virtual HRESULT IsDirty() = 0;
    virtual HRESULT Load(IStream* pStm) = 0;
    virtual HRESULT Save(IStream* pStm, BOOL fClearDirty) = 0;
    virtual HRESULT InitNew() = 0;
protected:
    ~IPersistStreamInit() = default;
};

struct IErrorLog;

struct IPropertyBag : IUnknown {
    // pVar->vt on entry names the type wanted; VT_EMPTY takes the stored type.
    virtual HRESULT Read(LPCOLESTR pszPropName, VARIANT* pVar, IErrorLog* pErrorLog) = 0;
    virtual HRESULT Write(LPCOLESTR pszPropName, VARIANT* pVar) = 0;
protected:
    ~IPropertyBag() = default;
};

struct IPersistPropertyBag : IUnknown {
    virtual HRESULT GetClassID(CLSID* pClassID) = 0;
    virtual HRESULT InitNew() = 0;
    virtual HRESULT Load(IPropertyBag* pPropBag, IErrorLog* pErrorLog) = 0;
    virtual HRESULT Save(IPropertyBag* pPropBag, BOOL fClearDirty, BOOL fSaveAllProperties) = 0;
protected:
    ~IPersistPropertyBag() = default;
};

struct IPropertyNotifySink : IUnknown {
    virtual HRESULT OnChanged(DISPID dispID) = 0;
    virtual HRESULT OnRequestEdit(DISPID dispID) = 0;
protected:
    ~IPropertyNotifySink() = default;
};

// Event connection. Stand-in: only Advise and Unadvise. A control's event point is found through
// IConnectionPointContainer; the font object hands out its notification point directly.
struct IConnectionPoint : IUnknown {
    virtual HRESULT Advise(IUnknown* pUnkSink, DWORD* pdwCookie) = 0;
    virtual HRESULT Unadvise(DWORD dwCookie) = 0;
protected:
    ~IConnectionPoint() = default;
};

#define CONNECT_E_NOCONNECTION ((HRESULT)0x80040200L)

// Stand-in: FindConnectionPoint only, without EnumConnectionPoints.
struct IConnectionPointContainer : IUnknown {
    // The point for the outgoing interface riid, with a reference; CONNECT_E_NOCONNECTION if none.
    virtual HRESULT FindConnectionPoint(REFIID riid, IConnectionPoint** ppCP) = 0;
protected:
    ~IConnectionPointContainer() = default;
};

// The container's site of one control. Stand-in: the ambient properties come through
// GetAmbientProperty instead of the site's own IDispatch, invalidation of a control without a
// window through OnInvalidate (IOleInPlaceSiteWindowless::InvalidateRect and view advise on the
// real platform), and property notifications through the site's IPropertyNotifySink.
struct IOleClientSite : IUnknown {
    virtual HRESULT GetAmbientProperty(DISPID dispid, VARIANT* pvar) = 0;
    virtual HRESULT OnInvalidate(const RECT* prc, BOOL fErase) = 0;
protected:
    ~IOleClientSite() = default;
};

#define OLEIVERB_PROPERTIES (-7)
#define DVASPECT_CONTENT 1
#define OLEOBJ_S_INVALIDVERB ((HRESULT)0x00040180L)

struct MSG;

struct IOleObject : IUnknown {
    virtual HRESULT SetClientSite(IOleClientSite* pClientSite) = 0;
    virtual HRESULT GetClientSite(IOleClientSite** ppClientSite) = 0;
    virtual HRESULT Close(DWORD dwSaveOption) = 0;
    // Runs a verb: OLEIVERB_PROPERTIES, or the object's own verbs numbered from 0.
    virtual HRESULT DoVerb(LONG iVerb, MSG* lpmsg, IOleClientSite* pActiveSite, LONG lindex, HWND hwndParent,
                           LPCRECT lprcPosRect) = 0;
    // The object's OLEMISC bits for a drawing aspect.
    virtual HRESULT GetMiscStatus(DWORD dwAspect, DWORD* pdwStatus) = 0;
protected:
    ~IOleObject() = default;
};

inline constexpr IID IID_IOleInPlaceObject = {0x00000113, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr IID IID_IOleInPlaceActiveObject = {0x00000117, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr IID IID_IViewObject = {0x0000010D, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

struct MSG;

// In-place activation. Stand-in: InPlaceActivate takes the place of
// IOleObject::DoVerb(OLEIVERB_INPLACEACTIVATE) with the container's window and the position.
struct IOleInPlaceObject : IUnknown {
    virtual HRESULT InPlaceActivate(HWND hwndParent, LPCRECT lprcPosRect) = 0;
    virtual HRESULT InPlaceDeactivate() = 0;
    virtual HRESULT SetObjectRects(LPCRECT lprcPosRect, LPCRECT lprcClipRect) = 0;
    virtual HRESULT GetWindow(HWND* phwnd) = 0;
protected:
    ~IOleInPlaceObject() = default;
};

// The container's message loop offers each key message here first; S_OK means handled.
struct IOleInPlaceActiveObject : IUnknown {
    virtual HRESULT TranslateAccelerator(MSG* lpmsg) = 0;
protected:
    ~IOleInPlaceActiveObject() = default;
};

// Drawing into a container's DC. Stand-in: only the DC and the bounds of IViewObject::Draw.
struct IViewObject : IUnknown {
    virtual HRESULT Draw(HDC hdcDraw, LPCRECT lprcBounds) = 0;
protected:
    ~IViewObject() = default;
};

struct ITypeInfo;

// The class's type information: GetClassInfo gives the coclass.
struct IProvideClassInfo : IUnknown {
    virtual HRESULT GetClassInfo(ITypeInfo** ppTI) = 0;
protected:
    ~IProvideClassInfo() = default;
};

// Fonts ------------------------------------------------------------------------------------------

struct FONTDESC {
    UINT cbSizeofstruct;
    LPCOLESTR lpstrName;
    CY cySize;
    SHORT sWeight;
    SHORT sCharset;
    BOOL fItalic;
    BOOL fUnderline;
    BOOL fStrikethrough;
};

#define FW_NORMAL 400
#define FW_BOLD 700

struct IFont : IUnknown {
    virtual HRESULT get_Name(BSTR* pName) = 0;
    virtual HRESULT put_Name(BSTR name) = 0;
    virtual HRESULT get_Size(CY* pSize) = 0;
    virtual HRESULT put_Size(CY size) = 0;
    virtual HRESULT get_Bold(BOOL* pBold) = 0;
    virtual HRESULT put_Bold(BOOL bold) = 0;
    virtual HRESULT get_Italic(BOOL* pItalic) = 0;
    virtual HRESULT put_Italic(BOOL italic) = 0;
    virtual HRESULT get_Underline(BOOL* pUnderline) = 0;
    virtual HRESULT put_Underline(BOOL underline) = 0;
    virtual HRESULT get_Strikethrough(BOOL* pStrikethrough) = 0;
    virtual HRESULT put_Strikethrough(BOOL strikethrough) = 0;
    virtual HRESULT get_Weight(SHORT* pWeight) = 0;
    virtual HRESULT put_Weight(SHORT weight) = 0;
    virtual HRESULT get_Charset(SHORT* pCharset) = 0;
    virtual HRESULT put_Charset(SHORT charset) = 0;
    virtual HRESULT get_hFont(HFONT* phFont) = 0;
    virtual HRESULT Clone(IFont** ppFont) = 0;
    virtual HRESULT IsEqual(IFont* pFontOther) = 0;
protected:
    ~IFont() = default;
};
typedef IDispatch IFontDisp;
typedef IFontDisp* LPFONTDISP;

// Creates a font object. Stand-in for OleCreateFontIndirect; the object also answers
// IID_IPersistStream, and takes one IPropertyNotifySink through IConnectionPoint::Advise.
HRESULT OleCreateFontIndirect(const FONTDESC* pFontDesc, REFIID riid, void** ppvObj);

// Pictures ---------------------------------------------------------------------------------------

enum PICTYPE : SHORT {
    PICTYPE_UNINITIALIZED = -1, PICTYPE_NONE = 0, PICTYPE_BITMAP = 1, PICTYPE_METAFILE = 2,
    PICTYPE_ICON = 3, PICTYPE_ENHMETAFILE = 4,
};

struct PICTDESC {
    UINT cbSizeofstruct;
    UINT picType;
    union {
        struct { HBITMAP hbitmap; HPALETTE hpal; } bmp;
        struct { HMETAFILE hmeta; LONG xExt; LONG yExt; } wmf;
        struct { HICON hicon; } icon;
    };
};

struct IPicture : IUnknown {
    virtual HRESULT get_Handle(OLE_HANDLE* pHandle) = 0;
    virtual HRESULT get_Type(SHORT* pType) = 0;
    virtual HRESULT get_Width(LONG* pWidth) = 0;   // HIMETRIC
    virtual HRESULT get_Height(LONG* pHeight) = 0; // HIMETRIC
protected:
    ~IPicture() = default;
};
typedef IDispatch IPictureDisp;
typedef IPictureDisp* LPPICTUREDISP;

// Creates a picture object over a bitmap, icon or metafile handle (fOwn: the object deletes it).
// The object also answers IID_IPictureDisp and IID_IPersistStream.
HRESULT OleCreatePictureIndirect(PICTDESC* lpPictDesc, REFIID riid, BOOL fOwn, void** lplpvObj);

inline constexpr CLSID CLSID_StdFont = {0x0BE35203, 0x8F91, 0x11CE, {0x9D, 0xE3, 0x00, 0xAA, 0x00, 0x4B, 0xB8, 0x51}};
inline constexpr CLSID CLSID_StdPicture = {0x0BE35204, 0x8F91, 0x11CE, {0x9D, 0xE3, 0x00, 0xAA, 0x00, 0x4B, 0xB8, 0x51}};

// Writes the object's class identifier and then its persisted form; reads it back into a new
// object of that class. Only the standard font and picture classes can be made from a stream.
// A null object is written as the null identifier and reads back as S_FALSE with no object.
HRESULT OleSaveToStream(IPersistStream* pPStm, IStream* pStm);
HRESULT OleLoadFromStream(IStream* pStm, REFIID iidInterface, void** ppvObj);
