// Functions of the GDI stand-in that the real GDI does not have: surfaces for the window system, files, test hooks.
#pragma once
#include <string>
#include <vector>
#include "base/rect.h"
#include "base/wintypes.h"

// ---- Surfaces for the window system -----------------------------------------------------------------------

// A device context over a 32-bit surface owned by the window system (the screen, or a window's own bitmap),
// as GetDC/BeginPaint hand out. Logical (0,0) lies at `origin` of the surface; nothing is drawn outside
// `clip`, given in surface coordinates (it is also cut to the surface). The DC starts in the default state
// (black text on white, OPAQUE, BLACK_PEN, WHITE_BRUSH, SYSTEM_FONT). A bitmap cannot be selected into it,
// and CreateCompatibleBitmap on it makes 32-bit bitmaps. Release it with DeleteDC; the surface stays.
// GetObjectType reports OBJ_DC for it (OBJ_MEMDC for CreateCompatibleDC).
HDC CreateSurfaceDC(HBITMAP hSurface, POINT origin, RECT clip);

// The pixels of a 32-bit bitmap: rows top-down, no padding, each pixel 0x00RRGGBB. NULL for a one-bit
// bitmap or a bad handle. For composing the screen and for snapshots; drawing should go through a DC.
DWORD* GdiBitmapPixels(HBITMAP hbm);

// ---- Files ---------------------------------------------------------------------------------------------------

// Writes a bitmap (32-bit or one-bit) as an 8-bit RGB PNG. FALSE if the handle or the file is bad.
BOOL SaveBitmapPng(HBITMAP hbm, const char* pszPath);
// Reads a PNG into a new 32-bit bitmap; partly transparent pixels are blended over black. NULL on failure.
HBITMAP LoadBitmapPng(const char* pszPath);
// Reads a Windows BMP file (1, 4, 8, 24 or 32 bits, uncompressed) into a new 32-bit bitmap. NULL on failure.
HBITMAP LoadBitmapFile(const char* pszPath);
// Reads the first (largest, on a tie the deepest) image of a Windows ICO file into a new icon. NULL on failure.
HICON LoadIconFile(const char* pszPath);

// ---- Test hooks and diagnostics ------------------------------------------------------------------------------

// Makes an object last as long as the process, as a shared resource image (a loaded icon) does: it is
// no longer counted among the live objects, and DeleteObject and DestroyIcon leave it be.
void GdiMakePermanent(HGDIOBJ h);

// GDI objects that exist now and were made by the program: DCs, bitmaps, pens, brushes, fonts, regions
// and icons. Stock objects and system colour brushes are not counted. A test that ends above its starting
// count has leaked.
int GdiGetLiveObjectCount();
// One line per live object ("bitmap 120x24x32", "pen #FF0000", "memdc"), for a leak report.
std::string GdiDescribeLiveObjects();

// While set, CreateBitmap and CreateCompatibleBitmap fail and return NULL (as they do when memory runs out).
void GdiSetFailBitmapCreation(BOOL bFail);

// The draw-call log. While on, every drawing call appends one line, in logical coordinates and with
// colours as #RRGGBB, for example:
//   FillRect 102,2,118,22 #F0F0F0
//   MoveTo 0,23
//   LineTo 0,0 #A0A0A0
//   Polyline 0,23 0,0 119,0 #A0A0A0
//   Polygon 109,13 106,10 112,10 #000000           (brush; " pen #RRGGBB" follows if the pen differs)
//   Rectangle 102,2,118,22 #F0F0F0 pen #A0A0A0      (brush "hollow" for NULL_BRUSH, "pattern" for a pattern)
//   Ellipse 0,0,10,10 #FF0000
//   SetPixel 3,4 #ECF1F3
//   BitBlt 0,0,120,24 from 0,0 SRCCOPY              (an unnamed operation is written as 0xB8074A)
//   StretchBlt 0,0,32,32 from 0,0,10,10 SRCCOPY
//   PatBlt 0,0,32,32 WHITENESS
//   DrawText 3,3,96,18 "12-34" #000000 DT_SINGLELINE|DT_NOPREFIX   (DT_CALCRECT calls are not logged)
//   TextOut 3,3 "abc" #000000
//   DrawIcon 4,5 32x32
// Pens are written "null" for PS_NULL. Turning the log on clears it.
void GdiSetDrawLog(BOOL bOn);
BOOL GdiIsDrawLogOn();
const std::vector<std::string>& GdiGetDrawLog();
void GdiClearDrawLog();

// The font file that fontconfig resolved for a font (empty for a bad handle), for diagnostics and tests.
std::string GdiGetFontFile(HFONT hfont);
