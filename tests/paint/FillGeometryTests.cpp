// Fill arithmetic and pattern shapes on plain values: colour steps, step counts, splits, and shape sequences.
#include <gtest/gtest.h>
#include <cstdio>
#include <string>
#include <vector>
#include "control/QuillonEnums.h"
#include "paint/FillGeometry.h"

namespace {

std::string Hex(COLORREF c)
{
    char sz[8];
    std::snprintf(sz, sizeof sz, "#%02X%02X%02X", GetRValue(c), GetGValue(c), GetBValue(c));
    return sz;
}

// Shapes as readable lines, in the order a pattern emits them.
class Recorder : public fill::ShapeSink {
public:
    std::vector<std::string> lines;
    void Rect(const RECT& rc, COLORREF clr) override { lines.push_back("Rect " + Box(rc) + " " + Hex(clr)); }
    void Ellipse(const RECT& rc, COLORREF clr) override { lines.push_back("Ellipse " + Box(rc) + " " + Hex(clr)); }
    void Polygon(const POINT* pts, int count, COLORREF clr) override
    {
        std::string s = "Polygon";
        for (int i = 0; i < count; ++i) s += " " + std::to_string(pts[i].x) + "," + std::to_string(pts[i].y);
        lines.push_back(s + " " + Hex(clr));
    }
    static std::string Box(const RECT& r)
    {
        return std::to_string(r.left) + "," + std::to_string(r.top) + "," + std::to_string(r.right) + "," + std::to_string(r.bottom);
    }
};

// What shows after the rectangles of a pattern are laid one over the other, one red value per pixel.
class Grid : public fill::ShapeSink {
public:
    Grid(int w, int h) : m_w(w), px(static_cast<size_t>(w * h), -1) {}
    void Rect(const RECT& rc, COLORREF clr) override
    {
        for (LONG y = rc.top; y < rc.bottom; ++y)
            for (LONG x = rc.left; x < rc.right; ++x) px[static_cast<size_t>(y * m_w + x)] = GetRValue(clr);
    }
    void Polygon(const POINT*, int, COLORREF) override { ADD_FAILURE() << "a rectangle pattern made a polygon"; }
    void Ellipse(const RECT&, COLORREF) override { ADD_FAILURE() << "a rectangle pattern made an ellipse"; }
    int At(int x, int y) const { return px[static_cast<size_t>(y * m_w + x)]; }
    int m_w;
    std::vector<int> px;
};

std::vector<std::string> Emit(int kind, COLORREF from, COLORREF to, RECT rc)
{
    Recorder r;
    fill::EmitPattern(r, kind, from, to, rc);
    return r.lines;
}

constexpr COLORREF kBlack = RGB(0, 0, 0), kRed = RGB(255, 0, 0);

} // namespace

TEST(FillColour, StepsTruncateTowardZeroPerChannel)
{
    struct Row { COLORREF from, to; int i, n; COLORREF expected; };
    const Row rows[] = {
        {kBlack, kRed, 1, 4, RGB(63, 0, 0)},
        {kRed, kBlack, 1, 4, RGB(192, 0, 0)},  // 255 - 63.75 truncates up, not down to 191
        {RGB(10, 20, 30), RGB(40, 80, 120), 1, 3, RGB(20, 40, 60)},
        {RGB(10, 20, 30), RGB(40, 80, 120), 0, 3, RGB(10, 20, 30)},
        {RGB(10, 20, 30), RGB(40, 80, 120), 3, 3, RGB(40, 80, 120)},
        {RGB(0, 255, 7), RGB(255, 0, 7), 2, 3, RGB(170, 85, 7)},
    };
    for (const Row& r : rows)
        EXPECT_EQ(Hex(fill::Mix(r.from, r.to, r.i, r.n)), Hex(r.expected)) << Hex(r.from) << " " << r.i << "/" << r.n;

    EXPECT_EQ(Hex(fill::MixFromSecond(kBlack, kRed, 2, 4)), "#800000");
    EXPECT_EQ(Hex(fill::MixFromSecond(kBlack, kRed, 0, 4)), "#FF0000");
    EXPECT_EQ(Hex(fill::MixFromSecond(RGB(40, 0, 90), RGB(0, 90, 30), 1, 3)), Hex(RGB(13, 60, 50)));
    EXPECT_EQ(Hex(fill::Average(kBlack, kRed)), "#7F0000");
    EXPECT_EQ(Hex(fill::Average(RGB(1, 200, 3), RGB(2, 100, 255))), Hex(RGB(1, 150, 129)));
}

