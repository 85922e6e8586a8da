// The OLE standard font object: IFont, its dispatch interface, persistence and change notification.
#include <algorithm>
#include <cmath>
#include <vector>
#include "gdi/wingdi.h"
#include "dispnames.h"
#include "ocidl.h"
#include "stream.h"

namespace {

enum : DISPID { DISPID_FONT_NAME = 0, DISPID_FONT_SIZE = 2, DISPID_FONT_BOLD = 3, DISPID_FONT_ITALIC = 4,
                DISPID_FONT_UNDER = 5, DISPID_FONT_STRIKE = 6, DISPID_FONT_WEIGHT = 7, DISPID_FONT_CHARSET = 8 };

struct FontState {
    CString name;
    CY size{};
    SHORT weight = FW_NORMAL;
    SHORT charset = 0;
    BOOL italic = FALSE, underline = FALSE, strike = FALSE;
    bool operator==(const FontState& o) const
    {
        return name == o.name && size.int64 == o.size.int64 && weight == o.weight && charset == o.charset &&
               italic == o.italic && underline == o.underline && strike == o.strike;
    }
};

// Point size at 96 pixels per inch, rounded; the height is negative: a character height.
HFONT MakeFont(const FontState& s)
{
    LOGFONT lf{};
    // Sizes beyond what a font can have (a damaged store) are held to 32767 pixels.
    double pixels = std::round(static_cast<double>(s.size.int64) * 96.0 / (72.0 * 10000.0));
    lf.lfHeight = -static_cast<LONG>(std::clamp(pixels, -32767.0, 32767.0));
    lf.lfWeight = s.weight;
    lf.lfItalic = s.italic ? 1 : 0;
    lf.lfUnderline = s.underline ? 1 : 0;
    lf.lfStrikeOut = s.strike ? 1 : 0;
    lf.lfCharSet = static_cast<BYTE>(s.charset);
    int n = s.name.GetLength() < 31 ? s.name.GetLength() : 31;
    for (int i = 0; i < n; ++i) lf.lfFaceName[i] = s.name[i];
    return CreateFontIndirect(&lf);
}

class COleFont final : public IFont, public IDispatch, public IPersistStream, public IConnectionPoint {
public:
    explicit COleFont(FontState s) : m_s(std::move(s)) {}

    HRESULT QueryInterface(REFIID riid, void** ppv) override
    {
        if (riid == IID_IUnknown || riid == IID_IFont) *ppv = static_cast<IFont*>(this);
        else if (riid == IID_IDispatch || riid == IID_IFontDisp) *ppv = static_cast<IDispatch*>(this);
        else if (riid == IID_IPersistStream) *ppv = static_cast<IPersistStream*>(this);
        else if (riid == IID_IConnectionPoint) *ppv = static_cast<IConnectionPoint*>(this);
        else { *ppv = nullptr; return E_NOINTERFACE; }
        AddRef();
        return S_OK;
    }
    ULONG AddRef() override { return m_ref.AddRefImpl(); }
    ULONG Release() override { return m_ref.ReleaseImpl(this); }

    HRESULT get_Name(BSTR* p) override { *p = SysAllocString(m_s.name); return S_OK; }
    HRESULT put_Name(BSTR v) override { return Set(m_s.name, BstrToString(v), DISPID_FONT_NAME); }
    HRESULT get_Size(CY* p) override { *p = m_s.size; return S_OK; }
    HRESULT put_Size(CY v) override
    {
        if (m_s.size.int64 == v.int64) return S_OK;
        m_s.size = v;
        return Changed(DISPID_FONT_SIZE);
    }
    HRESULT get_Bold(BOOL* p) override { *p = m_s.weight >= FW_BOLD ? TRUE : FALSE; return S_OK; }
    HRESULT put_Bold(BOOL v) override { return Set(m_s.weight, SHORT(v ? FW_BOLD : FW_NORMAL), DISPID_FONT_BOLD); }
    HRESULT get_Italic(BOOL* p) override { *p = m_s.italic; return S_OK; }
    HRESULT put_Italic(BOOL v) override { return Set(m_s.italic, BOOL(v ? TRUE : FALSE), DISPID_FONT_ITALIC); }
    HRESULT get_Underline(BOOL* p) override { *p = m_s.underline; return S_OK; }
    HRESULT put_Underline(BOOL v) override { return Set(m_s.underline, BOOL(v ? TRUE : FALSE), DISPID_FONT_UNDER); }
    HRESULT get_Strikethrough(BOOL* p) override { *p = m_s.strike; return S_OK; }
    HRESULT put_Strikethrough(BOOL v) override { return Set(m_s.strike, BOOL(v ? TRUE : FALSE), DISPID_FONT_STRIKE); }
    HRESULT get_Weight(SHORT* p) override { *p = m_s.weight; return S_OK; }
    HRESULT put_Weight(SHORT v) override { return Set(m_s.weight, v, DISPID_FONT_WEIGHT); }
    HRESULT get_Charset(SHORT* p) override { *p = m_s.charset; return S_OK; }
    HRESULT put_Charset(SHORT v) override { return Set(m_s.charset, v, DISPID_FONT_CHARSET); }
    // The GDI font is made on first request and kept until a property changes.
    HRESULT get_hFont(HFONT* p) override
    {
        if (!m_hFont) m_hFont = MakeFont(m_s);
        *p = m_hFont;
        return m_hFont ? S_OK : E_FAIL;
    }
    HRESULT Clone(IFont** pp) override { *pp = new COleFont(m_s); return S_OK; }
    HRESULT IsEqual(IFont* other) override
    {
        auto* o = dynamic_cast<COleFont*>(other);
        return o && o->m_s == m_s ? S_OK : S_FALSE;
    }

