// Internal: writing lines of the draw-call log.
#pragma once
#include <string>
#include "gdi/wingdi.h"

namespace gdi {

struct Pen;
struct Brush;

extern bool g_bDrawLog;  // read on every drawing call, so kept as a plain flag

void LogLine(std::string strLine);
std::string ColorText(COLORREF clr);                 // "#RRGGBB"
std::string PenText(const Pen* pPen);                // "#RRGGBB" or "null"
std::string BrushText(const Brush* pBrush);          // "#RRGGBB", "hollow" or "pattern"
std::string PointText(int x, int y);                 // "x,y"
std::string RectText(int l, int t, int r, int b);    // "l,t,r,b"
std::string RopText(DWORD rop);                      // "SRCCOPY" or "0xB8074A"
std::string QuotedText(const char16_t* p, int n);    // "text" in UTF-8, with \" and \\ escaped
// A filled shape's colours: the brush, then " pen #RRGGBB" when the pen draws and differs from it.
std::string FillColorsText(const Brush* pBrush, const Pen* pPen);

}  // namespace gdi
