// The drop and spin buttons: rectangles, bevels and their limits, pressed, flat and modern looks, the order in
// the face, and what changes on screen when a button goes down.
#include <algorithm>
#include "PaintFixture.h"
#include "gdi/standin.h"

namespace {

const CRect kControl(0, 0, 120, 24);

class Buttons : public PaintTest {
protected:
    std::vector<std::string> Drop() { return Log([&](CDC* dc) { c->DrawDropButton(dc, kControl); }); }
    std::vector<std::string> Spin(SHORT nWhich) { return Log([&](CDC* dc) { c->DrawSpinButton(dc, nWhich, kControl); }); }
    void Flat() { c->m_nDisplayStyle = DisplayFlat; }  // neither focused nor hovered: the inactive look
    void Border(SHORT kind)
    {
        c->m_nBorderType = kind;
        c->UpdateInsets();
    }
    static size_t Count(const std::vector<std::string>& log, const std::string& part)
    {
        size_t n = 0;
        for (const auto& line : log) n += line.find(part) != std::string::npos;
        return n;
    }
};

// DrawDropButton, defaults (BorderLowered, ButtonBevel 1, FillSolid, width 16), in (0,0,120,24).
const std::vector<std::string> kDropAlone = {
    "FillRect 102,2,118,22 #F0F0F0",
    "MoveTo 102,21", "LineTo 102,2 #E3E3E3", "LineTo 118,2 #E3E3E3",
    "MoveTo 117,2", "LineTo 117,21 #000000", "LineTo 101,21 #000000",
    "MoveTo 103,20", "LineTo 103,3 #FFFFFF", "LineTo 117,3 #FFFFFF",
    "MoveTo 116,3", "LineTo 116,20 #A0A0A0", "LineTo 102,20 #A0A0A0",
    "Polygon 109,13 106,10 112,10 #000000",
};

// DrawSpinButton 1 and 2 with the same defaults: the light edge one pixel in, the rings too.
const std::vector<std::string> kUpperSpin = {
    "FillRect 102,2,118,12 #F0F0F0",
    "MoveTo 103,11", "LineTo 103,2 #E3E3E3", "LineTo 118,2 #E3E3E3",
    "MoveTo 117,2", "LineTo 117,11 #000000", "LineTo 101,11 #000000",
    "MoveTo 104,10", "LineTo 104,3 #FFFFFF", "LineTo 117,3 #FFFFFF",
    "MoveTo 116,3", "LineTo 116,10 #A0A0A0", "LineTo 103,10 #A0A0A0",
    "Polygon 110,5 107,8 113,8 #000000",
};
const std::vector<std::string> kLowerSpin = {
    "FillRect 102,12,118,22 #F0F0F0",
    "MoveTo 103,21", "LineTo 103,12 #E3E3E3", "LineTo 118,12 #E3E3E3",
    "MoveTo 117,12", "LineTo 117,21 #000000", "LineTo 101,21 #000000",
    "MoveTo 104,20", "LineTo 104,13 #FFFFFF", "LineTo 117,13 #FFFFFF",
    "MoveTo 116,13", "LineTo 116,20 #A0A0A0", "LineTo 103,20 #A0A0A0",
    "Polygon 110,18 107,15 113,15 #000000",
};

} // namespace

TEST_F(Buttons, RegularButtonsDrawFaceBevelAndArrowInOrder)
{
    ExpectLines(kDropAlone, Drop());
    ExpectLines(kUpperSpin, Spin(1));
    ExpectLines(kLowerSpin, Spin(2));

    // Beside a spin column the regular drop button overlaps it by one pixel.
    c->m_bSpinButton = TRUE;
    EXPECT_EQ(Drop().front(), "FillRect 87,2,103,22 #F0F0F0");
    // With BorderRegular the buttons run out to the control's edges.
    c->m_bSpinButton = FALSE;
    Border(BorderRegular);
    EXPECT_EQ(Drop().front(), "FillRect 104,0,120,24 #F0F0F0");
    EXPECT_EQ(Spin(1).front(), "FillRect 104,0,120,12 #F0F0F0");
    EXPECT_EQ(Spin(2).front(), "FillRect 104,12,120,24 #F0F0F0");
}

