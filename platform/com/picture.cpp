// The OLE standard picture object over a GDI bitmap, icon or metafile handle, with its stream form.
#include <vector>
#include "gdi/wingdi.h"
#include "dispnames.h"
#include "ocidl.h"
#include "stream.h"

namespace {

enum : DISPID { DISPID_PICT_HANDLE = 0, DISPID_PICT_HPAL = 2, DISPID_PICT_TYPE = 3, DISPID_PICT_WIDTH = 4, DISPID_PICT_HEIGHT = 5 };

LONG PixelsToHimetric(LONG px) { return MulDiv(px, 2540, 96); }

OLE_HANDLE ToOleHandle(const void* h) { return static_cast<OLE_HANDLE>(reinterpret_cast<uintptr_t>(h)); }

struct BitmapData {
    LONG width = 0, height = 0;
    WORD bitsPixel = 0;
    std::vector<BYTE> bits;
};

BitmapData ReadBitmap(HBITMAP hbm)
{
    BitmapData d;
    BITMAP bm{};
    if (!hbm || !GetObject(hbm, sizeof bm, &bm)) return d;
    d.width = bm.bmWidth;
    d.height = bm.bmHeight;
    d.bitsPixel = bm.bmBitsPixel;
    d.bits.resize(static_cast<size_t>(bm.bmWidthBytes) * bm.bmHeight);
    GetBitmapBits(hbm, static_cast<LONG>(d.bits.size()), d.bits.data());
    return d;
}

HRESULT WriteBitmap(IStream* stm, const BitmapData& d)
{
    HRESULT hr = StreamWrite(stm, &d.width, sizeof d.width);
    if (SUCCEEDED(hr)) hr = StreamWrite(stm, &d.height, sizeof d.height);
    if (SUCCEEDED(hr)) hr = StreamWrite(stm, &d.bitsPixel, sizeof d.bitsPixel);
    uint32_t n = static_cast<uint32_t>(d.bits.size());
    if (SUCCEEDED(hr)) hr = StreamWrite(stm, &n, sizeof n);
    if (SUCCEEDED(hr) && n) hr = StreamWrite(stm, d.bits.data(), n);
    return hr;
}

HBITMAP LoadBitmap(IStream* stm)
{
    BitmapData d;
    uint32_t n = 0;
    if (StreamRead(stm, &d.width, sizeof d.width) != S_OK || StreamRead(stm, &d.height, sizeof d.height) != S_OK ||
        StreamRead(stm, &d.bitsPixel, sizeof d.bitsPixel) != S_OK || StreamRead(stm, &n, sizeof n) != S_OK)
        return nullptr;
    // A damaged stream must not make a picture of a size its bits do not have.
    if (d.width <= 0 || d.height <= 0 || d.width > 32767 || d.height > 32767 || (d.bitsPixel != 1 && d.bitsPixel != 32))
        return nullptr;
    uint64_t rowBytes = d.bitsPixel == 1 ? ((static_cast<uint64_t>(d.width) + 15) / 16) * 2 : static_cast<uint64_t>(d.width) * 4;
    if (n != rowBytes * static_cast<uint64_t>(d.height)) return nullptr;
    d.bits.resize(n);
    if (n && StreamRead(stm, d.bits.data(), n) != S_OK) return nullptr;
    HBITMAP hbm = CreateBitmap(d.width, d.height, 1, d.bitsPixel, nullptr);
    if (hbm && n) SetBitmapBits(hbm, n, d.bits.data());
    return hbm;
}

class COlePicture final : public IPicture, public IDispatch, public IPersistStream {
public:
    COlePicture(const PICTDESC& d, BOOL fOwn) : m_desc(d), m_own(fOwn) {}

    HRESULT QueryInterface(REFIID riid, void** ppv) override
    {
        if (riid == IID_IUnknown || riid == IID_IPicture) *ppv = static_cast<IPicture*>(this);
        else if (riid == IID_IDispatch || riid == IID_IPictureDisp) *ppv = static_cast<IDispatch*>(this);
        else if (riid == IID_IPersistStream) *ppv = static_cast<IPersistStream*>(this);
        else { *ppv = nullptr; return E_NOINTERFACE; }
        AddRef();
        return S_OK;
    }
    ULONG AddRef() override { return m_ref.AddRefImpl(); }
    ULONG Release() override { return m_ref.ReleaseImpl(this); }

