// Icons (CreateIcon, CreateIconIndirect, GetIconInfo, DrawIcon, DestroyIcon): an AND mask over an XOR image.
#include "gdi/raster_p.h"

using namespace gdi;

namespace {

HICON AddIcon(std::unique_ptr<Icon> p)
{
    p->m_nType = kObjIcon;
    return static_cast<HICON>(Objects().Add(std::move(p)));
}

// Reads bit x of a WORD-aligned one-bit row.
bool MonoBit(const BYTE* row, int x) { return (row[x >> 3] >> (7 - (x & 7))) & 1; }

}  // namespace

HICON CreateIcon(HINSTANCE, int nWidth, int nHeight, BYTE cPlanes, BYTE cBitsPixel, const BYTE* lpbANDbits,
                 const BYTE* lpbXORbits)
{
    // The image comes as one-bit or 32-bit device bits, the two formats that surfaces have here.
    if (nWidth <= 0 || nHeight <= 0 || cPlanes != 1 || (cBitsPixel != 1 && cBitsPixel != 32) || !lpbANDbits ||
        !lpbXORbits)
        return nullptr;
    auto p = std::make_unique<Icon>();
    p->m_cx = nWidth;
    p->m_cy = nHeight;
    p->m_mask.resize(static_cast<size_t>(nWidth) * nHeight);
    p->m_color.resize(static_cast<size_t>(nWidth) * nHeight);
    int nMaskStride = ((nWidth + 15) / 16) * 2;
    int nXorStride = ((nWidth * cBitsPixel + 15) / 16) * 2;
    for (int y = 0; y < nHeight; ++y) {
        const BYTE* andRow = lpbANDbits + y * nMaskStride;
        const BYTE* xorRow = lpbXORbits + y * nXorStride;
        for (int x = 0; x < nWidth; ++x) {
            size_t i = static_cast<size_t>(y) * nWidth + x;
            p->m_mask[i] = MonoBit(andRow, x);
            p->m_color[i] = cBitsPixel == 1 ? (MonoBit(xorRow, x) ? 0xFFFFFFu : 0u)
                                            : xorRow[4 * x] | (xorRow[4 * x + 1] << 8) | (xorRow[4 * x + 2] << 16);
        }
    }
    return AddIcon(std::move(p));
}

HICON CreateIconIndirect(ICONINFO* piconinfo)
{
    if (!piconinfo)
        return nullptr;
    Bitmap* pMask = GetBitmap(piconinfo->hbmMask);
    Bitmap* pColor = GetBitmap(piconinfo->hbmColor);
    if (!pMask || (piconinfo->hbmColor && !pColor))
        return nullptr;
    // Without a colour bitmap the mask is twice as tall: the AND mask above the XOR mask.
    int cx = pMask->m_cx, cy = pColor ? pMask->m_cy : pMask->m_cy / 2;
    if (cy <= 0 || (pColor && (pColor->m_cx != cx || pColor->m_cy != cy)))
        return nullptr;
    auto p = std::make_unique<Icon>();
    p->m_cx = cx;
    p->m_cy = cy;
    for (int y = 0; y < cy; ++y) {
        for (int x = 0; x < cx; ++x) {
            p->m_mask.push_back(pMask->Row(y)[x] ? 1 : 0);
            p->m_color.push_back(pColor ? pColor->Row(y)[x] : pMask->Row(y + cy)[x]);
        }
    }
    return AddIcon(std::move(p));
}

BOOL GetIconInfo(HICON hIcon, ICONINFO* piconinfo)
{
    Icon* p = GetIcon(hIcon);
    if (!p || !piconinfo)
        return FALSE;
    // As on the real platform the caller owns the two new bitmaps and deletes them.
    auto pMask = NewBitmap(p->m_cx, p->m_cy, 1);
    auto pColor = NewBitmap(p->m_cx, p->m_cy, 32);
    if (!pMask || !pColor)
        return FALSE;
    for (size_t i = 0; i < p->m_mask.size(); ++i)
        pMask->m_px[i] = p->m_mask[i] ? 0xFFFFFFu : 0u;
    pColor->m_px = p->m_color;
    piconinfo->fIcon = TRUE;
    piconinfo->xHotspot = static_cast<DWORD>(p->m_cx / 2);
    piconinfo->yHotspot = static_cast<DWORD>(p->m_cy / 2);
    piconinfo->hbmMask = static_cast<HBITMAP>(Objects().Add(std::move(pMask)));
    piconinfo->hbmColor = static_cast<HBITMAP>(Objects().Add(std::move(pColor)));
    return TRUE;
}

BOOL DrawIcon(HDC hDC, int X, int Y, HICON hIcon)
{
    Target t;
    Icon* p = GetIcon(hIcon);
    if (!p || !Prepare(hDC, &t))
        return FALSE;
    if (g_bDrawLog)
        LogLine("DrawIcon " + PointText(X, Y) + " " + std::to_string(p->m_cx) + "x" + std::to_string(p->m_cy));
    // Drawn at the icon's own size; the real call stretches to the system icon size (SM_CXICON).
    // Target = (target AND mask) XOR image. On a one-bit target the image's white pixels are 1, the rest 0.
    int sx = X + t.dx, sy = Y + t.dy;
    RECT rc = IntersectRects(RECT{sx, sy, sx + p->m_cx, sy + p->m_cy}, t.clip);
    for (int y = rc.top; y < rc.bottom; ++y) {
        uint32_t* row = t.pbm->Row(y);
        for (int x = rc.left; x < rc.right; ++x) {
            size_t i = static_cast<size_t>(y - sy) * p->m_cx + (x - sx);
            uint32_t img = p->m_color[i];
            if (t.IsMono())
                img = img == 0xFFFFFFu ? 0xFFFFFFu : 0u;
            row[x] = ((p->m_mask[i] ? row[x] : 0u) ^ img) & 0xFFFFFFu;
        }
    }
    return TRUE;
}

BOOL DestroyIcon(HICON hIcon)
{
    Icon* p = GetIcon(hIcon);
    if (!p)
        return FALSE;
    if (p->m_bStock)
        return TRUE;   // a permanent image stays
    Objects().Remove(hIcon);
    return TRUE;
}
