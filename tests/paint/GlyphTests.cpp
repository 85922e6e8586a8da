// The arrow glyphs: triangle geometry by table, the line arrows stroke by stroke, and the narrow-button case.
#include "PaintFixture.h"
#include "gdi/standin.h"
#include "paint/Glyphs.h"

namespace {

std::string Points(const glyph::Triangle& t)
{
    auto p = [](POINT q) { return std::to_string(q.x) + "," + std::to_string(q.y); };
    return p(t.apex) + " " + p(t.left) + " " + p(t.right);
}

const RECT kControl = {0, 0, 120, 24};

} // namespace

TEST(GlyphGeometry, DropTriangles)
{
    struct Row { RECT button; int inset, bevel, arrow, offset; const char* expected; };
    const Row rows[] = {
        {{102, 2, 118, 22}, 2, 1, ArrowSmall, 0, "109,13 106,10 112,10"},
        {{102, 2, 118, 22}, 2, 1, ArrowLarge, 0, "109,13 106,10 112,10"},  // the same half-width at this width
        {{102, 2, 118, 22}, 2, 1, ArrowSmall, 1, "110,14 107,11 113,11"},
        {{94, 2, 118, 22}, 2, 1, ArrowSmall, 0, "105,14 100,9 110,9"},     // DropWidth 24: a = 5, d = 5
        {{94, 2, 118, 22}, 2, 1, ArrowLarge, 0, "105,15 99,9 111,9"},      // a = 6, d = 6
        {{90, 2, 118, 22}, 2, 1, ArrowLarge, 0, "103,15 94,9 112,9"},      // a = 9 rounds down to d = 6
        {{104, 0, 120, 24}, 1, 1, ArrowSmall, 0, "111,14 108,11 114,11"},  // BorderRegular: the inset still counts
        {{102, 2, 118, 22}, 2, 9, ArrowSmall, 0, "105,12 104,11 106,11"},  // a large bevel narrows the arrow
        {{102, 2, 104, 22}, 2, 1, ArrowSmall, 0, "102,12 102,12 102,12"},
    };
    for (const Row& r : rows)
        EXPECT_EQ(Points(glyph::DropTriangle(r.button, 0, r.inset, r.bevel, r.arrow, r.offset)), r.expected)
            << r.button.left << " bevel " << r.bevel << " arrow " << r.arrow;
}

TEST(GlyphGeometry, SpinTrianglesAreShallow)
{
    struct Row { RECT button; bool upper; int bevel, arrow, offset; const char* expected; };
    const Row rows[] = {
        {{102, 2, 118, 12}, true, 1, ArrowSmall, 0, "110,5 107,8 113,8"},
        {{102, 12, 118, 22}, false, 1, ArrowSmall, 0, "110,18 107,15 113,15"},
        {{102, 2, 118, 12}, true, 1, ArrowLarge, 0, "110,5 107,8 113,8"},
        {{102, 2, 118, 12}, true, 1, ArrowSmall, 1, "111,6 108,9 114,9"},
        {{102, 12, 118, 22}, false, 1, ArrowSmall, 1, "111,19 108,16 114,16"},
        {{102, 2, 118, 12}, true, 5, ArrowSmall, 0, "110,5 108,9 112,9"},   // a = 2: the height 4 is a multiple of it
        {{94, 2, 118, 12}, true, 1, ArrowSmall, 0, "106,5 101,9 111,9"},    // a = 5 > v = 4: d = v
        {{94, 2, 118, 12}, true, 1, ArrowLarge, 0, "106,5 100,9 112,9"},
    };
    for (const Row& r : rows)
        EXPECT_EQ(Points(glyph::SpinTriangle(r.button, kControl, r.upper, r.bevel, r.arrow, r.offset)), r.expected)
            << r.button.left << " bevel " << r.bevel << " arrow " << r.arrow;
    // Too narrow for any half-width: no division, a triangle of zero width one height unit tall.
    EXPECT_EQ(Points(glyph::SpinTriangle({115, 2, 118, 12}, kControl, true, 1, ArrowSmall, 0)), "116,5 116,9 116,9");
    EXPECT_EQ(Points(glyph::SpinTriangle({111, 12, 118, 22}, kControl, false, 0, ArrowLarge, 0)), "114,19 114,15 114,15");
}

