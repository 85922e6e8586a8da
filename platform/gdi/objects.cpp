// GDI objects: the handle table, stock objects, pens, brushes, GetObject, SelectObject and DeleteObject.
#include <cassert>
#include <cstdio>
#include <cstring>
#include "base/colors.h"
#include "gdi/drawlog_p.h"
#include "gdi/objects_p.h"

namespace gdi {

// A handle packs a slot (bits 4..19) and a generation (bits 20..31) into its low 32 bits, the only
// ones that are significant, as on the real platform: a handle survives a round trip through a 32-bit
// OLE_HANDLE (IPicture::get_Handle). Like GDI's own quota, the table holds at most 65535 objects.
constexpr uint32_t kMaxSlots = 0xFFFF, kGenMask = 0xFFF;

std::string Object::Describe() const { return "object type " + std::to_string(m_nType); }

std::string Bitmap::Describe() const
{
    return "bitmap " + std::to_string(m_cx) + "x" + std::to_string(m_cy) + "x" + std::to_string(m_nBits);
}

std::string Pen::Describe() const { return "pen " + PenText(this); }

std::string Brush::Describe() const { return "brush " + BrushText(this); }

std::string FontObj::Describe() const
{
    std::string strFace;
    for (int i = 0; i < LF_FACESIZE && m_lf.lfFaceName[i]; ++i)
        strFace += m_lf.lfFaceName[i] < 0x80 ? static_cast<char>(m_lf.lfFaceName[i]) : '?';
    return "font \"" + strFace + "\" " + std::to_string(m_lf.lfHeight);
}

std::string Icon::Describe() const { return "icon " + std::to_string(m_cx) + "x" + std::to_string(m_cy); }

COLORREF Brush::Color() const { return m_nSysColor >= 0 ? GetSysColor(m_nSysColor) : m_clr; }

HGDIOBJ Table::Add(std::unique_ptr<Object> p)
{
    if (!p)
        return nullptr;
    uint32_t nSlot;
    if (m_free.empty() && m_slots.size() >= kMaxSlots)
        return nullptr;
    if (!m_free.empty()) {
        nSlot = m_free.back();
        m_free.pop_back();
    } else {
        nSlot = static_cast<uint32_t>(m_slots.size());
        m_slots.push_back({});
    }
    Slot& s = m_slots[nSlot];
    s.nGen = (s.nGen + 1) & kGenMask;
    if (!p->m_bStock)
        ++m_nLive;
    s.p = std::move(p);
    uintptr_t h = (static_cast<uintptr_t>(s.nGen) << 20) | (static_cast<uintptr_t>(nSlot + 1) << 4);
    return reinterpret_cast<HGDIOBJ>(h);
}

Object* Table::Get(HGDIOBJ h) const
{
    uintptr_t v = reinterpret_cast<uintptr_t>(h);
    uint32_t nSlot = static_cast<uint32_t>((v >> 4) & kMaxSlots);
    if (nSlot == 0 || nSlot > m_slots.size() || (v & 0xF) != 0 || (v >> 32) != 0)
        return nullptr;
    const Slot& s = m_slots[nSlot - 1];
    return s.nGen == static_cast<uint32_t>((v >> 20) & kGenMask) ? s.p.get() : nullptr;
}

void Table::Remove(HGDIOBJ h)
{
    Object* p = Get(h);
    if (!p)
        return;
    uint32_t nSlot = static_cast<uint32_t>((reinterpret_cast<uintptr_t>(h) >> 4) & kMaxSlots) - 1;
    if (!p->m_bStock)
        --m_nLive;
    m_slots[nSlot].p.reset();
    m_free.push_back(nSlot);
}

void Table::Forget(HGDIOBJ h)
{
    if (Object* p = Get(h); p && !p->m_bStock) {
        p->m_bStock = true;
        --m_nLive;
    }
}

std::string Table::DescribeLive() const
{
    std::string s;
    for (const Slot& slot : m_slots) {
        if (slot.p && !slot.p->m_bStock)
            s += slot.p->Describe() + "\n";
    }
    return s;
}

Table& Objects()
{
    static Table* s_pTable = new Table;  // never destroyed: handles may be released during static teardown
    return *s_pTable;
}

Dc* GetDc(HDC h)
{
    Object* p = Objects().Get(h);
    return p && (p->m_nType == OBJ_DC || p->m_nType == OBJ_MEMDC) ? static_cast<Dc*>(p) : nullptr;
}

namespace {

HGDIOBJ AddStock(std::unique_ptr<Object> p)
{
    p->m_bStock = true;
    return Objects().Add(std::move(p));
}

HGDIOBJ StockBrush(UINT nStyle, COLORREF clr)
{
    auto p = std::make_unique<Brush>();
    p->m_nType = OBJ_BRUSH;
    p->m_nStyle = nStyle;
    p->m_clr = clr;
    return AddStock(std::move(p));
}

HGDIOBJ StockPen(UINT nStyle, COLORREF clr)
{
    auto p = std::make_unique<Pen>();
    p->m_nType = OBJ_PEN;
    p->m_nStyle = nStyle;
    p->m_clr = clr;
    return AddStock(std::move(p));
}

HGDIOBJ StockFont(LONG nHeight, LONG nWeight, const char16_t* pszFace)
{
    auto p = std::make_unique<FontObj>();
    p->m_nType = OBJ_FONT;
    p->m_lf.lfHeight = nHeight;
    p->m_lf.lfWeight = nWeight;
    p->m_lf.lfCharSet = DEFAULT_CHARSET;
    for (int i = 0; pszFace[i] && i < LF_FACESIZE - 1; ++i)
        p->m_lf.lfFaceName[i] = pszFace[i];
    return AddStock(std::move(p));
}

struct Stock {
    HGDIOBJ a[DEFAULT_GUI_FONT + 1] = {};
    HGDIOBJ sys[kSysColorCount] = {};
    HBITMAP hDefaultBitmap = nullptr;
    Stock()
    {
        a[WHITE_BRUSH] = StockBrush(BS_SOLID, RGB(255, 255, 255));
        a[LTGRAY_BRUSH] = StockBrush(BS_SOLID, RGB(192, 192, 192));
        a[GRAY_BRUSH] = StockBrush(BS_SOLID, RGB(128, 128, 128));
        a[DKGRAY_BRUSH] = StockBrush(BS_SOLID, RGB(64, 64, 64));
        a[BLACK_BRUSH] = StockBrush(BS_SOLID, RGB(0, 0, 0));
        a[NULL_BRUSH] = StockBrush(BS_NULL, 0);
        a[WHITE_PEN] = StockPen(PS_SOLID, RGB(255, 255, 255));
        a[BLACK_PEN] = StockPen(PS_SOLID, RGB(0, 0, 0));
        a[NULL_PEN] = StockPen(PS_NULL, 0);
        // The real SYSTEM_FONT is a bitmap font 16 pixels high; here it is the default sans face at that height.
        a[SYSTEM_FONT] = StockFont(16, FW_BOLD, u"System");
        a[DEFAULT_GUI_FONT] = StockFont(-11, FW_NORMAL, u"MS Shell Dlg");
        for (int i = 0; i < kSysColorCount; ++i) {
            auto p = std::make_unique<Brush>();
            p->m_nType = OBJ_BRUSH;
            p->m_nSysColor = i;
            sys[i] = AddStock(std::move(p));
        }
        auto pbm = NewBitmap(1, 1, 1);
        pbm->m_px[0] = 0;
        pbm->m_bStock = true;
        hDefaultBitmap = static_cast<HBITMAP>(Objects().Add(std::move(pbm)));
    }
};

Stock& Stocks()
{
    static Stock* s_pStock = new Stock;
    return *s_pStock;
}

}  // namespace

HBITMAP DefaultBitmap() { return Stocks().hDefaultBitmap; }

}  // namespace gdi

