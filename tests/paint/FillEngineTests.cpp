// FillButtonFace in a device context: the worked gradients, colour translation, the edge patterns' nesting,
// the state it leaves, and what the patterns look like in pixels.
#include <cstdio>
#include "PaintFixture.h"
#include "gdi/standin.h"

namespace {

// "FillRect l,t,r,b #RR0000" for a band whose colour is only in the red channel.
std::string RedBand(int l, int t, int r, int b, int red)
{
    char sz[64];
    std::snprintf(sz, sizeof sz, "FillRect %d,%d,%d,%d #%02X0000", l, t, r, b, red);
    return sz;
}

class Fill : public PaintTest {
protected:
    std::vector<std::string> FillLog(OLE_COLOR from, OLE_COLOR to, SHORT kind, const CRect& rc)
    {
        return Log([&](CDC* dc) { c->FillButtonFace(dc, from, to, kind, rc); });
    }
};

constexpr OLE_COLOR kOleBlack = 0x000000, kOleRed = 0x0000FF, kOleWhite = 0xFFFFFF;

} // namespace

TEST_F(Fill, HorzEdgeIsTwoGradientsTowardTheMiddle)
{
    // Width 16 from 0 to 255: split at 5, middle 85; the second part starts at 255 and runs down toward 85.
    const int first[] = {0, 17, 34, 51, 68};
    const int second[] = {255, 240, 225, 209, 194, 178, 163, 147, 132, 116, 101};
    std::vector<std::string> expected;
    for (int i = 0; i < 5; ++i) expected.push_back(RedBand(i, 0, i + 1, 20, first[i]));
    expected.push_back(RedBand(5, 0, 5, 20, 85));
    for (int i = 0; i < 11; ++i) expected.push_back(RedBand(5 + i, 0, 6 + i, 20, second[i]));
    expected.push_back(RedBand(16, 0, 16, 20, 85));
    ExpectLines(expected, FillLog(kOleBlack, kOleRed, FillHorzEdge, CRect(0, 0, 16, 20)));
}

TEST_F(Fill, VertEdge2SplitsAtHalfAndMeetsInTheAverage)
{
    const int first[] = {0, 12, 25, 38, 50, 63, 76, 88, 101, 114};
    const int second[] = {255, 243, 230, 217, 204, 191, 179, 166, 153, 140};
    std::vector<std::string> expected;
    for (int i = 0; i < 10; ++i) expected.push_back(RedBand(0, i, 16, i + 1, first[i]));
    expected.push_back(RedBand(0, 10, 16, 10, 127));
    for (int i = 0; i < 10; ++i) expected.push_back(RedBand(0, 10 + i, 16, 11 + i, second[i]));
    expected.push_back(RedBand(0, 20, 16, 20, 127));
    ExpectLines(expected, FillLog(kOleBlack, kOleRed, FillVertEdge2, CRect(0, 0, 16, 20)));

    // FillVertEdge splits a third of the way down, plus 1, and goes to the middle a third of the way along.
    auto vert = FillLog(kOleRed, kOleBlack, FillVertEdge, CRect(0, 0, 16, 21));
    ASSERT_EQ(vert.size(), 8u + 1u + 13u + 1u);
    EXPECT_EQ(vert[8], RedBand(0, 8, 16, 8, 170));
    EXPECT_EQ(vert[9], RedBand(0, 8, 16, 9, 0));
}

TEST_F(Fill, SystemColoursResolveInEveryCallOfANest)
{
    // Button face #F0F0F0 toward button shadow #A0A0A0.
    ExpectLines({"FillRect 0,0,4,1 #F0F0F0", "FillRect 0,1,4,2 #C8C8C8", "FillRect 0,2,4,2 #A0A0A0"},
                FillLog(0x8000000F, 0x80000010, FillVertical, CRect(0, 0, 4, 2)));
    // The nested second call gets the untranslated system colour and must still resolve it.
    ExpectLines({"FillRect 0,0,1,1 #F0F0F0", "FillRect 1,0,1,1 #D4D4D4", "FillRect 1,0,2,1 #A0A0A0",
                 "FillRect 2,0,3,1 #BABABA", "FillRect 3,0,3,1 #D4D4D4"},
                FillLog(0x8000000F, 0x80000010, FillHorzEdge, CRect(0, 0, 3, 1)));
}

TEST_F(Fill, SolidAndUnknownKindsIgnoreTheSecondColour)
{
    for (SHORT kind : {SHORT(FillSolid), SHORT(14), SHORT(-3)})
        ExpectLines({"FillRect 2,3,18,23 #563412"}, FillLog(0x123456, 0x7F000000, kind, CRect(2, 3, 18, 23)));
}

