// A control made directly, a 32-bit memory surface to paint it into, the draw-call log, and a leak check.
#pragma once
#include <gtest/gtest.h>
#include <functional>
#include <string>
#include <vector>
#include "control/QuillonCtrl.h"
#include "framework/dc.h"

class PaintTest : public ::testing::Test {
protected:
    PaintTest();
    ~PaintTest() override;

    // The calls that `paint` issues into the surface, one line each.
    std::vector<std::string> Log(const std::function<void(CDC*)>& paint);
    // Only the lines that start with one of the prefixes ("Polygon", "LineTo", ...).
    static std::vector<std::string> Only(const std::vector<std::string>& log, std::initializer_list<const char*> prefixes);
    // The whole surface painted in one colour, so that tests see exactly what a painter touched.
    void Clear(COLORREF clr);
    COLORREF Pixel(int x, int y) const { return m_dc.GetPixel(x, y); }

    static constexpr int kWidth = 160, kHeight = 64;
    CQuillonCtrl* c = nullptr;
    CDC m_dc;

private:
    int m_nGdiObjects = 0;
    HBITMAP m_hbm = nullptr;
    HGDIOBJ m_hOldBitmap = nullptr;
};

// Compares whole sequences and prints both side by side on a mismatch.
void ExpectLines(const std::vector<std::string>& expected, const std::vector<std::string>& actual);
