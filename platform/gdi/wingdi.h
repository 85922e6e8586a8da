// Win32 GDI (wingdi.h): the public drawing API of the stand-in, with the real names, structures and constants.
#pragma once
#include "base/rect.h"
#include "base/wintypes.h"

// Knowing differences from the real GDI, in one place:
// - Handles live in one process-wide table and are not thread-safe: all drawing runs on the UI thread.
// - Colour surfaces are always 32 bits per pixel (0x00RRGGBB in memory, B,G,R,0 as bytes); there are
//   no palettes and no other depths. One-bit surfaces are the only other format.
// - Mapping modes, world transforms, paths and metafiles do not exist; logical units are pixels.
// - Pens are cosmetic and one pixel wide whatever their width; dashed styles draw solid.
// - Clip regions are rectangles; a complex region is not representable.

DECLARE_HANDLE(HRGN);
typedef void* LPVOID;
typedef const void* LPCVOID;
typedef uintptr_t ULONG_PTR;

// Object types (GetObjectType).
#define OBJ_PEN 1
#define OBJ_BRUSH 2
#define OBJ_DC 3
#define OBJ_PAL 5
#define OBJ_FONT 6
#define OBJ_BITMAP 7
#define OBJ_REGION 8
#define OBJ_MEMDC 10

// Stock objects (GetStockObject).
#define WHITE_BRUSH 0
#define LTGRAY_BRUSH 1
#define GRAY_BRUSH 2
#define DKGRAY_BRUSH 3
#define BLACK_BRUSH 4
#define NULL_BRUSH 5
#define HOLLOW_BRUSH NULL_BRUSH
#define WHITE_PEN 6
#define BLACK_PEN 7
#define NULL_PEN 8
#define SYSTEM_FONT 13
#define DEFAULT_GUI_FONT 17

// Pen styles.
#define PS_SOLID 0
#define PS_DASH 1
#define PS_DOT 2
#define PS_DASHDOT 3
#define PS_DASHDOTDOT 4
#define PS_NULL 5
#define PS_INSIDEFRAME 6

// Brush styles.
#define BS_SOLID 0
#define BS_NULL 1
#define BS_HOLLOW BS_NULL
#define BS_HATCHED 2
#define BS_PATTERN 3

// Ternary raster operations: bits 16..23 are the operation index (the truth table over P, S, D).
#define SRCCOPY 0x00CC0020
#define SRCPAINT 0x00EE0086
#define SRCAND 0x008800C6
#define SRCINVERT 0x00660046
#define SRCERASE 0x00440328
#define NOTSRCCOPY 0x00330008
#define NOTSRCERASE 0x001100A6
#define MERGECOPY 0x00C000CA
#define MERGEPAINT 0x00BB0226
#define PATCOPY 0x00F00021
#define PATPAINT 0x00FB0A09
#define PATINVERT 0x005A0049
#define DSTINVERT 0x00550009
#define BLACKNESS 0x00000042
#define WHITENESS 0x00FF0062

// Background modes.
#define TRANSPARENT 1
#define OPAQUE 2

// StretchBlt modes.
#define BLACKONWHITE 1
#define WHITEONBLACK 2
#define COLORONCOLOR 3
#define HALFTONE 4
#define STRETCH_ANDSCANS BLACKONWHITE
#define STRETCH_ORSCANS WHITEONBLACK
#define STRETCH_DELETESCANS COLORONCOLOR

// ExtTextOut options.
#define ETO_OPAQUE 0x0002
#define ETO_CLIPPED 0x0004

// DrawText formats.
#define DT_TOP 0x00000000
#define DT_LEFT 0x00000000
#define DT_CENTER 0x00000001
#define DT_RIGHT 0x00000002
#define DT_VCENTER 0x00000004
#define DT_BOTTOM 0x00000008
#define DT_WORDBREAK 0x00000010
#define DT_SINGLELINE 0x00000020
#define DT_EXPANDTABS 0x00000040
#define DT_NOCLIP 0x00000100
#define DT_EXTERNALLEADING 0x00000200
#define DT_CALCRECT 0x00000400
#define DT_NOPREFIX 0x00000800
#define DT_EDITCONTROL 0x00002000
#define DT_END_ELLIPSIS 0x00008000

// Font weights, character sets, precisions, qualities, pitch and family.
#define FW_DONTCARE 0
#define FW_THIN 100
#define FW_LIGHT 300
#define FW_NORMAL 400
#define FW_MEDIUM 500
#define FW_SEMIBOLD 600
#define FW_BOLD 700
#define FW_HEAVY 900
#define ANSI_CHARSET 0
#define DEFAULT_CHARSET 1
#define OUT_DEFAULT_PRECIS 0
#define CLIP_DEFAULT_PRECIS 0
#define DEFAULT_QUALITY 0
#define NONANTIALIASED_QUALITY 3
#define DEFAULT_PITCH 0
#define VARIABLE_PITCH 2
#define FF_DONTCARE 0x00
#define FF_SWISS 0x20
#define LF_FACESIZE 32

