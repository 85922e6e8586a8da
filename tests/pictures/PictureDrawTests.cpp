// The drop picture on a memory DC: placement, plain, masked and embossed drawing, and the masked icon.
#include "PictureKit.h"
#include <array>
#include "base/colors.h"

namespace {

constexpr COLORREF kBack = 0x563412, kRed = 0x0000ff, kGreen = 0x00ff00, kBlue = 0xff0000, kWhite = 0xffffff,
                   kFace = 0xf0f0f0;
const Legend kColours{{'-', kBack}, {'R', kRed}, {'G', kGreen}, {'M', kBlue}, {'W', kWhite}, {'K', 0}, {'F', kFace}};
const CRect kButton(102, 2, 118, 22);

Grid Filled(int cx, int cy, char ch) { return Grid(static_cast<size_t>(cy), std::string(static_cast<size_t>(cx), ch)); }

} // namespace

// Centred with halves truncated toward zero, shifted by the offsets and by one while pressed, in 16 bits;
// a picture larger than the button paints beyond it.
TEST_F(PictureTest, PlacementOnTheDropButton)
{
    SetBitmap(Filled(10, 10, 'R'), kColours);
    Canvas canvas(160, 40, kBack);
    auto at = [&](SHORT nOffset) { return Logged([&] { m_ctrl->DrawDropPicture(canvas.DC(), nOffset, kButton); }); };
    EXPECT_EQ(at(0), std::vector<std::string>{"StretchBlt 105,7,10,10 from 0,0,10,10 SRCCOPY"});
    EXPECT_EQ(at(1), std::vector<std::string>{"StretchBlt 106,8,10,10 from 0,0,10,10 SRCCOPY"});
    m_ctrl->m_nPicXOffset = -1;
    EXPECT_EQ(at(0), std::vector<std::string>{"StretchBlt 104,7,10,10 from 0,0,10,10 SRCCOPY"});
    EXPECT_EQ(at(1), std::vector<std::string>{"StretchBlt 105,8,10,10 from 0,0,10,10 SRCCOPY"});
    m_ctrl->m_nPicXOffset = 32767;
    m_ctrl->m_nPicYOffset = -3;
    EXPECT_EQ(at(0), std::vector<std::string>{"StretchBlt -32664,4,10,10 from 0,0,10,10 SRCCOPY"});

    // 41 by 25 on a 16 by 20 button: (118 - 41 - 102) / 2 is -12, not -13; (22 - 25 - 2) / 2 is -2.
    m_ctrl->m_nPicXOffset = m_ctrl->m_nPicYOffset = 0;
    SetBitmap(Filled(41, 25, 'G'), kColours);
    EXPECT_EQ(at(0), std::vector<std::string>{"StretchBlt 90,0,41,25 from 0,0,41,25 SRCCOPY"});
    ExpectGrid({"-GGGG", "-GGGG"}, canvas.Read(89, 23, 5, 2, kColours));
    ExpectGrid({"GG-", "---"}, canvas.Read(129, 24, 3, 2, kColours));
}

// Below 5 pixels a bitmap is placed as 5 by 5 and, drawn plainly, stretched to it.
TEST_F(PictureTest, SmallBitmapIsPlacedAndStretchedAsFiveByFive)
{
    SetBitmap({"RGK", "GKR", "KRG"}, kColours);
    EXPECT_EQ(m_ctrl->m_nPicWidth, 5);
    EXPECT_EQ(m_ctrl->m_nPicHeight, 5);
    Canvas canvas(160, 40, kBack);
    auto log = Logged([&] { m_ctrl->DrawDropPicture(canvas.DC(), 0, kButton); });
    EXPECT_EQ(log, std::vector<std::string>{"StretchBlt 107,9,5,5 from 0,0,3,3 SRCCOPY"});
    ExpectGrid({"-------", "-RRGGK-", "-RRGGK-", "-GGKKR-", "-GGKKR-", "-KKRRG-", "-------"},
               canvas.Read(106, 8, 7, 7, kColours));
}

