// Block transfers (BitBlt, StretchBlt, PatBlt) with ternary raster operations and the mono/colour rules.
#include <cstring>
#include "gdi/blit_p.h"
#include "gdi/raster_p.h"

namespace gdi {

uint32_t Rop3(uint8_t idx, uint32_t p, uint32_t s, uint32_t d)
{
    // Bit i of the operation index is the result for P = bit 2 of i, S = bit 1, D = bit 0.
    uint32_t r = 0;
    for (int i = 0; i < 8; ++i) {
        if (idx & (1u << i))
            r |= ((i & 4) ? p : ~p) & ((i & 2) ? s : ~s) & ((i & 1) ? d : ~d);
    }
    return r & 0xFFFFFFu;
}

namespace {

bool UsesSource(uint8_t idx) { return ((idx >> 2) ^ idx) & 0x33; }
bool UsesPattern(uint8_t idx) { return ((idx >> 4) ^ idx) & 0x0F; }

struct Blit {
    Target t;                 // destination
    Target s;                 // source, when the operation reads one
    bool bSrc = false;
    uint8_t idx = 0;
    Paint pat;
    uint32_t pxSrcBk = 0;     // colour to one-bit: this source colour gives 1
    uint32_t pxFore = 0, pxBack = 0;  // one-bit to colour: 0 takes the text colour, 1 the background
};

// A source pixel in the destination's format.
inline uint32_t Convert(const Blit& b, uint32_t v)
{
    if (b.s.IsMono() == b.t.IsMono())
        return v;
    if (b.s.IsMono())
        return v ? b.pxBack : b.pxFore;
    return v == b.pxSrcBk ? 0xFFFFFFu : 0u;
}

template <class Op>
void RunRow(const Blit& b, int y, int x0, int n, const uint32_t* S, Op op)
{
    uint32_t* D = b.t.pbm->Row(y) + x0;
    if (b.pat.bSolid) {
        uint32_t p = b.pat.px;
        for (int i = 0; i < n; ++i)
            D[i] = op(p, S ? S[i] : 0u, D[i]) & 0xFFFFFFu;
    } else {
        for (int i = 0; i < n; ++i)
            D[i] = op(b.pat.At(x0 + i, y), S ? S[i] : 0u, D[i]) & 0xFFFFFFu;
    }
}

// Writes n destination pixels from x0 on row y; S holds the source in the destination's format.
void ApplyRow(const Blit& b, int y, int x0, int n, const uint32_t* S)
{
    switch (b.idx) {
    case 0xCC: std::copy(S, S + n, b.t.pbm->Row(y) + x0); break;
    case 0x88: RunRow(b, y, x0, n, S, [](uint32_t, uint32_t s, uint32_t d) { return s & d; }); break;
    case 0xEE: RunRow(b, y, x0, n, S, [](uint32_t, uint32_t s, uint32_t d) { return s | d; }); break;
    case 0x66: RunRow(b, y, x0, n, S, [](uint32_t, uint32_t s, uint32_t d) { return s ^ d; }); break;
    case 0xF0: RunRow(b, y, x0, n, S, [](uint32_t p, uint32_t, uint32_t) { return p; }); break;
    case 0xB8: RunRow(b, y, x0, n, S, [](uint32_t p, uint32_t s, uint32_t d) { return ((d ^ p) & s) ^ p; }); break;
    default: {
        uint8_t idx = b.idx;
        RunRow(b, y, x0, n, S, [idx](uint32_t p, uint32_t s, uint32_t d) { return Rop3(idx, p, s, d); });
    }
    }
}

bool Begin(Blit* pb, HDC hdcDest, HDC hdcSrc, DWORD rop)
{
    if (!Prepare(hdcDest, &pb->t))
        return false;
    pb->idx = static_cast<uint8_t>(rop >> 16);
    pb->bSrc = UsesSource(pb->idx);
    if (pb->bSrc) {
        if (!Prepare(hdcSrc, &pb->s))
            return false;
        pb->pxSrcBk = ToPixel(pb->s.pdc->m_st.m_clrBk);
        pb->pxFore = ToPixel(pb->t.pdc->m_st.m_clrText);
        pb->pxBack = ToPixel(pb->t.pdc->m_st.m_clrBk);
    }
    // A hollow brush reads as black where the operation uses the pattern.
    pb->pat = UsesPattern(pb->idx) ? BrushPaint(pb->t, CurBrush(pb->t)) : SolidPaint(0);
    if (pb->pat.bNone)
        pb->pat = SolidPaint(0);
    return true;
}

// Sorts a signed extent into a start and a positive size; returns whether it was mirrored.
bool Sort(int* pos, int* size)
{
    if (*size >= 0)
        return false;
    *pos += *size + 1;
    *size = -*size;
    return true;
}

// The source pixels that destination column (or row) j of n covers, out of m.
void Range(int j, int n, int m, int* pa, int* pb)
{
    *pa = static_cast<int>(static_cast<long long>(j) * m / n);
    *pb = static_cast<int>(static_cast<long long>(j + 1) * m / n);
    if (*pb <= *pa)
        *pb = *pa + 1;
}

void CopyRows(const Blit& b, const RECT& rcDest, int sxOff, int syOff)
{
    int n = rcDest.right - rcDest.left;
    bool bBottomUp = b.bSrc && b.s.pbm == b.t.pbm && syOff < 0;
    if (b.idx == 0xCC && b.s.IsMono() == b.t.IsMono()) { // a plain copy between like surfaces: whole rows
        for (int k = 0; k < rcDest.bottom - rcDest.top; ++k) {
            int y = bBottomUp ? rcDest.bottom - 1 - k : rcDest.top + k;
            std::memmove(b.t.pbm->Row(y) + rcDest.left, b.s.pbm->Row(y + syOff) + rcDest.left + sxOff, n * sizeof(uint32_t));
        }
        return;
    }
    std::vector<uint32_t> S(static_cast<size_t>(n));
    for (int k = 0; k < rcDest.bottom - rcDest.top; ++k) {
        int y = bBottomUp ? rcDest.bottom - 1 - k : rcDest.top + k;
        if (b.bSrc) {
            const uint32_t* src = b.s.pbm->Row(y + syOff) + rcDest.left + sxOff;
            for (int i = 0; i < n; ++i)
                S[i] = Convert(b, src[i]);
        }
        ApplyRow(b, y, rcDest.left, n, b.bSrc ? S.data() : nullptr);
    }
}

}  // namespace
}  // namespace gdi

