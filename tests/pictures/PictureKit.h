// Helpers of the picture and style tests: bitmaps and canvases drawn as character grids, image files
// written byte by byte, and a fixture that fails a test which leaves GDI objects behind.
#pragma once
#include <gtest/gtest.h>
#include <filesystem>
#include <map>
#include <string>
#include <vector>
#include "control/QuillonCtrl.h"
#include "framework/dc.h"
#include "host/Host.h"

// Rows of characters, one per pixel, with a legend from character to colour.
using Grid = std::vector<std::string>;
using Legend = std::map<char, COLORREF>;

// A new 32-bit bitmap with the grid's pixels; the caller deletes it (or hands it to a picture).
HBITMAP MakeBitmap(const Grid& rows, const Legend& legend);
// The pixels of a bitmap, as COLORREFs row by row.
std::vector<COLORREF> BitmapPixels(HBITMAP hbm);

// A memory DC over a 32-bit bitmap filled with one colour, as the off-screen buffer of a paint.
class Canvas {
public:
    Canvas(int cx, int cy, COLORREF background);
    ~Canvas();
    CDC* DC() { return &m_dc; }
    // The area (x, y, w, h) read back through the legend; a colour not in it shows as '?'.
    Grid Read(int x, int y, int w, int h, const Legend& legend);

private:
    CDC m_dc;
    CBitmap m_bitmap;
    HGDIOBJ m_old = nullptr;
};

// A control made as a host makes one, reset to its defaults; released at the end of the test.
class PictureTest : public ::testing::Test {
protected:
    PictureTest();
    ~PictureTest() override;
    // Gives the control a bitmap picture made from the grid (the picture owns the bitmap).
    void SetBitmap(const Grid& rows, const Legend& legend);
    // The draw-call log of one call.
    template <class F> std::vector<std::string> Logged(F draw)
    {
        GdiSetDrawLog(TRUE);
        draw();
        std::vector<std::string> log = GdiGetDrawLog();
        GdiSetDrawLog(FALSE);
        return log;
    }

    CQuillonCtrl* m_ctrl = nullptr;
    int m_gdiObjects = 0;
};

// A folder of its own under the system's temporary folder, removed with everything in it.
class TempFolder {
public:
    TempFolder();
    ~TempFolder();
    std::string File(const char* name) const { return (m_path / name).string(); }

private:
    std::filesystem::path m_path;
};

// Writes a 24-bit bottom-up BMP of the grid.
void WriteBmp(const std::string& path, const Grid& rows, const Legend& legend);
// Writes an ICO with one 24-bit image of the grid; '.' pixels are transparent through the AND mask.
void WriteIco(const std::string& path, const Grid& rows, const Legend& legend);

// Prints grids one row a line, so that a mismatch shows the picture.
void ExpectGrid(const Grid& expected, const Grid& actual);

// Properties by name through a control's dispatch interface, as numbers: colours as their 32 bits,
// booleans as 1 and 0. Failures fail the test.
long long GetNumber(IDispatch* pDisp, const char16_t* name);
// Puts a number in the type the property reads back as.
void PutNumber(IDispatch* pDisp, const char16_t* name, long long value);

// A host with one form, for tests that go through the doors a container uses; nothing may outlive it.
class HostTest : public ::testing::Test {
protected:
    HostTest();
    ~HostTest() override;
    CControlSite* Create();
    CControlSite* Load(const CString& bag);

    std::unique_ptr<CHost> m_pHost = std::make_unique<CHost>();
    CHost& m_host = *m_pHost;
    CForm* m_form = nullptr;
    int m_gdiObjects = 0;
};