// MaskBitmap: pixels of the translated MaskColor leave the target; the rest is copied unscaled.
// The five blits are the ones of the masking recipe, and the DC's colours come back as they were.
TEST_F(PictureTest, MaskBitmapLeavesTheMaskColourTransparent)
{
    SetBitmap({"RMMMMG", "MKKMMM", "MKWMRM", "MMMMMM", "GMMMMR"}, kColours);
    m_ctrl->m_bMaskBitmap = TRUE;
    Canvas canvas(160, 40, kBack);
    canvas.DC()->SetTextColor(0x010203);
    canvas.DC()->SetBkColor(0x040506);
    auto log = Logged([&] { m_ctrl->DrawDropPicture(canvas.DC(), 0, kButton); });
    EXPECT_EQ(log, (std::vector<std::string>{
                       "BitBlt 0,0,6,5 from 0,0 SRCCOPY",   // picture into the image
                       "BitBlt 0,0,6,5 from 0,0 SRCCOPY",   // image to the one-bit mask
                       "BitBlt 0,0,6,5 from 0,0 SRCAND",    // transparent pixels of the image go black
                       "BitBlt 107,9,6,5 from 0,0 SRCAND",  // a hole in the target for the opaque pixels
                       "BitBlt 107,9,6,5 from 0,0 SRCPAINT" // the image into the hole
                   }));
    ExpectGrid({"--------", "-R----G-", "--KK----", "--KW-R--", "--------", "-G----R-", "--------"},
               canvas.Read(106, 8, 8, 7, kColours));
    EXPECT_EQ(GetTextColor(*canvas.DC()), 0x010203u);
    EXPECT_EQ(GetBkColor(*canvas.DC()), 0x040506u);

    // A system colour works here, resolved at the time of drawing.
    m_ctrl->m_clrMask = 0x80000000 | COLOR_BTNFACE;
    SetBitmap({"FFFFF", "FRRRF", "FRFRF", "FRRRF", "FFFFF"}, kColours);
    Canvas face(160, 40, kBack);
    m_ctrl->DrawDropPicture(face.DC(), 0, kButton);
    ExpectGrid({"-----", "-RRR-", "-R-R-", "-RRR-", "-----"}, face.Read(107, 9, 5, 5, kColours));
}

// EmbossBitmap on a disabled control: bits that are opaque and not pure white become the shape, in
// the shadow colour, with the highlight one pixel down and right showing only on the lower right edge.
// MaskColor is transparent here although MaskBitmap is off.
TEST_F(PictureTest, EmbossDrawsAFlatShapeWithAHighlightEdge)
{
    SetBitmap({"RWMMM", "GRRMM", "MMKMM", "MMMMM", "MMMMM"}, kColours);
    m_ctrl->m_bEmbossBitmap = TRUE;
    m_ctrl->SetEnabled(FALSE);
    SetSysColors(2, std::array<INT, 2>{COLOR_BTNSHADOW, COLOR_BTNHIGHLIGHT}.data(),
                 std::array<COLORREF, 2>{0x404040, 0xe0e0e0}.data());
    const Legend shades{{'-', kBack}, {'S', 0x404040}, {'H', 0xe0e0e0}};
    Canvas canvas(160, 60, kBack);
    HGDIOBJ brush = GetCurrentObject(*canvas.DC(), OBJ_BRUSH);
    canvas.DC()->SetBkColor(0x040506);
    auto log = Logged([&] { m_ctrl->DrawDropPicture(canvas.DC(), 0, kButton); });
    EXPECT_EQ(log, (std::vector<std::string>{
                       "PatBlt 0,0,32,32 WHITENESS",
                       "FillRect 0,0,32,32 #0000FF",
                       "StretchBlt 0,0,5,5 from 0,0,5,5 SRCCOPY",
                       "BitBlt 0,0,32,32 from 0,0 SRCCOPY",
                       "BitBlt 0,0,32,32 from 0,0 SRCAND",
                       "DrawIcon 0,0 32x32",
                       "BitBlt 108,10,32,32 from 0,0 0xB8074A",
                       "BitBlt 107,9,32,32 from 0,0 0xB8074A",
                   }));
    Grid expected = Filled(40, 40, '-');
    expected[1].replace(1, 1, "S");
    expected[2].replace(1, 3, "SSS");
    expected[3].replace(2, 3, "HSH");
    expected[4].replace(4, 1, "H");
    ExpectGrid(expected, canvas.Read(106, 8, 40, 40, shades));
    EXPECT_EQ(GetCurrentObject(*canvas.DC(), OBJ_BRUSH), brush);
    EXPECT_EQ(GetBkColor(*canvas.DC()), 0x040506u);
}

// A bitmap larger than the icon size is shrunk into the shape, but placed by its own size.
TEST_F(PictureTest, EmbossShrinksALargeBitmapButPlacesItByItsSize)
{
    SetBitmap(Filled(64, 40, 'R'), kColours);
    m_ctrl->m_bEmbossBitmap = TRUE;
    m_ctrl->SetEnabled(FALSE);
    Canvas canvas(160, 60, kBack);
    auto log = Logged([&] { m_ctrl->DrawDropPicture(canvas.DC(), 0, kButton); });
    ASSERT_EQ(log.size(), 8u);
    EXPECT_EQ(log[2], "StretchBlt 0,0,32,32 from 0,0,64,40 SRCCOPY");
    EXPECT_EQ(log[6], "BitBlt 79,-7,32,32 from 0,0 0xB8074A");
    EXPECT_EQ(log[7], "BitBlt 78,-8,32,32 from 0,0 0xB8074A");
}

