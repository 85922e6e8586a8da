// Win32 USER drawing helpers: rectangle arithmetic, the 3-D edges of the classic look and the
// focus rectangle.
#pragma once
#include "userconst.h"

BOOL OffsetRect(RECT* lprc, int dx, int dy);
BOOL InflateRect(RECT* lprc, int dx, int dy);
BOOL SetRect(RECT* lprc, int xLeft, int yTop, int xRight, int yBottom);

#define BDR_RAISEDOUTER 0x0001
#define BDR_SUNKENOUTER 0x0002
#define BDR_RAISEDINNER 0x0004
#define BDR_SUNKENINNER 0x0008
#define EDGE_RAISED (BDR_RAISEDOUTER | BDR_RAISEDINNER)
#define EDGE_SUNKEN (BDR_SUNKENOUTER | BDR_SUNKENINNER)
#define EDGE_ETCHED (BDR_SUNKENOUTER | BDR_RAISEDINNER)
#define BF_LEFT 0x0001
#define BF_TOP 0x0002
#define BF_RIGHT 0x0004
#define BF_BOTTOM 0x0008
#define BF_RECT (BF_LEFT | BF_TOP | BF_RIGHT | BF_BOTTOM)
#define BF_ADJUST 0x2000

// Draws the edge in the system colours: raised outer is 3-D light over 3-D dark shadow, raised
// inner highlight over shadow, sunken the other way round. Stand-in: only whole rectangles (BF_RECT)
// are drawn, with BF_ADJUST to shrink lprc by the edge.
BOOL DrawEdge(HDC hdc, RECT* qrc, UINT edge, UINT grfFlags);
// Inverts every other pixel of the rectangle's outline, so that a second call takes it away.
BOOL DrawFocusRect(HDC hDC, const RECT* lprc);
