// The drop list's geometry as plain arithmetic, its paint by draw-call log and by pixels, and where
// it opens on the screen.
#include "Harness.h"
#include "base/colors.h"
#include "control/QuillonCtrl.h"
#include "droplist/ListGeometry.h"
#include "gdi/standin.h"
#include "user/winuser.h"

using namespace listgeo;

namespace {

std::vector<std::string> Only(const std::vector<std::string>& log, const std::string& prefix)
{
    std::vector<std::string> out;
    for (const auto& l : log)
        if (l.rfind(prefix, 0) == 0) out.push_back(l);
    return out;
}

class ListPaint : public ControlTest {
protected:
    // A focused 120 by 24 control at rc (form coordinates), its list opened by typing "a" over
    // nItems items "a0", "a1", ...
    CControlSite* OpenList(int nItems, SHORT nStyle = ScrollRegular, RECT rc = RECT{10, 10, 130, 34})
    {
        CControlSite* q = m_form->Create(u"QUILLON.QuillonCtrl.2", rc);
        Put(q, u"AutoComplete", COleVariant(SHORT(AutoBoth)));
        Put(q, u"AutoFindSize", COleVariant(SHORT(1)));
        Put(q, u"ScrollStyle", COleVariant(nStyle));
        for (int i = 0; i < nItems; ++i) Inside(q)->AddItem(CString(u"a") + CString(char16_t(u'0' + i)));
        m_host.Pump();
        m_host.Focus(*q);
        m_host.Type(u"a");
        return q;
    }
    CDropList& List(CControlSite* q) { return Inside(q)->m_dropList; }
    // The calls of one whole paint of the open list.
    std::vector<std::string> PaintLog(CControlSite* q)
    {
        GdiSetDrawLog(TRUE);
        List(q).InvalidateRect(nullptr, FALSE);
        m_host.Pump();
        std::vector<std::string> log = GdiGetDrawLog();
        GdiSetDrawLog(FALSE);
        return log;
    }
    CRect ListRect(CControlSite* q)
    {
        CRect rc;
        ::GetWindowRect(List(q).m_hWnd, &rc);
        return rc;
    }
};

// The list of ten candidates, Regular: eight rows of 15 beside the bar, the up arrow's raised edge,
// both triangles, the track below a thumb of 70, the thumb, and the frame.
const std::vector<std::string> kTenRegularShapes = {
    "FillRect 1,1,102,16 #FFFFFF", "FillRect 1,16,102,31 #FFFFFF", "FillRect 1,31,102,46 #FFFFFF",
    "FillRect 1,46,102,61 #FFFFFF", "FillRect 1,61,102,76 #FFFFFF", "FillRect 1,76,102,91 #FFFFFF",
    "FillRect 1,91,102,106 #FFFFFF", "FillRect 1,106,102,121 #FFFFFF", "FillRect 102,1,119,18 #F0F0F0",
    "Polygon 110,8 107,11 113,11 #000000", "FillRect 102,104,119,121 #F0F0F0", "Polygon 110,114 107,111 113,111 #000000",
    "FillRect 102,87,119,104 pattern", "FillRect 102,18,119,88 #F0F0F0", "Polyline 0,0 119,0 119,121 0,121 0,0 #000000"};
// Edge set A on the up arrow (102,1)-(119,18): face, black, white and shadow lines.
const std::vector<std::string> kUpArrowEdges = {
    "MoveTo 102,17", "LineTo 102,1 #F0F0F0", "LineTo 119,1 #F0F0F0", "MoveTo 118,1", "LineTo 118,17 #000000",
    "LineTo 101,17 #000000", "MoveTo 103,16", "LineTo 103,2 #FFFFFF", "LineTo 118,2 #FFFFFF", "MoveTo 117,2",
    "LineTo 117,16 #A0A0A0", "LineTo 102,16 #A0A0A0"};

// The pointer moving from the first row to the second: only those two rows repaint.
const std::vector<std::string> kHotRowMovesDown = {"FillRect 1,1,102,16 #FFFFFF", "FillRect 1,16,102,31 #3399FF"};

} // namespace

TEST(ListGeometry, PlacementKeepsTheLeftEdgeOnTheScreenAndOpensUpwardsOnlyPastTheBottom)
{
    const ScreenSize screen{1024, 768};
    struct Case {
        RECT control;
        RECT expected;
    } cases[] = {
        {{110, 110, 230, 134}, {110, 134, 230, 256}},
        {{110, 622, 230, 646}, {110, 646, 230, 768}},     // a bottom exactly on the screen's height opens downwards
        {{110, 623, 230, 647}, {110, 501, 230, 623}},     // one more opens upwards, onto the control's top
        {{-50, 110, 70, 134}, {0, 134, 120, 256}},        // a negative left moves to 0
        {{1030, 110, 1150, 134}, {904, 134, 1024, 256}},  // a left beyond the screen comes back to its edge
        {{1000, 110, 1120, 134}, {1000, 134, 1120, 256}}, // running past the right edge is allowed
        {{5, 10, 1205, 34}, {5, 34, 1205, 156}},          // wider than the screen: as wide as the control
        {{110, 700, 230, 724}, {110, 578, 230, 700}},
    };
    for (const Case& c : cases) EXPECT_EQ(CRect(PlaceRect(c.control, screen, 122)), CRect(c.expected)) << c.control.left << "," << c.control.top;
    EXPECT_EQ(ContentHeight(15, 8, 1, 1), 122);
    EXPECT_EQ(ContentHeight(18, 8, 1, 1), 146);
    EXPECT_EQ(ContentHeight(15, 0, 1, 1), 17) << "no row still takes one row's height";
}

