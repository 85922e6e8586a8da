// Helpers of the picture and style tests.
#include "PictureKit.h"
#include <fstream>
#include <random>
#include <sstream>
#include "base/colors.h"
#include "com/objbase.h"
#include "LinkedModule.h"
#include "user/sysapi.h"

namespace {

COLORREF ColourOf(const Legend& legend, char ch)
{
    auto it = legend.find(ch);
    EXPECT_NE(it, legend.end()) << "no colour for '" << ch << "'";
    return it == legend.end() ? 0 : it->second;
}

void Put16(std::string& out, unsigned v) { out += char(v & 0xff); out += char((v >> 8) & 0xff); }
void Put32(std::string& out, unsigned v) { Put16(out, v & 0xffff); Put16(out, v >> 16); }

// BITMAPINFOHEADER and 24-bit rows bottom-up, each padded to four bytes.
std::string Dib24(const Grid& rows, const Legend& legend, int nHeaderRows, bool bDotsTransparent)
{
    int cx = static_cast<int>(rows[0].size()), cy = static_cast<int>(rows.size());
    std::string out;
    Put32(out, 40); Put32(out, cx); Put32(out, nHeaderRows); Put16(out, 1); Put16(out, 24);
    for (int i = 0; i < 6; ++i) Put32(out, 0);
    for (int y = cy - 1; y >= 0; --y) {
        std::string row;
        for (char ch : rows[y]) {
            // Transparent pixels of an icon are black in the image, so that XOR-ing them changes nothing.
            COLORREF c = bDotsTransparent && ch == '.' ? 0 : ColourOf(legend, ch);
            row += char(GetBValue(c)); row += char(GetGValue(c)); row += char(GetRValue(c));
        }
        row.resize((row.size() + 3) / 4 * 4, '\0');
        out += row;
    }
    return out;
}

void WriteBytes(const std::string& path, const std::string& bytes)
{
    std::ofstream f(path, std::ios::binary);
    f.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    ASSERT_TRUE(f.good()) << path;
}

} // namespace

HBITMAP MakeBitmap(const Grid& rows, const Legend& legend)
{
    int cx = static_cast<int>(rows[0].size()), cy = static_cast<int>(rows.size());
    std::vector<BYTE> bits;
    for (const std::string& row : rows) {
        for (char ch : row) {
            COLORREF c = ColourOf(legend, ch);
            bits.insert(bits.end(), {GetBValue(c), GetGValue(c), GetRValue(c), 0});
        }
    }
    HBITMAP hbm = CreateBitmap(cx, cy, 1, 32, nullptr);
    SetBitmapBits(hbm, static_cast<DWORD>(bits.size()), bits.data());
    return hbm;
}

std::vector<COLORREF> BitmapPixels(HBITMAP hbm)
{
    BITMAP bm{};
    GetObject(hbm, sizeof bm, &bm);
    std::vector<BYTE> bits(static_cast<size_t>(bm.bmWidthBytes) * bm.bmHeight);
    GetBitmapBits(hbm, static_cast<LONG>(bits.size()), bits.data());
    std::vector<COLORREF> px;
    for (size_t i = 0; i + 3 < bits.size(); i += 4) px.push_back(RGB(bits[i + 2], bits[i + 1], bits[i]));
    return px;
}

Canvas::Canvas(int cx, int cy, COLORREF background)
{
    m_dc.CreateCompatibleDC(nullptr);
    m_bitmap.Attach(CreateBitmap(cx, cy, 1, 32, nullptr));
    m_old = m_dc.SelectObject(&m_bitmap);
    CBrush brush(background);
    CRect all(0, 0, cx, cy);
    m_dc.FillRect(&all, &brush);
}

Canvas::~Canvas()
{
    m_dc.SelectObject(m_old);
    m_dc.DeleteDC();
}

Grid Canvas::Read(int x, int y, int w, int h, const Legend& legend)
{
    Grid out;
    for (int j = 0; j < h; ++j) {
        std::string row;
        for (int i = 0; i < w; ++i) {
            COLORREF c = m_dc.GetPixel(x + i, y + j);
            char ch = '?';
            for (const auto& [key, value] : legend) if (value == c) { ch = key; break; }
            row += ch;
        }
        out.push_back(row);
    }
    return out;
}

PictureTest::PictureTest()
{
    m_gdiObjects = GdiGetLiveObjectCount();
    m_ctrl = new CQuillonCtrl;
    m_ctrl->InitNew();
}

// Nothing drawn may stay behind: every surface, brush, bitmap and icon is freed.
PictureTest::~PictureTest()
{
    m_ctrl->Release();
    GdiSetDrawLog(FALSE);
    ResetSysColors();
    EXPECT_EQ(GdiGetLiveObjectCount(), m_gdiObjects) << GdiDescribeLiveObjects();
}

void PictureTest::SetBitmap(const Grid& rows, const Legend& legend)
{
    m_ctrl->m_picDrop.CreateFromBitmap(MakeBitmap(rows, legend), nullptr, TRUE);
    m_ctrl->UpdatePictureSize();
}