TEST_F(Buttons, BevelZeroIsABlackBoxAndTheUpperSpinOverlaps)
{
    c->m_nButtonBevel = 0;
    auto drop = Drop();
    const std::vector<std::string> kDropBox = {
        "MoveTo 102,21", "LineTo 102,2 #E3E3E3", "LineTo 118,2 #E3E3E3",
        "MoveTo 117,2", "LineTo 117,21 #000000", "LineTo 101,21 #000000",
        "MoveTo 102,21", "LineTo 102,2 #000000", "LineTo 117,2 #000000",
    };
    ExpectLines(kDropBox, Only(drop, {"MoveTo", "LineTo"}));

    auto upper = Spin(1);
    EXPECT_EQ(upper.front(), "FillRect 102,2,118,13 #F0F0F0");
    const std::vector<std::string> kUpperBox = {
        "MoveTo 117,2", "LineTo 117,12 #000000", "LineTo 101,12 #000000",
        "MoveTo 102,12", "LineTo 102,2 #000000", "LineTo 117,2 #000000",
    };
    ExpectLines(kUpperBox, Only(upper, {"MoveTo", "LineTo"}));

    // While the upper button is down, the lower one draws the seam that the taller upper one would cover.
    auto lowerAlone = Only(Spin(2), {"MoveTo", "LineTo"});
    c->m_nSpinPressed = 1;
    auto lowerWithSeam = Only(Spin(2), {"MoveTo", "LineTo"});
    ASSERT_EQ(lowerWithSeam.size(), lowerAlone.size() + 2);
    EXPECT_EQ(std::vector<std::string>(lowerWithSeam.begin(), lowerWithSeam.end() - 2), lowerAlone);
    EXPECT_EQ(lowerWithSeam[lowerWithSeam.size() - 2], "MoveTo 102,12");
    EXPECT_EQ(lowerWithSeam.back(), "LineTo 118,12 #A0A0A0");
}

TEST_F(Buttons, LargeBevelsDrawEveryDropRingButStopTheSpinRings)
{
    c->m_nButtonBevel = 7;
    auto drop = Drop();
    EXPECT_EQ(Count(drop, "#FFFFFF"), 14u);
    EXPECT_EQ(Count(drop, "#A0A0A0"), 14u);
    // The innermost drop ring, i = 6.
    EXPECT_NE(std::find(drop.begin(), drop.end(), "LineTo 109,9 #FFFFFF"), drop.end());
    // A spin button 16 by 10 stops after i = 10 / 4 = 2, that is three rings.
    auto upper = Spin(1);
    EXPECT_EQ(Count(upper, "#FFFFFF"), 6u);
    EXPECT_EQ(Count(upper, "#A0A0A0"), 6u);
    // A negative bevel draws no rings and no black box, and widens the arrow's base.
    c->m_nButtonBevel = -2;
    drop = Drop();
    EXPECT_EQ(Count(drop, "#FFFFFF"), 0u);
    EXPECT_EQ(Count(drop, "LineTo"), 4u);
}

TEST_F(Buttons, PressedRegularButtonsAreFlatWithAShadowOutline)
{
    c->m_nButtonFillType = FillVertical;
    c->m_nDropPressed = 1;
    ExpectLines({"Rectangle 102,2,118,22 #F0F0F0 pen #A0A0A0", "Polygon 110,14 107,11 113,11 #000000"}, Drop());

    c->m_nSpinPressed = 1;
    ExpectLines({"Rectangle 102,2,118,12 #F0F0F0 pen #A0A0A0", "Polygon 111,6 108,9 114,9 #000000"}, Spin(1));
    // Only the pressed one changes.
    EXPECT_EQ(Spin(2).front(), "FillRect 102,12,118,13 #F0F0F0");
    // With a drop button beside it, the spin button leaves its left column to the drop button.
    c->m_bDropButton = TRUE;
    EXPECT_EQ(Spin(1).front(), "Rectangle 103,2,118,12 #F0F0F0 pen #A0A0A0");
}