using namespace gdi;

HGDIOBJ GetStockObject(int i)
{
    if (i < 0 || i > DEFAULT_GUI_FONT)
        return nullptr;
    return Stocks().a[i];
}

HBRUSH GetSysColorBrush(int nIndex)
{
    if (nIndex < 0 || nIndex >= kSysColorCount)
        return nullptr;
    return static_cast<HBRUSH>(Stocks().sys[nIndex]);
}

int GetObjectType(HGDIOBJ h)
{
    Object* p = Objects().Get(h);
    return p && p->m_nType != kObjIcon ? p->m_nType : 0;
}

HPEN CreatePen(int iStyle, int cWidth, COLORREF color)
{
    if (iStyle < PS_SOLID || iStyle > PS_INSIDEFRAME)
        return nullptr;
    auto p = std::make_unique<Pen>();
    p->m_nType = OBJ_PEN;
    p->m_nStyle = static_cast<UINT>(iStyle);
    p->m_nWidth = cWidth < 0 ? 0 : cWidth;
    p->m_clr = color & 0xFFFFFF;
    return static_cast<HPEN>(Objects().Add(std::move(p)));
}

HPEN CreatePenIndirect(const LOGPEN* plpen)
{
    return plpen ? CreatePen(static_cast<int>(plpen->lopnStyle), plpen->lopnWidth.x, plpen->lopnColor) : nullptr;
}