using namespace gdi;

BOOL BitBlt(HDC hdc, int x, int y, int cx, int cy, HDC hdcSrc, int x1, int y1, DWORD rop)
{
    Blit b;
    if (!Begin(&b, hdc, hdcSrc, rop))
        return FALSE;
    if (g_bDrawLog)
        LogLine("BitBlt " + RectText(x, y, cx, cy) + " from " + PointText(x1, y1) + " " + RopText(rop));
    RECT rc{x + b.t.dx, y + b.t.dy, x + b.t.dx + cx, y + b.t.dy + cy};
    rc = IntersectRects(rc, b.t.clip);
    int sxOff = 0, syOff = 0;
    if (b.bSrc) {
        // Surface offset from destination to source; the source bitmap's edges also limit the copy.
        sxOff = (x1 + b.s.dx) - (x + b.t.dx);
        syOff = (y1 + b.s.dy) - (y + b.t.dy);
        RECT rcSrc{-sxOff, -syOff, b.s.pbm->m_cx - sxOff, b.s.pbm->m_cy - syOff};
        rc = IntersectRects(rc, rcSrc);
    }
    if (rc.right > rc.left)
        CopyRows(b, rc, sxOff, syOff);
    return TRUE;
}

BOOL PatBlt(HDC hdc, int x, int y, int w, int h, DWORD rop)
{
    if (UsesSource(static_cast<uint8_t>(rop >> 16)))
        return FALSE;
    Blit b;
    if (!Begin(&b, hdc, nullptr, rop))
        return FALSE;
    if (g_bDrawLog)
        LogLine("PatBlt " + RectText(x, y, w, h) + " " + RopText(rop));
    Sort(&x, &w);
    Sort(&y, &h);
    RECT rc = IntersectRects(RECT{x + b.t.dx, y + b.t.dy, x + b.t.dx + w, y + b.t.dy + h}, b.t.clip);
    if (rc.right > rc.left)
        CopyRows(b, rc, 0, 0);
    return TRUE;
}

BOOL StretchBlt(HDC hdcDest, int xDest, int yDest, int wDest, int hDest, HDC hdcSrc, int xSrc, int ySrc,
                int wSrc, int hSrc, DWORD rop)
{
    Blit b;
    if (!Begin(&b, hdcDest, hdcSrc, rop))
        return FALSE;
    if (!b.bSrc)
        return PatBlt(hdcDest, xDest, yDest, wDest, hDest, rop);
    if (g_bDrawLog)
        LogLine("StretchBlt " + RectText(xDest, yDest, wDest, hDest) + " from " +
                RectText(xSrc, ySrc, wSrc, hSrc) + " " + RopText(rop));
    bool bFlipX = Sort(&xDest, &wDest) != Sort(&xSrc, &wSrc);
    bool bFlipY = Sort(&yDest, &hDest) != Sort(&ySrc, &hSrc);
    if (wDest == 0 || hDest == 0 || wSrc == 0 || hSrc == 0)
        return FALSE;
    int mode = b.t.pdc->m_st.m_nStretchMode;
    // Each destination pixel takes the source pixels that fall on it: AND-ed (BLACKONWHITE, the default),
    // OR-ed (WHITEONBLACK) or the first of them (COLORONCOLOR; HALFTONE does not average here).
    int x0 = xDest + b.t.dx, y0 = yDest + b.t.dy, sx0 = xSrc + b.s.dx, sy0 = ySrc + b.s.dy;
    RECT rc = IntersectRects(RECT{x0, y0, x0 + wDest, y0 + hDest}, b.t.clip);
    const Bitmap& src = *b.s.pbm;
    for (int y = rc.top; y < rc.bottom; ++y) {
        int j = bFlipY ? hDest - 1 - (y - y0) : y - y0, ra, rb;
        Range(j, hDest, hSrc, &ra, &rb);
        for (int x = rc.left; x < rc.right; ++x) {
            int i = bFlipX ? wDest - 1 - (x - x0) : x - x0, ca, cb;
            Range(i, wDest, wSrc, &ca, &cb);
            bool bAny = false;
            uint32_t v = 0;
            for (int sy = sy0 + ra; sy < sy0 + rb; ++sy) {
                for (int sx = sx0 + ca; sx < sx0 + cb; ++sx) {
                    if (sx < 0 || sy < 0 || sx >= src.m_cx || sy >= src.m_cy)
                        continue;
                    uint32_t s = src.Row(sy)[sx];
                    v = !bAny ? s : mode == BLACKONWHITE ? (v & s) : mode == WHITEONBLACK ? (v | s) : v;
                    bAny = true;
                }
            }
            if (bAny) {
                uint32_t S = Convert(b, v);
                ApplyRow(b, y, x, 1, &S);
            }
        }
    }
    return TRUE;
}
