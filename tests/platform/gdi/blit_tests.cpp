// Tests of the GDI stand-in's block transfers: every raster operation, mono/colour rules, stretching, clipping.
#include "gdi_test_util.h"

namespace {
const COLORREF kWhite = RGB(255, 255, 255);
const COLORREF kBlack = RGB(0, 0, 0);
const COLORREF kRed = RGB(255, 0, 0);
const COLORREF kBlue = RGB(0, 0, 255);
const COLORREF kGrey = RGB(128, 128, 128);

// One pixel per combination: column x has P = bit 2 of x, S = bit 1, D = bit 0 (1 is white).
COLORREF Bit(int x, int nBit) { return (x >> nBit) & 1 ? kWhite : kBlack; }
}  // namespace

class GdiBlit : public GdiTest {};

TEST_F(GdiBlit, EveryOperationIndexGivesItsTruthTable)
{
    Canvas pat(8, 8), src(8, 1), dst(8, 1);
    for (int x = 0; x < 8; ++x) {
        for (int y = 0; y < 8; ++y)
            SetPixel(pat.dc(), x, y, Bit(x, 2));
        SetPixel(src.dc(), x, 0, Bit(x, 1));
    }
    HBRUSH hbr = CreatePatternBrush(pat.bitmap());
    HGDIOBJ hOld = SelectObject(dst.dc(), hbr);
    for (int idx = 0; idx < 256; ++idx) {
        for (int x = 0; x < 8; ++x)
            SetPixel(dst.dc(), x, 0, Bit(x, 0));
        // The low word of a real code does not matter to the result; the named codes keep theirs.
        DWORD rop = static_cast<DWORD>(idx) << 16;
        static const DWORD kNamed[] = {SRCCOPY, SRCAND, SRCPAINT, SRCINVERT, PATCOPY, 0xB8074A};
        for (DWORD named : kNamed)
            if ((named >> 16) == static_cast<DWORD>(idx))
                rop = named;
        ASSERT_TRUE(BitBlt(dst.dc(), 0, 0, 8, 1, src.dc(), 0, 0, rop));
        for (int x = 0; x < 8; ++x)
            ASSERT_EQ(dst.At(x, 0), ((idx >> x) & 1) ? kWhite : kBlack) << "index " << idx << " column " << x;
    }
    SelectObject(dst.dc(), hOld);
    DeleteObject(hbr);
}

TEST_F(GdiBlit, NamedCodesMatchTheirFormulas)
{
    // Colours rather than black and white, so every bit of every channel takes part.
    const COLORREF p = RGB(0x5A, 0xC3, 0x0F), s = RGB(0x33, 0x99, 0xF0), d = RGB(0x6C, 0x1E, 0xA5);
    struct { DWORD rop; COLORREF expect; } cases[] = {
        {SRCCOPY, s}, {SRCAND, s & d}, {SRCPAINT, s | d}, {SRCINVERT, s ^ d}, {SRCERASE, s & (~d & 0xFFFFFF)},
        {NOTSRCCOPY, ~s & 0xFFFFFF}, {MERGEPAINT, (~s | d) & 0xFFFFFF}, {PATCOPY, p}, {PATINVERT, p ^ d},
        {DSTINVERT, ~d & 0xFFFFFF}, {BLACKNESS, 0}, {WHITENESS, 0xFFFFFF}, {0xB8074A, ((d ^ p) & s) ^ p},
    };
    Canvas src(1, 1, s), dst(1, 1);
    HBRUSH hbr = CreateSolidBrush(p);
    HGDIOBJ hOld = SelectObject(dst.dc(), hbr);
    for (const auto& c : cases) {
        SetPixel(dst.dc(), 0, 0, d);
        BitBlt(dst.dc(), 0, 0, 1, 1, src.dc(), 0, 0, c.rop);
        EXPECT_EQ(dst.At(0, 0), c.expect) << std::hex << c.rop;
    }
    SetPixel(dst.dc(), 0, 0, d);
    PatBlt(dst.dc(), 0, 0, 1, 1, PATINVERT);
    EXPECT_EQ(dst.At(0, 0), p ^ d);
    EXPECT_FALSE(PatBlt(dst.dc(), 0, 0, 1, 1, SRCCOPY));  // needs a source
    SelectObject(dst.dc(), hOld);
    DeleteObject(hbr);
}

