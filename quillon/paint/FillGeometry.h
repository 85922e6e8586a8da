// Colour arithmetic and shape sequences of the button fill patterns, on plain values with no device context.
#pragma once
#include "base/rect.h"
#include "base/wintypes.h"

namespace fill {

// The channels of a COLORREF 0x00BBGGRR.
struct Rgb {
    int r, g, b;
};

inline Rgb Channels(COLORREF c) { return {static_cast<int>(c & 0xFF), static_cast<int>((c >> 8) & 0xFF), static_cast<int>((c >> 16) & 0xFF)}; }

// Each channel is cut to its low byte, so an out-of-range channel wraps rather than bleeding into its neighbour.
inline COLORREF Compose(int r, int g, int b)
{
    return (static_cast<COLORREF>(b & 0xFF) << 16) | (static_cast<COLORREF>(g & 0xFF) << 8) | static_cast<COLORREF>(r & 0xFF);
}

// x1 + (x2 - x1) * i / n, product first, truncating; callers guarantee n != 0.
inline int MixChannel(int x1, int x2, int i, int n) { return x1 + (x2 - x1) * i / n; }

// Step i of n from the first colour toward the second.
COLORREF Mix(COLORREF clr1, COLORREF clr2, int i, int n);
// Step e of n back from the second colour toward the first: x2 - (x2 - x1) * e / n.
COLORREF MixFromSecond(COLORREF clr1, COLORREF clr2, int e, int n);
// (x1 + x2) / 2 per channel: the base of the diagonal patterns.
COLORREF Average(COLORREF clr1, COLORREF clr2);
// About a third of the way from the first colour to the second: the middle of FillHorzEdge and FillVertEdge.
COLORREF ThirdMiddle(COLORREF clr1, COLORREF clr2);
// Half way, rounded toward the smaller channel: the middle of FillVertEdge2.
COLORREF HalfMiddle(COLORREF clr1, COLORREF clr2);

// Passes of the nested and bump patterns: n + 1 passes of step size k. No passes when n <= 0.
struct Stepping {
    int n;
    int k;
};
// FillHorzBump steps over the width by fours, FillVertBump over the height by twos.
Stepping HorzBumpStepping(int w);
Stepping VertBumpStepping(int h);
// FillPyramid, FillDiamond, FillEllipse and FillCircle step over the shorter side.
Stepping NestedStepping(int w, int h);

// The square of FillCircle: the shorter side, centred across the longer one.
RECT CircleSquare(const RECT& rc);

// The two halves of an edge pattern and the colour they both run toward. Returns false for other kinds.
struct EdgeSplit {
    RECT first, second;
    int nKind;  // FillHorizontal or FillVertical, for both halves
    COLORREF clrMiddle;
};
bool SplitEdge(int nFillType, COLORREF clrFrom, COLORREF clrTo, const RECT& rc, EdgeSplit* pSplit);

// Where the shapes of a pattern go: a device context in the control, a recorder in tests.
class ShapeSink {
public:
    virtual ~ShapeSink() = default;
    virtual void Rect(const RECT& rc, COLORREF clr) = 0;
    virtual void Polygon(const POINT* pts, int count, COLORREF clr) = 0;
    virtual void Ellipse(const RECT& rc, COLORREF clr) = 0;
};

// Emits the shapes of one pattern in painting order, later over earlier. Colours are resolved RGB values.
// The edge patterns are not single patterns and paint nothing here (see SplitEdge); any other value
// outside the table paints solid in the first colour.
void EmitPattern(ShapeSink& sink, int nFillType, COLORREF clrFrom, COLORREF clrTo, const RECT& rc);

} // namespace fill