TEST(ListGeometry, ThumbShrinksEightPixelsPerRowDownToEightAndTouchesTheEndAtTheLastPosition)
{
    const RECT inner{1, 1, 119, 121}; // eight rows of 15: an 86-pixel track
    for (auto [range, size] : {std::pair{1, 78}, {2, 70}, {10, 8}, {32752, 8}}) {
        BarLayout b = LayoutBar(inner, 17, 0, range, 0);
        EXPECT_EQ(b.nThumbSize, size) << range;
        EXPECT_EQ(CRect(b.rcThumb), CRect(102, 18, 119, 18 + size)) << range;
    }
    BarLayout end = LayoutBar(inner, 17, 0, 12, 12);
    EXPECT_EQ(CRect(end.rcThumb), CRect(102, 96, 119, 104));
    EXPECT_EQ(CRect(end.rcPageUp), CRect(102, 18, 119, 96));
    BarLayout mid = LayoutBar(inner, 17, 0, 12, 5);
    EXPECT_EQ(CRect(mid.rcThumb), CRect(102, 50, 119, 58)) << "18 + 78 * 5 / 12, truncated";
    BarLayout cramped = LayoutBar(RECT{1, 1, 119, 42}, 17, 0, 3, 0);
    EXPECT_TRUE(CRect(cramped.rcThumb).IsRectEmpty()) << "a track of 7 has no thumb";
    EXPECT_EQ(CRect(cramped.rcPageUp), CRect(102, 18, 119, 25));
    EXPECT_EQ(CRect(cramped.rcPageDown), CRect(cramped.rcPageUp));
}

TEST(ListGeometry, ArrowsAndThumbBands)
{
    glyph::Triangle t{};
    ASSERT_TRUE(ArrowTriangle(RECT{102, 1, 119, 18}, true, 0, &t));
    EXPECT_EQ(std::vector<LONG>({t.apex.x, t.apex.y, t.left.x, t.left.y, t.right.x, t.right.y}),
              std::vector<LONG>({110, 8, 107, 11, 113, 11}));
    ASSERT_TRUE(ArrowTriangle(RECT{0, 0, 10, 10}, false, 1, &t)); // a = 1: height 2; even width: one left
    EXPECT_EQ(std::vector<LONG>({t.apex.x, t.apex.y, t.left.x, t.left.y, t.right.x, t.right.y}),
              std::vector<LONG>({5, 7, 4, 5, 6, 5}));
    EXPECT_FALSE(ArrowTriangle(RECT{0, 0, 7, 17}, true, 0, &t)) << "narrower than 8: no triangle";
    // A track of 86, range 2, a thumb of 70: 16 free pixels in three bands.
    for (auto [offset, band] : {std::pair{0, 0}, {5, 0}, {6, 1}, {10, 1}, {11, 2}, {16, 2}})
        EXPECT_EQ(ThumbBand(18 + offset, 70, 18, 104, 2), band) << offset;
    EXPECT_EQ(ThumbBand(18, 8, 18, 26, 3), -1) << "a thumb that fills its track has no band";
}

TEST_F(ListPaint, RegularListPaintsRowsThenBarThenFrame)
{
    CControlSite* q = OpenList(10);
    std::vector<std::string> log = PaintLog(q);
    std::vector<std::string> shapes;
    for (const auto& l : log)
        if (l.rfind("FillRect", 0) == 0 || l.rfind("Polygon", 0) == 0 || l.rfind("Polyline", 0) == 0) shapes.push_back(l);
    ExpectSequence(kTenRegularShapes, shapes);
    auto up = std::find(log.begin(), log.end(), "FillRect 102,1,119,18 #F0F0F0");
    ASSERT_NE(up, log.end());
    ExpectSequence(kUpArrowEdges, std::vector<std::string>(up + 1, up + 1 + kUpArrowEdges.size()));
    EXPECT_EQ(Only(log, "DrawText")[0], "DrawText 3,1,102,16 \"a0\" #000000 DT_VCENTER|DT_SINGLELINE")
        << "the text indent is the control's left inset";

    CControlSite* few = OpenList(3);
    log = PaintLog(few);
    EXPECT_TRUE(Only(log, "Polygon").empty()) << "three candidates: no bar";
    EXPECT_EQ(Only(log, "FillRect")[0], "FillRect 1,1,119,16 #FFFFFF") << "rows take the whole width";
}