class Chevrons : public PaintTest {};

TEST_F(Chevrons, LineArrowsStrokeByStroke)
{
    const std::vector<std::string> kDownLine1 = {
        "MoveTo 5,8", "LineTo 8,11 #000000", "LineTo 12,7 #000000",
        "MoveTo 5,9", "LineTo 8,12 #000000", "LineTo 12,8 #000000",
        "MoveTo 4,9", "LineTo 8,13 #000000", "LineTo 13,8 #000000",
    };
    ExpectLines(kDownLine1, Log([&](CDC* dc) { c->DrawDownChevron(dc, 0, 0, ArrowLine1, CRect(0, 0, 16, 20)); }));
    const std::vector<std::string> kDownLine2 = {
        "MoveTo 6,9", "LineTo 9,12 #000000", "LineTo 13,8 #000000",
        "MoveTo 6,10", "LineTo 9,13 #000000", "LineTo 13,9 #000000",
        "MoveTo 6,11", "LineTo 9,14 #000000", "LineTo 13,10 #000000",
    };
    ExpectLines(kDownLine2, Log([&](CDC* dc) { c->DrawDownChevron(dc, 0, 1, ArrowLine2, CRect(0, 0, 16, 20)); }));

    const std::vector<std::string> kUpLine2 = {
        "MoveTo 16,26", "LineTo 19,23 #FF0000", "LineTo 23,27 #FF0000",
        "MoveTo 16,27", "LineTo 19,24 #FF0000", "LineTo 23,28 #FF0000",
        "MoveTo 16,28", "LineTo 19,25 #FF0000", "LineTo 23,29 #FF0000",
    };
    ExpectLines(kUpLine2, Log([&](CDC* dc) { c->DrawUpChevron(dc, 0x0000FF, 1, ArrowLine2, CRect(10, 20, 26, 30)); }));
    const std::vector<std::string> kUpLine1 = {
        "MoveTo 14,26", "LineTo 18,22 #F0F0F0", "LineTo 23,27 #F0F0F0",
        "MoveTo 15,26", "LineTo 18,23 #F0F0F0", "LineTo 22,27 #F0F0F0",
        "MoveTo 15,27", "LineTo 18,24 #F0F0F0", "LineTo 22,28 #F0F0F0",
    };
    ExpectLines(kUpLine1, Log([&](CDC* dc) { c->DrawUpChevron(dc, 0x8000000F, 0, ArrowLine1, CRect(10, 20, 26, 30)); }));

    // Any kind but ArrowLine1 draws as ArrowLine2.
    auto asLine2 = Log([&](CDC* dc) { c->DrawUpChevron(dc, 0x0000FF, 1, ArrowLine2, CRect(10, 20, 26, 30)); });
    for (SHORT kind : {SHORT(ArrowSmall), SHORT(ArrowLarge), SHORT(7)})
        EXPECT_EQ(Log([&](CDC* dc) { c->DrawUpChevron(dc, 0x0000FF, 1, kind, CRect(10, 20, 26, 30)); }), asLine2) << kind;
}

TEST_F(Chevrons, ANarrowSpinButtonStillPaints)
{
    c->m_bSpinButton = TRUE;
    c->m_nSpinWidth = 3;
    auto log = Log([&](CDC* dc) {
        c->DrawSpinButton(dc, 1, CRect(0, 0, 120, 24));
        c->DrawSpinButton(dc, 2, CRect(0, 0, 120, 24));
    });
    auto polygons = Only(log, {"Polygon"});
    ExpectLines({"Polygon 116,5 116,9 116,9 #000000", "Polygon 116,19 116,15 116,15 #000000"}, polygons);
    // The zero-width arrow shows as a line in the arrow colour.
    c->DrawSpinButton(&m_dc, 1, CRect(0, 0, 120, 24));
    EXPECT_EQ(Pixel(116, 7), RGB(0, 0, 0));
}