    HRESULT get_Handle(OLE_HANDLE* p) override { *p = ToOleHandle(Handle()); return S_OK; }
    HRESULT get_Type(SHORT* p) override { *p = static_cast<SHORT>(m_desc.picType); return S_OK; }
    HRESULT get_Width(LONG* p) override { *p = PixelsToHimetric(PixelSize().cx); return S_OK; }
    HRESULT get_Height(LONG* p) override { *p = PixelsToHimetric(PixelSize().cy); return S_OK; }

    HRESULT GetTypeInfoCount(UINT* p) override { *p = 0; return S_OK; }
    HRESULT GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT GetIDsOfNames(REFIID, LPCOLESTR* names, UINT count, LCID, DISPID* ids) override;
    HRESULT Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* p, VARIANT* result, EXCEPINFO*, UINT*) override;

    HRESULT GetClassID(CLSID* p) override { *p = CLSID_StdPicture; return S_OK; }
    HRESULT IsDirty() override { return S_FALSE; }
    HRESULT Load(IStream* stm) override;
    HRESULT Save(IStream* stm, BOOL) override;

private:
    friend class CComRefCount<COlePicture>;
    ~COlePicture() { Free(); }
    void* Handle() const
    {
        switch (m_desc.picType) {
        case PICTYPE_BITMAP: return m_desc.bmp.hbitmap;
        case PICTYPE_ICON: return m_desc.icon.hicon;
        case PICTYPE_METAFILE: return m_desc.wmf.hmeta;
        }
        return nullptr;
    }
    CSize PixelSize() const;
    void Free();

    CComRefCount<COlePicture> m_ref;
    PICTDESC m_desc;
    BOOL m_own;
};

CSize COlePicture::PixelSize() const
{
    BITMAP bm{};
    if (m_desc.picType == PICTYPE_BITMAP && GetObject(m_desc.bmp.hbitmap, sizeof bm, &bm)) return CSize(bm.bmWidth, bm.bmHeight);
    if (m_desc.picType == PICTYPE_ICON) return CSize(32, 32);
    if (m_desc.picType == PICTYPE_METAFILE) return CSize(m_desc.wmf.xExt, m_desc.wmf.yExt);
    return CSize();
}

void COlePicture::Free()
{
    if (m_own) {
        if (m_desc.picType == PICTYPE_BITMAP && m_desc.bmp.hbitmap) DeleteObject(m_desc.bmp.hbitmap);
        if (m_desc.picType == PICTYPE_ICON && m_desc.icon.hicon) DestroyIcon(m_desc.icon.hicon);
    }
    m_desc = PICTDESC{};
    m_desc.cbSizeofstruct = sizeof(PICTDESC);
    m_desc.picType = PICTYPE_NONE;
}

HRESULT COlePicture::GetIDsOfNames(REFIID, LPCOLESTR* names, UINT count, LCID, DISPID* ids)
{
    static const struct { const char16_t* name; DISPID id; } props[] = {
        {u"Handle", DISPID_PICT_HANDLE}, {u"hPal", DISPID_PICT_HPAL}, {u"Type", DISPID_PICT_TYPE},
        {u"Width", DISPID_PICT_WIDTH}, {u"Height", DISPID_PICT_HEIGHT}};
    return IdsOfNames(props, names, count, ids);
}