TEST_F(ListPaint, PressedArrowsHotRowAndTheOtherLooks)
{
    CControlSite* q = OpenList(10);
    CRect rc = ListRect(q);
    m_host.Move(rc.left + 20, rc.top + 1 + 7);
    GdiSetDrawLog(TRUE);
    m_host.Move(rc.left + 20, rc.top + 1 + 15 + 7);
    std::vector<std::string> moved = Only(GdiGetDrawLog(), "FillRect");
    GdiSetDrawLog(FALSE);
    ExpectSequence(kHotRowMovesDown, moved);
    EXPECT_EQ(m_host.Pixel(rc.left + 60, rc.top + 20), RGB(0x33, 0x99, 0xFF)) << "the hot row, the whole width";
    EXPECT_EQ(m_host.Pixel(rc.left + 60, rc.top + 5), RGB(0xFF, 0xFF, 0xFF));
    EXPECT_EQ(m_host.Pixel(rc.left, rc.top + 50), RGB(0, 0, 0)) << "the frame";
    m_host.Press(rc.left + 110, rc.top + 5);
    std::vector<std::string> log = PaintLog(q);
    EXPECT_EQ(Only(log, "Polygon")[0], "Polygon 111,9 108,12 114,12 #000000") << "a pressed arrow moves its triangle";
    EXPECT_EQ(Only(log, "Rectangle")[0], "Rectangle 102,1,119,18 #F0F0F0 pen #A0A0A0");
    m_host.Release(rc.left + 110, rc.top + 5);
    m_host.Key(VK_ESCAPE);

    CControlSite* thin = OpenList(10, ScrollThin, RECT{10, 40, 130, 64});
    log = PaintLog(thin);
    EXPECT_TRUE(Only(log, "LineTo 118,17 #000000").empty()) << "set B has no black line";
    EXPECT_EQ(Only(log, "LineTo 102,1 #FFFFFF").size(), 1u) << "set B starts white";
    m_host.Key(VK_ESCAPE);

    CControlSite* modern = OpenList(10, ScrollModern, RECT{10, 70, 130, 94});
    log = PaintLog(modern);
    EXPECT_EQ(Only(log, "LineTo 109,5 #000000").size(), 1u) << "Modern arrows are chevrons in ScrollForeColor";
    EXPECT_EQ(Only(log, "LineTo 113,51 #434E54").size(), 1u) << "a grip line in ScrollBackColorTo";
    EXPECT_EQ(Only(log, "SetPixel 102,20").size(), 1u) << "the grip's corner pixels";
    EXPECT_FALSE(Only(log, "Polyline 104,19 115,19 116,20").empty()) << "the thumb's rounded outline";
}

TEST_F(ListPaint, OpensAboveAtTheScreensBottomAndWithinTheVirtualScreen)
{
    m_host.Screen(1024, 300);
    CControlSite* q = OpenList(10, ScrollRegular, RECT{10, 160, 130, 184});
    EXPECT_EQ(ListRect(q), CRect(110, 138, 230, 260)) << "the list ends on the control's top";
    m_host.Key(VK_ESCAPE);
    m_host.Screen(1024, 768, 2);
    CForm* left = m_host.NewForm(RECT{-200, 100, 0, 300});
    m_form = left;
    CControlSite* off = OpenList(3, ScrollRegular, RECT{10, 10, 130, 34});
    EXPECT_EQ(ListRect(off), CRect(0, 134, 120, 181)) << "a negative left moves to 0";
}

TEST_F(ListPaint, TrackPatternFollowsTheScrollBarColour)
{
    CControlSite* q = OpenList(10);
    EXPECT_EQ(List(q).m_rgbPatternFor, RGB(0xC8, 0xC8, 0xC8));
    const CBitmap* pBuffer = List(q).m_pBuffer;
    const int nObjects = GdiGetLiveObjectCount();
    m_host.SysColor(COLOR_BTNHIGHLIGHT, RGB(0xFE, 0xFE, 0xFE));
    EXPECT_EQ(List(q).m_rgbPatternFor, RGB(0xC8, 0xC8, 0xC8)) << "the highlight alone rebuilds nothing";
    m_host.SysColor(COLOR_SCROLLBAR, RGB(0x80, 0, 0));
    PaintLog(q);
    EXPECT_EQ(List(q).m_pBuffer, pBuffer) << "the back buffer stays while the size does";
    EXPECT_EQ(GdiGetLiveObjectCount(), nObjects);
    EXPECT_EQ(List(q).m_rgbPatternFor, RGB(0x80, 0, 0));
    CRect rc = ListRect(q);
    COLORREF a = m_host.Pixel(rc.left + 108, rc.top + 95), b = m_host.Pixel(rc.left + 109, rc.top + 95);
    EXPECT_NE(a, b) << "a checkerboard";
    EXPECT_TRUE(a == RGB(0x80, 0, 0) || b == RGB(0x80, 0, 0));
}
