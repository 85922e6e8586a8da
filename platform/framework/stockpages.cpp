// The stock property pages, each the least that serves: Color (one of the objects' colour properties
// and a colour for it), Font (name, size, bold, italic, underline and strikethrough of the Font
// property) and Picture (one of the picture properties, loaded from a file through the file dialog
// or cleared). Served to COM by their own class objects.
#include "stockpages.h"
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <map>
#include <string>
#include "com/objbase.h"
#include "com/ocidl.h"
#include "com/typeinfo.h"
#include "filedlg.h"
#include "gdi/standin.h"
#include "gdi/wingdi.h"
#include "olepage.h"

namespace {

enum : WORD { IDD_STOCK_COLOR = 0x7F01, IDD_STOCK_FONT = 0x7F02, IDD_STOCK_PICTURE = 0x7F03 };
enum : int {
    IDC_COLOR_PROP = 0x101, IDC_COLOR_VALUE = 0x102,
    IDC_FONT_NAME = 0x111, IDC_FONT_SIZE = 0x112, IDC_FONT_BOLD = 0x113, IDC_FONT_ITALIC = 0x114,
    IDC_FONT_UNDERLINE = 0x115, IDC_FONT_STRIKE = 0x116,
    IDC_PICTURE_PROP = 0x121, IDC_PICTURE_BROWSE = 0x122, IDC_PICTURE_CLEAR = 0x123, IDC_PICTURE_INFO = 0x124,
};

constexpr DWORD kPage = WS_CHILD | DS_CONTROL | DS_SETFONT;
constexpr DWORD kList = WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWN | CBS_SORT;

const DLGITEMTEMPLATE kColorItems[] = {
    {SS_LEFT, 0, 6, 6, 100, 8, IDC_STATIC, WC_STATIC, u"Properties:"},
    {kList, 0, 6, 16, 110, 80, IDC_COLOR_PROP, WC_COMBOBOX, u""},
    {SS_LEFT, 0, 124, 6, 100, 8, IDC_STATIC, WC_STATIC, u"Color:"},
    {WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWN, 0, 124, 16, 110, 120, IDC_COLOR_VALUE, WC_COMBOBOX, u""},
};
const DLGITEMTEMPLATE kFontItems[] = {
    {SS_LEFT, 0, 6, 6, 100, 8, IDC_STATIC, WC_STATIC, u"Font:"},
    {kList, 0, 6, 16, 120, 90, IDC_FONT_NAME, WC_COMBOBOX, u""},
    {SS_LEFT, 0, 134, 6, 40, 8, IDC_STATIC, WC_STATIC, u"Size:"},
    {WS_TABSTOP | WS_BORDER | ES_AUTOHSCROLL, 0, 134, 16, 34, 12, IDC_FONT_SIZE, WC_EDIT, u""},
    {WS_TABSTOP | BS_AUTOCHECKBOX, 0, 180, 16, 64, 10, IDC_FONT_BOLD, WC_BUTTON, u"Bold"},
    {WS_TABSTOP | BS_AUTOCHECKBOX, 0, 180, 30, 64, 10, IDC_FONT_ITALIC, WC_BUTTON, u"Italic"},
    {WS_TABSTOP | BS_AUTOCHECKBOX, 0, 180, 44, 64, 10, IDC_FONT_UNDERLINE, WC_BUTTON, u"Underline"},
    {WS_TABSTOP | BS_AUTOCHECKBOX, 0, 180, 58, 64, 10, IDC_FONT_STRIKE, WC_BUTTON, u"Strikethrough"},
};
const DLGITEMTEMPLATE kPictureItems[] = {
    {SS_LEFT, 0, 6, 6, 100, 8, IDC_STATIC, WC_STATIC, u"Properties:"},
    {kList, 0, 6, 16, 110, 60, IDC_PICTURE_PROP, WC_COMBOBOX, u""},
    {WS_TABSTOP | BS_PUSHBUTTON, 0, 124, 15, 50, 14, IDC_PICTURE_BROWSE, WC_BUTTON, u"Browse..."},
    {WS_TABSTOP | BS_PUSHBUTTON, 0, 180, 15, 50, 14, IDC_PICTURE_CLEAR, WC_BUTTON, u"Clear"},
    {SS_LEFT | SS_NOPREFIX, 0, 6, 40, 230, 8, IDC_PICTURE_INFO, WC_STATIC, u""},
};
const DLGTEMPLATE kColor = {kPage, 0, 0, 0, 250, 110, u"Color", 8, u"MS Shell Dlg", kColorItems, 4};
const DLGTEMPLATE kFont = {kPage, 0, 0, 0, 250, 110, u"Font", 8, u"MS Shell Dlg", kFontItems, 8};
const DLGTEMPLATE kPicture = {kPage, 0, 0, 0, 250, 110, u"Picture", 8, u"MS Shell Dlg", kPictureItems, 5};

struct NamedColor {
    const char16_t* name;
    OLE_COLOR value;
};
// The sixteen colours of the classic palette, then the system colours a control most often uses.
const NamedColor kColors[] = {
    {u"Black", 0x000000}, {u"Maroon", 0x000080}, {u"Green", 0x008000}, {u"Olive", 0x008080},
    {u"Navy", 0x800000}, {u"Purple", 0x800080}, {u"Teal", 0x808000}, {u"Gray", 0x808080},
    {u"Silver", 0xC0C0C0}, {u"Red", 0x0000FF}, {u"Lime", 0x00FF00}, {u"Yellow", 0x00FFFF},
    {u"Blue", 0xFF0000}, {u"Fuchsia", 0xFF00FF}, {u"Aqua", 0xFFFF00}, {u"White", 0xFFFFFF},
    {u"Button Face", 0x8000000F}, {u"Button Text", 0x80000012}, {u"Window Background", 0x80000005},
    {u"Window Text", 0x80000008}, {u"Highlight", 0x8000000D}, {u"Gray Text", 0x80000011},
};
const char16_t* const kFaces[] = {u"Arial", u"Courier New", u"MS Sans Serif", u"MS Shell Dlg", u"Tahoma",
                                  u"Times New Roman", u"Verdana"};

HRESULT GetProp(LPDISPATCH p, const CString& name, VARIANT* out)
{
    DISPID id;
    LPCOLESTR names[] = {name.GetString()};
    HRESULT hr = p->GetIDsOfNames(IID_NULL, names, 1, 0, &id);
    DISPPARAMS none{nullptr, nullptr, 0, 0};
    return SUCCEEDED(hr) ? p->Invoke(id, IID_NULL, 0, DISPATCH_PROPERTYGET, &none, out, nullptr, nullptr) : hr;
}

HRESULT PutProp(LPDISPATCH p, const CString& name, VARIANT value)
{
    DISPID id, named = DISPID_PROPERTYPUT;
    LPCOLESTR names[] = {name.GetString()};
    HRESULT hr = p->GetIDsOfNames(IID_NULL, names, 1, 0, &id);
    DISPPARAMS args{&value, &named, 1, 1};
    return SUCCEEDED(hr) ? p->Invoke(id, IID_NULL, 0, DISPATCH_PROPERTYPUT, &args, nullptr, nullptr, nullptr) : hr;
}

// Whether a type is the one of that name the library refers to (OLE_COLOR, IPictureDisp).
bool IsNamedType(ITypeInfo* info, const TYPEDESC& t, const char16_t* pszType)
{
    CComPtr<ITypeInfo> ref;
    BSTR name = nullptr;
    if (t.vt != VT_USERDEFINED || info->GetRefTypeInfo(t.hreftype, &ref) != S_OK ||
        ref->GetDocumentation(MEMBERID_NIL, &name, nullptr, nullptr, nullptr) != S_OK)
        return false;
    const bool bSame = BstrToString(name) == pszType;
    SysFreeString(name);
    return bSame;
}

// The writable dispatch properties of one type that the type information declares, in its order.
std::vector<CString> WritableProperties(ITypeInfo* info, const char16_t* pszType)
{
    std::vector<CString> out;
    TYPEATTR* attr = nullptr;
    if (FAILED(info->GetTypeAttr(&attr))) return out;
    for (UINT i = 0; i < attr->cVars; ++i) {
        VARDESC* v = nullptr;
        if (FAILED(info->GetVarDesc(i, &v))) continue;
        BSTR name = nullptr;
        UINT n = 0;
        if (v->varkind == VAR_DISPATCH && !(v->wVarFlags & VARFLAG_FREADONLY) && IsNamedType(info, v->elemdescVar.tdesc, pszType) &&
            info->GetNames(v->memid, &name, 1, &n) == S_OK && n == 1) {
            out.push_back(BstrToString(name));
            SysFreeString(name);
        }
        info->ReleaseVarDesc(v);
    }
    info->ReleaseTypeAttr(attr);
    return out;
}

// A stock page: the objects' properties of one type (OLE_COLOR, IPictureDisp), read from the first
// object's type information.
class CStockPage : public COlePropertyPage {
public:
    CStockPage(UINT idDlg, const CLSID& clsid) : COlePropertyPage(idDlg, idDlg), m_clsid(clsid) {}
    HRESULT GetClassID(CLSID* p) override { *p = m_clsid; return S_OK; }

protected:
    LPDISPATCH First()
    {
        ULONG n = 0;
        LPDISPATCH* objects = GetObjectArray(&n);
        return n ? objects[0] : nullptr;
    }
    std::vector<CString> PropertiesOf(const char16_t* pszType)
    {
        CComPtr<ITypeInfo> info;
        if (!First() || FAILED(First()->GetTypeInfo(0, 0, &info))) return {};
        return WritableProperties(info.Get(), pszType);
    }
    void PutAll(const CString& name, const VARIANT& value)
    {
        ULONG n = 0;
        LPDISPATCH* objects = GetObjectArray(&n);
        for (ULONG i = 0; i < n; ++i) PutProp(objects[i], name, value);
    }
    CString Current(int id)
    {
        CString s;
        GetDlgItem(id)->GetWindowText(s);
        return s;
    }
    void Fill(int id, const std::vector<CString>& lines)
    {
        for (const CString& s : lines) SendDlgItemMessage(m_hWnd, id, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(s.GetString()));
        SendDlgItemMessage(m_hWnd, id, CB_SETCURSEL, 0, 0);
    }

private:
    CLSID m_clsid;
};

class CColorPropPage : public CStockPage {
public:
    CColorPropPage() : CStockPage(IDD_STOCK_COLOR, CLSID_StockColorPage) {}
    BOOL OnInitDialog() override
    {
        for (const NamedColor& c : kColors) SendDlgItemMessage(m_hWnd, IDC_COLOR_VALUE, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(c.name));
        Fill(IDC_COLOR_PROP, PropertiesOf(u"OLE_COLOR"));
        ShowColor();
        return COlePropertyPage::OnInitDialog();
    }
    BOOL OnCommand(WPARAM wp, LPARAM) override
    {
        if (HIWORD(wp) != CBN_SELCHANGE) return FALSE;
        if (LOWORD(wp) == IDC_COLOR_PROP) ShowColor();
        if (LOWORD(wp) == IDC_COLOR_VALUE) {
            int i = static_cast<int>(SendDlgItemMessage(m_hWnd, IDC_COLOR_VALUE, CB_GETCURSEL, 0, 0));
            if (i >= 0) m_pending[Current(IDC_COLOR_PROP)] = kColors[i].value;
            SetModifiedFlag(TRUE);
        }
        return TRUE;
    }
    void DoDataExchange(CDataExchange* pDX) override
    {
        if (!pDX->m_bSaveAndValidate) return;
        for (auto& [name, value] : m_pending) {
            COleVariant v;
            v.vt = VT_I4;
            v.lVal = static_cast<LONG>(value);
            PutAll(name, v);
        }
        m_pending.clear();
    }

private:
    // The property's colour, pending or read, picked in the list; one not in it shows as a number.
    void ShowColor()
    {
        CString name = Current(IDC_COLOR_PROP);
        OLE_COLOR value = 0;
        if (auto it = m_pending.find(name); it != m_pending.end()) value = it->second;
        else if (COleVariant v; First() && SUCCEEDED(GetProp(First(), name, &v)) && SUCCEEDED(v.ChangeType(VT_I4))) value = static_cast<OLE_COLOR>(v.lVal);
        int at = -1;
        for (size_t i = 0; i < std::size(kColors); ++i)
            if (kColors[i].value == value) at = static_cast<int>(i);
        SendDlgItemMessage(m_hWnd, IDC_COLOR_VALUE, CB_SETCURSEL, at, 0);
        if (at < 0) {
            char hex[16];
            std::snprintf(hex, sizeof hex, "&H%08X&", static_cast<unsigned>(value));
            ::SetDlgItemText(m_hWnd, IDC_COLOR_VALUE, FromUtf8(hex).c_str());
        }
    }
    std::map<CString, OLE_COLOR> m_pending;
};

class CFontPropPage : public CStockPage {
public:
    CFontPropPage() : CStockPage(IDD_STOCK_FONT, CLSID_StockFontPage) {}
    BOOL OnInitDialog() override
    {
        for (const char16_t* face : kFaces) SendDlgItemMessage(m_hWnd, IDC_FONT_NAME, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(face));
        return COlePropertyPage::OnInitDialog();
    }
    void DoDataExchange(CDataExchange* pDX) override
    {
        CComPtr<IFont> font = Font();
        if (!pDX->m_bSaveAndValidate && font) Read(font.Get());
        DDX_Text(pDX, IDC_FONT_NAME, m_strName);
        DDX_Text(pDX, IDC_FONT_SIZE, m_strSize);
        DDX_Check(pDX, IDC_FONT_BOLD, m_bBold);
        DDX_Check(pDX, IDC_FONT_ITALIC, m_bItalic);
        DDX_Check(pDX, IDC_FONT_UNDERLINE, m_bUnderline);
        DDX_Check(pDX, IDC_FONT_STRIKE, m_bStrike);
        if (pDX->m_bSaveAndValidate && font) Write(pDX, font.Get());
    }

private:
    CComPtr<IFont> Font()
    {
        CComPtr<IFont> font;
        COleVariant v;
        if (First() && SUCCEEDED(GetProp(First(), u"Font", &v)) && v.vt == VT_DISPATCH && v.pdispVal)
            v.pdispVal->QueryInterface(IID_IFont, reinterpret_cast<void**>(&font));
        return font;
    }
    void Read(IFont* f)
    {
        BSTR name = nullptr;
        f->get_Name(&name);
        m_strName = CString(name ? name : u"");
        SysFreeString(name);
        CY size{};
        f->get_Size(&size);
        m_strSize = FormatSize(size.int64);
        BOOL b = FALSE;
        f->get_Bold(&b); m_bBold = b != 0;
        f->get_Italic(&b); m_bItalic = b != 0;
        f->get_Underline(&b); m_bUnderline = b != 0;
        f->get_Strikethrough(&b); m_bStrike = b != 0;
    }
    // Points with up to two decimals, as CY holds them in ten-thousandths.
    static CString FormatSize(LONGLONG cy)
    {
        char buf[32];
        std::snprintf(buf, sizeof buf, "%.2f", static_cast<double>(cy) / 10000.0);
        std::string s = buf;
        while (s.back() == '0') s.pop_back();
        if (s.back() == '.') s.pop_back();
        return CString(FromUtf8(s).c_str());
    }
    void Write(CDataExchange* pDX, IFont* f)
    {
        double points = 0;
        std::string s = ToUtf8(m_strSize);
        char* end = nullptr;
        points = std::strtod(s.c_str(), &end);
        if (s.empty() || (end && *end) || points <= 0 || points > 1638) {
            pDX->PrepareCtrl(IDC_FONT_SIZE);
            pDX->Fail();
        }
        BSTR name = SysAllocString(m_strName.GetString());
        f->put_Name(name);
        SysFreeString(name);
        CY size{};
        size.int64 = static_cast<LONGLONG>(points * 10000.0 + 0.5);
        f->put_Size(size);
        f->put_Bold(m_bBold);
        f->put_Italic(m_bItalic);
        f->put_Underline(m_bUnderline);
        f->put_Strikethrough(m_bStrike);
    }
    CString m_strName, m_strSize;
    int m_bBold = 0, m_bItalic = 0, m_bUnderline = 0, m_bStrike = 0;
};

// A picture object from a BMP, ICO or PNG file; null when the file does not serve.
LPDISPATCH LoadPictureFile(const CString& path)
{
    std::string file = ToUtf8(path), ext = std::filesystem::path(file).extension().string();
    for (char& ch : ext) ch = static_cast<char>(std::tolower(static_cast<unsigned char>(ch)));
    PICTDESC desc{};
    desc.cbSizeofstruct = sizeof desc;
    if (ext == ".bmp" || ext == ".png") {
        desc.picType = PICTYPE_BITMAP;
        desc.bmp.hbitmap = ext == ".bmp" ? LoadBitmapFile(file.c_str()) : LoadBitmapPng(file.c_str());
        if (!desc.bmp.hbitmap) return nullptr;
    } else if (ext == ".ico") {
        desc.picType = PICTYPE_ICON;
        desc.icon.hicon = LoadIconFile(file.c_str());
        if (!desc.icon.hicon) return nullptr;
    } else {
        return nullptr;
    }
    LPDISPATCH p = nullptr;
    if (FAILED(OleCreatePictureIndirect(&desc, IID_IPictureDisp, TRUE, reinterpret_cast<void**>(&p)))) {
        if (desc.picType == PICTYPE_BITMAP) DeleteObject(desc.bmp.hbitmap);
        else DestroyIcon(desc.icon.hicon);
        return nullptr;
    }
    return p;
}

class CPicturePropPage : public CStockPage {
public:
    CPicturePropPage() : CStockPage(IDD_STOCK_PICTURE, CLSID_StockPicturePage) {}
    ~CPicturePropPage() override
    {
        for (auto& [name, p] : m_pending)
            if (p) p->Release();
    }
    BOOL OnInitDialog() override
    {
        Fill(IDC_PICTURE_PROP, PropertiesOf(u"IPictureDisp"));
        Describe();
        return COlePropertyPage::OnInitDialog();
    }
    BOOL OnCommand(WPARAM wp, LPARAM) override
    {
        if (LOWORD(wp) == IDC_PICTURE_PROP && HIWORD(wp) == CBN_SELCHANGE) Describe();
        if (HIWORD(wp) != BN_CLICKED || Current(IDC_PICTURE_PROP).IsEmpty()) return TRUE;
        if (LOWORD(wp) == IDC_PICTURE_BROWSE) {
            CFileDialog dlg(TRUE, nullptr, nullptr, OFN_HIDEREADONLY, u"Pictures (*.bmp;*.ico;*.png)|*.bmp;*.ico;*.png||", this);
            if (dlg.DoModal() != IDOK) return TRUE;
            LPDISPATCH p = LoadPictureFile(dlg.GetPathName());
            if (!p) { ::MessageBeep(MB_ICONEXCLAMATION); return TRUE; }
            SetPending(p);
        } else if (LOWORD(wp) == IDC_PICTURE_CLEAR) {
            SetPending(nullptr);
        }
        return TRUE;
    }
    void DoDataExchange(CDataExchange* pDX) override
    {
        if (!pDX->m_bSaveAndValidate) return;
        for (auto& [name, p] : m_pending) {
            COleVariant v;
            v.vt = VT_DISPATCH;
            v.pdispVal = p;   // the variant takes the pending reference
            PutAll(name, v);
        }
        m_pending.clear();
    }

private:
    void SetPending(LPDISPATCH p)
    {
        LPDISPATCH& slot = m_pending[Current(IDC_PICTURE_PROP)];
        if (slot) slot->Release();
        slot = p;
        SetModifiedFlag(TRUE);
        Describe();
    }
    // What the chosen property holds now, or will hold after Apply.
    void Describe()
    {
        CString name = Current(IDC_PICTURE_PROP);
        COleVariant v;
        LPDISPATCH p = nullptr;
        if (auto it = m_pending.find(name); it != m_pending.end()) p = it->second;
        else if (First() && !name.IsEmpty() && SUCCEEDED(GetProp(First(), name, &v)) && v.vt == VT_DISPATCH) p = v.pdispVal;
        CComPtr<IPicture> pic;
        SHORT type = PICTYPE_NONE;
        LONG w = 0, h = 0;
        if (p && SUCCEEDED(p->QueryInterface(IID_IPicture, reinterpret_cast<void**>(&pic)))) {
            pic->get_Type(&type);
            pic->get_Width(&w);
            pic->get_Height(&h);
        }
        char text[64] = "(None)";
        if (type == PICTYPE_BITMAP || type == PICTYPE_ICON)
            std::snprintf(text, sizeof text, "%s, %d x %d pixels", type == PICTYPE_BITMAP ? "Bitmap" : "Icon",
                          MulDiv(w, 96, 2540), MulDiv(h, 96, 2540));
        ::SetDlgItemText(m_hWnd, IDC_PICTURE_INFO, FromUtf8(text).c_str());
    }
    std::map<CString, LPDISPATCH> m_pending;
};

// One class object per page.
template <class TPage>
class CStockPageFactory final : public IClassFactory {
public:
    HRESULT QueryInterface(REFIID riid, void** ppv) override
    {
        if (riid == IID_IUnknown || riid == IID_IClassFactory) { *ppv = this; return S_OK; }
        *ppv = nullptr;
        return E_NOINTERFACE;
    }
    ULONG AddRef() override { return 2; }
    ULONG Release() override { return 1; }
    HRESULT CreateInstance(IUnknown* outer, REFIID riid, void** ppv) override
    {
        if (outer) return CLASS_E_NOAGGREGATION;
        auto* page = new TPage;
        HRESULT hr = page->QueryInterface(riid, ppv);
        page->Release();
        return hr;
    }
    HRESULT LockServer(BOOL) override { return S_OK; }
};

HRESULT StockPagesGetClassObject(REFCLSID clsid, REFIID riid, void** ppv)
{
    static CStockPageFactory<CColorPropPage> color;
    static CStockPageFactory<CFontPropPage> font;
    static CStockPageFactory<CPicturePropPage> picture;
    *ppv = nullptr;
    if (clsid == CLSID_StockColorPage) return color.QueryInterface(riid, ppv);
    if (clsid == CLSID_StockFontPage) return font.QueryInterface(riid, ppv);
    if (clsid == CLSID_StockPicturePage) return picture.QueryInterface(riid, ppv);
    return CLASS_E_CLASSNOTAVAILABLE;
}

} // namespace

void RegisterStockPropertyPages()
{
    static bool done = false;
    if (done) return;
    done = true;
    RegisterDialogResource(IDD_STOCK_COLOR, &kColor, nullptr, 0);
    RegisterDialogResource(IDD_STOCK_FONT, &kFont, nullptr, 0);
    RegisterDialogResource(IDD_STOCK_PICTURE, &kPicture, nullptr, 0);
    RegisterStringResource(IDD_STOCK_COLOR, u"Color");
    RegisterStringResource(IDD_STOCK_FONT, u"Font");
    RegisterStringResource(IDD_STOCK_PICTURE, u"Picture");
    CoRegisterInprocServer(&StockPagesGetClassObject);
}