TempFolder::TempFolder()
{
    std::random_device rd;
    m_path = std::filesystem::temp_directory_path() / ("quillon-pictures-" + std::to_string(rd()));
    std::filesystem::create_directories(m_path);
}

TempFolder::~TempFolder()
{
    std::error_code ec;
    std::filesystem::remove_all(m_path, ec);
}

void WriteBmp(const std::string& path, const Grid& rows, const Legend& legend)
{
    std::string dib = Dib24(rows, legend, static_cast<int>(rows.size()), false);
    std::string out = "BM";
    Put32(out, static_cast<unsigned>(14 + dib.size())); Put32(out, 0); Put32(out, 14 + 40);
    WriteBytes(path, out + dib);
}

void WriteIco(const std::string& path, const Grid& rows, const Legend& legend)
{
    int cx = static_cast<int>(rows[0].size()), cy = static_cast<int>(rows.size());
    std::string image = Dib24(rows, legend, cy * 2, true);
    // The AND mask, bottom-up, rows padded to four bytes: 1 where the icon is transparent.
    int nStride = (cx + 31) / 32 * 4;
    for (int y = cy - 1; y >= 0; --y) {
        std::string row(static_cast<size_t>(nStride), '\0');
        for (int x = 0; x < cx; ++x) if (rows[y][x] == '.') row[x >> 3] = char(row[x >> 3] | (0x80 >> (x & 7)));
        image += row;
    }
    std::string out;
    Put16(out, 0); Put16(out, 1); Put16(out, 1);
    out += char(cx); out += char(cy); out += '\0'; out += '\0';
    Put16(out, 1); Put16(out, 24); Put32(out, static_cast<unsigned>(image.size())); Put32(out, 6 + 16);
    WriteBytes(path, out + image);
}

void ExpectGrid(const Grid& expected, const Grid& actual)
{
    auto text = [](const Grid& g) {
        std::ostringstream os;
        for (const std::string& row : g) os << "  " << row << "\n";
        return os.str();
    };
    EXPECT_EQ(expected, actual) << "expected:\n" << text(expected) << "actual:\n" << text(actual);
}

namespace {

HRESULT InvokeByName(IDispatch* pDisp, const char16_t* name, WORD flags, VARIANT* pArg, VARIANT* pResult)
{
    DISPID id = DISPID_UNKNOWN;
    LPCOLESTR names[] = {name};
    HRESULT hr = pDisp->GetIDsOfNames(IID_NULL, names, 1, 0, &id);
    if (FAILED(hr)) return hr;
    DISPID named = DISPID_PROPERTYPUT;
    DISPPARAMS params{pArg, pArg ? &named : nullptr, pArg ? 1u : 0u, pArg ? 1u : 0u};
    return pDisp->Invoke(id, IID_NULL, 0, flags, &params, pResult, nullptr, nullptr);
}

} // namespace

long long GetNumber(IDispatch* pDisp, const char16_t* name)
{
    COleVariant v;
    EXPECT_EQ(InvokeByName(pDisp, name, DISPATCH_PROPERTYGET, nullptr, &v), S_OK) << ToUtf8(CString(name));
    if (v.vt == VT_BOOL) return v.boolVal ? 1 : 0;
    if (v.vt == VT_UI4) return v.ulVal;
    EXPECT_EQ(v.ChangeType(VT_I8), S_OK) << ToUtf8(CString(name));
    return v.llVal;
}

void PutNumber(IDispatch* pDisp, const char16_t* name, long long value)
{
    COleVariant current;
    InvokeByName(pDisp, name, DISPATCH_PROPERTYGET, nullptr, &current);
    COleVariant v(static_cast<LONG>(value), current.vt == VT_EMPTY ? VARTYPE(VT_I4) : current.vt);
    EXPECT_EQ(InvokeByName(pDisp, name, DISPATCH_PROPERTYPUT, &v, nullptr), S_OK) << ToUtf8(CString(name));
}

HostTest::HostTest()
{
    UseLinkedModule();
    m_form = m_host.NewForm(RECT{100, 100, 500, 400});
    m_gdiObjects = GdiGetLiveObjectCount();
}

// Nothing may outlive a test: windows, timers or GDI objects.
HostTest::~HostTest()
{
    m_form = nullptr;
    m_pHost.reset();
    EXPECT_EQ(GetLiveWindowCount(), 0) << "windows left behind";
    EXPECT_EQ(GetLiveTimerCount(), 0) << "timers left behind";
    EXPECT_EQ(GdiGetLiveObjectCount(), m_gdiObjects) << GdiDescribeLiveObjects();
    ResetUserState();
}

CControlSite* HostTest::Create()
{
    HRESULT hr = E_FAIL;
    CControlSite* site = m_form->Create(u"QUILLON.QuillonCtrl.2", RECT{10, 10, 130, 34}, &hr);
    EXPECT_EQ(hr, S_OK);
    return site;
}

CControlSite* HostTest::Load(const CString& bag)
{
    HRESULT hr = E_FAIL;
    CControlSite* site = m_form->Load(u"QUILLON.QuillonCtrl.2", bag, RECT{10, 40, 130, 64}, &hr);
    EXPECT_EQ(hr, S_OK);
    return site;
}
