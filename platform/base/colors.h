// System colours (GetSysColor, SetSysColors) and OleTranslateColor for OLE_COLOR values.
#pragma once
#include "wintypes.h"

enum {
    COLOR_SCROLLBAR = 0, COLOR_BACKGROUND = 1, COLOR_ACTIVECAPTION = 2, COLOR_INACTIVECAPTION = 3,
    COLOR_MENU = 4, COLOR_WINDOW = 5, COLOR_WINDOWFRAME = 6, COLOR_MENUTEXT = 7, COLOR_WINDOWTEXT = 8,
    COLOR_CAPTIONTEXT = 9, COLOR_ACTIVEBORDER = 10, COLOR_INACTIVEBORDER = 11, COLOR_APPWORKSPACE = 12,
    COLOR_HIGHLIGHT = 13, COLOR_HIGHLIGHTTEXT = 14, COLOR_BTNFACE = 15, COLOR_BTNSHADOW = 16,
    COLOR_GRAYTEXT = 17, COLOR_BTNTEXT = 18, COLOR_INACTIVECAPTIONTEXT = 19, COLOR_BTNHIGHLIGHT = 20,
    COLOR_3DDKSHADOW = 21, COLOR_3DLIGHT = 22, COLOR_INFOTEXT = 23, COLOR_INFOBK = 24,
    COLOR_HOTLIGHT = 26, COLOR_GRADIENTACTIVECAPTION = 27, COLOR_GRADIENTINACTIVECAPTION = 28,
    COLOR_MENUHILIGHT = 29, COLOR_MENUBAR = 30,
    COLOR_3DFACE = COLOR_BTNFACE, COLOR_3DSHADOW = COLOR_BTNSHADOW, COLOR_3DHIGHLIGHT = COLOR_BTNHIGHLIGHT,
};
constexpr int kSysColorCount = 31;

// The current system colour; indices outside the table give 0, as the real call does.
DWORD GetSysColor(int nIndex);
BOOL SetSysColors(int cElements, const INT* lpaElements, const COLORREF* lpaRgbValues);
// Puts the Windows 7 default table back (hosts and tests start from it).
void ResetSysColors();

// 0x800000nn is system colour nn; 0x00BBGGRR and 0x02BBGGRR are plain colours;
// 0x01000nnn is a palette index (no palettes here: black). Anything else is E_INVALIDARG.
HRESULT OleTranslateColor(OLE_COLOR clr, HPALETTE hpal, COLORREF* lpcolorref);