TEST(FillColour, MiddlesOfTheEdgePatterns)
{
    struct Row { int x1, x2, third, half; };
    const Row rows[] = {
        {0, 255, 85, 127}, {255, 0, 170, 127}, {100, 100, 100, 100}, {0, 1, 0, 0},
        {1, 0, 0, 0},      {0, 254, 84, 127},  {254, 0, 168, 127},   {10, 13, 11, 11},
    };
    for (const Row& r : rows) {
        // The value under test goes in one channel; the others hold different values to catch a mix-up.
        COLORREF a = RGB(r.x1, 30, 200), b = RGB(r.x2, 60, 200);
        EXPECT_EQ(Hex(fill::ThirdMiddle(a, b)), Hex(RGB(r.third, 40, 200))) << r.x1 << " " << r.x2;
        EXPECT_EQ(Hex(fill::HalfMiddle(a, b)), Hex(RGB(r.half, 45, 200))) << r.x1 << " " << r.x2;
        EXPECT_EQ(GetBValue(fill::ThirdMiddle(RGB(0, 0, r.x1), RGB(0, 0, r.x2))), r.third);
    }
}

TEST(FillGeometry, StepCountsAndStepSizes)
{
    struct Row { int w, h; fill::Stepping horz, vert, nested; };
    const Row rows[] = {
        {16, 20, {4, 4}, {10, 2}, {8, 2}},   {17, 9, {4, 4}, {4, 2}, {4, 2}}, {7, 3, {1, 7}, {1, 3}, {1, 3}},
        {3, 1, {0, 0}, {0, 0}, {0, 0}},      {0, 0, {0, 0}, {0, 0}, {0, 0}},  {20, 5, {5, 4}, {2, 2}, {2, 2}},
        {-8, 6, {-2, 0}, {3, 2}, {-4, 0}},
    };
    for (const Row& r : rows) {
        fill::Stepping h = fill::HorzBumpStepping(r.w), v = fill::VertBumpStepping(r.h), n = fill::NestedStepping(r.w, r.h);
        EXPECT_EQ(h.n, r.horz.n) << r.w;
        EXPECT_EQ(h.k, r.horz.k) << r.w;
        EXPECT_EQ(v.n, r.vert.n) << r.h;
        EXPECT_EQ(v.k, r.vert.k) << r.h;
        EXPECT_EQ(n.n, r.nested.n) << r.w << "x" << r.h;
        EXPECT_EQ(n.k, r.nested.k) << r.w << "x" << r.h;
    }
}

TEST(FillGeometry, CircleSquareAndEdgeSplits)
{
    EXPECT_EQ(Recorder::Box(fill::CircleSquare({0, 0, 16, 20})), "0,2,16,18");
    EXPECT_EQ(Recorder::Box(fill::CircleSquare({0, 0, 40, 10})), "15,0,25,10");
    EXPECT_EQ(Recorder::Box(fill::CircleSquare({3, 4, 10, 10})), "3,4,9,10");
    EXPECT_EQ(Recorder::Box(fill::CircleSquare({5, 1, 10, 10})), "5,3,10,8");

    fill::EdgeSplit s{};
    ASSERT_TRUE(fill::SplitEdge(FillHorzEdge, kBlack, kRed, {2, 1, 18, 21}, &s));
    EXPECT_EQ(Recorder::Box(s.first) + " " + Recorder::Box(s.second), "2,1,7,21 7,1,18,21");
    EXPECT_EQ(s.nKind, FillHorizontal);
    EXPECT_EQ(Hex(s.clrMiddle), "#550000");
    ASSERT_TRUE(fill::SplitEdge(FillVertEdge, kRed, kBlack, {0, 0, 16, 20}, &s));
    EXPECT_EQ(Recorder::Box(s.first) + " " + Recorder::Box(s.second), "0,0,16,7 0,7,16,20");
    EXPECT_EQ(s.nKind, FillVertical);
    EXPECT_EQ(Hex(s.clrMiddle), "#AA0000");
    ASSERT_TRUE(fill::SplitEdge(FillVertEdge2, kBlack, kRed, {0, 4, 16, 24}, &s));
    EXPECT_EQ(Recorder::Box(s.first) + " " + Recorder::Box(s.second), "0,4,16,14 0,14,16,24");
    EXPECT_EQ(Hex(s.clrMiddle), "#7F0000");
    for (int kind : {int(FillSolid), int(FillHorizontal), int(FillDiagonal), int(FillEllipse), 14})
        EXPECT_FALSE(fill::SplitEdge(kind, kBlack, kRed, {0, 0, 16, 20}, &s)) << kind;
}

