// Tests of the GDI stand-in's shapes: exact pixels of rectangles, lines, polygons and ellipses, clipping, origins.
#include "gdi_test_util.h"

using Rows = std::vector<std::string>;
namespace {
const COLORREF kRed = RGB(255, 0, 0);
const COLORREF kBlack = RGB(0, 0, 0);
}  // namespace

class GdiShapes : public GdiTest {};

TEST_F(GdiShapes, FillRectIsHalfOpenAndEmptyRectsPaintNothing)
{
    Canvas c(6, 5);
    RECT rc{1, 1, 4, 3}, rcEmpty{3, 3, 3, 5}, rcInverted{4, 1, 2, 3};
    HBRUSH hbr = CreateSolidBrush(kBlack);
    FillRect(c.dc(), &rc, hbr);
    FillRect(c.dc(), &rcEmpty, hbr);
    FillRect(c.dc(), &rcInverted, hbr);
    DeleteObject(hbr);
    EXPECT_EQ(c.Picture(), (Rows{"......", ".###..", ".###..", "......", "......"}));
}

TEST_F(GdiShapes, LinesLeaveOutTheirLastPixel)
{
    Canvas c(7, 6);
    MoveToEx(c.dc(), 0, 0, nullptr);
    LineTo(c.dc(), 5, 2);  // shallow: x-major
    EXPECT_EQ(c.Picture(), (Rows{"##.....", "..##...", "....#..", ".......", ".......", "......."}));
    POINT pt;
    GetCurrentPositionEx(c.dc(), &pt);
    EXPECT_EQ(pt.x, 5);
    EXPECT_EQ(pt.y, 2);

    c.Fill(RGB(255, 255, 255));
    MoveToEx(c.dc(), 1, 0, nullptr);
    LineTo(c.dc(), 3, 5);  // steep: y-major
    EXPECT_EQ(c.Picture(), (Rows{".#.....", ".#.....", "..#....", "..#....", "...#...", "......."}));

    c.Fill(RGB(255, 255, 255));
    MoveToEx(c.dc(), 5, 2, nullptr);
    LineTo(c.dc(), 0, 0);  // backwards: the start is drawn, the end (0,0) is not
    EXPECT_EQ(c.Picture(), (Rows{".#.....", "..##...", "....##.", ".......", ".......", "......."}));

    c.Fill(RGB(255, 255, 255));
    MoveToEx(c.dc(), 4, 0, nullptr);
    LineTo(c.dc(), 0, 4);  // 45 degrees
    MoveToEx(c.dc(), 6, 5, nullptr);
    LineTo(c.dc(), 6, 5);  // zero length: nothing
    EXPECT_EQ(c.Picture(), (Rows{"....#..", "...#...", "..#....", ".#.....", ".......", "......."}));
}

TEST_F(GdiShapes, PolylineJoinsPointsAndClosedFramesAreComplete)
{
    Canvas c(5, 4);
    POINT open[] = {{0, 0}, {3, 0}, {3, 3}};
    Polyline(c.dc(), open, 3);
    EXPECT_EQ(c.Picture(), (Rows{"####.", "...#.", "...#.", "....."}));

    c.Fill(RGB(255, 255, 255));
    POINT frame[] = {{0, 0}, {4, 0}, {4, 3}, {0, 3}, {0, 0}};
    {
        Selected pen(c.dc(), CreatePen(PS_SOLID, 0, kRed));
        Polyline(c.dc(), frame, 5);
    }
    EXPECT_EQ(c.Picture(RGB(255, 255, 255), {{kRed, 'R'}}), (Rows{"RRRRR", "R...R", "R...R", "RRRRR"}));

    c.Fill(RGB(255, 255, 255));
    SelectObject(c.dc(), GetStockObject(NULL_PEN));
    Polyline(c.dc(), open, 3);
    SelectObject(c.dc(), GetStockObject(BLACK_PEN));
    EXPECT_EQ(c.Count(RGB(255, 255, 255)), 20);
}

