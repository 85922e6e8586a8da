// Tests of the GDI stand-in's fonts and text: resolution, metrics, measuring, DrawText placement and clipping.
#include "gdi_test_util.h"

namespace {
const COLORREF kWhite = RGB(255, 255, 255);
const COLORREF kBlack = RGB(0, 0, 0);

HFONT MakeFont(const char16_t* pszFace, int nHeight, int nWeight = FW_NORMAL)
{
    LOGFONTW lf{};
    lf.lfHeight = nHeight;
    lf.lfWeight = nWeight;
    for (int i = 0; pszFace[i]; ++i)
        lf.lfFaceName[i] = pszFace[i];
    return CreateFontIndirect(&lf);
}

// The box around all pixels that are not clrBack, as (left, top, right, bottom), half open; empty if none.
RECT Ink(const Canvas& c, int cx, int cy, COLORREF clrBack = kWhite)
{
    RECT rc{cx, cy, -1, -1};
    for (int y = 0; y < cy; ++y)
        for (int x = 0; x < cx; ++x)
            if (c.At(x, y) != clrBack) {
                rc.left = std::min<LONG>(rc.left, x), rc.right = std::max<LONG>(rc.right, x + 1);
                rc.top = std::min<LONG>(rc.top, y), rc.bottom = std::max<LONG>(rc.bottom, y + 1);
            }
    return rc;
}

SIZE Extent(HDC hdc, const char16_t* psz)
{
    SIZE sz{};
    GetTextExtentPoint32(hdc, psz, static_cast<int>(std::u16string(psz).size()), &sz);
    return sz;
}
}  // namespace

class GdiText : public GdiTest {};

TEST_F(GdiText, FacesResolveAndMetricsHangTogether)
{
    EXPECT_EQ(MulDiv(8, 96, 72), 11);
    EXPECT_EQ(MulDiv(-9, 96, 72), -12);
    EXPECT_EQ(MulDiv(1, 2, 0), -1);
    HFONT hArial = MakeFont(u"Arial", -MulDiv(10, 96, 72));
    EXPECT_NE(GdiGetFontFile(hArial).find("LiberationSans"), std::string::npos) << GdiGetFontFile(hArial);
    HFONT hOdd = MakeFont(u"No Such Face", -12);
    EXPECT_FALSE(GdiGetFontFile(hOdd).empty());  // some face always answers

    Canvas c(10, 10);
    TEXTMETRICW tm{};
    {
        Selected font(c.dc(), hArial);
        ASSERT_TRUE(GetTextMetrics(c.dc(), &tm));
    }
    EXPECT_EQ(tm.tmHeight, tm.tmAscent + tm.tmDescent);
    EXPECT_EQ(tm.tmInternalLeading, tm.tmHeight - 13);  // lfHeight -13 asks for a 13-pixel em
    EXPECT_GT(tm.tmAscent, 2 * tm.tmDescent);
    EXPECT_GT(tm.tmAveCharWidth, 3);
    EXPECT_LT(tm.tmAveCharWidth, 10);

    // A positive height asks for the cell height instead.
    HFONT hCell = MakeFont(u"Arial", tm.tmHeight);
    TEXTMETRICW tmCell{};
    {
        Selected font(c.dc(), hCell);
        GetTextMetrics(c.dc(), &tmCell);
    }
    EXPECT_EQ(tmCell.tmHeight, tm.tmHeight);
    DeleteObject(hOdd);
    // The default GUI font and the DC's default font both work without selection by the caller.
    EXPECT_TRUE(GetTextMetrics(c.dc(), &tm));
    EXPECT_GT(tm.tmHeight, 10);
}

