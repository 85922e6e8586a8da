// USER's drawing helpers: rectangles, DrawEdge in the classic colours, DrawFocusRect.
#include <cassert>
#include "base/colors.h"
#include "drawapi.h"
#include "gdi/wingdi.h"

BOOL OffsetRect(RECT* r, int dx, int dy)
{
    if (!r) return FALSE;
    r->left += dx; r->right += dx; r->top += dy; r->bottom += dy;
    return TRUE;
}

BOOL InflateRect(RECT* r, int dx, int dy)
{
    if (!r) return FALSE;
    r->left -= dx; r->right += dx; r->top -= dy; r->bottom += dy;
    return TRUE;
}

BOOL SetRect(RECT* r, int xLeft, int yTop, int xRight, int yBottom)
{
    if (!r) return FALSE;
    *r = RECT{xLeft, yTop, xRight, yBottom};
    return TRUE;
}

namespace {

// One ring of an edge: the top and left sides in one colour, the bottom and right in another.
void Ring(HDC hdc, RECT& r, int nTopLeft, int nBottomRight)
{
    HBRUSH tl = GetSysColorBrush(nTopLeft), br = GetSysColorBrush(nBottomRight);
    RECT top{r.left, r.top, r.right - 1, r.top + 1}, left{r.left, r.top, r.left + 1, r.bottom - 1};
    RECT bottom{r.left, r.bottom - 1, r.right, r.bottom}, right{r.right - 1, r.top, r.right, r.bottom};
    FillRect(hdc, &top, tl);
    FillRect(hdc, &left, tl);
    FillRect(hdc, &bottom, br);
    FillRect(hdc, &right, br);
    InflateRect(&r, -1, -1);
}

} // namespace

BOOL DrawEdge(HDC hdc, RECT* qrc, UINT edge, UINT grfFlags)
{
    assert((grfFlags & BF_RECT) == BF_RECT && "DrawEdge: only whole rectangles are drawn here");
    if (!qrc) return FALSE;
    RECT r = *qrc;
    if (edge & BDR_RAISEDOUTER) Ring(hdc, r, COLOR_3DLIGHT, COLOR_3DDKSHADOW);
    else if (edge & BDR_SUNKENOUTER) Ring(hdc, r, COLOR_3DSHADOW, COLOR_3DHIGHLIGHT);
    if (edge & BDR_RAISEDINNER) Ring(hdc, r, COLOR_3DHIGHLIGHT, COLOR_3DSHADOW);
    else if (edge & BDR_SUNKENINNER) Ring(hdc, r, COLOR_3DDKSHADOW, COLOR_3DLIGHT);
    if (grfFlags & BF_ADJUST) *qrc = r;
    return TRUE;
}

BOOL DrawFocusRect(HDC hdc, const RECT* r)
{
    if (!r || r->right <= r->left || r->bottom <= r->top) return FALSE;
    auto dot = [hdc](int x, int y) {
        RECT p{x, y, x + 1, y + 1};
        InvertRect(hdc, &p);
    };
    for (int x = r->left; x < r->right; x += 2) {
        dot(x, r->top);
        if (r->bottom - 1 > r->top) dot(x, r->bottom - 1);
    }
    for (int y = r->top + 2; y < r->bottom - 1; y += 2) {
        dot(r->left, y);
        if (r->right - 1 > r->left) dot(r->right - 1, y);
    }
    return TRUE;
}
