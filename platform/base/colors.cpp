// The system colour table (Windows 7 defaults, changeable at run time) and OLE colour translation.
#include "colors.h"

namespace {

// Windows 7 Aero defaults, written as 0xRRGGBB for reading and swapped to COLORREF on use.
constexpr DWORD kWin7Rgb[kSysColorCount] = {
    0xC8C8C8, 0x000000, 0x99B4D1, 0xBFCDDB, 0xF0F0F0, 0xFFFFFF, 0x646464, 0x000000,
    0x000000, 0x000000, 0xB4B4B4, 0xF4F7FC, 0xABABAB, 0x3399FF, 0xFFFFFF, 0xF0F0F0,
    0xA0A0A0, 0x6D6D6D, 0x000000, 0x434E54, 0xFFFFFF, 0x696969, 0xE3E3E3, 0x000000,
    0xFFFFE1, 0x000000, 0x0066CC, 0xB9D1EA, 0xD7E4F2, 0x3399FF, 0xF0F0F0,
};

constexpr COLORREF FromRgb(DWORD rgb) { return RGB(rgb >> 16, (rgb >> 8) & 0xFF, rgb & 0xFF); }

struct SysColorTable {
    COLORREF colors[kSysColorCount];
    SysColorTable() { Reset(); }
    void Reset() { for (int i = 0; i < kSysColorCount; ++i) colors[i] = FromRgb(kWin7Rgb[i]); }
};

SysColorTable& Table()
{
    static SysColorTable table;
    return table;
}

} // namespace

DWORD GetSysColor(int nIndex)
{
    return nIndex >= 0 && nIndex < kSysColorCount ? Table().colors[nIndex] : 0;
}

BOOL SetSysColors(int cElements, const INT* lpaElements, const COLORREF* lpaRgbValues)
{
    for (int i = 0; i < cElements; ++i)
        if (lpaElements[i] < 0 || lpaElements[i] >= kSysColorCount) return FALSE;
    for (int i = 0; i < cElements; ++i) Table().colors[lpaElements[i]] = lpaRgbValues[i] & 0xFFFFFF;
    return TRUE;
}

void ResetSysColors() { Table().Reset(); }

HRESULT OleTranslateColor(OLE_COLOR clr, HPALETTE, COLORREF* lpcolorref)
{
    COLORREF result = 0;
    switch (clr >> 24) {
    case 0x00: case 0x02: result = clr & 0xFFFFFF; break;
    case 0x01: result = 0; break; // palette index: the stand-in has no palettes
    case 0x80:
        if ((clr & 0xFFFFFF) >= kSysColorCount) return E_INVALIDARG;
        result = GetSysColor(clr & 0xFF);
        break;
    default: return E_INVALIDARG;
    }
    if (lpcolorref) *lpcolorref = result;
    return S_OK;
}
