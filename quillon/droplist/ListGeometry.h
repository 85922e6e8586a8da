// The popup list's arithmetic on plain values: where it opens, the scroll bar's regions and thumb,
// the arrows' triangles, the edge lines of a bar button, and the row a thumb position stands for.
#pragma once
#include <vector>
#include "base/rect.h"
#include "paint/Glyphs.h"

namespace listgeo {

constexpr int kMaxVisibleRows = 8;
constexpr int kMinThumb = 8;       // the thumb loses this much per row the list can scroll, down to this size

// The screen the list must fit: the virtual screen's size with two monitors or more.
struct ScreenSize {
    int cx, cy;
};

// The popup rectangle on the screen: under the control and as wide as it, moved onto the screen from
// the left or the far right, and above the control when it would run past the screen's bottom.
RECT PlaceRect(const RECT& rcControl, ScreenSize screen, int nContentHeight);

// Height of the list's content: nRows rows (one when there is none), plus the pads.
int ContentHeight(int nRowHeight, int nRows, int nPadTop, int nPadBottom);

struct BarLayout {
    RECT rcBar, rcUp, rcDown, rcThumb, rcPageUp, rcPageDown;
    int nThumbSize;
};

// The scroll bar at the right of rcInner (the client less the pads), nWidth wide, its arrows square.
BarLayout LayoutBar(const RECT& rcInner, int nWidth, int nMin, int nMax, int nPos);

// The filled triangle of a Regular or Thin arrow button, pointing up or down, moved by nShift when
// pressed. False when the button is too small for one (narrower or lower than 8 pixels).
bool ArrowTriangle(const RECT& rc, bool bUp, int nShift, glyph::Triangle* pTri);

// The scroll position a thumb whose top is nThumbTop stands for: the track cut into nRange + 1 equal
// bands. With no free length (the thumb fills the track) the thumb cannot move: -1.
int ThumbBand(int nThumbTop, int nThumbHeight, int nTrackTop, int nTrackBottom, int nRange);

// One line of a button's edge: a pen and the path of MoveTo and two LineTos.
enum EdgePen { PenFace, PenBlack, PenWhite, PenShadow };
struct EdgeLine {
    EdgePen pen;
    POINT pts[3];
};
// Set A, the raised edge of Regular buttons and thumbs (four lines), or set B, the flat one of Thin (two).
std::vector<EdgeLine> EdgeSet(bool bSetA, const RECT& rc);

} // namespace listgeo