TEST_F(GdiText, ExtentsAddUpAndDrawTextMeasures)
{
    Canvas c(10, 10);
    Selected font(c.dc(), MakeFont(u"Arial", -13));
    TEXTMETRICW tm{};
    GetTextMetrics(c.dc(), &tm);
    SIZE ab = Extent(c.dc(), u"ab"), a = Extent(c.dc(), u"a"), b = Extent(c.dc(), u"b");
    EXPECT_EQ(ab.cx, a.cx + b.cx);
    EXPECT_EQ(ab.cy, tm.tmHeight);
    EXPECT_LT(Extent(c.dc(), u"iii").cx, Extent(c.dc(), u"WWW").cx);
    EXPECT_EQ(Extent(c.dc(), u"").cx, 0);

    for (UINT align : {DT_LEFT, DT_CENTER, DT_RIGHT}) {
        RECT rc{5, 7, 5, 7};
        EXPECT_EQ(DrawText(c.dc(), u"Hello", -1, &rc, DT_CALCRECT | DT_SINGLELINE | DT_NOPREFIX | align), tm.tmHeight);
        EXPECT_EQ(CRect(rc), CRect(5, 7, 5 + Extent(c.dc(), u"Hello").cx, 7 + tm.tmHeight));
    }
    RECT rcEmpty{0, 0, 0, 0};
    DrawText(c.dc(), u"", -1, &rcEmpty, DT_CALCRECT | DT_SINGLELINE);
    EXPECT_EQ(CRect(rcEmpty), CRect(0, 0, 0, tm.tmHeight));

    // Prefix marks are not shown unless DT_NOPREFIX; "&&" shows one ampersand.
    RECT rcPrefix{0, 0, 0, 0}, rcPlain{0, 0, 0, 0}, rcRaw{0, 0, 0, 0};
    DrawText(c.dc(), u"&File && more", -1, &rcPrefix, DT_CALCRECT | DT_SINGLELINE);
    DrawText(c.dc(), u"File & more", -1, &rcPlain, DT_CALCRECT | DT_SINGLELINE | DT_NOPREFIX);
    DrawText(c.dc(), u"&File && more", -1, &rcRaw, DT_CALCRECT | DT_SINGLELINE | DT_NOPREFIX);
    EXPECT_EQ(rcPrefix.right, rcPlain.right);
    EXPECT_GT(rcRaw.right, rcPlain.right);

    // Without DT_SINGLELINE a line break makes a second line.
    RECT rcTwo{0, 0, 0, 0};
    EXPECT_EQ(DrawText(c.dc(), u"ab\r\nWWW", -1, &rcTwo, DT_CALCRECT), 2 * tm.tmHeight);
    EXPECT_EQ(rcTwo.right, Extent(c.dc(), u"WWW").cx);
}

TEST_F(GdiText, TextIsVisibleDeterministicAndInsideItsCell)
{
    auto render = [](Canvas& c, int nWeight) {
        Selected font(c.dc(), MakeFont(u"Arial", -13, nWeight));
        SetBkMode(c.dc(), TRANSPARENT);
        TextOut(c.dc(), 2, 3, u"Quillon 12-34", 13);
        return Extent(c.dc(), u"Quillon 12-34");
    };
    Canvas first(120, 24), second(120, 24), bold(120, 24);
    SIZE sz = render(first, FW_NORMAL);
    render(second, FW_NORMAL);
    render(bold, FW_BOLD);
    EXPECT_EQ(first.Picture(), second.Picture());
    int nInk = first.Count(kBlack);
    EXPECT_GT(nInk, 60);
    EXPECT_EQ(nInk + first.Count(kWhite), 120 * 24);  // monochrome: no grey edges
    EXPECT_GT(bold.Count(kBlack), nInk);
    RECT ink = Ink(first, 120, 24);
    EXPECT_GE(ink.left, 2);
    EXPECT_LE(ink.right, 2 + sz.cx);
    EXPECT_GE(ink.top, 3);
    EXPECT_LE(ink.bottom, 3 + sz.cy);
    EXPECT_LT(ink.left, 4);  // the text starts where it was put
}