TEST(FillPatterns, LinearAndBumpBandsShowTheWorkedValues)
{
    Grid vert(1, 4);
    fill::EmitPattern(vert, FillVertical, kBlack, kRed, {0, 0, 1, 4});
    EXPECT_EQ(vert.px, (std::vector<int>{0, 63, 127, 191}));

    const COLORREF to200 = RGB(200, 0, 0);
    Grid bump8(1, 8), bump9(1, 9), horz(16, 1);
    fill::EmitPattern(bump8, FillVertBump, kBlack, to200, {0, 0, 1, 8});
    fill::EmitPattern(bump9, FillVertBump, kBlack, to200, {0, 0, 1, 9});
    fill::EmitPattern(horz, FillHorzBump, kBlack, to200, {0, 0, 16, 1});
    EXPECT_EQ(bump8.px, (std::vector<int>{0, 50, 100, 150, 150, 100, 50, 0}));
    EXPECT_EQ(bump9.px, (std::vector<int>{0, 50, 100, 150, 200, 150, 100, 50, 0}));
    EXPECT_EQ(horz.px, (std::vector<int>{0, 0, 50, 50, 100, 100, 150, 150, 150, 150, 100, 100, 50, 50, 0, 0}));
    // The last horizontal-bump pass is there but empty.
    EXPECT_EQ(Emit(FillHorzBump, kBlack, to200, {0, 0, 16, 1}).back(), "Rect 8,0,8,1 #C80000");
}

TEST(FillPatterns, LinearGradientsNeverReachTheSecondColour)
{
    for (int n = 1; n <= 40; ++n) {
        Grid g(n, 1);
        fill::EmitPattern(g, FillHorizontal, kBlack, kRed, {0, 0, n, 1});
        EXPECT_EQ(g.At(0, 0), 0) << n;
        EXPECT_EQ(g.At(n - 1, 0), 255 * (n - 1) / n) << n;
        auto lines = Emit(FillVertical, kBlack, kRed, {0, 0, 1, n});
        ASSERT_EQ(lines.size(), static_cast<size_t>(n + 1));
        // The pass that would carry the second colour is the empty one at the far edge.
        EXPECT_EQ(lines.back(), "Rect 0," + std::to_string(n) + ",1," + std::to_string(n) + " #FF0000");
    }
}

TEST(FillPatterns, DiagonalTrianglesOnASquare)
{
    // FillDiagonal on 4x4 from black to red: the average, then triangles into the bottom-right, then the top-left.
    const std::vector<std::string> kDiagonal4 = {
        "Rect 0,0,4,4 #7F0000",
        "Polygon 4,0 4,4 0,4 #7F0000", "Polygon 4,1 4,4 1,4 #3F0000", "Polygon 4,2 4,4 2,4 #3F0000",
        "Polygon 4,3 4,4 3,4 #000000", "Polygon 4,4 4,4 4,4 #000000",
        "Polygon 0,4 0,0 4,0 #800000", "Polygon 0,3 0,0 3,0 #C00000", "Polygon 0,2 0,0 2,0 #C00000",
        "Polygon 0,1 0,0 1,0 #FF0000", "Polygon 0,0 0,0 0,0 #FF0000",
    };
    EXPECT_EQ(Emit(FillDiagonal, kBlack, kRed, {0, 0, 4, 4}), kDiagonal4);
    // FillRevDiag mirrors it: the first colour's corner is bottom-left, the second's top-right.
    auto rev = Emit(FillRevDiag, kBlack, kRed, {0, 0, 4, 4});
    ASSERT_EQ(rev.size(), 11u);
    EXPECT_EQ(rev[1], "Polygon 0,0 0,4 4,4 #7F0000");
    EXPECT_EQ(rev[4], "Polygon 0,3 0,4 1,4 #000000");
    EXPECT_EQ(rev[7], "Polygon 4,3 4,0 1,0 #C00000");
}

TEST(FillPatterns, DiagonalOnRectanglesAndBelowZero)
{
    // 16x20 costs 35 shapes: the base and two runs of 17.
    EXPECT_EQ(Emit(FillDiagonal, kBlack, kRed, {0, 0, 16, 20}).size(), 35u);
    // On 3x7 the step down is 7/3 = 2, so the run stops short of the corner and the last triangle is flat.
    auto tall = Emit(FillDiagonal, kBlack, kRed, {0, 0, 3, 7});
    EXPECT_EQ(tall[4], "Polygon 3,6 3,7 3,7 #000000");
    EXPECT_EQ(tall[8], "Polygon 0,1 0,0 0,0 #FF0000");
    // Computed corners below zero are raised to 0; the anchored corner is left as it is.
    auto cut = Emit(FillDiagonal, kBlack, kRed, {-4, -2, 4, 6});
    EXPECT_EQ(cut[1], "Polygon 4,0 4,6 0,6 #7F0000");
    EXPECT_EQ(cut[10], "Polygon 0,6 -4,-2 4,0 #800000");
    EXPECT_EQ(cut[11], "Polygon 0,5 -4,-2 3,0 #A00000");
}