TEST_F(Fill, ShapesHaveNoOutlineAndTheCallersObjectsComeBack)
{
    CPen red(PS_SOLID, 1, RGB(255, 0, 0));
    CBrush green(RGB(0, 255, 0));
    HGDIOBJ oldPen = m_dc.SelectObject(&red);
    HGDIOBJ oldBrush = m_dc.SelectObject(&green);
    for (SHORT kind : {SHORT(FillDiamond), SHORT(FillEllipse), SHORT(FillCircle), SHORT(FillDiagonal), SHORT(FillRevDiag)}) {
        auto log = FillLog(kOleBlack, kOleWhite, kind, CRect(0, 0, 16, 20));
        for (const auto& line : log) EXPECT_EQ(line.find(" pen "), std::string::npos) << line;
        EXPECT_EQ(::GetCurrentObject(m_dc, OBJ_PEN), red.GetSafeHandle()) << kind;
        EXPECT_EQ(::GetCurrentObject(m_dc, OBJ_BRUSH), green.GetSafeHandle()) << kind;
    }
    // One brush per shape: the diagonal on 16x20 makes 35.
    EXPECT_EQ(FillLog(kOleBlack, kOleWhite, FillDiagonal, CRect(0, 0, 16, 20)).size(), 35u);
    m_dc.SelectObject(oldBrush);
    m_dc.SelectObject(oldPen);
}

TEST_F(Fill, EqualColoursGiveOneFlatColourInEveryPattern)
{
    const COLORREF background = RGB(0x12, 0x34, 0x56), face = RGB(0x80, 0x40, 0x20);
    for (SHORT kind = 0; kind <= 13; ++kind) {
        Clear(background);
        c->FillButtonFace(&m_dc, face, face, kind, CRect(10, 10, 26, 30));
        int inside = 0, outside = 0;
        for (int y = 0; y < 40; ++y)
            for (int x = 0; x < 40; ++x) {
                bool in = x >= 10 && x < 26 && y >= 10 && y < 30;
                if (in && Pixel(x, y) != face) ++inside;
                if (!in && Pixel(x, y) != background) ++outside;
            }
        EXPECT_EQ(inside, 0) << "kind " << kind << ": pixels of the face not in the face colour";
        EXPECT_EQ(outside, 0) << "kind " << kind << ": pixels painted outside the rectangle";
    }
}

TEST_F(Fill, GradientsChangeColourWhereAPersonLooks)
{
    // Horizontal: brighter column by column, every column one colour, starting exactly at the first colour.
    c->FillButtonFace(&m_dc, kOleBlack, kOleWhite, FillHorizontal, CRect(0, 0, 16, 20));
    EXPECT_EQ(Pixel(0, 5), RGB(0, 0, 0));
    for (int x = 1; x < 16; ++x) {
        EXPECT_GT(GetRValue(Pixel(x, 5)), GetRValue(Pixel(x - 1, 5))) << x;
        EXPECT_EQ(Pixel(x, 0), Pixel(x, 19)) << x;
    }
    EXPECT_LT(GetRValue(Pixel(15, 5)), 255);

    // Circle on a wide rectangle: the ends keep the first colour, the centre comes close to the second.
    Clear(RGB(9, 9, 9));
    c->FillButtonFace(&m_dc, kOleBlack, kOleWhite, FillCircle, CRect(0, 0, 60, 20));
    EXPECT_EQ(Pixel(1, 10), RGB(0, 0, 0));
    EXPECT_EQ(Pixel(58, 10), RGB(0, 0, 0));
    EXPECT_GT(GetRValue(Pixel(30, 10)), 200);

    // Diagonal: the second colour in the top-left corner, the first in the bottom-right.
    c->FillButtonFace(&m_dc, kOleBlack, kOleWhite, FillDiagonal, CRect(0, 0, 20, 20));
    EXPECT_GT(GetRValue(Pixel(1, 1)), GetRValue(Pixel(10, 10)));
    EXPECT_GT(GetRValue(Pixel(10, 10)), GetRValue(Pixel(18, 18)));
    EXPECT_LT(GetRValue(Pixel(18, 18)), 40);
    EXPECT_GT(GetRValue(Pixel(1, 1)), 215);

    // VertEdge: a hard step where the second gradient begins.
    c->FillButtonFace(&m_dc, kOleBlack, kOleWhite, FillVertEdge, CRect(0, 0, 16, 21));
    EXPECT_GT(GetRValue(Pixel(5, 8)) - GetRValue(Pixel(5, 7)), 150);
}