TEST_F(GdiText, DrawTextAlignsCentresAndClipsToItsRectangle)
{
    const RECT rcBox{10, 4, 110, 36};
    auto draw = [&](Canvas& c, const char16_t* psz, UINT format) {
        Selected font(c.dc(), MakeFont(u"Arial", -13));
        SetBkMode(c.dc(), TRANSPARENT);
        RECT rc = rcBox;
        DrawText(c.dc(), psz, -1, &rc, format);
        TEXTMETRICW tm{};
        GetTextMetrics(c.dc(), &tm);
        return std::make_pair(Extent(c.dc(), psz).cx, tm.tmHeight);
    };
    Canvas left(130, 40), centre(130, 40), right(130, 40), vcentre(130, 40);
    auto [cx, cy] = draw(left, u"abc", DT_SINGLELINE | DT_LEFT);
    draw(centre, u"abc", DT_SINGLELINE | DT_CENTER);
    draw(right, u"abc", DT_SINGLELINE | DT_RIGHT);
    draw(vcentre, u"abc", DT_SINGLELINE | DT_VCENTER);
    RECT l = Ink(left, 130, 40), c = Ink(centre, 130, 40), r = Ink(right, 130, 40), v = Ink(vcentre, 130, 40);
    EXPECT_EQ(c.left - l.left, (100 - cx) / 2);
    EXPECT_EQ(r.left - l.left, 100 - cx);
    EXPECT_EQ(v.top - l.top, (32 - cy) / 2);
    EXPECT_EQ(v.left, l.left);

    // Text wider than the rectangle is cut at its edges, on every side; DT_NOCLIP lets it run on.
    Canvas clipped(130, 40), free(130, 40);
    draw(clipped, u"WWWWWWWWWWWWWWWWWWWW", DT_SINGLELINE | DT_CENTER | DT_VCENTER);
    draw(free, u"WWWWWWWWWWWWWWWWWWWW", DT_SINGLELINE | DT_CENTER | DT_VCENTER | DT_NOCLIP);
    RECT ci = Ink(clipped, 130, 40), fi = Ink(free, 130, 40);
    EXPECT_GE(ci.left, rcBox.left);
    EXPECT_LE(ci.right, rcBox.right);
    EXPECT_GT(clipped.Count(kBlack), 100);
    EXPECT_LT(fi.left, rcBox.left);
    EXPECT_GT(fi.right, rcBox.right);

    Canvas tall(130, 40);
    {
        Selected font(tall.dc(), MakeFont(u"Arial", -30));
        RECT rc{10, 10, 120, 20};
        SetBkMode(tall.dc(), TRANSPARENT);
        DrawText(tall.dc(), u"Hg", -1, &rc, DT_SINGLELINE);
    }
    RECT ti = Ink(tall, 130, 40);
    EXPECT_GE(ti.top, 10);
    EXPECT_LE(ti.bottom, 20);
}

TEST_F(GdiText, BackgroundModesAndOpaqueRectangles)
{
    Canvas c(60, 20, kWhite);
    Selected font(c.dc(), MakeFont(u"Arial", -13));
    SetBkColor(c.dc(), RGB(0, 0, 255));
    SetTextColor(c.dc(), RGB(255, 0, 0));
    SIZE sz = Extent(c.dc(), u"Hi");
    TextOut(c.dc(), 1, 1, u"Hi", 2);  // OPAQUE by default: the cell takes the background colour
    EXPECT_EQ(c.At(1, 1), RGB(0, 0, 255));
    EXPECT_EQ(c.At(sz.cx, sz.cy), RGB(0, 0, 255));
    EXPECT_EQ(c.At(sz.cx + 1, 1), kWhite);
    EXPECT_GT(c.Count(RGB(255, 0, 0)), 10);

    c.Fill(kWhite);
    SetBkMode(c.dc(), TRANSPARENT);
    TextOut(c.dc(), 1, 1, u"Hi", 2);
    EXPECT_EQ(c.Count(RGB(0, 0, 255)), 0);

    c.Fill(kWhite);
    RECT rc{0, 0, 40, 20};
    ExtTextOut(c.dc(), 1, 1, ETO_OPAQUE | ETO_CLIPPED, &rc, u"Hi", 2, nullptr);  // fills rc whatever the mode
    EXPECT_EQ(c.Count(RGB(0, 0, 255)) + c.Count(RGB(255, 0, 0)), 40 * 20);
}

