// Text output and measuring (TextOut, ExtTextOut, GetTextExtentPoint32, GetTextMetrics) over the realised fonts.
#include <algorithm>
#include <climits>
#include "gdi/fonts_p.h"
#include "gdi/raster_p.h"

namespace gdi {

void DecodeUtf16(const char16_t* p, int n, std::vector<char32_t>* pOut)
{
    pOut->clear();
    for (int i = 0; i < n; ++i) {
        char32_t c = p[i];
        if (c >= 0xD800 && c < 0xDC00 && i + 1 < n && p[i + 1] >= 0xDC00 && p[i + 1] < 0xE000) {
            c = 0x10000 + ((c - 0xD800) << 10) + (p[i + 1] - 0xDC00);
            ++i;
        }
        pOut->push_back(c);
    }
}

int MeasureRun(Font* pf, const char32_t* p, size_t n)
{
    long long cx = 0;
    for (size_t i = 0; i < n; ++i)
        cx += pf->Advance(p[i]);  // no kerning, as TextOut does not kern
    return static_cast<int>(std::min<long long>(cx, INT_MAX)); // a long run of huge glyphs
}

void DrawRun(const Target& t, Font* pf, int x, int y, const char32_t* p, size_t n, uint32_t px, const RECT& rcClip,
             const INT* pdx)
{
    RECT clip = IntersectRects(rcClip, t.clip);
    if (clip.right <= clip.left)
        return;
    int yBase = y + pf->Metrics().tmAscent;
    int xPen = x;
    // Past the clip's right edge by more than a glyph can reach back, nothing more shows.
    const long long xEnd = static_cast<long long>(clip.right) + pf->Metrics().tmMaxCharWidth;
    for (size_t i = 0; i < n && (pdx || xPen <= xEnd); ++i) {
        if (!pf->CachesGlyphs()) {
            pf->DrawClipped(t, p[i], xPen, yBase, clip, px);
            xPen += pdx ? pdx[i] : pf->Advance(p[i]);
            continue;
        }
        const Glyph& g = pf->GetGlyph(p[i]);
        int gx = xPen + g.nLeft, gy = yBase - g.nTop;
        int y0 = std::max<int>(gy, clip.top), y1 = std::min<int>(gy + g.cy, clip.bottom);
        int x0 = std::max<int>(gx, clip.left), x1 = std::min<int>(gx + g.cx, clip.right);
        for (int yy = y0; yy < y1; ++yy) {
            const uint8_t* bits = g.bits.data() + static_cast<size_t>(yy - gy) * g.cx - gx;
            uint32_t* row = t.pbm->Row(yy);
            for (int xx = x0; xx < x1; ++xx) {
                if (bits[xx])
                    row[xx] = px;
            }
        }
        xPen += pdx ? pdx[i] : g.nAdvance;
    }
    Paint line = SolidPaint(px);
    auto rule = [&](int yTop, int nSize) {
        for (int k = 0; k < nSize; ++k)
            FillSpan(t, yTop + k, std::max<int>(x, clip.left), std::min<int>(xPen, clip.right),
                     line);
    };
    // Underline and strike-out lines are also bounded by the clip rectangle, through FillSpan's row check.
    if (pf->Underline())
        rule(yBase + pf->UnderlinePos() - pf->UnderlineSize() / 2, pf->UnderlineSize());
    if (pf->StrikeOut())
        rule(yBase - pf->StrikeOutPos(), pf->StrikeOutSize());
}

}  // namespace gdi

using namespace gdi;

