// Device contexts: creation over memory bitmaps and window-system surfaces, state, origins, clipping, SaveDC.
#include "gdi/objects_p.h"
#include "gdi/raster_p.h"

namespace gdi {

std::string Dc::Describe() const { return IsSurface() ? "dc (surface)" : "memdc"; }

namespace {

void AddRef(HGDIOBJ h, int nDelta)
{
    if (Object* p = Objects().Get(h))
        p->m_nSelected += nDelta;
}

void AddRefState(const DcState& st, int nDelta)
{
    AddRef(st.m_hPen, nDelta);
    AddRef(st.m_hBrush, nDelta);
    AddRef(st.m_hFont, nDelta);
    AddRef(st.m_hBitmap, nDelta);
}

// Frees the bitmap's tie to this DC once no state of the DC holds it any more.
void Release(const DcState& st)
{
    AddRefState(st, -1);
    if (Bitmap* pbm = GetBitmap(st.m_hBitmap); pbm && pbm->m_nSelected == 0)
        pbm->m_hdcOwner = nullptr;
}

HDC NewDc(std::unique_ptr<Dc> p)
{
    p->m_st.m_hPen = static_cast<HPEN>(GetStockObject(BLACK_PEN));
    p->m_st.m_hBrush = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
    p->m_st.m_hFont = static_cast<HFONT>(GetStockObject(SYSTEM_FONT));
    if (!p->IsSurface())
        p->m_st.m_hBitmap = DefaultBitmap();
    AddRefState(p->m_st, +1);
    return static_cast<HDC>(Objects().Add(std::move(p)));
}

RECT Intersect(const RECT& a, const RECT& b)
{
    RECT r{std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
           std::min(a.bottom, b.bottom)};
    if (r.right <= r.left || r.bottom <= r.top)
        r = RECT{0, 0, 0, 0};
    return r;
}

}  // namespace

bool Prepare(HDC hdc, Target* pt)
{
    Dc* pdc = GetDc(hdc);
    if (!pdc)
        return false;
    Bitmap* pbm = GetBitmap(pdc->IsSurface() ? pdc->m_hSurface : pdc->m_st.m_hBitmap);
    if (!pbm)
        return false;
    const DcState& st = pdc->m_st;
    pt->pdc = pdc;
    pt->pbm = pbm;
    pt->dx = st.m_ptViewportOrg.x - st.m_ptWindowOrg.x + pdc->m_ptOrigin.x;
    pt->dy = st.m_ptViewportOrg.y - st.m_ptWindowOrg.y + pdc->m_ptOrigin.y;
    RECT rc{0, 0, pbm->m_cx, pbm->m_cy};
    if (pdc->IsSurface())
        rc = Intersect(rc, pdc->m_rcBaseClip);
    if (st.m_bClip) {
        RECT rcUser = st.m_rcClip;
        ShiftRect(&rcUser, pdc->m_ptOrigin.x, pdc->m_ptOrigin.y);
        rc = Intersect(rc, rcUser);
    }
    pt->clip = rc;
    return true;
}

void ShiftRect(RECT* prc, int dx, int dy)
{
    prc->left += dx;
    prc->right += dx;
    prc->top += dy;
    prc->bottom += dy;
}

RECT IntersectRects(const RECT& a, const RECT& b) { return Intersect(a, b); }

}  // namespace gdi

using namespace gdi;

HDC CreateCompatibleDC(HDC hdc)
{
    if (hdc && !GetDc(hdc))
        return nullptr;
    auto p = std::make_unique<Dc>();
    p->m_nType = OBJ_MEMDC;
    return NewDc(std::move(p));
}

HDC CreateSurfaceDC(HBITMAP hSurface, POINT origin, RECT clip)
{
    Bitmap* pbm = GetBitmap(hSurface);
    if (!pbm || pbm->IsMono())
        return nullptr;
    auto p = std::make_unique<Dc>();
    p->m_nType = OBJ_DC;
    p->m_hSurface = hSurface;
    p->m_ptOrigin = origin;
    p->m_rcBaseClip = clip;
    return NewDc(std::move(p));
}