TEST_F(GdiText, DrawTextIsLoggedWithItsFlags)
{
    Canvas c(100, 20);
    SetTextColor(c.dc(), RGB(0x12, 0x34, 0x56));
    GdiSetDrawLog(TRUE);
    RECT rc{3, 3, 96, 18};
    DrawText(c.dc(), u"12-\"34\"", -1, &rc, DT_CALCRECT | DT_SINGLELINE);  // measuring is not drawing
    rc = RECT{3, 3, 96, 18};
    DrawText(c.dc(), u"12-\"34\"", -1, &rc, DT_SINGLELINE | DT_NOPREFIX | DT_RIGHT);
    TextOut(c.dc(), 1, 2, u"\u00e9", 1);
    EXPECT_EQ(GdiGetDrawLog(), (std::vector<std::string>{
                                   "DrawText 3,3,96,18 \"12-\\\"34\\\"\" #123456 DT_RIGHT|DT_SINGLELINE|DT_NOPREFIX",
                                   "TextOut 1,2 \"\xc3\xa9\" #123456",
                               }));
}

// Glyphs too large to keep are rasterised within the clip only: what a clip lets through must be
// exactly what the whole drawing has there, and the whole drawing must sit where the metrics say.
TEST_F(GdiText, HugeGlyphsDrawWithinTheClipAsTheyWouldWhole)
{
    constexpr int kEm = 600, kSide = 700;
    HFONT hFont = MakeFont(u"Arial", -kEm);
    Canvas whole(kSide, kSide), part(kSide, kSide);
    const RECT clip{150, 200, 330, 224};
    TEXTMETRICW tm{};
    SIZE ext{};
    {
        Selected a(whole.dc(), hFont), b(part.dc(), hFont);
        GetTextMetrics(whole.dc(), &tm);
        ext = Extent(whole.dc(), u"H");
        TextOut(whole.dc(), 0, 0, u"H", 1);
        ExtTextOut(part.dc(), 0, 0, ETO_CLIPPED, &clip, u"H", 1, nullptr);
    }
    RECT ink = Ink(whole, kSide, kSide);
    EXPECT_GT(ink.left, 0);
    EXPECT_LE(ink.right, ext.cx);
    EXPECT_EQ(ink.bottom, tm.tmAscent);                     // "H" stands on the baseline
    EXPECT_NEAR(ink.bottom - ink.top, kEm * 1409.0 / 2048, 2); // its cap height in Liberation Sans
    int differ = 0, inked = 0;
    for (int y = 0; y < kSide; ++y)
        for (int x = 0; x < kSide; ++x) {
            POINT pt{x, y};
            COLORREF want = PtInRect(&clip, pt) ? whole.At(x, y) : kWhite;
            differ += part.At(x, y) != want;
            inked += PtInRect(&clip, pt) && want == kBlack;
        }
    EXPECT_EQ(differ, 0);
    EXPECT_GT(inked, 0); // the clip crosses a stem
    DeleteObject(hFont);
}

// The largest font a handle takes measures and draws on a small face without rasterising whole glyphs.
TEST_F(GdiText, LargestFontMeasuresAndDrawsOnASmallFace)
{
    HFONT hFont = MakeFont(u"Arial", -32767);
    Canvas c(180, 24);
    {
        Selected font(c.dc(), hFont);
        SIZE ext = Extent(c.dc(), u"Hi");
        EXPECT_GT(ext.cx, 32767 / 2);
        TextOut(c.dc(), -3000, -10000, u"Hi", 2); // the left stem of the H covers the face
    }
    EXPECT_EQ(c.Count(kBlack), 180 * 24);
    DeleteObject(hFont);
}
