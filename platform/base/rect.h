// CPoint, CSize and CRect: the MFC geometry classes; rectangles are half open.
#pragma once
#include "wintypes.h"

struct POINT { LONG x; LONG y; };
struct SIZE { LONG cx; LONG cy; };
struct RECT { LONG left; LONG top; LONG right; LONG bottom; };
typedef RECT* LPRECT;
typedef const RECT* LPCRECT;
typedef POINT* LPPOINT;

// A sum of coordinates, worked out in 64 bits and held to the 32-bit range: window positions and
// points from input may lie anywhere in that range, and their sums must not wrap.
inline LONG SaturateLong(long long v)
{
    constexpr long long kMin = -2147483647LL - 1, kMax = 2147483647LL;
    return static_cast<LONG>(v < kMin ? kMin : v > kMax ? kMax : v);
}

class CPoint : public POINT {
public:
    CPoint() : POINT{0, 0} {}
    CPoint(LONG x0, LONG y0) : POINT{x0, y0} {}
    CPoint(POINT p) : POINT(p) {}
    void Offset(LONG dx, LONG dy) { x += dx; y += dy; }
    bool operator==(const CPoint& o) const { return x == o.x && y == o.y; }
};

class CSize : public SIZE {
public:
    CSize() : SIZE{0, 0} {}
    CSize(LONG w, LONG h) : SIZE{w, h} {}
    bool operator==(const CSize& o) const { return cx == o.cx && cy == o.cy; }
};

inline BOOL PtInRect(const RECT* r, POINT p)
{
    return p.x >= r->left && p.x < r->right && p.y >= r->top && p.y < r->bottom;
}
inline BOOL IsRectEmpty(const RECT* r) { return r->right <= r->left || r->bottom <= r->top; }

class CRect : public RECT {
public:
    CRect() : RECT{0, 0, 0, 0} {}
    CRect(LONG l, LONG t, LONG r, LONG b) : RECT{l, t, r, b} {}
    CRect(const RECT& r) : RECT(r) {}
    CRect(POINT topLeft, SIZE size) : RECT{topLeft.x, topLeft.y, topLeft.x + size.cx, topLeft.y + size.cy} {}
    LONG Width() const { return right - left; }
    LONG Height() const { return bottom - top; }
    CSize Size() const { return CSize(Width(), Height()); }
    CPoint TopLeft() const { return CPoint(left, top); }
    CPoint BottomRight() const { return CPoint(right, bottom); }
    BOOL IsRectEmpty() const { return ::IsRectEmpty(this); }
    BOOL PtInRect(POINT p) const { return ::PtInRect(this, p); }
    void SetRect(LONG l, LONG t, LONG r, LONG b) { left = l; top = t; right = r; bottom = b; }
    void SetRectEmpty() { SetRect(0, 0, 0, 0); }
    void OffsetRect(LONG dx, LONG dy) { left += dx; right += dx; top += dy; bottom += dy; }
    void InflateRect(LONG dx, LONG dy) { left -= dx; right += dx; top -= dy; bottom += dy; }
    void DeflateRect(LONG dx, LONG dy) { InflateRect(-dx, -dy); }
    BOOL IntersectRect(const RECT& a, const RECT& b);
    bool operator==(const RECT& o) const { return left == o.left && top == o.top && right == o.right && bottom == o.bottom; }
    bool operator!=(const RECT& o) const { return !(*this == o); }
};

inline BOOL CRect::IntersectRect(const RECT& a, const RECT& b)
{
    left = a.left > b.left ? a.left : b.left;
    top = a.top > b.top ? a.top : b.top;
    right = a.right < b.right ? a.right : b.right;
    bottom = a.bottom < b.bottom ? a.bottom : b.bottom;
    if (IsRectEmpty()) { SetRectEmpty(); return FALSE; }
    return TRUE;
}
