// Shapes (FillRect, FrameRect, LineTo, Polyline, Polygon, Rectangle, Ellipse, SetPixel): GDI's drawing functions.
#include <cmath>
#include "base/colors.h"
#include "gdi/raster_p.h"

using namespace gdi;

namespace {

// FillRect also takes (HBRUSH)(COLOR_xxx + 1), as window classes do.
const Brush* ResolveBrush(HBRUSH hbr)
{
    uintptr_t v = reinterpret_cast<uintptr_t>(hbr);
    if (v >= 1 && v <= static_cast<uintptr_t>(kSysColorCount))
        return GetBrush(GetSysColorBrush(static_cast<int>(v - 1)));
    return GetBrush(hbr);
}

RECT ToSurface(const Target& t, int l, int tp, int r, int b) { return RECT{l + t.dx, tp + t.dy, r + t.dx, b + t.dy}; }

// Straight lines are spans of the same pixels the stepping would give, written at once.
bool StraightLine(const Target& t, POINT a, POINT b, uint32_t px)
{
    if (a.y == b.y) {
        long x0 = a.x < b.x ? a.x : b.x + 1, x1 = a.x < b.x ? b.x : a.x + 1;
        x0 = std::max<long>(x0, t.clip.left), x1 = std::min<long>(x1, t.clip.right);
        if (a.y >= t.clip.top && a.y < t.clip.bottom && x0 < x1) std::fill(t.pbm->Row(a.y) + x0, t.pbm->Row(a.y) + x1, px);
        return true;
    }
    if (a.x == b.x) {
        long y0 = a.y < b.y ? a.y : b.y + 1, y1 = a.y < b.y ? b.y : a.y + 1;
        y0 = std::max<long>(y0, t.clip.top), y1 = std::min<long>(y1, t.clip.bottom);
        if (a.x >= t.clip.left && a.x < t.clip.right)
            for (long y = y0; y < y1; ++y) t.pbm->Row(y)[a.x] = px;
        return true;
    }
    return false;
}

void Line(const Target& t, POINT a, POINT b, uint32_t px)
{
    a.x += t.dx, a.y += t.dy, b.x += t.dx, b.y += t.dy;
    if (StraightLine(t, a, b, px)) return;
    LinePixels(a, b, [&](long x, long y) { Plot(t, static_cast<int>(x), static_cast<int>(y), px); });
}

std::string PointsText(const POINT* apt, int cpt)
{
    std::string s;
    for (int i = 0; i < cpt; ++i)
        s += (i ? " " : "") + PointText(apt[i].x, apt[i].y);
    return s;
}

// The target, pen and brush of a filled shape, with its log line ("Name <what> <colours>").
struct Shape {
    Target t;
    const Pen* pPen = nullptr;
    const Brush* pBrush = nullptr;
};

template <class What>
bool BeginShape(HDC hdc, const char* name, What what, Shape* ps)
{
    if (!Prepare(hdc, &ps->t))
        return false;
    ps->pPen = CurPen(ps->t);
    ps->pBrush = CurBrush(ps->t);
    if (g_bDrawLog)
        LogLine(std::string(name) + " " + what() + " " + FillColorsText(ps->pBrush, ps->pPen));
    return true;
}

long long CeilDiv(long long a, long long b)
{
    if (b < 0)
        a = -a, b = -b;
    return a >= 0 ? (a + b - 1) / b : -((-a) / b);
}

// Alternate (even-odd) fill: pixel (x, y) is inside when the point (x, y) is; points on a left or top
// edge count as inside and those on a right or bottom edge do not.
void FillPolygon(const Target& t, const POINT* apt, int cpt, const Paint& paint)
{
    long yMin = apt[0].y, yMax = apt[0].y;
    for (int i = 1; i < cpt; ++i)
        yMin = std::min<long>(yMin, apt[i].y), yMax = std::max<long>(yMax, apt[i].y);
    yMin = std::max<long>(yMin, t.clip.top - t.dy);
    yMax = std::min<long>(yMax, t.clip.bottom - t.dy);
    std::vector<long long> xs;
    for (long y = yMin; y < yMax; ++y) {
        xs.clear();
        for (int i = 0; i < cpt; ++i) {
            POINT a = apt[i], b = apt[(i + 1) % cpt];
            if (a.y == b.y)
                continue;
            if (a.y > b.y)
                std::swap(a, b);
            if (y < a.y || y >= b.y)
                continue;
            long long num = static_cast<long long>(a.x) * (b.y - a.y) + static_cast<long long>(y - a.y) * (b.x - a.x);
            xs.push_back(CeilDiv(num, b.y - a.y));
        }
        std::sort(xs.begin(), xs.end());
        for (size_t k = 0; k + 1 < xs.size(); k += 2)
            FillSpan(t, static_cast<int>(y + t.dy), static_cast<int>(xs[k] + t.dx), static_cast<int>(xs[k + 1] + t.dx), paint);
    }
}

// The span of row y of the ellipse inscribed in [l, r) x [tp, b), as pixel columns x0 <= x < x1.
// A pixel is inside when its centre is inside or on the ellipse.
void EllipseSpan(long l, long tp, long r, long b, long y, long* px0, long* px1)
{
    long long w = r - l, h = b - tp;
    long long vy = 2 * y + 1 - (tp + b);
    long long rhs = w * w * h * h - vy * vy * w * w;
    if (w <= 0 || h <= 0 || rhs < 0) {
        *px0 = *px1 = 0;
        return;
    }
    long long q = rhs / (h * h);
    long long k = static_cast<long long>(std::sqrt(static_cast<double>(q)));
    while (k * k > q)
        --k;
    while ((k + 1) * (k + 1) <= q)
        ++k;
    // |2x + 1 - (l + r)| <= k
    *px0 = static_cast<long>(CeilDiv(l + r - 1 - k, 2));
    *px1 = static_cast<long>((l + r - 1 + k >= 0 ? (l + r - 1 + k) / 2 : -CeilDiv(-(l + r - 1 + k), 2))) + 1;
}

void Normalize(int* pl, int* pt, int* pr, int* pb)
{
    if (*pl > *pr)
        std::swap(*pl, *pr);
    if (*pt > *pb)
        std::swap(*pt, *pb);
}

}  // namespace