TEST(FillPatterns, NestedShapesShrinkByTheCommonStep)
{
    auto diamond = Emit(FillDiamond, kBlack, kRed, {0, 0, 8, 8});
    ASSERT_EQ(diamond.size(), 6u);
    EXPECT_EQ(diamond[0], "Rect 0,0,8,8 #000000");
    EXPECT_EQ(diamond[1], "Polygon 4,0 0,4 4,8 8,4 #000000");
    EXPECT_EQ(diamond[2], "Polygon 4,1 1,4 4,7 7,4 #3F0000");
    EXPECT_EQ(diamond[5], "Polygon 4,4 4,4 4,4 4,4 #FF0000");

    const std::vector<std::string> kPyramid10x6 = {
        "Rect 0,0,10,6 #000000", "Rect 1,1,9,5 #550000", "Rect 2,2,8,4 #AA0000", "Rect 3,3,7,3 #FF0000"};
    EXPECT_EQ(Emit(FillPyramid, kBlack, kRed, {0, 0, 10, 6}), kPyramid10x6);
    const std::vector<std::string> kEllipse10x6 = {"Rect 0,0,10,6 #000000", "Ellipse 0,0,10,6 #000000",
                                                   "Ellipse 1,1,9,5 #550000", "Ellipse 2,2,8,4 #AA0000",
                                                   "Ellipse 3,3,7,3 #FF0000"};
    EXPECT_EQ(Emit(FillEllipse, kBlack, kRed, {0, 0, 10, 6}), kEllipse10x6);
    // The circle works in the centred square, so a wide rectangle keeps the first colour at both ends.
    const std::vector<std::string> kCircle20x6 = {"Rect 0,0,20,6 #000000", "Ellipse 7,0,13,6 #000000",
                                                  "Ellipse 8,1,12,5 #550000", "Ellipse 9,2,11,4 #AA0000",
                                                  "Ellipse 10,3,10,3 #FF0000"};
    EXPECT_EQ(Emit(FillCircle, kBlack, kRed, {0, 0, 20, 6}), kCircle20x6);
}

TEST(FillPatterns, ZeroAndNegativeExtentsPaintOnlyTheBase)
{
    struct Row { int kind; RECT rc; std::vector<std::string> expected; };
    const std::vector<std::string> none;
    const Row rows[] = {
        {FillHorizontal, {5, 0, 5, 20}, none},
        {FillHorizontal, {5, 0, 2, 20}, none},
        {FillVertical, {0, 5, 16, 5}, none},
        {FillHorzBump, {0, 0, 3, 20}, none},
        {FillVertBump, {0, 0, 16, 1}, none},
        {FillVertBump, {0, 0, 16, -4}, none},
        {FillPyramid, {0, 0, 1, 20}, none},
        {FillDiamond, {0, 0, 16, 1}, {"Rect 0,0,16,1 #000000"}},
        {FillEllipse, {0, 0, 0, 20}, {"Rect 0,0,0,20 #000000"}},
        {FillCircle, {0, 0, 16, -3}, {"Rect 0,0,16,-3 #000000"}},
        {FillDiagonal, {0, 0, 0, 20}, {"Rect 0,0,0,20 #7F0000"}},
        {FillRevDiag, {0, 0, 16, -1}, {"Rect 0,0,16,-1 #7F0000"}},
    };
    for (const Row& r : rows) EXPECT_EQ(Emit(r.kind, kBlack, kRed, r.rc), r.expected) << "kind " << r.kind;
    // Two rows high is one step: the whole extent, then an empty pass in the second colour.
    EXPECT_EQ(Emit(FillVertBump, kBlack, kRed, {0, 0, 1, 2}), (std::vector<std::string>{"Rect 0,0,1,2 #000000", "Rect 0,1,1,1 #FF0000"}));
}

TEST(FillPatterns, SolidAndUnknownKindsUseOnlyTheFirstColour)
{
    for (int kind : {int(FillSolid), -1, 14, 99})
        EXPECT_EQ(Emit(kind, RGB(1, 2, 3), kRed, {2, 3, 18, 23}), (std::vector<std::string>{"Rect 2,3,18,23 #010203"})) << kind;
    for (int kind : {int(FillHorzEdge), int(FillVertEdge), int(FillVertEdge2)}) EXPECT_TRUE(Emit(kind, kBlack, kRed, {0, 0, 16, 20}).empty());
}
