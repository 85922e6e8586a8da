// Tests of the GDI stand-in's icons and image files: mask and image drawing, PNG round trip, BMP and ICO reading.
#include <cstdio>
#include <fstream>
#include <unistd.h>
#include "gdi_test_util.h"

namespace {
const COLORREF kWhite = RGB(255, 255, 255);
const COLORREF kBlack = RGB(0, 0, 0);
const COLORREF kRed = RGB(255, 0, 0);
const COLORREF kGrey = RGB(128, 128, 128);

std::string TempPath(const char* pszName)
{
    return std::string(::testing::TempDir()) + std::to_string(getpid()) + "_" + pszName;
}

void WriteFile(const std::string& strPath, const std::vector<uint8_t>& bytes)
{
    std::ofstream f(strPath, std::ios::binary);
    f.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

void Put32(std::vector<uint8_t>* p, uint32_t v)
{
    for (int i = 0; i < 4; ++i)
        p->push_back(static_cast<uint8_t>(v >> (8 * i)));
}

void Put16(std::vector<uint8_t>* p, uint32_t v)
{
    p->push_back(static_cast<uint8_t>(v));
    p->push_back(static_cast<uint8_t>(v >> 8));
}

// BITMAPINFOHEADER for an uncompressed DIB.
std::vector<uint8_t> InfoHeader(int cx, int cy, int nBits, int nColors)
{
    std::vector<uint8_t> h;
    Put32(&h, 40);
    Put32(&h, static_cast<uint32_t>(cx));
    Put32(&h, static_cast<uint32_t>(cy));
    Put16(&h, 1);
    Put16(&h, static_cast<uint32_t>(nBits));
    for (uint32_t v : {0u, 0u, 0u, 0u, static_cast<uint32_t>(nColors), 0u})
        Put32(&h, v);
    return h;
}

// The 2x2 icon used below: top-left transparent, top-right red, bottom-left white, bottom-right transparent.
const uint8_t kAnd[] = {0x80, 0, 0x40, 0};                                  // 1 = keep the target
const uint8_t kXor[] = {0, 0, 0, 0, 0, 0, 0xFF, 0, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0, 0};  // B, G, R, X
}  // namespace

class GdiImages : public GdiTest {};

TEST_F(GdiImages, IconsMaskThenInvertAndConvertToOneBit)
{
    HICON hIcon = CreateIcon(nullptr, 2, 2, 1, 32, kAnd, kXor);
    ASSERT_NE(hIcon, nullptr);
    Canvas c(4, 4, kGrey);
    DrawIcon(c.dc(), 1, 1, hIcon);
    EXPECT_EQ(c.Picture(kGrey, {{kRed, 'R'}, {kWhite, 'W'}}), (std::vector<std::string>{"....", "..R.", ".W..", "...."}));

    // On a one-bit target that is all 1: opaque white stays 1, opaque colours give 0, transparency keeps 1.
    Canvas mono(2, 2, kWhite, 1);
    DrawIcon(mono.dc(), 0, 0, hIcon);
    EXPECT_EQ(mono.Picture(kWhite), (std::vector<std::string>{".#", ".."}));

    // GetIconInfo hands out copies that make the same icon again.
    ICONINFO ii{};
    ASSERT_TRUE(GetIconInfo(hIcon, &ii));
    HICON hCopy = CreateIconIndirect(&ii);
    DeleteObject(ii.hbmMask);
    DeleteObject(ii.hbmColor);
    Canvas c2(4, 4, kGrey);
    DrawIcon(c2.dc(), 1, 1, hCopy);
    EXPECT_EQ(c2.Picture(), c.Picture());
    EXPECT_FALSE(DeleteObject(hCopy));  // icons are freed with DestroyIcon
    EXPECT_TRUE(DestroyIcon(hCopy));
    EXPECT_TRUE(DestroyIcon(hIcon));
    EXPECT_FALSE(DestroyIcon(hIcon));
}

TEST_F(GdiImages, PngWrittenReadsBackEqual)
{
    Canvas c(23, 9, RGB(12, 34, 56));
    SetPixel(c.dc(), 0, 0, RGB(1, 2, 3));
    SetPixel(c.dc(), 22, 8, RGB(250, 128, 7));
    TextOut(c.dc(), 1, 0, u"Ok", 2);
    std::string strPath = TempPath("roundtrip.png");
    ASSERT_TRUE(SaveBitmapPng(c.bitmap(), strPath.c_str()));
    HBITMAP hRead = LoadBitmapPng(strPath.c_str());
    ASSERT_NE(hRead, nullptr);
    BITMAP bm{};
    GetObject(hRead, sizeof bm, &bm);
    ASSERT_EQ(bm.bmWidth, 23);
    ASSERT_EQ(bm.bmHeight, 9);
    EXPECT_EQ(0, memcmp(GdiBitmapPixels(hRead), GdiBitmapPixels(c.bitmap()), 23 * 9 * 4));
    DeleteObject(hRead);

    Canvas mono(3, 1, kBlack, 1);
    SetPixel(mono.dc(), 1, 0, kWhite);
    ASSERT_TRUE(SaveBitmapPng(mono.bitmap(), strPath.c_str()));
    hRead = LoadBitmapPng(strPath.c_str());
    ASSERT_NE(hRead, nullptr);
    EXPECT_EQ(GdiBitmapPixels(hRead)[0], 0u);
    EXPECT_EQ(GdiBitmapPixels(hRead)[1], 0xFFFFFFu);
    DeleteObject(hRead);
    std::remove(strPath.c_str());
    EXPECT_EQ(LoadBitmapPng(strPath.c_str()), nullptr);
    EXPECT_FALSE(SaveBitmapPng(nullptr, strPath.c_str()));
}

TEST_F(GdiImages, BmpFilesReadBottomUpWithPalettes)
{
    // 8-bit, 3 x 2, bottom-up: the first row in the file is the bottom row.
    std::vector<uint8_t> file = {'B', 'M'};
    std::vector<uint8_t> info = InfoHeader(3, 2, 8, 2);
    uint32_t nBitsAt = 14 + 40 + 2 * 4;
    Put32(&file, nBitsAt + 8);
    Put32(&file, 0);
    Put32(&file, nBitsAt);
    file.insert(file.end(), info.begin(), info.end());
    for (uint8_t v : {0x00, 0x00, 0xFF, 0x00, /* red */ 0xFF, 0x00, 0x00, 0x00 /* blue */})
        file.push_back(v);
    for (uint8_t v : {0, 1, 1, 0, /* bottom row, padded to 4 */ 1, 0, 0, 0 /* top row */})
        file.push_back(v);
    std::string strPath = TempPath("pal.bmp");
    WriteFile(strPath, file);
    HBITMAP hbm = LoadBitmapFile(strPath.c_str());
    ASSERT_NE(hbm, nullptr);
    const DWORD* px = GdiBitmapPixels(hbm);
    EXPECT_EQ(px[0], 0x0000FFu);  // top row: blue, red, red
    EXPECT_EQ(px[1], 0xFF0000u);
    EXPECT_EQ(px[3], 0xFF0000u);  // bottom row: red, blue, blue
    EXPECT_EQ(px[4], 0x0000FFu);
    DeleteObject(hbm);

    // Heights are signed: -2 reads the rows top-down; the most negative height is refused, not negated.
    constexpr size_t kHeightAt = 14 + 8;
    auto withHeight = [&](uint32_t cy) {
        std::vector<uint8_t> f = file;
        for (int k = 0; k < 4; ++k) f[kHeightAt + k] = static_cast<uint8_t>(cy >> (8 * k));
        WriteFile(strPath, f);
        return LoadBitmapFile(strPath.c_str());
    };
    hbm = withHeight(static_cast<uint32_t>(-2));
    ASSERT_NE(hbm, nullptr);
    EXPECT_EQ(GdiBitmapPixels(hbm)[0], 0xFF0000u);  // the first row in the file is now the top row
    DeleteObject(hbm);
    EXPECT_EQ(withHeight(0x80000000u), nullptr);

    file[0] = 'X';
    WriteFile(strPath, file);
    EXPECT_EQ(LoadBitmapFile(strPath.c_str()), nullptr);
    std::remove(strPath.c_str());
}

TEST_F(GdiImages, IcoFilesGiveIconsWithTheirMasks)
{
    // One 2x2 32-bit image without alpha: the AND mask decides transparency. Rows are bottom-up in the file.
    std::vector<uint8_t> dib = InfoHeader(2, 4, 32, 0);
    for (int row : {1, 0})
        dib.insert(dib.end(), kXor + 8 * row, kXor + 8 * row + 8);
    for (int row : {1, 0}) {
        dib.push_back(kAnd[2 * row]);
        dib.insert(dib.end(), {0, 0, 0});
    }
    std::vector<uint8_t> file;
    Put16(&file, 0);
    Put16(&file, 1);
    Put16(&file, 1);
    file.insert(file.end(), {2, 2, 0, 0});
    Put16(&file, 1);
    Put16(&file, 32);
    Put32(&file, static_cast<uint32_t>(dib.size()));
    Put32(&file, 6 + 16);
    file.insert(file.end(), dib.begin(), dib.end());
    std::string strPath = TempPath("two.ico");
    WriteFile(strPath, file);
    HICON hIcon = LoadIconFile(strPath.c_str());
    std::remove(strPath.c_str());
    ASSERT_NE(hIcon, nullptr);
    Canvas c(4, 4, kGrey);
    DrawIcon(c.dc(), 1, 1, hIcon);
    DestroyIcon(hIcon);
    EXPECT_EQ(c.Picture(kGrey, {{kRed, 'R'}, {kWhite, 'W'}}), (std::vector<std::string>{"....", "..R.", ".W..", "...."}));
}