int FillRect(HDC hDC, const RECT* lprc, HBRUSH hbr)
{
    Target t;
    const Brush* pBrush = ResolveBrush(hbr);
    if (!lprc || !pBrush || !Prepare(hDC, &t))
        return 0;
    if (g_bDrawLog)
        LogLine("FillRect " + RectText(lprc->left, lprc->top, lprc->right, lprc->bottom) + " " + BrushText(pBrush));
    FillBox(t, ToSurface(t, lprc->left, lprc->top, lprc->right, lprc->bottom), BrushPaint(t, pBrush));
    return 1;
}

int FrameRect(HDC hDC, const RECT* lprc, HBRUSH hbr)
{
    Target t;
    const Brush* pBrush = ResolveBrush(hbr);
    if (!lprc || !pBrush || !Prepare(hDC, &t))
        return 0;
    if (g_bDrawLog)
        LogLine("FrameRect " + RectText(lprc->left, lprc->top, lprc->right, lprc->bottom) + " " + BrushText(pBrush));
    RECT rc = ToSurface(t, lprc->left, lprc->top, lprc->right, lprc->bottom);
    if (rc.right <= rc.left || rc.bottom <= rc.top)
        return 1;
    Paint p = BrushPaint(t, pBrush);
    FillBox(t, RECT{rc.left, rc.top, rc.right, rc.top + 1}, p);
    FillBox(t, RECT{rc.left, rc.bottom - 1, rc.right, rc.bottom}, p);
    FillBox(t, RECT{rc.left, rc.top, rc.left + 1, rc.bottom}, p);
    FillBox(t, RECT{rc.right - 1, rc.top, rc.right, rc.bottom}, p);
    return 1;
}

BOOL InvertRect(HDC hDC, const RECT* lprc)
{
    Target t;
    if (!lprc || !Prepare(hDC, &t))
        return FALSE;
    if (g_bDrawLog)
        LogLine("InvertRect " + RectText(lprc->left, lprc->top, lprc->right, lprc->bottom));
    RECT rc = IntersectRects(ToSurface(t, lprc->left, lprc->top, lprc->right, lprc->bottom), t.clip);
    for (int y = rc.top; y < rc.bottom; ++y) {
        uint32_t* row = t.pbm->Row(y);
        for (int x = rc.left; x < rc.right; ++x)
            row[x] ^= 0xFFFFFFu;
    }
    return TRUE;
}

BOOL LineTo(HDC hdc, int x, int y)
{
    Target t;
    if (!Prepare(hdc, &t))
        return FALSE;
    const Pen* pPen = CurPen(t);
    if (g_bDrawLog)
        LogLine("LineTo " + PointText(x, y) + " " + PenText(pPen));
    uint32_t px;
    if (PenPixel(t, pPen, &px))
        Line(t, t.pdc->m_st.m_ptCur, POINT{x, y}, px);
    t.pdc->m_st.m_ptCur = POINT{x, y};
    return TRUE;
}

BOOL Polyline(HDC hdc, const POINT* apt, int cpt)
{
    Target t;
    if (!apt || cpt < 2 || !Prepare(hdc, &t))
        return FALSE;
    const Pen* pPen = CurPen(t);
    if (g_bDrawLog)
        LogLine("Polyline " + PointsText(apt, cpt) + " " + PenText(pPen));
    uint32_t px;
    if (PenPixel(t, pPen, &px)) {
        for (int i = 0; i + 1 < cpt; ++i)
            Line(t, apt[i], apt[i + 1], px);
    }
    return TRUE;
}

