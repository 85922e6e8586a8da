// Geometry of the filled triangle arrows of the drop and spin buttons, and the painter both use.
#pragma once
#include "base/rect.h"
#include "base/wintypes.h"

class CDC;

namespace glyph {

// In polygon order: the tip, then the two ends of the base.
struct Triangle {
    POINT apex, left, right;
};

// The drop button's arrow, pointing down. The half-width comes from the button's width less the bevel and is
// rounded down to a multiple of a third of the button's height; nControlTop is the top of the whole control.
Triangle DropTriangle(const RECT& rcButton, LONG nControlTop, int nInsetTop, int nBevel, int nArrowType, int nOffset);

// A spin button's arrow, up for the upper button and down for the lower. The height unit is a sixth of the
// control's height rounded down to a multiple of the half-width, so these arrows stay shallow.
Triangle SpinTriangle(const RECT& rcButton, const RECT& rcControl, bool bUpper, int nBevel, int nArrowType, int nOffset);

// A triangle filled and outlined in one colour.
void DrawTriangle(CDC* pDC, COLORREF clr, const Triangle& tri);

} // namespace glyph