namespace {

Font* FontOf(HDC hdc)
{
    Dc* pdc = GetDc(hdc);
    return pdc ? DcFont(pdc) : nullptr;
}

// The body of TextOut and ExtTextOut. Text is placed by its top-left cell corner (TA_TOP | TA_LEFT);
// other alignments are not kept by the DC.
BOOL TextCore(HDC hdc, int x, int y, UINT options, const RECT* lprect, LPCWSTR lpString, UINT c, const INT* lpDx)
{
    Target t;
    if (!Prepare(hdc, &t))
        return FALSE;
    Font* pf = DcFont(t.pdc);
    if (!pf)
        return FALSE;
    std::vector<char32_t> text;
    DecodeUtf16(lpString ? lpString : u"", lpString ? static_cast<int>(c) : 0, &text);
    const DcState& st = t.pdc->m_st;
    RECT rcClip{INT32_MIN / 2, INT32_MIN / 2, INT32_MAX / 2, INT32_MAX / 2};
    if (lprect && (options & ETO_OPAQUE)) {
        RECT rc{lprect->left + t.dx, lprect->top + t.dy, lprect->right + t.dx, lprect->bottom + t.dy};
        FillBox(t, rc, SolidPaint(t.Pixel(st.m_clrBk)));
    }
    if (lprect && (options & ETO_CLIPPED))
        rcClip = RECT{lprect->left + t.dx, lprect->top + t.dy, lprect->right + t.dx, lprect->bottom + t.dy};
    int sx = x + t.dx, sy = y + t.dy;
    if (st.m_nBkMode == OPAQUE && !(options & ETO_OPAQUE)) {
        int cx = 0;
        if (lpDx) {
            for (size_t i = 0; i < text.size(); ++i)
                cx += lpDx[i];
        } else {
            cx = MeasureRun(pf, text.data(), text.size());
        }
        RECT rcCell = IntersectRects(RECT{sx, sy, sx + cx, sy + pf->Metrics().tmHeight}, rcClip);
        FillBox(t, rcCell, SolidPaint(t.Pixel(st.m_clrBk)));
    }
    DrawRun(t, pf, sx, sy, text.data(), text.size(), t.Pixel(st.m_clrText), rcClip, lpDx);
    return TRUE;
}

}  // namespace

BOOL TextOut(HDC hdc, int x, int y, LPCWSTR lpString, int c)
{
    if (g_bDrawLog && GetDc(hdc))
        LogLine("TextOut " + PointText(x, y) + " " + QuotedText(lpString, c) + " " + ColorText(GetTextColor(hdc)));
    return c >= 0 && TextCore(hdc, x, y, 0, nullptr, lpString, static_cast<UINT>(c), nullptr);
}

BOOL ExtTextOut(HDC hdc, int x, int y, UINT options, const RECT* lprect, LPCWSTR lpString, UINT c, const INT* lpDx)
{
    if (g_bDrawLog && GetDc(hdc)) {
        std::string s = "ExtTextOut " + PointText(x, y) + " " + QuotedText(lpString, static_cast<int>(c)) + " " +
                        ColorText(GetTextColor(hdc));
        if (lprect)
            s += " " + RectText(lprect->left, lprect->top, lprect->right, lprect->bottom);
        if (options & ETO_OPAQUE)
            s += " ETO_OPAQUE";
        if (options & ETO_CLIPPED)
            s += " ETO_CLIPPED";
        LogLine(s);
    }
    return TextCore(hdc, x, y, options, lprect, lpString, c, lpDx);
}

BOOL GetTextExtentPoint32(HDC hdc, LPCWSTR lpString, int c, SIZE* psizl)
{
    Font* pf = FontOf(hdc);
    if (!pf || !psizl || c < 0 || (c > 0 && !lpString))
        return FALSE;
    std::vector<char32_t> text;
    DecodeUtf16(lpString, c, &text);
    psizl->cx = MeasureRun(pf, text.data(), text.size());
    psizl->cy = pf->Metrics().tmHeight;
    return TRUE;
}

BOOL GetTextMetrics(HDC hdc, TEXTMETRICW* lptm)
{
    Font* pf = FontOf(hdc);
    if (!pf || !lptm)
        return FALSE;
    *lptm = pf->Metrics();
    return TRUE;
}