    // IFontDisp
    HRESULT GetTypeInfoCount(UINT* p) override { *p = 0; return S_OK; }
    HRESULT GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT GetIDsOfNames(REFIID, LPCOLESTR* names, UINT count, LCID, DISPID* ids) override;
    HRESULT Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* p, VARIANT* result, EXCEPINFO*, UINT*) override;

    // IPersistStream
    HRESULT GetClassID(CLSID* p) override { *p = CLSID_StdFont; return S_OK; }
    HRESULT IsDirty() override { return S_FALSE; }
    HRESULT Load(IStream* stm) override;
    HRESULT Save(IStream* stm, BOOL) override;

    // IConnectionPoint, for IPropertyNotifySink
    HRESULT Advise(IUnknown* sink, DWORD* cookie) override;
    HRESULT Unadvise(DWORD cookie) override;


private:
    ~COleFont()
    {
        for (auto& s : m_sinks) if (s.second) s.second->Release();
        DropFont();
    }
    void DropFont()
    {
        if (m_hFont) DeleteObject(m_hFont);
        m_hFont = nullptr;
    }
    friend class CComRefCount<COleFont>;

    template <class T>
    HRESULT Set(T& field, const T& value, DISPID id)
    {
        if (field == value) return S_OK;
        field = value;
        return Changed(id);
    }
    HRESULT Changed(DISPID id)
    {
        DropFont();
        auto sinks = m_sinks; // a sink may unadvise while it hears
        for (auto& s : sinks) if (s.second) s.second->OnChanged(id);
        return S_OK;
    }
    HRESULT GetProperty(DISPID id, VARIANT* result);
    HRESULT PutProperty(DISPID id, const VARIANT& value);

    CComRefCount<COleFont> m_ref;
    FontState m_s;
    std::vector<std::pair<DWORD, IPropertyNotifySink*>> m_sinks;
    DWORD m_nextCookie = 1;
    HFONT m_hFont = nullptr;
};

struct FontProp { const char16_t* name; DISPID id; VARTYPE vt; };
constexpr FontProp kFontProps[] = {
    {u"Name", DISPID_FONT_NAME, VT_BSTR}, {u"Size", DISPID_FONT_SIZE, VT_CY}, {u"Bold", DISPID_FONT_BOLD, VT_BOOL},
    {u"Italic", DISPID_FONT_ITALIC, VT_BOOL}, {u"Underline", DISPID_FONT_UNDER, VT_BOOL},
    {u"Strikethrough", DISPID_FONT_STRIKE, VT_BOOL}, {u"Weight", DISPID_FONT_WEIGHT, VT_I2},
    {u"Charset", DISPID_FONT_CHARSET, VT_I2},
};

const FontProp* FindProp(DISPID id)
{
    for (const auto& p : kFontProps) if (p.id == id) return &p;
    return nullptr;
}

HRESULT COleFont::GetIDsOfNames(REFIID, LPCOLESTR* names, UINT count, LCID, DISPID* ids)
{
    return IdsOfNames(kFontProps, names, count, ids);
}

HRESULT COleFont::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* p, VARIANT* result, EXCEPINFO*, UINT*)
{
    if (!FindProp(id)) return DISP_E_MEMBERNOTFOUND;
    if (flags & DISPATCH_PROPERTYPUT) {
        if (!p || p->cArgs != 1) return DISP_E_BADPARAMCOUNT;
        return PutProperty(id, p->rgvarg[0]);
    }
    if (p && p->cArgs) return DISP_E_BADPARAMCOUNT;
    COleVariant value;
    HRESULT hr = GetProperty(id, &value);
    if (SUCCEEDED(hr) && result) *result = value.Detach();
    return hr;
}