TEST_F(GdiBlit, MonoAndColourConversions)
{
    // One-bit to colour: 1 takes the destination's background colour, 0 its text colour.
    Canvas mono(4, 1, kBlack, 1);
    SetPixel(mono.dc(), 0, 0, kWhite);
    SetPixel(mono.dc(), 2, 0, kWhite);
    Canvas colour(4, 1, kGrey);
    SetTextColor(colour.dc(), kRed);
    SetBkColor(colour.dc(), kBlue);
    BitBlt(colour.dc(), 0, 0, 4, 1, mono.dc(), 0, 0, SRCCOPY);
    EXPECT_EQ(colour.Picture(kGrey, {{kRed, 'R'}, {kBlue, 'B'}})[0], "BRBR");

    // Colour to one-bit: pixels equal to the source's background colour give 1, all others 0.
    SetBkColor(colour.dc(), kRed);
    Canvas mono2(4, 1, kGrey, 1);
    BitBlt(mono2.dc(), 0, 0, 4, 1, colour.dc(), 0, 0, SRCCOPY);
    EXPECT_EQ(mono2.Picture(kWhite)[0], "#.#.");

    // The emboss step: where the one-bit source is 0 the destination takes the brush, elsewhere it stays.
    Canvas target(4, 1, kGrey);
    SetBkColor(target.dc(), kWhite);
    SetTextColor(target.dc(), kBlack);
    HBRUSH hbr = CreateSolidBrush(kRed);
    HGDIOBJ hOld = SelectObject(target.dc(), hbr);
    BitBlt(target.dc(), 0, 0, 4, 1, mono.dc(), 0, 0, 0xB8074A);
    SelectObject(target.dc(), hOld);
    DeleteObject(hbr);
    EXPECT_EQ(target.Picture(kGrey, {{kRed, 'R'}})[0], ".R.R");

    // Mono pattern brushes draw 0 bits in the text colour and 1 bits in the background colour.
    HBRUSH hPat = CreatePatternBrush(mono.bitmap());
    RECT rc{0, 0, 4, 1};
    SetTextColor(target.dc(), kBlue);
    SetBkColor(target.dc(), kRed);
    FillRect(target.dc(), &rc, hPat);
    DeleteObject(hPat);
    EXPECT_EQ(target.Picture(kGrey, {{kRed, 'R'}, {kBlue, 'B'}})[0], "RBRB");
}

TEST_F(GdiBlit, StretchAndClipping)
{
    Canvas src(2, 2, kWhite);
    SetPixel(src.dc(), 1, 0, kBlack);
    SetPixel(src.dc(), 0, 1, kBlack);
    Canvas big(4, 4);
    StretchBlt(big.dc(), 0, 0, 4, 4, src.dc(), 0, 0, 2, 2, SRCCOPY);
    EXPECT_EQ(big.Picture(), (std::vector<std::string>{"..##", "..##", "##..", "##.."}));

    // Shrinking ANDs the pixels that fall together by default; COLORONCOLOR keeps one of them.
    Canvas row(4, 1);
    SetPixel(row.dc(), 1, 0, kBlack);
    Canvas half(2, 1);
    StretchBlt(half.dc(), 0, 0, 2, 1, row.dc(), 0, 0, 4, 1, SRCCOPY);
    EXPECT_EQ(half.Picture()[0], "#.");
    SetStretchBltMode(half.dc(), COLORONCOLOR);
    StretchBlt(half.dc(), 0, 0, 2, 1, row.dc(), 0, 0, 4, 1, SRCCOPY);
    EXPECT_EQ(half.Picture()[0], "..");

    // A source smaller than the block limits the copy; the destination clip limits it too.
    Canvas dst(4, 4, kRed);
    BitBlt(dst.dc(), 1, 1, 4, 4, src.dc(), 0, 0, SRCCOPY);
    EXPECT_EQ(dst.Picture(kRed, {{kBlack, 'K'}}), (std::vector<std::string>{"....", ".#K.", ".K#.", "...."}));
    IntersectClipRect(dst.dc(), 0, 0, 1, 4);
    BitBlt(dst.dc(), 0, 0, 4, 4, nullptr, 0, 0, BLACKNESS);
    SelectClipRgn(dst.dc(), nullptr);
    EXPECT_EQ(dst.Count(kBlack), 4 + 2);

    // Copying within one surface works whichever way the areas overlap.
    Canvas same(5, 1);
    SetPixel(same.dc(), 0, 0, kBlack);
    SetPixel(same.dc(), 1, 0, kRed);
    BitBlt(same.dc(), 1, 0, 4, 1, same.dc(), 0, 0, SRCCOPY);
    EXPECT_EQ(same.Picture(kWhite, {{kRed, 'R'}})[0], "##R..");
}

TEST_F(GdiBlit, PatternBrushRepeatsFromTheSurfaceOrigin)
{
    HBITMAP hbm = CreateBitmap(8, 8, 1, 32, nullptr);
    {
        HDC hdc = CreateCompatibleDC(nullptr);
        HGDIOBJ hOld = SelectObject(hdc, hbm);
        for (int y = 0; y < 8; ++y)
            for (int x = 0; x < 8; ++x)
                SetPixel(hdc, x, y, (x + y) % 2 ? kRed : kWhite);
        SelectObject(hdc, hOld);
        DeleteDC(hdc);
    }
    HBRUSH hbr = CreatePatternBrush(hbm);
    DeleteObject(hbm);  // the brush keeps its own copy
    Canvas c(20, 3, kBlack);
    RECT rc{3, 0, 20, 3};
    FillRect(c.dc(), &rc, hbr);
    DeleteObject(hbr);
    for (int y = 0; y < 3; ++y)
        for (int x = 3; x < 20; ++x)
            ASSERT_EQ(c.At(x, y), (x + y) % 2 ? kRed : kWhite) << x << "," << y;
}
