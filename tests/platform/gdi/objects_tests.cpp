// Tests of the GDI stand-in's objects: handles, GetObject, selection rules, leak counting and the draw-call log.
#include "base/colors.h"
#include "gdi_test_util.h"

class GdiObjects : public GdiTest {};

TEST_F(GdiObjects, BitmapsReportTheirLayoutAndBitsRoundTrip)
{
    const BYTE bits[] = {0xA5, 0x80, 0x00, 0x40};  // 10 x 2, rows padded to a WORD
    HBITMAP hMono = CreateBitmap(10, 2, 1, 1, bits);
    BITMAP bm{};
    ASSERT_EQ(GetObject(hMono, sizeof bm, &bm), static_cast<int>(sizeof bm));
    EXPECT_EQ(bm.bmWidth, 10);
    EXPECT_EQ(bm.bmHeight, 2);
    EXPECT_EQ(bm.bmWidthBytes, 2);
    EXPECT_EQ(bm.bmPlanes, 1);
    EXPECT_EQ(bm.bmBitsPixel, 1);
    EXPECT_EQ(bm.bmBits, nullptr);
    BYTE out[4] = {};
    EXPECT_EQ(GetBitmapBits(hMono, sizeof out, out), 4);
    EXPECT_EQ(0, memcmp(out, bits, 4));

    HBITMAP hColour = CreateBitmap(3, 1, 1, 32, nullptr);
    GetObject(hColour, sizeof bm, &bm);
    EXPECT_EQ(bm.bmWidthBytes, 12);
    EXPECT_EQ(bm.bmBitsPixel, 32);
    const BYTE px[] = {0x10, 0x20, 0x30, 0, 0xFF, 0, 0, 0, 0, 0, 0xFF, 0};  // B, G, R, X
    SetBitmapBits(hColour, sizeof px, px);
    EXPECT_EQ(GdiBitmapPixels(hColour)[0], 0x302010u);
    EXPECT_EQ(GdiBitmapPixels(hColour)[2], 0xFF0000u);
    EXPECT_EQ(GdiBitmapPixels(hMono), nullptr);
    DeleteObject(hMono);
    DeleteObject(hColour);
}

TEST_F(GdiObjects, CompatibleBitmapsFollowTheDcAndCreationCanBeMadeToFail)
{
    HDC hdc = CreateCompatibleDC(nullptr);
    BITMAP bm{};
    // A fresh memory DC holds a 1x1 one-bit bitmap, so its compatible bitmaps are one-bit.
    HBITMAP hMono = CreateCompatibleBitmap(hdc, 5, 5);
    GetObject(hMono, sizeof bm, &bm);
    EXPECT_EQ(bm.bmBitsPixel, 1);
    HBITMAP hColour = CreateBitmap(4, 4, 1, 32, nullptr);
    HGDIOBJ hOld = SelectObject(hdc, hColour);
    ASSERT_EQ(GetObjectType(hOld), OBJ_BITMAP);
    HBITMAP hCompat = CreateCompatibleBitmap(hdc, 7, 3);
    GetObject(hCompat, sizeof bm, &bm);
    EXPECT_EQ(bm.bmBitsPixel, 32);
    EXPECT_EQ(bm.bmWidth, 7);

    // A bitmap lives in one DC at a time.
    HDC hdc2 = CreateCompatibleDC(hdc);
    EXPECT_EQ(SelectObject(hdc2, hColour), nullptr);

    GdiSetFailBitmapCreation(TRUE);
    EXPECT_EQ(CreateCompatibleBitmap(hdc, 7, 3), nullptr);
    EXPECT_EQ(CreateBitmap(2, 2, 1, 1, nullptr), nullptr);
    GdiSetFailBitmapCreation(FALSE);
    HBITMAP hEmpty = CreateCompatibleBitmap(hdc, 0, 10);  // a zero size gives the 1x1 one-bit bitmap
    GetObject(hEmpty, sizeof bm, &bm);
    EXPECT_EQ(bm.bmWidth, 1);
    EXPECT_EQ(bm.bmBitsPixel, 1);

    SelectObject(hdc, hOld);
    for (HGDIOBJ h : {static_cast<HGDIOBJ>(hMono), static_cast<HGDIOBJ>(hColour), static_cast<HGDIOBJ>(hCompat),
                      static_cast<HGDIOBJ>(hEmpty)})
        DeleteObject(h);
    DeleteDC(hdc2);
    DeleteDC(hdc);
}

