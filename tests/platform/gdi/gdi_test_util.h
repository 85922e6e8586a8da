// Helpers for the GDI stand-in tests: a leak-checking fixture and a memory canvas with pixel pictures.
#pragma once
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>
#include "gdi/wingdi.h"

// Every test starts and ends with the same number of live GDI objects, and with the log off.
class GdiTest : public ::testing::Test {
protected:
    void SetUp() override { m_nLive = GdiGetLiveObjectCount(); }
    void TearDown() override
    {
        GdiSetDrawLog(FALSE);
        GdiSetFailBitmapCreation(FALSE);
        EXPECT_EQ(GdiGetLiveObjectCount(), m_nLive) << "leaked:\n" << GdiDescribeLiveObjects();
    }
    int m_nLive = 0;
};

// A memory DC with its own bitmap, filled with one colour.
class Canvas {
public:
    Canvas(int cx, int cy, COLORREF clrFill = RGB(255, 255, 255), int nBits = 32)
        : m_cx(cx), m_cy(cy)
    {
        m_hdc = CreateCompatibleDC(nullptr);
        m_hbm = CreateBitmap(cx, cy, 1, nBits, nullptr);
        m_hOld = SelectObject(m_hdc, m_hbm);
        Fill(clrFill);
    }
    ~Canvas()
    {
        SelectObject(m_hdc, m_hOld);
        DeleteObject(m_hbm);
        DeleteDC(m_hdc);
    }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    void Fill(COLORREF clr)
    {
        HBRUSH hbr = CreateSolidBrush(clr);
        RECT rc{0, 0, m_cx, m_cy};
        FillRect(m_hdc, &rc, hbr);
        DeleteObject(hbr);
    }
    COLORREF At(int x, int y) const { return GetPixel(m_hdc, x, y); }
    int Count(COLORREF clr) const
    {
        int n = 0;
        for (int y = 0; y < m_cy; ++y)
            for (int x = 0; x < m_cx; ++x)
                n += At(x, y) == clr;
        return n;
    }
    // Rows of the canvas as text: '.' for clrBack, '#' for anything else, or the character given per colour.
    std::vector<std::string> Picture(COLORREF clrBack = RGB(255, 255, 255),
                                     const std::map<COLORREF, char>& keys = {}) const
    {
        std::vector<std::string> rows;
        for (int y = 0; y < m_cy; ++y) {
            std::string s;
            for (int x = 0; x < m_cx; ++x) {
                COLORREF c = At(x, y);
                auto it = keys.find(c);
                s += it != keys.end() ? it->second : c == clrBack ? '.' : '#';
            }
            rows.push_back(s);
        }
        return rows;
    }
    HDC dc() const { return m_hdc; }
    HBITMAP bitmap() const { return m_hbm; }

private:
    int m_cx, m_cy;
    HDC m_hdc;
    HBITMAP m_hbm;
    HGDIOBJ m_hOld;
};

// Selects an object for the scope and deletes it afterwards (stock objects are left alone by DeleteObject).
class Selected {
public:
    Selected(HDC hdc, HGDIOBJ h) : m_hdc(hdc), m_h(h), m_hOld(SelectObject(hdc, h)) {}
    ~Selected()
    {
        SelectObject(m_hdc, m_hOld);
        DeleteObject(m_h);
    }
    Selected(const Selected&) = delete;
    Selected& operator=(const Selected&) = delete;

private:
    HDC m_hdc;
    HGDIOBJ m_h;
    HGDIOBJ m_hOld;
};
