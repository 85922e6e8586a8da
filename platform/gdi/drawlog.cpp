// The draw-call log of the GDI stand-in: one readable line per drawing call, switched on by tests.
#include <cstdio>
#include "base/cstring.h"
#include "gdi/drawlog_p.h"
#include "gdi/objects_p.h"

namespace gdi {

bool g_bDrawLog = false;

namespace {
std::vector<std::string>& Lines()
{
    static std::vector<std::string>* s_p = new std::vector<std::string>;
    return *s_p;
}
}  // namespace

void LogLine(std::string strLine) { Lines().push_back(std::move(strLine)); }

std::string ColorText(COLORREF clr)
{
    char sz[8];
    std::snprintf(sz, sizeof sz, "#%02X%02X%02X", GetRValue(clr), GetGValue(clr), GetBValue(clr));
    return sz;
}

std::string PenText(const Pen* pPen)
{
    if (!pPen || pPen->IsNull())
        return "null";
    return ColorText(pPen->m_clr);
}

std::string BrushText(const Brush* pBrush)
{
    if (!pBrush || pBrush->m_nStyle == BS_NULL)
        return "hollow";
    if (pBrush->m_nStyle == BS_PATTERN)
        return "pattern";
    return ColorText(pBrush->Color());
}

std::string FillColorsText(const Brush* pBrush, const Pen* pPen)
{
    std::string s = BrushText(pBrush);
    std::string strPen = PenText(pPen);
    if (strPen != "null" && strPen != s)
        s += " pen " + strPen;
    return s;
}

std::string PointText(int x, int y) { return std::to_string(x) + "," + std::to_string(y); }

std::string RectText(int l, int t, int r, int b) { return PointText(l, t) + "," + PointText(r, b); }

std::string RopText(DWORD rop)
{
    static const struct { DWORD rop; const char* psz; } s_names[] = {
        {SRCCOPY, "SRCCOPY"}, {SRCPAINT, "SRCPAINT"}, {SRCAND, "SRCAND"}, {SRCINVERT, "SRCINVERT"},
        {SRCERASE, "SRCERASE"}, {NOTSRCCOPY, "NOTSRCCOPY"}, {NOTSRCERASE, "NOTSRCERASE"},
        {MERGECOPY, "MERGECOPY"}, {MERGEPAINT, "MERGEPAINT"}, {PATCOPY, "PATCOPY"}, {PATPAINT, "PATPAINT"},
        {PATINVERT, "PATINVERT"}, {DSTINVERT, "DSTINVERT"}, {BLACKNESS, "BLACKNESS"}, {WHITENESS, "WHITENESS"},
    };
    for (const auto& n : s_names) {
        if (n.rop == rop)
            return n.psz;
    }
    char sz[16];
    std::snprintf(sz, sizeof sz, "0x%06X", static_cast<unsigned>(rop));
    return sz;
}

std::string QuotedText(const char16_t* p, int n)
{
    std::string s = "\"";
    for (char c : ToUtf8(std::u16string(p, static_cast<size_t>(n > 0 ? n : 0)))) {
        if (c == '"' || c == '\\')
            s += '\\';
        s += c;
    }
    return s + "\"";
}

}  // namespace gdi

void GdiSetDrawLog(BOOL bOn)
{
    gdi::g_bDrawLog = bOn != FALSE;
    if (bOn)
        gdi::Lines().clear();
}

BOOL GdiIsDrawLogOn() { return gdi::g_bDrawLog; }

const std::vector<std::string>& GdiGetDrawLog() { return gdi::Lines(); }

void GdiClearDrawLog() { gdi::Lines().clear(); }