HBRUSH CreateSolidBrush(COLORREF color)
{
    auto p = std::make_unique<Brush>();
    p->m_nType = OBJ_BRUSH;
    p->m_clr = color & 0xFFFFFF;
    return static_cast<HBRUSH>(Objects().Add(std::move(p)));
}

HBRUSH CreatePatternBrush(HBITMAP hbm)
{
    Bitmap* pbm = GetBitmap(hbm);
    if (!pbm)
        return nullptr;
    // The brush keeps its own copy, so the bitmap may be deleted at once, as on the real platform.
    auto p = std::make_unique<Brush>();
    p->m_nType = OBJ_BRUSH;
    p->m_nStyle = BS_PATTERN;
    p->m_cxPat = pbm->m_cx;
    p->m_cyPat = pbm->m_cy;
    p->m_bMonoPat = pbm->IsMono();
    p->m_pat = pbm->m_px;
    return static_cast<HBRUSH>(Objects().Add(std::move(p)));
}

HBRUSH CreateBrushIndirect(const LOGBRUSH* plbrush)
{
    if (!plbrush)
        return nullptr;
    switch (plbrush->lbStyle) {
    case BS_SOLID:
    case BS_HATCHED:  // hatches are not drawn: the brush is solid in its colour
        return CreateSolidBrush(plbrush->lbColor);
    case BS_NULL: {
        auto p = std::make_unique<Brush>();
        p->m_nType = OBJ_BRUSH;
        p->m_nStyle = BS_NULL;
        return static_cast<HBRUSH>(Objects().Add(std::move(p)));
    }
    case BS_PATTERN:
        return CreatePatternBrush(reinterpret_cast<HBITMAP>(plbrush->lbHatch));
    default:
        return nullptr;
    }
}

int GetObject(HGDIOBJ h, int c, LPVOID pv)
{
    Object* p = Objects().Get(h);
    if (!p)
        return 0;
    auto copyOut = [&](const void* src, int n) {
        if (!pv)
            return n;
        if (c < n)
            return 0;
        std::memcpy(pv, src, n);
        return n;
    };
    switch (p->m_nType) {
    case OBJ_BITMAP: {
        auto* pbm = static_cast<Bitmap*>(p);
        // A device-dependent bitmap: bmBits stays NULL, the bits come through GetBitmapBits.
        BITMAP bm{0, pbm->m_cx, pbm->m_cy, pbm->WidthBytes(), 1, static_cast<WORD>(pbm->m_nBits), nullptr};
        return copyOut(&bm, sizeof bm);
    }
    case OBJ_PEN: {
        auto* pp = static_cast<Pen*>(p);
        LOGPEN lp{pp->m_nStyle, {pp->m_nWidth, 0}, pp->m_clr};
        return copyOut(&lp, sizeof lp);
    }
    case OBJ_BRUSH: {
        auto* pb = static_cast<Brush*>(p);
        LOGBRUSH lb{pb->m_nStyle, pb->Color(), 0};
        return copyOut(&lb, sizeof lb);
    }
    case OBJ_FONT:
        return copyOut(&static_cast<FontObj*>(p)->m_lf, sizeof(LOGFONTW));
    default:
        return 0;
    }
}