BOOL DeleteDC(HDC hdc)
{
    Dc* pdc = GetDc(hdc);
    if (!pdc)
        return FALSE;
    Release(pdc->m_st);
    for (const DcState& st : pdc->m_saved)
        Release(st);
    Objects().Remove(hdc);
    return TRUE;
}

int SaveDC(HDC hdc)
{
    Dc* pdc = GetDc(hdc);
    if (!pdc)
        return 0;
    AddRefState(pdc->m_st, +1);
    pdc->m_saved.push_back(pdc->m_st);
    return static_cast<int>(pdc->m_saved.size());
}

BOOL RestoreDC(HDC hdc, int nSavedDC)
{
    Dc* pdc = GetDc(hdc);
    if (!pdc)
        return FALSE;
    int nCount = static_cast<int>(pdc->m_saved.size());
    int nTarget = nSavedDC < 0 ? nCount + 1 + nSavedDC : nSavedDC;  // negative: relative to the latest
    if (nTarget < 1 || nTarget > nCount)
        return FALSE;
    while (static_cast<int>(pdc->m_saved.size()) > nTarget) {
        Release(pdc->m_saved.back());
        pdc->m_saved.pop_back();
    }
    Release(pdc->m_st);
    pdc->m_st = pdc->m_saved.back();  // its references move over with it
    pdc->m_saved.pop_back();
    if (Bitmap* pbm = GetBitmap(pdc->m_st.m_hBitmap); pbm && !pbm->m_bStock)
        pbm->m_hdcOwner = hdc;
    return TRUE;
}

namespace {

// One of the DC's colours: swapped for the new one, or read; CLR_INVALID for a bad DC.
COLORREF SwapColor(HDC hdc, COLORREF DcState::*member, const COLORREF* pNew)
{
    Dc* pdc = GetDc(hdc);
    if (!pdc)
        return CLR_INVALID;
    COLORREF old = pdc->m_st.*member;
    if (pNew)
        pdc->m_st.*member = *pNew & 0xFFFFFF;
    return old;
}

}  // namespace

COLORREF SetTextColor(HDC hdc, COLORREF color) { return SwapColor(hdc, &DcState::m_clrText, &color); }
COLORREF GetTextColor(HDC hdc) { return SwapColor(hdc, &DcState::m_clrText, nullptr); }
COLORREF SetBkColor(HDC hdc, COLORREF color) { return SwapColor(hdc, &DcState::m_clrBk, &color); }
COLORREF GetBkColor(HDC hdc) { return SwapColor(hdc, &DcState::m_clrBk, nullptr); }

int SetBkMode(HDC hdc, int mode)
{
    Dc* pdc = GetDc(hdc);
    if (!pdc || (mode != TRANSPARENT && mode != OPAQUE))
        return 0;
    int old = pdc->m_st.m_nBkMode;
    pdc->m_st.m_nBkMode = mode;
    return old;
}

int GetBkMode(HDC hdc)
{
    Dc* pdc = GetDc(hdc);
    return pdc ? pdc->m_st.m_nBkMode : 0;
}

int SetStretchBltMode(HDC hdc, int mode)
{
    Dc* pdc = GetDc(hdc);
    if (!pdc || mode < BLACKONWHITE || mode > HALFTONE)
        return 0;
    int old = pdc->m_st.m_nStretchMode;
    pdc->m_st.m_nStretchMode = mode;
    return old;
}

int GetStretchBltMode(HDC hdc)
{
    Dc* pdc = GetDc(hdc);
    return pdc ? pdc->m_st.m_nStretchMode : 0;
}

namespace {
BOOL SetPoint(HDC hdc, POINT DcState::*pm, int x, int y, POINT* lppt, bool bOffset)
{
    Dc* pdc = GetDc(hdc);
    if (!pdc)
        return FALSE;
    POINT& pt = pdc->m_st.*pm;
    if (lppt)
        *lppt = pt;
    pt = bOffset ? POINT{pt.x + x, pt.y + y} : POINT{x, y};
    return TRUE;
}

BOOL GetPoint(HDC hdc, POINT DcState::*pm, POINT* lppt)
{
    Dc* pdc = GetDc(hdc);
    if (!pdc || !lppt)
        return FALSE;
    *lppt = pdc->m_st.*pm;
    return TRUE;
}
}  // namespace