TEST_F(GdiObjects, HandlesTypesStockObjectsAndLeakCounting)
{
    int nStart = GdiGetLiveObjectCount();
    HPEN hPen = CreatePen(PS_SOLID, 1, RGB(1, 2, 3));
    HBRUSH hBrush = CreateSolidBrush(RGB(4, 5, 6));
    HDC hdc = CreateCompatibleDC(nullptr);
    EXPECT_EQ(GdiGetLiveObjectCount(), nStart + 3);
    EXPECT_EQ(GetObjectType(hPen), OBJ_PEN);
    EXPECT_EQ(GetObjectType(hBrush), OBJ_BRUSH);
    EXPECT_EQ(GetObjectType(hdc), OBJ_MEMDC);
    EXPECT_EQ(GetObjectType(GetStockObject(DEFAULT_GUI_FONT)), OBJ_FONT);
    EXPECT_EQ(GetObjectType(GetStockObject(HOLLOW_BRUSH)), OBJ_BRUSH);

    LOGPEN lp{};
    GetObject(hPen, sizeof lp, &lp);
    EXPECT_EQ(lp.lopnColor, RGB(1, 2, 3));
    LOGBRUSH lb{};
    GetObject(GetSysColorBrush(COLOR_BTNFACE), sizeof lb, &lb);
    EXPECT_EQ(lb.lbColor, GetSysColor(COLOR_BTNFACE));

    // The default objects come back from the first selection; a selected object cannot be deleted.
    EXPECT_EQ(SelectObject(hdc, hPen), GetStockObject(BLACK_PEN));
    EXPECT_FALSE(DeleteObject(hPen));
    EXPECT_EQ(GetObjectType(hPen), OBJ_PEN);
    EXPECT_EQ(SelectObject(hdc, GetStockObject(BLACK_PEN)), hPen);
    EXPECT_TRUE(DeleteObject(hPen));
    EXPECT_EQ(GetObjectType(hPen), 0);  // a stale handle is refused, even once its slot is reused
    HPEN hAgain = CreatePen(PS_SOLID, 1, 0);
    EXPECT_EQ(GetObjectType(hPen), 0);
    EXPECT_FALSE(DeleteObject(hPen));

    EXPECT_TRUE(DeleteObject(GetStockObject(WHITE_BRUSH)));  // harmless
    EXPECT_EQ(GetObjectType(GetStockObject(WHITE_BRUSH)), OBJ_BRUSH);
    EXPECT_FALSE(DeleteObject(hdc));  // DCs go through DeleteDC
    DeleteObject(hAgain);
    DeleteObject(hBrush);
    DeleteDC(hdc);
    EXPECT_EQ(GdiGetLiveObjectCount(), nStart);
}

TEST_F(GdiObjects, SaveDcKeepsItsObjectsSelected)
{
    HDC hdc = CreateCompatibleDC(nullptr);
    HBRUSH hBrush = CreateSolidBrush(RGB(9, 9, 9));
    int n = SaveDC(hdc);
    SelectObject(hdc, hBrush);
    SaveDC(hdc);
    SelectObject(hdc, GetStockObject(BLACK_BRUSH));
    EXPECT_FALSE(DeleteObject(hBrush));  // still held by the saved state
    EXPECT_TRUE(RestoreDC(hdc, n));
    EXPECT_EQ(GetCurrentObject(hdc, OBJ_BRUSH), GetStockObject(WHITE_BRUSH));
    EXPECT_FALSE(RestoreDC(hdc, n));  // already popped
    EXPECT_TRUE(DeleteObject(hBrush));
    DeleteDC(hdc);
}

TEST_F(GdiObjects, DrawLogWritesOneLinePerCall)
{
    Canvas c(130, 30);
    GdiSetDrawLog(TRUE);
    RECT rc{102, 2, 118, 22};
    HBRUSH hFace = CreateSolidBrush(RGB(0xF0, 0xF0, 0xF0));
    FillRect(c.dc(), &rc, hFace);
    HPEN hShadow = CreatePen(PS_SOLID, 0, RGB(0xA0, 0xA0, 0xA0));
    HGDIOBJ hOldPen = SelectObject(c.dc(), hShadow);
    MoveToEx(c.dc(), 0, 23, nullptr);
    LineTo(c.dc(), 0, 0);
    POINT border[] = {{0, 23}, {0, 0}, {119, 0}};
    Polyline(c.dc(), border, 3);
    HBRUSH hArrow = CreateSolidBrush(RGB(0, 0, 0));
    HGDIOBJ hOldBrush = SelectObject(c.dc(), hArrow);
    SelectObject(c.dc(), GetStockObject(NULL_PEN));
    POINT tri[] = {{109, 13}, {106, 10}, {112, 10}};
    Polygon(c.dc(), tri, 3);
    SelectObject(c.dc(), hShadow);
    SelectObject(c.dc(), hFace);
    Rectangle(c.dc(), 102, 2, 118, 22);
    SelectObject(c.dc(), GetStockObject(NULL_PEN));
    Ellipse(c.dc(), 0, 0, 10, 10);
    SetPixel(c.dc(), 3, 4, RGB(0xEC, 0xF1, 0xF3));
    BitBlt(c.dc(), 0, 0, 120, 24, c.dc(), 0, 0, SRCCOPY);
    PatBlt(c.dc(), 0, 0, 32, 32, 0x00A000C9);  // pattern AND destination: no name
    GdiSetDrawLog(FALSE);
    FillRect(c.dc(), &rc, hFace);  // not logged
    SelectObject(c.dc(), hOldPen);
    SelectObject(c.dc(), hOldBrush);
    DeleteObject(hFace);
    DeleteObject(hShadow);
    DeleteObject(hArrow);

    const std::vector<std::string> kExpected = {
        "FillRect 102,2,118,22 #F0F0F0",
        "MoveTo 0,23",
        "LineTo 0,0 #A0A0A0",
        "Polyline 0,23 0,0 119,0 #A0A0A0",
        "Polygon 109,13 106,10 112,10 #000000",
        "Rectangle 102,2,118,22 #F0F0F0 pen #A0A0A0",
        "Ellipse 0,0,10,10 #F0F0F0",
        "SetPixel 3,4 #ECF1F3",
        "BitBlt 0,0,120,24 from 0,0 SRCCOPY",
        "PatBlt 0,0,32,32 0xA000C9",
    };
    EXPECT_EQ(GdiGetDrawLog(), kExpected);
    GdiClearDrawLog();
    EXPECT_TRUE(GdiGetDrawLog().empty());
}
