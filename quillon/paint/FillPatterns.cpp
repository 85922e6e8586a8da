// The fill patterns as sequences of solid shapes: colours, step counts and the shapes of every pass.
#include <cstdlib>
#include "control/QuillonEnums.h"
#include "paint/FillGeometry.h"

namespace fill {

COLORREF Mix(COLORREF clr1, COLORREF clr2, int i, int n)
{
    Rgb a = Channels(clr1), b = Channels(clr2);
    return Compose(MixChannel(a.r, b.r, i, n), MixChannel(a.g, b.g, i, n), MixChannel(a.b, b.b, i, n));
}

COLORREF MixFromSecond(COLORREF clr1, COLORREF clr2, int e, int n)
{
    Rgb a = Channels(clr1), b = Channels(clr2);
    return Compose(b.r - (b.r - a.r) * e / n, b.g - (b.g - a.g) * e / n, b.b - (b.b - a.b) * e / n);
}

COLORREF Average(COLORREF clr1, COLORREF clr2)
{
    Rgb a = Channels(clr1), b = Channels(clr2);
    return Compose((a.r + b.r) / 2, (a.g + b.g) / 2, (a.b + b.b) / 2);
}

namespace {

int ThirdChannel(int x1, int x2)
{
    int d = std::abs(x1 - x2);
    if (x1 < x2) return x1 + d / 3;
    if (x1 > x2) return x2 + 2 * (d / 3);
    return x1;
}

int HalfChannel(int x1, int x2) { return (x1 < x2 ? x1 : x2) + std::abs(x1 - x2) / 2; }

} // namespace

COLORREF ThirdMiddle(COLORREF clr1, COLORREF clr2)
{
    Rgb a = Channels(clr1), b = Channels(clr2);
    return Compose(ThirdChannel(a.r, b.r), ThirdChannel(a.g, b.g), ThirdChannel(a.b, b.b));
}

COLORREF HalfMiddle(COLORREF clr1, COLORREF clr2)
{
    Rgb a = Channels(clr1), b = Channels(clr2);
    return Compose(HalfChannel(a.r, b.r), HalfChannel(a.g, b.g), HalfChannel(a.b, b.b));
}

// A step count of zero has no step size; such a pattern makes no passes at all.
Stepping HorzBumpStepping(int w)
{
    int n = w / 4;
    return {n, n > 0 ? w / n : 0};
}

Stepping VertBumpStepping(int h)
{
    int n = h / 2;
    return {n, n > 0 ? h / n : 0};
}

Stepping NestedStepping(int w, int h)
{
    int ref = w <= h ? w : h;
    int n = ref / 2;
    return {n, n > 0 ? ref / n : 0};
}

RECT CircleSquare(const RECT& rc)
{
    int w = rc.right - rc.left, h = rc.bottom - rc.top;
    if (w <= h) {
        LONG top = rc.top + (h / 2 - w / 2);
        return {rc.left, top, rc.right, top + w};
    }
    LONG left = rc.left + (w / 2 - h / 2);
    return {left, rc.top, left + h, rc.bottom};
}

bool SplitEdge(int nFillType, COLORREF clrFrom, COLORREF clrTo, const RECT& rc, EdgeSplit* pSplit)
{
    const LONG l = rc.left, t = rc.top, r = rc.right, b = rc.bottom;
    switch (nFillType) {
    case FillHorzEdge: {
        LONG x = l + (r - l) / 3;
        *pSplit = {{l, t, x, b}, {x, t, r, b}, FillHorizontal, ThirdMiddle(clrFrom, clrTo)};
        return true;
    }
    case FillVertEdge: {
        LONG y = t + (b - t) / 3 + 1;
        *pSplit = {{l, t, r, y}, {l, y, r, b}, FillVertical, ThirdMiddle(clrFrom, clrTo)};
        return true;
    }
    case FillVertEdge2: {
        LONG y = t + (b - t) / 2;
        *pSplit = {{l, t, r, y}, {l, y, r, b}, FillVertical, HalfMiddle(clrFrom, clrTo)};
        return true;
    }
    default:
        return false;
    }
}

namespace {

// One band per pixel column (or row); the last pass is empty, so the second colour itself never shows.
void EmitLinear(ShapeSink& sink, bool bColumns, COLORREF c1, COLORREF c2, const RECT& rc)
{
    int n = static_cast<SHORT>(bColumns ? rc.right - rc.left : rc.bottom - rc.top);
    for (int i = 0; n > 0 && i <= n; ++i) {
        RECT band = rc;
        if (bColumns) {
            band.left = rc.left + i;
            band.right = i == n ? rc.right : rc.left + i + 1;
        } else {
            band.top = rc.top + i;
            band.bottom = i == n ? rc.bottom : rc.top + i + 1;
        }
        sink.Rect(band, Mix(c1, c2, i, n));
    }
}

// Whole extent first, then narrower bands toward the centre until the previous band is at most 1 thick.
void EmitBump(ShapeSink& sink, bool bColumns, COLORREF c1, COLORREF c2, const RECT& rc)
{
    Stepping s = bColumns ? HorzBumpStepping(rc.right - rc.left) : VertBumpStepping(rc.bottom - rc.top);
    RECT prev = rc;
    for (int i = 0; s.n > 0 && i <= s.n; ++i) {
        if ((bColumns ? prev.right - prev.left : prev.bottom - prev.top) <= 1) break;
        int e = s.k * i / 2;
        RECT band = rc;
        if (bColumns) { band.left += e; band.right -= e; }
        else { band.top += e; band.bottom -= e; }
        sink.Rect(band, Mix(c1, c2, i, s.n));
        prev = band;
    }
}

void EmitNestedShape(ShapeSink& sink, int nFillType, const RECT& p, COLORREF clr)
{
    if (nFillType == FillPyramid) {
        sink.Rect(p, clr);
    } else if (nFillType == FillDiamond) {
        LONG mx = p.left + (p.right - p.left) / 2, my = p.top + (p.bottom - p.top) / 2;
        const POINT pts[4] = {{mx, p.top}, {p.left, my}, {mx, p.bottom}, {p.right, my}};
        sink.Polygon(pts, 4, clr);
    } else {
        sink.Ellipse(p, clr);
    }
}

// Pyramid, diamond, ellipse and circle: the same stepping, shrinking a working rectangle on all sides.
void EmitNested(ShapeSink& sink, int nFillType, COLORREF c1, COLORREF c2, const RECT& rc)
{
    if (nFillType != FillPyramid) sink.Rect(rc, c1);
    Stepping s = NestedStepping(rc.right - rc.left, rc.bottom - rc.top);
    RECT work = nFillType == FillCircle ? CircleSquare(rc) : rc;
    for (int i = 0; s.n > 0 && i <= s.n; ++i) {
        int e = s.k * i / 2;
        RECT pass = {work.left + e, work.top + e, work.right - e, work.bottom - e};
        EmitNestedShape(sink, nFillType, pass, Mix(c1, c2, i, s.n));
    }
}

// Design mode can hand over negative coordinates; the computed corners of a triangle stop at zero.
POINT AtLeastZero(LONG x, LONG y) { return {x < 0 ? 0 : x, y < 0 ? 0 : y}; }

void EmitDiagonalRun(ShapeSink& sink, bool bReverse, bool bFirstRun, COLORREF c1, COLORREF c2, const RECT& rc, int n)
{
    const LONG l = rc.left, t = rc.top, r = rc.right, b = rc.bottom;
    const int w = r - l, h = b - t;
    for (int i = 0; i <= n; ++i) {
        int e = (n - i) / 2, dy = (h / n) * i, dx = (w / n) * i;
        POINT pts[3];
        if (bFirstRun) {
            LONG xEdge = bReverse ? l : r;
            pts[0] = AtLeastZero(xEdge, t + dy);
            pts[1] = {xEdge, b};
            pts[2] = AtLeastZero(bReverse ? r - dx : l + dx, b);
        } else {
            LONG xEdge = bReverse ? r : l;
            pts[0] = AtLeastZero(xEdge, b - dy);
            pts[1] = {xEdge, t};
            pts[2] = AtLeastZero(bReverse ? l + dx : r - dx, t);
        }
        sink.Polygon(pts, 3, bFirstRun ? Mix(c1, c2, e, n) : MixFromSecond(c1, c2, e, n));
    }
}

// The halfway colour over all, then triangles shrinking into the first colour's corner, then the second's.
void EmitDiagonal(ShapeSink& sink, bool bReverse, COLORREF c1, COLORREF c2, const RECT& rc)
{
    sink.Rect(rc, Average(c1, c2));
    int w = rc.right - rc.left, h = rc.bottom - rc.top;
    int n = static_cast<SHORT>(w <= h ? w : h);
    if (n <= 0) return;
    EmitDiagonalRun(sink, bReverse, true, c1, c2, rc, n);
    EmitDiagonalRun(sink, bReverse, false, c1, c2, rc, n);
}

} // namespace

void EmitPattern(ShapeSink& sink, int nFillType, COLORREF clrFrom, COLORREF clrTo, const RECT& rc)
{
    switch (nFillType) {
    case FillHorizontal: EmitLinear(sink, true, clrFrom, clrTo, rc); break;
    case FillVertical: EmitLinear(sink, false, clrFrom, clrTo, rc); break;
    case FillDiagonal: EmitDiagonal(sink, false, clrFrom, clrTo, rc); break;
    case FillRevDiag: EmitDiagonal(sink, true, clrFrom, clrTo, rc); break;
    case FillHorzBump: EmitBump(sink, true, clrFrom, clrTo, rc); break;
    case FillVertBump: EmitBump(sink, false, clrFrom, clrTo, rc); break;
    case FillDiamond:
    case FillPyramid:
    case FillCircle:
    case FillEllipse: EmitNested(sink, nFillType, clrFrom, clrTo, rc); break;
    case FillHorzEdge:
    case FillVertEdge:
    case FillVertEdge2: break;
    default: sink.Rect(rc, clrFrom); break;
    }
}

} // namespace fill
