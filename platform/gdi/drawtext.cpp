// DrawText: formatted text in a rectangle (measuring, alignment, vertical centring, clipping, prefixes, ellipsis).
#include "gdi/fonts_p.h"
#include "gdi/raster_p.h"

using namespace gdi;

namespace {

std::string FlagsText(UINT format)
{
    static const struct { UINT f; const char* psz; } s_flags[] = {
        {DT_CENTER, "DT_CENTER"}, {DT_RIGHT, "DT_RIGHT"}, {DT_VCENTER, "DT_VCENTER"}, {DT_BOTTOM, "DT_BOTTOM"},
        {DT_WORDBREAK, "DT_WORDBREAK"}, {DT_SINGLELINE, "DT_SINGLELINE"}, {DT_EXPANDTABS, "DT_EXPANDTABS"},
        {DT_NOCLIP, "DT_NOCLIP"}, {DT_EXTERNALLEADING, "DT_EXTERNALLEADING"}, {DT_NOPREFIX, "DT_NOPREFIX"},
        {DT_EDITCONTROL, "DT_EDITCONTROL"}, {DT_END_ELLIPSIS, "DT_END_ELLIPSIS"},
    };
    std::string s;
    for (const auto& f : s_flags) {
        if (format & f.f)
            s += (s.empty() ? "" : "|") + std::string(f.psz);
    }
    return s.empty() ? "DT_LEFT" : s;
}

// Removes prefix marks: "&x" shows x, "&&" shows one '&'.
// The real call underlines the character after a single '&'; the stand-in does not draw that underline.
std::u16string StripPrefixes(const std::u16string& s)
{
    std::u16string out;
    for (size_t i = 0; i < s.size(); ++i) {
        if (s[i] == u'&' && i + 1 < s.size())
            ++i;
        else if (s[i] == u'&')
            continue;
        out += s[i];
    }
    return out;
}

// Lines of the text: one with DT_SINGLELINE (CR and LF are then ordinary characters), else split at
// CR LF, CR or LF. DT_WORDBREAK is not applied: long lines are not wrapped.
std::vector<std::u16string> SplitLines(const std::u16string& s, bool bSingle)
{
    if (bSingle)
        return {s};
    std::vector<std::u16string> lines(1);
    for (size_t i = 0; i < s.size(); ++i) {
        if (s[i] == u'\r' || s[i] == u'\n') {
            if (s[i] == u'\r' && i + 1 < s.size() && s[i + 1] == u'\n')
                ++i;
            lines.emplace_back();
        } else {
            lines.back() += s[i];
        }
    }
    return lines;
}

// Shortens a line to fit cxRoom with "..." at its end.
void EndEllipsis(Font* pf, std::vector<char32_t>* pText, int cxRoom)
{
    if (MeasureRun(pf, pText->data(), pText->size()) <= cxRoom)
        return;
    const char32_t dots[] = {U'.', U'.', U'.'};
    int cxDots = MeasureRun(pf, dots, 3);
    while (!pText->empty() && MeasureRun(pf, pText->data(), pText->size()) + cxDots > cxRoom)
        pText->pop_back();
    pText->insert(pText->end(), dots, dots + 3);
}

// Draws the lines from yTop down, each aligned in rc and, unless DT_NOCLIP, clipped to it.
void DrawLines(const Target& t, Font* pf, const std::vector<std::vector<char32_t>>& runs, const RECT& rc,
               UINT format, int yTop, int cyLine)
{
    const RECT* lprc = &rc;
    RECT rcClip{INT32_MIN / 2, INT32_MIN / 2, INT32_MAX / 2, INT32_MAX / 2};
    if (!(format & DT_NOCLIP))
        rcClip = RECT{lprc->left + t.dx, lprc->top + t.dy, lprc->right + t.dx, lprc->bottom + t.dy};
    const DcState& st = t.pdc->m_st;
    for (size_t i = 0; i < runs.size(); ++i) {
        int cx = MeasureRun(pf, runs[i].data(), runs[i].size());
        int x = lprc->left;
        if (format & DT_CENTER)
            x = lprc->left + (lprc->right - lprc->left - cx) / 2;
        else if (format & DT_RIGHT)
            x = lprc->right - cx;
        int sx = x + t.dx, sy = yTop + static_cast<int>(i) * cyLine + t.dy;
        if (st.m_nBkMode == OPAQUE)
            FillBox(t, IntersectRects(RECT{sx, sy, sx + cx, sy + cyLine}, rcClip), SolidPaint(t.Pixel(st.m_clrBk)));
        DrawRun(t, pf, sx, sy, runs[i].data(), runs[i].size(), t.Pixel(st.m_clrText), rcClip);
    }
}

}  // namespace

int DrawText(HDC hdc, LPCWSTR lpchText, int cchText, RECT* lprc, UINT format)
{
    Target t;
    if (!lprc || !Prepare(hdc, &t))
        return 0;
    Font* pf = DcFont(t.pdc);
    if (!pf)
        return 0;
    std::u16string str;
    if (lpchText)
        str = cchText < 0 ? std::u16string(lpchText) : std::u16string(lpchText, static_cast<size_t>(cchText));
    if (g_bDrawLog && !(format & DT_CALCRECT))
        LogLine("DrawText " + RectText(lprc->left, lprc->top, lprc->right, lprc->bottom) + " " +
                QuotedText(str.data(), static_cast<int>(str.size())) + " " + ColorText(t.pdc->m_st.m_clrText) + " " +
                FlagsText(format));
    if (!(format & DT_NOPREFIX))
        str = StripPrefixes(str);
    bool bSingle = (format & DT_SINGLELINE) != 0;
    const TEXTMETRICW& tm = pf->Metrics();
    int cyLine = tm.tmHeight + ((format & DT_EXTERNALLEADING) ? tm.tmExternalLeading : 0);
    std::vector<std::u16string> lines = SplitLines(str, bSingle);
    if (str.empty() && !bSingle)
        lines.clear();  // an empty multi-line text has no height; a single line keeps its own

    std::vector<std::vector<char32_t>> runs(lines.size());
    int cxMax = 0;
    for (size_t i = 0; i < lines.size(); ++i) {
        DecodeUtf16(lines[i].data(), static_cast<int>(lines[i].size()), &runs[i]);
        if ((format & DT_END_ELLIPSIS) && !(format & DT_CALCRECT))
            EndEllipsis(pf, &runs[i], lprc->right - lprc->left);
        cxMax = std::max(cxMax, MeasureRun(pf, runs[i].data(), runs[i].size()));
    }
    int cyText = static_cast<int>(lines.size()) * cyLine;
    if (format & DT_CALCRECT) {
        lprc->right = lprc->left + cxMax;
        lprc->bottom = lprc->top + cyText;
        return cyText;
    }

    int yTop = lprc->top;
    if (bSingle && (format & DT_VCENTER))
        yTop = lprc->top + (lprc->bottom - lprc->top - cyText) / 2;
    else if (bSingle && (format & DT_BOTTOM))
        yTop = lprc->bottom - cyText;
    DrawLines(t, pf, runs, *lprc, format, yTop, cyLine);
    return bSingle && (format & (DT_VCENTER | DT_BOTTOM)) ? yTop - lprc->top + cyText : cyText;
}
