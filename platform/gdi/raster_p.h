// Internal: the drawing target of a call (surface, offset, clip) and the pixel primitives every call uses.
#pragma once
#include <algorithm>
#include "gdi/drawlog_p.h"
#include "gdi/objects_p.h"

namespace gdi {

// What a drawing call writes to: surface coordinates = logical + (dx, dy); nothing outside clip.
struct Target {
    Dc* pdc = nullptr;
    Bitmap* pbm = nullptr;
    int dx = 0, dy = 0;
    RECT clip{};
    bool IsMono() const { return pbm->IsMono(); }
    // A colour in the surface's pixel format.
    uint32_t Pixel(COLORREF clr) const { return IsMono() ? ToMono(ToPixel(clr)) : ToPixel(clr); }
};

bool Prepare(HDC hdc, Target* pt);
void ShiftRect(RECT* prc, int dx, int dy);
RECT IntersectRects(const RECT& a, const RECT& b);

// How a brush paints: one colour, or a pattern repeated from the brush origin.
struct Paint {
    bool bNone = true;
    bool bSolid = true;
    uint32_t px = 0;
    const Brush* pPat = nullptr;
    uint32_t pxFore = 0, pxBack = 0;  // one-bit patterns: text and background colours
    int ox = 0, oy = 0;               // pattern origin in surface coordinates
    bool bMono = false;
    uint32_t At(int x, int y) const;
};

Paint BrushPaint(const Target& t, const Brush* pBrush);
Paint SolidPaint(uint32_t px);

// Primitives in surface coordinates, clipped to t.clip.
void FillSpan(const Target& t, int y, int x0, int x1, const Paint& p);  // x0 <= x < x1
void FillBox(const Target& t, RECT rc, const Paint& p);
inline void Plot(const Target& t, int x, int y, uint32_t px)
{
    if (x >= t.clip.left && x < t.clip.right && y >= t.clip.top && y < t.clip.bottom)
        t.pbm->Row(y)[x] = px;
}

// Pixels of a one-pixel line from a to b, without b, in GDI's order; calls f(x, y) for each.
template <class F>
void LinePixels(POINT a, POINT b, F f)
{
    long dx = b.x - a.x, dy = b.y - a.y;
    long adx = dx < 0 ? -dx : dx, ady = dy < 0 ? -dy : dy;
    long sx = dx < 0 ? -1 : 1, sy = dy < 0 ? -1 : 1;
    bool bXMajor = adx >= ady;
    long nMajor = bXMajor ? adx : ady, nMinor = bXMajor ? ady : adx;
    // Step i puts the minor coordinate at i * nMinor / nMajor rounded to nearest; an exact half rounds
    // back toward the start point.
    long err = nMajor - 1;  // 2 * nMinor * i + nMajor - 1, kept modulo 2 * nMajor
    long nOff = 0;
    for (long i = 0; i < nMajor; ++i) {
        if (bXMajor)
            f(a.x + sx * i, a.y + sy * nOff);
        else
            f(a.x + sx * nOff, a.y + sy * i);
        err += 2 * nMinor;
        while (err >= 2 * nMajor) {
            err -= 2 * nMajor;
            ++nOff;
        }
    }
}

// The pen's pixel, or false when the pen does not draw.
bool PenPixel(const Target& t, const Pen* pPen, uint32_t* ppx);
// The pen and brush selected in the target's DC.
const Pen* CurPen(const Target& t);
const Brush* CurBrush(const Target& t);

}  // namespace gdi