TEST_F(GdiShapes, PolygonFillsAlternateAndOutlinesInThePen)
{
    Canvas c(9, 5);
    POINT tri[] = {{4, 3}, {1, 0}, {7, 0}};
    {
        Selected brush(c.dc(), CreateSolidBrush(kBlack));
        SelectObject(c.dc(), GetStockObject(NULL_PEN));
        Polygon(c.dc(), tri, 3);
        SelectObject(c.dc(), GetStockObject(BLACK_PEN));
    }
    // Left edges and the top row are inside; right edges and the bottom vertex are not.
    EXPECT_EQ(c.Picture(), (Rows{".######..", "..####...", "...##....", ".........", "........."}));

    c.Fill(RGB(255, 255, 255));
    {
        Selected brush(c.dc(), CreateSolidBrush(kBlack));
        Selected pen(c.dc(), CreatePen(PS_SOLID, 1, kRed));
        Polygon(c.dc(), tri, 3);
    }
    EXPECT_EQ(c.Picture(RGB(255, 255, 255), {{kRed, 'R'}}),
              (Rows{".RRRRRRR.", "..R###R..", "...R#R...", "....R....", "........."}));

    // A square traced twice cancels itself under the alternate rule.
    c.Fill(RGB(255, 255, 255));
    POINT twice[] = {{0, 0}, {4, 0}, {4, 4}, {0, 4}, {0, 0}, {4, 0}, {4, 4}, {0, 4}};
    {
        Selected brush(c.dc(), CreateSolidBrush(kBlack));
        SelectObject(c.dc(), GetStockObject(NULL_PEN));
        Polygon(c.dc(), twice, 8);
        SelectObject(c.dc(), GetStockObject(BLACK_PEN));
    }
    EXPECT_EQ(c.Count(kBlack), 0);
}

TEST_F(GdiShapes, RectangleOutlinesInPenFillsInBrushAndExcludesRightBottom)
{
    Canvas c(8, 6);
    {
        Selected brush(c.dc(), CreateSolidBrush(kRed));
        Rectangle(c.dc(), 1, 1, 6, 5);
        EXPECT_EQ(c.Picture(RGB(255, 255, 255), {{kRed, 'R'}}),
                  (Rows{"........", ".#####..", ".#RRR#..", ".#RRR#..", ".#####..", "........"}));
        c.Fill(RGB(255, 255, 255));
        SelectObject(c.dc(), GetStockObject(NULL_PEN));
        Rectangle(c.dc(), 6, 5, 1, 1);  // corners in either order
        SelectObject(c.dc(), GetStockObject(BLACK_PEN));
    }
    // Without a pen the filled area is one pixel narrower and shorter.
    EXPECT_EQ(c.Picture(RGB(255, 255, 255), {{kRed, 'R'}}),
              (Rows{"........", ".RRRR...", ".RRRR...", ".RRRR...", "........", "........"}));

    c.Fill(RGB(255, 255, 255));
    SelectObject(c.dc(), GetStockObject(NULL_BRUSH));
    Rectangle(c.dc(), 0, 0, 3, 3);
    SelectObject(c.dc(), GetStockObject(WHITE_BRUSH));
    EXPECT_EQ(c.Picture()[1], "#.#.....");
}

TEST_F(GdiShapes, EllipseStaysInItsBoxIsSymmetricAndOutlinedInThePen)
{
    Canvas c(4, 4);
    {
        Selected brush(c.dc(), CreateSolidBrush(kRed));
        Ellipse(c.dc(), 0, 0, 4, 4);
    }
    EXPECT_EQ(c.Picture(RGB(255, 255, 255), {{kRed, 'R'}}), (Rows{".##.", "#RR#", "#RR#", ".##."}));

    Canvas big(16, 10);
    {
        Selected brush(big.dc(), CreateSolidBrush(kRed));
        Ellipse(big.dc(), 2, 1, 13, 8);
    }
    Rows rows = big.Picture(RGB(255, 255, 255), {{kRed, 'R'}});
    int l = 99, r = -1, t = 99, b = -1;
    for (int y = 0; y < 10; ++y) {
        for (int x = 0; x < 16; ++x) {
            if (rows[y][x] != '.') {
                l = std::min(l, x), r = std::max(r, x), t = std::min(t, y), b = std::max(b, y);
            }
            if (x >= 2 && x <= 12 && y >= 1 && y <= 7) {
                EXPECT_EQ(rows[y][x], rows[y][2 + 12 - x]) << x << "," << y;  // mirror about x = 7
                EXPECT_EQ(rows[y][x], rows[1 + 7 - y][x]) << x << "," << y;   // mirror about y = 4
            }
        }
    }
    EXPECT_EQ(l, 2);
    EXPECT_EQ(r, 12);
    EXPECT_EQ(t, 1);
    EXPECT_EQ(b, 7);
    EXPECT_EQ(rows[4], "..#RRRRRRRRR#...");
}