namespace {

// Swaps one selected object of a DC state, keeping the selection counts right.
template <class H>
HGDIOBJ Swap(H& slot, HGDIOBJ hNew)
{
    HGDIOBJ hOld = slot;
    if (Object* pOld = Objects().Get(hOld))
        --pOld->m_nSelected;
    Objects().Get(hNew)->m_nSelected++;
    slot = static_cast<H>(hNew);
    return hOld;
}

HGDIOBJ SelectBitmap(HDC hdc, Dc* pdc, HGDIOBJ h)
{
    Bitmap* pbm = static_cast<Bitmap*>(Objects().Get(h));
    if (pdc->IsSurface())
        return nullptr;  // only memory DCs take bitmaps
    if (pbm->m_hdcOwner && pbm->m_hdcOwner != hdc && !pbm->m_bStock)
        return nullptr;  // a bitmap lives in one DC at a time
    HGDIOBJ hOld = Swap(pdc->m_st.m_hBitmap, h);
    if (Bitmap* pOld = GetBitmap(hOld); pOld && pOld->m_nSelected == 0)
        pOld->m_hdcOwner = nullptr;
    if (!pbm->m_bStock)
        pbm->m_hdcOwner = hdc;
    return hOld;
}

}  // namespace

HGDIOBJ SelectObject(HDC hdc, HGDIOBJ h)
{
    Dc* pdc = GetDc(hdc);
    Object* p = Objects().Get(h);
    if (!pdc || !p)
        return nullptr;
    switch (p->m_nType) {
    case OBJ_PEN:
        return Swap(pdc->m_st.m_hPen, h);
    case OBJ_BRUSH:
        return Swap(pdc->m_st.m_hBrush, h);
    case OBJ_FONT:
        return Swap(pdc->m_st.m_hFont, h);
    case OBJ_BITMAP:
        return SelectBitmap(hdc, pdc, h);
    case OBJ_REGION: {
        int n = SelectClipRgn(hdc, static_cast<HRGN>(h));
        return reinterpret_cast<HGDIOBJ>(static_cast<intptr_t>(n));
    }
    default:
        return nullptr;
    }
}

HGDIOBJ GetCurrentObject(HDC hdc, UINT type)
{
    Dc* pdc = GetDc(hdc);
    if (!pdc)
        return nullptr;
    switch (type) {
    case OBJ_PEN: return pdc->m_st.m_hPen;
    case OBJ_BRUSH: return pdc->m_st.m_hBrush;
    case OBJ_FONT: return pdc->m_st.m_hFont;
    case OBJ_BITMAP: return pdc->IsSurface() ? pdc->m_hSurface : pdc->m_st.m_hBitmap;
    default: return nullptr;
    }
}

BOOL DeleteObject(HGDIOBJ ho)
{
    Object* p = Objects().Get(ho);
    if (!p)
        return FALSE;
    if (p->m_bStock)
        return TRUE;  // deleting a stock object is harmless
    if (p->m_nType == OBJ_DC || p->m_nType == OBJ_MEMDC || p->m_nType == kObjIcon)
        return FALSE;  // DeleteDC and DestroyIcon are the ways to free these
    // The real GDI refuses to free an object selected into a DC; so does this one, and the object then
    // still counts as live, which a leak check reports.
    if (p->m_nSelected > 0)
        return FALSE;
    Objects().Remove(ho);
    return TRUE;
}

void GdiMakePermanent(HGDIOBJ h)
{
    Object* p = Objects().Get(h);
    if (!p || p->m_bStock) return;
    Objects().Forget(h);
}

int GdiGetLiveObjectCount() { return Objects().LiveCount(); }

std::string GdiDescribeLiveObjects() { return Objects().DescribeLive(); }