HRESULT COleFont::GetProperty(DISPID id, VARIANT* r)
{
    BOOL b = FALSE;
    switch (id) {
    case DISPID_FONT_NAME: r->vt = VT_BSTR; return get_Name(&r->bstrVal);
    case DISPID_FONT_SIZE: r->vt = VT_CY; return get_Size(&r->cyVal);
    case DISPID_FONT_WEIGHT: r->vt = VT_I2; return get_Weight(&r->iVal);
    case DISPID_FONT_CHARSET: r->vt = VT_I2; return get_Charset(&r->iVal);
    case DISPID_FONT_BOLD: get_Bold(&b); break;
    case DISPID_FONT_ITALIC: b = m_s.italic; break;
    case DISPID_FONT_UNDER: b = m_s.underline; break;
    case DISPID_FONT_STRIKE: b = m_s.strike; break;
    }
    r->vt = VT_BOOL;
    r->boolVal = b ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
}

HRESULT COleFont::PutProperty(DISPID id, const VARIANT& value)
{
    COleVariant v;
    HRESULT hr = VariantChangeType(&v, &value, 0, FindProp(id)->vt);
    if (FAILED(hr)) return hr;
    switch (id) {
    case DISPID_FONT_NAME: return put_Name(v.bstrVal);
    case DISPID_FONT_SIZE: return put_Size(v.cyVal);
    case DISPID_FONT_WEIGHT: return put_Weight(v.iVal);
    case DISPID_FONT_CHARSET: return put_Charset(v.iVal);
    case DISPID_FONT_BOLD: return put_Bold(v.boolVal != 0);
    case DISPID_FONT_ITALIC: return put_Italic(v.boolVal != 0);
    case DISPID_FONT_UNDER: return put_Underline(v.boolVal != 0);
    case DISPID_FONT_STRIKE: return put_Strikethrough(v.boolVal != 0);
    }
    return DISP_E_MEMBERNOTFOUND;
}

// Stream layout: version byte, charset, style bits, weight, size (currency), name.
HRESULT COleFont::Save(IStream* stm, BOOL)
{
    BYTE version = 1;
    BYTE style = (m_s.italic ? 2 : 0) | (m_s.underline ? 4 : 0) | (m_s.strike ? 8 : 0);
    HRESULT hr = StreamWrite(stm, &version, 1);
    if (SUCCEEDED(hr)) hr = StreamWrite(stm, &m_s.charset, sizeof m_s.charset);
    if (SUCCEEDED(hr)) hr = StreamWrite(stm, &style, 1);
    if (SUCCEEDED(hr)) hr = StreamWrite(stm, &m_s.weight, sizeof m_s.weight);
    if (SUCCEEDED(hr)) hr = StreamWrite(stm, &m_s.size.int64, sizeof m_s.size.int64);
    if (SUCCEEDED(hr)) hr = StreamWriteString(stm, m_s.name);
    return hr;
}

HRESULT COleFont::Load(IStream* stm)
{
    BYTE version = 0, style = 0;
    FontState s;
    if (StreamRead(stm, &version, 1) != S_OK || version != 1) return E_FAIL;
    if (StreamRead(stm, &s.charset, sizeof s.charset) != S_OK || StreamRead(stm, &style, 1) != S_OK ||
        StreamRead(stm, &s.weight, sizeof s.weight) != S_OK || StreamRead(stm, &s.size.int64, sizeof s.size.int64) != S_OK ||
        StreamReadString(stm, s.name) != S_OK)
        return E_FAIL;
    s.italic = (style & 2) != 0;
    s.underline = (style & 4) != 0;
    s.strike = (style & 8) != 0;
    bool changed = !(s == m_s);
    m_s = std::move(s);
    return changed ? Changed(DISPID_UNKNOWN) : S_OK;
}

HRESULT COleFont::Advise(IUnknown* sink, DWORD* cookie)
{
    IPropertyNotifySink* p = nullptr;
    if (!sink || FAILED(sink->QueryInterface(IID_IPropertyNotifySink, reinterpret_cast<void**>(&p)))) return E_NOINTERFACE;
    m_sinks.emplace_back(m_nextCookie, p);
    *cookie = m_nextCookie++;
    return S_OK;
}

HRESULT COleFont::Unadvise(DWORD cookie)
{
    for (auto it = m_sinks.begin(); it != m_sinks.end(); ++it)
        if (it->first == cookie) { it->second->Release(); m_sinks.erase(it); return S_OK; }
    return E_INVALIDARG;
}

} // namespace

HRESULT OleCreateFontIndirect(const FONTDESC* d, REFIID riid, void** ppv)
{
    if (!d || !ppv) return E_POINTER;
    FontState s;
    s.name = d->lpstrName;
    s.size = d->cySize;
    s.weight = d->sWeight;
    s.charset = d->sCharset;
    s.italic = d->fItalic ? TRUE : FALSE;
    s.underline = d->fUnderline ? TRUE : FALSE;
    s.strike = d->fStrikethrough ? TRUE : FALSE;
    auto* font = new COleFont(std::move(s));
    HRESULT hr = font->QueryInterface(riid, ppv);
    font->Release();
    return hr;
}