TEST_F(GdiShapes, SetPixelGetPixelAndOneBitSurfaces)
{
    Canvas c(3, 2);
    EXPECT_EQ(SetPixel(c.dc(), 1, 1, RGB(1, 2, 3)), RGB(1, 2, 3));
    EXPECT_EQ(c.At(1, 1), RGB(1, 2, 3));
    EXPECT_EQ(GetPixel(c.dc(), 3, 0), CLR_INVALID);
    EXPECT_EQ(SetPixel(c.dc(), -1, 0, kRed), CLR_INVALID);

    Canvas mono(3, 1, RGB(255, 255, 255), 1);
    EXPECT_EQ(SetPixel(mono.dc(), 0, 0, RGB(200, 200, 200)), RGB(255, 255, 255));
    EXPECT_EQ(SetPixel(mono.dc(), 1, 0, RGB(40, 40, 200)), RGB(0, 0, 0));
    EXPECT_EQ(mono.At(1, 0), RGB(0, 0, 0));
}

TEST_F(GdiShapes, ClipOriginsAndSaveRestore)
{
    Canvas c(6, 4);
    HBRUSH hbr = CreateSolidBrush(kBlack);
    RECT all{0, 0, 6, 4};
    int nSaved = SaveDC(c.dc());
    SetViewportOrgEx(c.dc(), 1, 1, nullptr);
    EXPECT_EQ(IntersectClipRect(c.dc(), 0, 0, 2, 2), SIMPLEREGION);  // logical: surface (1,1)-(3,3)
    SetTextColor(c.dc(), kRed);
    FillRect(c.dc(), &all, hbr);
    RECT box;
    EXPECT_EQ(GetClipBox(c.dc(), &box), SIMPLEREGION);
    EXPECT_EQ(CRect(box), CRect(0, 0, 2, 2));
    EXPECT_TRUE(RestoreDC(c.dc(), nSaved));
    EXPECT_EQ(GetTextColor(c.dc()), kBlack);
    EXPECT_EQ(c.Picture(), (Rows{"......", ".##...", ".##...", "......"}));

    // The window origin moves the other way; SelectClipRgn(NULL) lifts the clip.
    c.Fill(RGB(255, 255, 255));
    SetWindowOrgEx(c.dc(), 2, 0, nullptr);
    IntersectClipRect(c.dc(), 2, 0, 3, 1);
    SelectClipRgn(c.dc(), nullptr);
    RECT one{2, 3, 3, 4};
    FillRect(c.dc(), &one, hbr);
    SetWindowOrgEx(c.dc(), 0, 0, nullptr);
    EXPECT_EQ(c.Picture()[3], "#.....");
    DeleteObject(hbr);
}

TEST_F(GdiShapes, SurfaceDcDrawsAtItsOriginWithinItsClip)
{
    HBITMAP hSurface = CreateBitmap(30, 20, 1, 32, nullptr);
    HDC hdc = CreateSurfaceDC(hSurface, POINT{10, 5}, RECT{10, 5, 20, 15});
    ASSERT_NE(hdc, nullptr);
    EXPECT_EQ(GetObjectType(hdc), OBJ_DC);
    HBRUSH hbr = CreateSolidBrush(RGB(255, 255, 255));
    RECT rc{-100, -100, 100, 100};
    FillRect(hdc, &rc, hbr);
    SetPixel(hdc, 0, 0, kRed);
    DWORD* px = GdiBitmapPixels(hSurface);
    int nWhite = 0;
    for (int i = 0; i < 30 * 20; ++i)
        nWhite += px[i] == 0xFFFFFF;
    EXPECT_EQ(nWhite, 10 * 10 - 1);
    EXPECT_EQ(px[5 * 30 + 10], 0xFF0000u);  // red in 0x00RRGGBB
    RECT box;
    GetClipBox(hdc, &box);
    EXPECT_EQ(CRect(box), CRect(0, 0, 10, 10));
    HBITMAP hOther = CreateBitmap(2, 2, 1, 32, nullptr);
    EXPECT_EQ(SelectObject(hdc, hOther), nullptr);  // only memory DCs take bitmaps
    EXPECT_EQ(GetBitmapBits(hOther, 0, nullptr), 16);
    HBITMAP hCompat = CreateCompatibleBitmap(hdc, 4, 4);
    BITMAP bm;
    GetObject(hCompat, sizeof bm, &bm);
    EXPECT_EQ(bm.bmBitsPixel, 32);
    DeleteObject(hCompat);
    DeleteObject(hOther);
    DeleteObject(hbr);
    DeleteDC(hdc);
    DeleteObject(hSurface);
}