TEST_F(Buttons, FlatLookShiftsTheFaceAndDropsTheBevel)
{
    Flat();
    // Over a lowered border the face grows out by one, and the arrow stays where it was.
    ExpectLines({"FillRect 102,1,119,23 #F0F0F0", "Polygon 109,13 106,10 112,10 #000000"}, Drop());
    ExpectLines({"FillRect 103,1,119,12 #F0F0F0", "Polygon 110,5 107,8 113,8 #000000"}, Spin(1));
    ExpectLines({"FillRect 103,12,119,23 #F0F0F0", "Polygon 110,18 107,15 113,15 #000000"}, Spin(2));
    // Next to the spin column the drop face is one narrower instead.
    c->m_bSpinButton = TRUE;
    EXPECT_EQ(Drop().front(), "FillRect 87,1,102,23 #F0F0F0");
    // Under a border with no 3-D lines it comes in by one.
    c->m_bSpinButton = FALSE;
    Border(BorderNone);
    EXPECT_EQ(Drop().front(), "FillRect 104,1,119,23 #F0F0F0");
    EXPECT_EQ(Spin(1).front(), "FillRect 105,1,119,12 #F0F0F0");
    EXPECT_EQ(Spin(2).front(), "FillRect 105,12,119,23 #F0F0F0");
    // Hovering brings the active look back.
    Border(BorderLowered);
    c->m_bMouseOver = TRUE;
    ExpectLines(kDropAlone, Drop());
}

TEST_F(Buttons, ModernButtonsHaveAFrameWithCornerDots)
{
    c->m_nButtonStyle = ButtonModern;
    const std::vector<std::string> kModernDrop = {
        "FillRect 102,4,116,20 #F0F0F0",
        "MoveTo 102,4", "LineTo 115,4 #F0F0F0", "LineTo 115,19 #F0F0F0", "LineTo 102,19 #F0F0F0", "LineTo 102,4 #F0F0F0",
        "SetPixel 102,4 #FFFFFF", "SetPixel 115,19 #FFFFFF", "SetPixel 115,4 #FFFFFF", "SetPixel 102,19 #FFFFFF",
        "Polygon 109,13 106,10 112,10 #000000",
    };
    ExpectLines(kModernDrop, Drop());
    // The modern spin column keeps one pixel off the inset on three sides.
    auto upper = Spin(1);
    EXPECT_EQ(upper.front(), "FillRect 101,3,117,12 #F0F0F0");
    EXPECT_EQ(upper[1], "MoveTo 101,3");
    EXPECT_EQ(Spin(2).front(), "FillRect 101,12,117,21 #F0F0F0");
    // Beside it, the modern drop button keeps a gap of one.
    c->m_bSpinButton = TRUE;
    EXPECT_EQ(Drop().front(), "FillRect 85,4,99,20 #F0F0F0");
    c->m_bSpinButton = FALSE;

    // ReverseBorder swaps line and dots.
    c->m_bReverseBorder = TRUE;
    auto reversed = Only(Drop(), {"LineTo", "SetPixel"});
    EXPECT_EQ(reversed.front(), "LineTo 115,4 #FFFFFF");
    EXPECT_EQ(reversed.back(), "SetPixel 102,19 #F0F0F0");
    c->m_bReverseBorder = FALSE;

    // Pressed: flat in the back colour whatever the fill type, the same frame, the arrow one right and down.
    c->m_nButtonFillType = FillDiagonal;
    c->m_nDropPressed = 1;
    auto pressed = Drop();
    EXPECT_EQ(pressed.front(), "FillRect 102,4,116,20 #F0F0F0");
    EXPECT_EQ(pressed[1], "MoveTo 102,4");
    EXPECT_EQ(pressed.back(), "Polygon 110,14 107,11 113,11 #000000");

    // Flat: the drop face moves as in the regular style, the frame does not; the spin face does not move.
    c->m_nDropPressed = 0;
    c->m_nButtonFillType = FillSolid;
    Flat();
    auto flat = Drop();
    EXPECT_EQ(flat[0], "FillRect 102,3,117,21 #F0F0F0");
    EXPECT_EQ(flat[1], "MoveTo 102,4");
    EXPECT_EQ(Spin(1).front(), "FillRect 101,3,117,12 #F0F0F0");
}