// Region results and misc.
#define ERROR 0
#define NULLREGION 1
#define SIMPLEREGION 2
#define COMPLEXREGION 3
#define CLR_INVALID 0xFFFFFFFF
#define GDI_ERROR 0xFFFFFFFFL

struct BITMAP {
    LONG bmType;
    LONG bmWidth;
    LONG bmHeight;
    LONG bmWidthBytes;
    WORD bmPlanes;
    WORD bmBitsPixel;
    LPVOID bmBits;
};

struct LOGPEN {
    UINT lopnStyle;
    POINT lopnWidth;
    COLORREF lopnColor;
};

struct LOGBRUSH {
    UINT lbStyle;
    COLORREF lbColor;
    ULONG_PTR lbHatch;
};

struct LOGFONTW {
    LONG lfHeight;
    LONG lfWidth;
    LONG lfEscapement;
    LONG lfOrientation;
    LONG lfWeight;
    BYTE lfItalic;
    BYTE lfUnderline;
    BYTE lfStrikeOut;
    BYTE lfCharSet;
    BYTE lfOutPrecision;
    BYTE lfClipPrecision;
    BYTE lfQuality;
    BYTE lfPitchAndFamily;
    WCHAR lfFaceName[LF_FACESIZE];
};
typedef LOGFONTW LOGFONT;

struct TEXTMETRICW {
    LONG tmHeight;
    LONG tmAscent;
    LONG tmDescent;
    LONG tmInternalLeading;
    LONG tmExternalLeading;
    LONG tmAveCharWidth;
    LONG tmMaxCharWidth;
    LONG tmWeight;
    LONG tmOverhang;
    LONG tmDigitizedAspectX;
    LONG tmDigitizedAspectY;
    WCHAR tmFirstChar;
    WCHAR tmLastChar;
    WCHAR tmDefaultChar;
    WCHAR tmBreakChar;
    BYTE tmItalic;
    BYTE tmUnderlined;
    BYTE tmStruckOut;
    BYTE tmPitchAndFamily;
    BYTE tmCharSet;
};
typedef TEXTMETRICW TEXTMETRIC;

struct ICONINFO {
    BOOL fIcon;
    DWORD xHotspot;
    DWORD yHotspot;
    HBITMAP hbmMask;
    HBITMAP hbmColor;
};

// Kernel helper used for point-size arithmetic: a * b / c rounded to nearest, -1 when c is 0.
inline int MulDiv(int nNumber, int nNumerator, int nDenominator)
{
    if (nDenominator == 0)
        return -1;
    long long p = static_cast<long long>(nNumber) * nNumerator;
    long long half = (nDenominator < 0 ? -nDenominator : nDenominator) / 2;
    long long q = ((p < 0) != (nDenominator < 0)) ? (p - half) / nDenominator : (p + half) / nDenominator;
    return static_cast<int>(q);
}

// Objects (objects.cpp).
int GetObjectType(HGDIOBJ h);
int GetObject(HGDIOBJ h, int c, LPVOID pv);
BOOL DeleteObject(HGDIOBJ ho);
HGDIOBJ GetStockObject(int i);
HGDIOBJ SelectObject(HDC hdc, HGDIOBJ h);
HGDIOBJ GetCurrentObject(HDC hdc, UINT type);

// Pens and brushes (objects.cpp).
HPEN CreatePen(int iStyle, int cWidth, COLORREF color);
HPEN CreatePenIndirect(const LOGPEN* plpen);
HBRUSH CreateSolidBrush(COLORREF color);
HBRUSH CreatePatternBrush(HBITMAP hbm);
HBRUSH CreateBrushIndirect(const LOGBRUSH* plbrush);
HBRUSH GetSysColorBrush(int nIndex);

// Bitmaps (bitmaps.cpp).
HBITMAP CreateBitmap(int nWidth, int nHeight, UINT nPlanes, UINT nBitCount, const void* lpBits);
HBITMAP CreateCompatibleBitmap(HDC hdc, int cx, int cy);
LONG GetBitmapBits(HBITMAP hbit, LONG cb, LPVOID lpvBits);
LONG SetBitmapBits(HBITMAP hbm, DWORD cb, const void* pvBits);