BOOL SetViewportOrgEx(HDC hdc, int x, int y, POINT* lppt)
{
    return SetPoint(hdc, &DcState::m_ptViewportOrg, x, y, lppt, false);
}
BOOL GetViewportOrgEx(HDC hdc, POINT* lppt) { return GetPoint(hdc, &DcState::m_ptViewportOrg, lppt); }
BOOL OffsetViewportOrgEx(HDC hdc, int x, int y, POINT* lppt)
{
    return SetPoint(hdc, &DcState::m_ptViewportOrg, x, y, lppt, true);
}
BOOL SetWindowOrgEx(HDC hdc, int x, int y, POINT* lppt)
{
    return SetPoint(hdc, &DcState::m_ptWindowOrg, x, y, lppt, false);
}
BOOL GetWindowOrgEx(HDC hdc, POINT* lppt) { return GetPoint(hdc, &DcState::m_ptWindowOrg, lppt); }
BOOL SetBrushOrgEx(HDC hdc, int x, int y, POINT* lppt)
{
    return SetPoint(hdc, &DcState::m_ptBrushOrg, x, y, lppt, false);
}
BOOL GetCurrentPositionEx(HDC hdc, POINT* lppt) { return GetPoint(hdc, &DcState::m_ptCur, lppt); }

BOOL MoveToEx(HDC hdc, int x, int y, POINT* lppt)
{
    if (!SetPoint(hdc, &DcState::m_ptCur, x, y, lppt, false))
        return FALSE;
    if (g_bDrawLog)
        LogLine("MoveTo " + PointText(x, y));
    return TRUE;
}

HRGN CreateRectRgn(int x1, int y1, int x2, int y2)
{
    auto p = std::make_unique<Region>();
    p->m_nType = OBJ_REGION;
    p->m_rc = RECT{std::min(x1, x2), std::min(y1, y2), std::max(x1, x2), std::max(y1, y2)};
    return static_cast<HRGN>(Objects().Add(std::move(p)));
}

HRGN CreateRectRgnIndirect(const RECT* lprect)
{
    return lprect ? CreateRectRgn(lprect->left, lprect->top, lprect->right, lprect->bottom) : nullptr;
}

namespace {
int RegionKind(const RECT& rc) { return rc.right > rc.left && rc.bottom > rc.top ? SIMPLEREGION : NULLREGION; }
}  // namespace

int IntersectClipRect(HDC hdc, int left, int top, int right, int bottom)
{
    Dc* pdc = GetDc(hdc);
    if (!pdc)
        return ERROR;
    DcState& st = pdc->m_st;
    int dx = st.m_ptViewportOrg.x - st.m_ptWindowOrg.x, dy = st.m_ptViewportOrg.y - st.m_ptWindowOrg.y;
    RECT rc{left + dx, top + dy, right + dx, bottom + dy};
    st.m_rcClip = st.m_bClip ? Intersect(st.m_rcClip, rc) : Intersect(rc, rc);
    st.m_bClip = true;
    return RegionKind(st.m_rcClip);
}

int SelectClipRgn(HDC hdc, HRGN hrgn)
{
    Dc* pdc = GetDc(hdc);
    if (!pdc)
        return ERROR;
    if (!hrgn) {
        pdc->m_st.m_bClip = false;
        return SIMPLEREGION;
    }
    Region* prgn = Objects().GetAs<Region>(hrgn, OBJ_REGION);
    if (!prgn)
        return ERROR;
    pdc->m_st.m_bClip = true;  // the DC keeps a copy; the region may be deleted at once
    pdc->m_st.m_rcClip = Intersect(prgn->m_rc, prgn->m_rc);
    return RegionKind(pdc->m_st.m_rcClip);
}

int GetClipBox(HDC hdc, RECT* lprect)
{
    Target t;
    if (!lprect || !Prepare(hdc, &t))
        return ERROR;
    RECT rc = t.clip;
    ShiftRect(&rc, -t.dx, -t.dy);
    *lprect = rc;
    return RegionKind(rc);
}