TEST_F(Buttons, GlyphChoiceColourAndPicture)
{
    // Line arrows on the drop button go in the fill rectangle.
    c->m_nArrowType = ArrowLine1;
    auto lines = Only(Drop(), {"MoveTo", "LineTo"});
    ASSERT_GE(lines.size(), 9u);
    ExpectLines({"MoveTo 107,10", "LineTo 110,13 #000000", "LineTo 114,9 #000000", "MoveTo 107,11", "LineTo 110,14 #000000",
                 "LineTo 114,10 #000000", "MoveTo 106,11", "LineTo 110,15 #000000", "LineTo 115,10 #000000"},
                std::vector<std::string>(lines.end() - 9, lines.end()));
    // The spin buttons: up on the upper, down on the lower.
    auto upper = Spin(1), lower = Spin(2);
    EXPECT_EQ(upper[upper.size() - 9], "MoveTo 106,8");
    EXPECT_EQ(lower[lower.size() - 9], "MoveTo 107,15");

    // Disabled: the glyph in the disabled colour, the face as it was.
    c->m_nArrowType = ArrowSmall;
    c->SetEnabled(FALSE);
    auto drop = Drop();
    EXPECT_EQ(drop.front(), kDropAlone.front());
    EXPECT_EQ(drop.back(), "Polygon 109,13 106,10 112,10 #808080");
    EXPECT_EQ(Spin(2).back(), "Polygon 110,18 107,15 113,15 #808080");
    c->SetEnabled(TRUE);

    // A bitmap picture replaces the arrow; a metafile counts as no picture.
    ASSERT_TRUE(c->m_picDrop.CreateFromBitmap(::CreateBitmap(8, 8, 1, 32, nullptr), nullptr, TRUE));
    c->UpdatePictureSize();
    EXPECT_EQ(Count(Drop(), "Polygon"), 0u);
    ASSERT_TRUE(c->m_picDrop.CreateFromMetafile(nullptr, 0, 0));
    EXPECT_EQ(Drop().back(), kDropAlone.back());
    c->m_picDrop.SetPicture(nullptr);
}

TEST_F(Buttons, FacePaintsSpinsThenDropThenBorder)
{
    c->m_bSpinButton = TRUE;
    c->m_bDropButton = TRUE;
    auto face = Only(Log([&](CDC* dc) { c->DrawControlFace(dc, kControl); }), {"FillRect", "Polygon", "Polyline"});
    const std::vector<std::string> kFaceOrder = {
        "FillRect 102,2,118,12 #F0F0F0", "Polygon 110,5 107,8 113,8 #000000",
        "FillRect 102,12,118,22 #F0F0F0", "Polygon 110,18 107,15 113,15 #000000",
        "FillRect 87,2,103,22 #F0F0F0", "Polygon 94,13 91,10 97,10 #000000",
        "Polyline 0,23 0,0 119,0 #A0A0A0", "Polyline 0,23 119,23 119,-1 #FFFFFF",
        "Polyline 1,22 118,22 118,0 #E3E3E3", "Polyline 1,22 1,1 118,1 #000000",
    };
    ExpectLines(kFaceOrder, face);
    c->m_bSpinButton = FALSE;
    c->m_bDropButton = FALSE;
    EXPECT_EQ(Only(Log([&](CDC* dc) { c->DrawControlFace(dc, kControl); }), {"FillRect", "Polygon"}).size(), 0u);
}

TEST_F(Buttons, APressedButtonLooksDifferentFromAReleasedOne)
{
    c->m_nButtonFillType = FillVertical;
    c->m_clrDropBack = 0x000000;
    c->m_clrDropBackTo = 0xFFFFFF;
    c->m_clrDropFore = 0x0000FF;
    c->DrawDropButton(&m_dc, kControl);
    // Released: a gradient down the face, a white ring inside, the red arrow's base at row 10.
    EXPECT_LT(GetRValue(Pixel(110, 4)), GetRValue(Pixel(110, 18)));
    EXPECT_EQ(Pixel(103, 10), RGB(255, 255, 255));
    EXPECT_EQ(Pixel(106, 10), RGB(255, 0, 0));
    EXPECT_NE(Pixel(113, 11), RGB(255, 0, 0));

    c->m_nDropPressed = 1;
    c->DrawDropButton(&m_dc, kControl);
    // Pressed: flat in the back colour inside a shadow outline, the arrow one pixel right and down.
    EXPECT_EQ(Pixel(110, 4), Pixel(110, 18));
    EXPECT_EQ(Pixel(103, 10), RGB(0, 0, 0));
    EXPECT_EQ(Pixel(102, 10), RGB(0xA0, 0xA0, 0xA0));
    EXPECT_NE(Pixel(106, 10), RGB(255, 0, 0));
    EXPECT_EQ(Pixel(113, 11), RGB(255, 0, 0));
}