HRESULT COlePicture::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS*, VARIANT* r, EXCEPINFO*, UINT*)
{
    if (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) return CTL_E_SETNOTSUPPORTED;
    if (!r) return S_OK;
    VariantInit(r);
    switch (id) {
    case DISPID_PICT_HANDLE: r->vt = VT_I4; return get_Handle(reinterpret_cast<OLE_HANDLE*>(&r->lVal));
    case DISPID_PICT_HPAL: r->vt = VT_I4; r->lVal = 0; return S_OK;
    case DISPID_PICT_TYPE: r->vt = VT_I2; return get_Type(&r->iVal);
    case DISPID_PICT_WIDTH: r->vt = VT_I4; return get_Width(&r->lVal);
    case DISPID_PICT_HEIGHT: r->vt = VT_I4; return get_Height(&r->lVal);
    }
    return DISP_E_MEMBERNOTFOUND;
}

// Stream layout: version byte, picture type, then the bitmap (size, depth, bits), the icon (its
// mask and colour bitmaps) or the metafile's extents.
HRESULT COlePicture::Save(IStream* stm, BOOL)
{
    BYTE version = 1;
    SHORT type = static_cast<SHORT>(m_desc.picType);
    HRESULT hr = StreamWrite(stm, &version, 1);
    if (SUCCEEDED(hr)) hr = StreamWrite(stm, &type, sizeof type);
    if (FAILED(hr)) return hr;
    if (type == PICTYPE_BITMAP) return WriteBitmap(stm, ReadBitmap(m_desc.bmp.hbitmap));
    if (type == PICTYPE_ICON) {
        ICONINFO ii{};
        if (!GetIconInfo(m_desc.icon.hicon, &ii)) return E_FAIL;
        hr = WriteBitmap(stm, ReadBitmap(ii.hbmMask));
        if (SUCCEEDED(hr)) hr = WriteBitmap(stm, ReadBitmap(ii.hbmColor));
        if (ii.hbmMask) DeleteObject(ii.hbmMask);
        if (ii.hbmColor) DeleteObject(ii.hbmColor);
        return hr;
    }
    // The stand-in has no metafile records: only the extents persist.
    if (type == PICTYPE_METAFILE) {
        hr = StreamWrite(stm, &m_desc.wmf.xExt, sizeof(LONG));
        if (SUCCEEDED(hr)) hr = StreamWrite(stm, &m_desc.wmf.yExt, sizeof(LONG));
    }
    return hr;
}

HRESULT COlePicture::Load(IStream* stm)
{
    BYTE version = 0;
    SHORT type = 0;
    if (StreamRead(stm, &version, 1) != S_OK || version != 1 || StreamRead(stm, &type, sizeof type) != S_OK) return E_FAIL;
    Free();
    m_own = TRUE;
    if (type == PICTYPE_BITMAP) {
        HBITMAP hbm = LoadBitmap(stm);
        if (!hbm) return E_FAIL;
        m_desc.bmp.hbitmap = hbm;
    } else if (type == PICTYPE_ICON) {
        ICONINFO ii{TRUE, 0, 0, LoadBitmap(stm), nullptr};
        ii.hbmColor = LoadBitmap(stm);
        HICON icon = ii.hbmMask ? CreateIconIndirect(&ii) : nullptr;
        if (ii.hbmMask) DeleteObject(ii.hbmMask);
        if (ii.hbmColor) DeleteObject(ii.hbmColor);
        if (!icon) return E_FAIL;
        m_desc.icon.hicon = icon;
    } else if (type == PICTYPE_METAFILE) {
        if (StreamRead(stm, &m_desc.wmf.xExt, sizeof(LONG)) != S_OK || StreamRead(stm, &m_desc.wmf.yExt, sizeof(LONG)) != S_OK)
            return E_FAIL;
    } else if (type != PICTYPE_NONE) {
        return E_FAIL;
    }
    m_desc.picType = type;
    return S_OK;
}

} // namespace

HRESULT OleCreatePictureIndirect(PICTDESC* d, REFIID riid, BOOL fOwn, void** ppv)
{
    if (!ppv) return E_POINTER;
    PICTDESC desc{};
    desc.cbSizeofstruct = sizeof desc;
    desc.picType = PICTYPE_NONE;
    if (d) desc = *d;
    auto* pic = new COlePicture(desc, fOwn);
    HRESULT hr = pic->QueryInterface(riid, ppv);
    pic->Release();
    return hr;
}