BOOL Polygon(HDC hdc, const POINT* apt, int cpt)
{
    Shape shape;
    if (!apt || cpt < 2 || !BeginShape(hdc, "Polygon", [&] { return PointsText(apt, cpt); }, &shape))
        return FALSE;
    const Target& t = shape.t;
    const Pen* pPen = shape.pPen;
    const Brush* pBrush = shape.pBrush;
    FillPolygon(t, apt, cpt, BrushPaint(t, pBrush));
    uint32_t px;
    if (PenPixel(t, pPen, &px)) {
        for (int i = 0; i < cpt; ++i)
            Line(t, apt[i], apt[(i + 1) % cpt], px);
    }
    return TRUE;
}

BOOL Rectangle(HDC hdc, int left, int top, int right, int bottom)
{
    Shape shape;
    if (!BeginShape(hdc, "Rectangle", [&] { return RectText(left, top, right, bottom); }, &shape))
        return FALSE;
    const Target& t = shape.t;
    const Pen* pPen = shape.pPen;
    const Brush* pBrush = shape.pBrush;
    Normalize(&left, &top, &right, &bottom);
    // Right and bottom are exclusive; the interior is filled one pixel short of them, so that with
    // NULL_PEN the filled area is one pixel narrower and shorter, as on the real platform.
    RECT rc = ToSurface(t, left, top, right - 1, bottom - 1);
    FillBox(t, rc, BrushPaint(t, pBrush));
    uint32_t px;
    if (PenPixel(t, pPen, &px) && right > left && bottom > top) {
        Paint p = SolidPaint(px);
        FillSpan(t, rc.top, rc.left, rc.right + 1, p);
        FillSpan(t, rc.bottom, rc.left, rc.right + 1, p);
        for (int y = rc.top; y <= rc.bottom; ++y) {
            Plot(t, rc.left, y, px);
            Plot(t, rc.right, y, px);
        }
    }
    return TRUE;
}

BOOL Ellipse(HDC hdc, int left, int top, int right, int bottom)
{
    Shape shape;
    if (!BeginShape(hdc, "Ellipse", [&] { return RectText(left, top, right, bottom); }, &shape))
        return FALSE;
    const Target& t = shape.t;
    const Pen* pPen = shape.pPen;
    const Brush* pBrush = shape.pBrush;
    Normalize(&left, &top, &right, &bottom);
    Paint brush = BrushPaint(t, pBrush);
    uint32_t px;
    bool bPen = PenPixel(t, pPen, &px);
    if (!bPen) {
        right -= 1;  // as with Rectangle, without a pen the filled shape is one pixel smaller
        bottom -= 1;
    }
    Paint pen = SolidPaint(px);
    for (long y = top; y < bottom; ++y) {
        long x0, x1, a0, a1, b0, b1;
        EllipseSpan(left, top, right, bottom, y, &x0, &x1);
        if (x0 >= x1)
            continue;
        int sy = static_cast<int>(y + t.dy);
        if (!bPen) {
            FillSpan(t, sy, static_cast<int>(x0 + t.dx), static_cast<int>(x1 + t.dx), brush);
            continue;
        }
        // Outline: pixels of the shape with a 4-neighbour outside it; the rest is interior.
        EllipseSpan(left, top, right, bottom, y - 1, &a0, &a1);
        EllipseSpan(left, top, right, bottom, y + 1, &b0, &b1);
        long i0 = std::max({x0 + 1, a0, b0}), i1 = std::min({x1 - 1, a1, b1});
        if (y == top || y == bottom - 1 || i0 >= i1) {
            FillSpan(t, sy, static_cast<int>(x0 + t.dx), static_cast<int>(x1 + t.dx), pen);
            continue;
        }
        FillSpan(t, sy, static_cast<int>(x0 + t.dx), static_cast<int>(i0 + t.dx), pen);
        FillSpan(t, sy, static_cast<int>(i0 + t.dx), static_cast<int>(i1 + t.dx), brush);
        FillSpan(t, sy, static_cast<int>(i1 + t.dx), static_cast<int>(x1 + t.dx), pen);
    }
    return TRUE;
}

COLORREF SetPixel(HDC hdc, int x, int y, COLORREF color)
{
    Target t;
    if (!Prepare(hdc, &t))
        return CLR_INVALID;
    if (g_bDrawLog)
        LogLine("SetPixel " + PointText(x, y) + " " + ColorText(color));
    int sx = x + t.dx, sy = y + t.dy;
    if (sx < t.clip.left || sx >= t.clip.right || sy < t.clip.top || sy >= t.clip.bottom)
        return CLR_INVALID;
    uint32_t px = t.Pixel(color);
    t.pbm->Row(sy)[sx] = px;
    return ToColorref(px);
}

COLORREF GetPixel(HDC hdc, int x, int y)
{
    Target t;
    if (!Prepare(hdc, &t))
        return CLR_INVALID;
    int sx = x + t.dx, sy = y + t.dy;
    if (sx < t.clip.left || sx >= t.clip.right || sy < t.clip.top || sy >= t.clip.bottom)
        return CLR_INVALID;
    return ToColorref(t.pbm->Row(sy)[sx]);
}