// Device contexts (dc.cpp).
HDC CreateCompatibleDC(HDC hdc);
BOOL DeleteDC(HDC hdc);
int SaveDC(HDC hdc);
BOOL RestoreDC(HDC hdc, int nSavedDC);
COLORREF SetTextColor(HDC hdc, COLORREF color);
COLORREF GetTextColor(HDC hdc);
COLORREF SetBkColor(HDC hdc, COLORREF color);
COLORREF GetBkColor(HDC hdc);
int SetBkMode(HDC hdc, int mode);
int GetBkMode(HDC hdc);
int SetStretchBltMode(HDC hdc, int mode);
int GetStretchBltMode(HDC hdc);
BOOL SetViewportOrgEx(HDC hdc, int x, int y, POINT* lppt);
BOOL GetViewportOrgEx(HDC hdc, POINT* lppt);
BOOL OffsetViewportOrgEx(HDC hdc, int x, int y, POINT* lppt);
BOOL SetWindowOrgEx(HDC hdc, int x, int y, POINT* lppt);
BOOL GetWindowOrgEx(HDC hdc, POINT* lppt);
BOOL SetBrushOrgEx(HDC hdc, int x, int y, POINT* lppt);
BOOL MoveToEx(HDC hdc, int x, int y, POINT* lppt);
BOOL GetCurrentPositionEx(HDC hdc, POINT* lppt);

// Clipping, rectangular only (dc.cpp).
HRGN CreateRectRgn(int x1, int y1, int x2, int y2);
HRGN CreateRectRgnIndirect(const RECT* lprect);
int IntersectClipRect(HDC hdc, int left, int top, int right, int bottom);
int SelectClipRgn(HDC hdc, HRGN hrgn);
int GetClipBox(HDC hdc, RECT* lprect);

// Shapes (shapes.cpp, lines.cpp).
int FillRect(HDC hDC, const RECT* lprc, HBRUSH hbr);
int FrameRect(HDC hDC, const RECT* lprc, HBRUSH hbr);
BOOL InvertRect(HDC hDC, const RECT* lprc);
BOOL LineTo(HDC hdc, int x, int y);
BOOL Polyline(HDC hdc, const POINT* apt, int cpt);
BOOL Polygon(HDC hdc, const POINT* apt, int cpt);
BOOL Rectangle(HDC hdc, int left, int top, int right, int bottom);
BOOL Ellipse(HDC hdc, int left, int top, int right, int bottom);
COLORREF SetPixel(HDC hdc, int x, int y, COLORREF color);
COLORREF GetPixel(HDC hdc, int x, int y);

// Block transfers with ternary raster operations (blit.cpp).
BOOL BitBlt(HDC hdc, int x, int y, int cx, int cy, HDC hdcSrc, int x1, int y1, DWORD rop);
BOOL StretchBlt(HDC hdcDest, int xDest, int yDest, int wDest, int hDest, HDC hdcSrc, int xSrc, int ySrc,
                int wSrc, int hSrc, DWORD rop);
BOOL PatBlt(HDC hdc, int x, int y, int w, int h, DWORD rop);

// Fonts and text (fonts.cpp, text.cpp, drawtext.cpp).
HFONT CreateFontIndirect(const LOGFONTW* lplf);
HFONT CreateFont(int cHeight, int cWidth, int cEscapement, int cOrientation, int cWeight, DWORD bItalic,
                 DWORD bUnderline, DWORD bStrikeOut, DWORD iCharSet, DWORD iOutPrecision, DWORD iClipPrecision,
                 DWORD iQuality, DWORD iPitchAndFamily, LPCWSTR pszFaceName);
BOOL GetTextMetrics(HDC hdc, TEXTMETRICW* lptm);
BOOL GetTextExtentPoint32(HDC hdc, LPCWSTR lpString, int c, SIZE* psizl);
BOOL TextOut(HDC hdc, int x, int y, LPCWSTR lpString, int c);
BOOL ExtTextOut(HDC hdc, int x, int y, UINT options, const RECT* lprect, LPCWSTR lpString, UINT c,
                const INT* lpDx);
int DrawText(HDC hdc, LPCWSTR lpchText, int cchText, RECT* lprc, UINT format);

// Icons (icons.cpp).
HICON CreateIcon(HINSTANCE hInstance, int nWidth, int nHeight, BYTE cPlanes, BYTE cBitsPixel,
                 const BYTE* lpbANDbits, const BYTE* lpbXORbits);
HICON CreateIconIndirect(ICONINFO* piconinfo);
BOOL GetIconInfo(HICON hIcon, ICONINFO* piconinfo);
BOOL DrawIcon(HDC hDC, int X, int Y, HICON hIcon);
BOOL DestroyIcon(HICON hIcon);

// What the stand-in adds for the rest of the platform, hosts and tests.
#include "gdi/standin.h"
