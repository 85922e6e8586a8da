// Golden image comparison with actual and diff images written on a mismatch.
#include "Golden.h"
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include "gdi/wingdi.h"

namespace {

bool Updating()
{
    const char* v = std::getenv("UPDATE_GOLDENS");
    return v && std::string(v) == "1";
}

BITMAP Info(HBITMAP h)
{
    BITMAP bm{};
    GetObject(h, sizeof bm, &bm);
    return bm;
}

// Red where the images differ, the expected image faded elsewhere.
HBITMAP DiffImage(const DWORD* expected, const DWORD* actual, LONG w, LONG h)
{
    HBITMAP diff = CreateBitmap(w, h, 1, 32, nullptr);
    DWORD* out = GdiBitmapPixels(diff);
    for (LONG i = 0; i < w * h; ++i) {
        DWORD grey = ((expected[i] & 0xFF) + ((expected[i] >> 8) & 0xFF) + ((expected[i] >> 16) & 0xFF)) / 6 + 170;
        out[i] = expected[i] == actual[i] ? (grey << 16 | grey << 8 | grey) : 0xFF0000;
    }
    return diff;
}

} // namespace

void ExpectMatchesGolden(HBITMAP bitmap, const std::string& name)
{
    const std::string golden = std::string(QUILLON_GOLDEN_DIR) + "/" + name + ".png";
    const std::string outDir = std::string(QUILLON_GOLDEN_OUT);
    if (Updating()) {
        ASSERT_TRUE(SaveBitmapPng(bitmap, golden.c_str())) << "cannot write " << golden;
        return;
    }
    HBITMAP expected = std::filesystem::exists(golden) ? LoadBitmapPng(golden.c_str()) : nullptr;
    if (!expected) {
        ADD_FAILURE() << "missing golden " << golden << " (run with UPDATE_GOLDENS=1 to write it)";
        return;
    }
    BITMAP e = Info(expected), a = Info(bitmap);
    if (e.bmWidth != a.bmWidth || e.bmHeight != a.bmHeight) {
        ADD_FAILURE() << name << ": size " << a.bmWidth << "x" << a.bmHeight << ", golden " << e.bmWidth << "x" << e.bmHeight;
        DeleteObject(expected);
        return;
    }
    const DWORD* ep = GdiBitmapPixels(expected);
    const DWORD* ap = GdiBitmapPixels(bitmap);
    long count = 0, first = -1;
    for (LONG i = 0; i < a.bmWidth * a.bmHeight; ++i)
        if (ep[i] != ap[i] && count++ == 0) first = i;
    if (count) {
        std::filesystem::create_directories(outDir);
        SaveBitmapPng(bitmap, (outDir + "/" + name + ".actual.png").c_str());
        HBITMAP diff = DiffImage(ep, ap, a.bmWidth, a.bmHeight);
        SaveBitmapPng(diff, (outDir + "/" + name + ".diff.png").c_str());
        DeleteObject(diff);
        char where[128];
        std::snprintf(where, sizeof where, "first at (%ld, %ld): #%06X, golden #%06X", first % a.bmWidth, first / a.bmWidth,
                      static_cast<unsigned>(ap[first] & 0xFFFFFF), static_cast<unsigned>(ep[first] & 0xFFFFFF));
        ADD_FAILURE() << name << ": " << count << " pixels differ, " << where << "; actual and diff in " << outDir;
    }
    DeleteObject(expected);
}