// Which drawing a picture gets: emboss only for a disabled bitmap and before the mask; an icon is
// always drawn plainly at its placing size of 32; metafiles and empty pictures draw nothing.
TEST_F(PictureTest, TheKindOfDrawingFollowsPictureStateAndFlags)
{
    struct Case {
        BOOL bEnabled, bMask, bEmboss;
        const char* pszFirst;
    };
    const Case cases[] = {
        {TRUE, FALSE, FALSE, "StretchBlt"}, {FALSE, FALSE, FALSE, "StretchBlt"}, {TRUE, FALSE, TRUE, "StretchBlt"},
        {TRUE, TRUE, FALSE, "BitBlt"},      {FALSE, TRUE, FALSE, "BitBlt"},      {TRUE, TRUE, TRUE, "BitBlt"},
        {FALSE, FALSE, TRUE, "PatBlt"},     {FALSE, TRUE, TRUE, "PatBlt"},
    };
    Canvas canvas(160, 60, kBack);
    auto first = [&] {
        auto log = Logged([&] { m_ctrl->DrawDropPicture(canvas.DC(), 0, kButton); });
        return log.empty() ? std::string("nothing") : log[0].substr(0, log[0].find(' '));
    };
    SetBitmap(Filled(8, 8, 'R'), kColours);
    for (const Case& c : cases) {
        m_ctrl->SetEnabled(c.bEnabled);
        m_ctrl->m_bMaskBitmap = c.bMask;
        m_ctrl->m_bEmbossBitmap = c.bEmboss;
        EXPECT_EQ(first(), c.pszFirst) << "enabled " << c.bEnabled << " mask " << c.bMask << " emboss " << c.bEmboss;
    }

    // A 16 by 16 icon, disabled with both flags: placed as 32 by 32, drawn at its own size.
    std::vector<BYTE> andBits(2 * 16, 0), xorBits(4 * 16 * 16, 0x80);
    m_ctrl->m_picDrop.CreateFromIcon(CreateIcon(nullptr, 16, 16, 1, 32, andBits.data(), xorBits.data()), TRUE);
    m_ctrl->UpdatePictureSize();
    EXPECT_EQ(m_ctrl->m_nPicWidth, 32);
    auto log = Logged([&] { m_ctrl->DrawDropPicture(canvas.DC(), 1, kButton); });
    EXPECT_EQ(log, std::vector<std::string>{"DrawIcon 95,-3 16x16"});
    EXPECT_EQ(canvas.DC()->GetPixel(95, 0), 0x808080u);

    m_ctrl->m_picDrop.CreateFromMetafile(nullptr, 100, 100, FALSE);
    m_ctrl->UpdatePictureSize();
    EXPECT_EQ(m_ctrl->m_nPicWidth, 0);
    EXPECT_EQ(first(), "nothing");
    m_ctrl->m_picDrop.CreateEmpty();
    m_ctrl->UpdatePictureSize();
    EXPECT_EQ(first(), "nothing");
}

// The masked icon: the system's icon size, the mask colour taken as a plain COLORREF, mask bits 1
// and image black where it is transparent.
TEST_F(PictureTest, MakeMaskedIconBuildsMaskAndImage)
{
    m_ctrl->m_clrMask = kRed;
    CBitmap source;
    source.Attach(MakeBitmap({"RG", "WR"}, kColours));
    Canvas canvas(8, 8, kBack);
    HICON hIcon = m_ctrl->MakeMaskedIcon(canvas.DC(), source);
    ASSERT_NE(hIcon, nullptr);
    ICONINFO info{};
    ASSERT_TRUE(GetIconInfo(hIcon, &info));
    BITMAP bm{};
    GetObject(info.hbmMask, sizeof bm, &bm);
    EXPECT_EQ(bm.bmWidth, 32);
    EXPECT_EQ(bm.bmHeight, 32);
    // GetIconInfo hands out the mask as a one-bit bitmap: 1 (white) where the icon is transparent.
    std::vector<COLORREF> mask;
    {
        CDC dc;
        dc.CreateCompatibleDC(nullptr);
        HGDIOBJ old = dc.SelectObject(info.hbmMask);
        for (POINT pt : {POINT{0, 0}, POINT{1, 0}, POINT{0, 1}, POINT{1, 1}, POINT{31, 31}}) mask.push_back(dc.GetPixel(pt.x, pt.y));
        dc.SelectObject(old);
    }
    std::vector<COLORREF> image = BitmapPixels(info.hbmColor);
    EXPECT_EQ(mask, (std::vector<COLORREF>{kWhite, 0, 0, kWhite, kWhite}));
    EXPECT_EQ((std::vector<COLORREF>{image[0], image[1], image[32], image[33], image[32 * 32 - 1]}),
              (std::vector<COLORREF>{0, kGreen, kWhite, 0, 0}));
    DeleteObject(info.hbmMask);
    DeleteObject(info.hbmColor);
    DestroyIcon(hIcon);
}
