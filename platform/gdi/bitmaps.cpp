// Bitmaps: CreateBitmap, CreateCompatibleBitmap and raw bits in the device-dependent layout (GetBitmapBits).
#include <cstring>
#include "gdi/objects_p.h"

namespace gdi {

namespace {
bool g_bFailBitmaps = false;
constexpr long long kMaxPixels = 1LL << 26;  // refuse absurd sizes as an allocation failure would
}  // namespace

std::unique_ptr<Bitmap> NewBitmap(int cx, int cy, int nBits)
{
    if (cx <= 0 || cy <= 0 || static_cast<long long>(cx) * cy > kMaxPixels)
        return nullptr;
    auto p = std::make_unique<Bitmap>();
    p->m_nType = OBJ_BITMAP;
    p->m_cx = cx;
    p->m_cy = cy;
    p->m_nBits = nBits;
    p->m_px.assign(static_cast<size_t>(cx) * cy, 0);
    return p;
}

namespace {

// Unpacks WORD-aligned DDB rows (one-bit: most significant bit first, 1 = white; 32-bit: B,G,R,X bytes).
void Unpack(Bitmap& bm, const BYTE* pb, size_t cb)
{
    size_t nStride = static_cast<size_t>(bm.WidthBytes());
    for (int y = 0; y < bm.m_cy; ++y) {
        if ((y + 1) * nStride > cb)
            break;
        const BYTE* row = pb + y * nStride;
        uint32_t* out = bm.Row(y);
        for (int x = 0; x < bm.m_cx; ++x) {
            if (bm.IsMono())
                out[x] = (row[x >> 3] & (0x80 >> (x & 7))) ? 0xFFFFFFu : 0u;
            else
                out[x] = row[4 * x] | (row[4 * x + 1] << 8) | (row[4 * x + 2] << 16);
        }
    }
}

void Pack(const Bitmap& bm, BYTE* pb, size_t cb)
{
    size_t nStride = static_cast<size_t>(bm.WidthBytes());
    for (int y = 0; y < bm.m_cy; ++y) {
        if ((y + 1) * nStride > cb)
            break;
        BYTE* row = pb + y * nStride;
        std::memset(row, 0, nStride);
        const uint32_t* in = bm.Row(y);
        for (int x = 0; x < bm.m_cx; ++x) {
            if (bm.IsMono()) {
                if (in[x])
                    row[x >> 3] |= static_cast<BYTE>(0x80 >> (x & 7));
            } else {
                row[4 * x] = static_cast<BYTE>(in[x]);
                row[4 * x + 1] = static_cast<BYTE>(in[x] >> 8);
                row[4 * x + 2] = static_cast<BYTE>(in[x] >> 16);
            }
        }
    }
}

}  // namespace
}  // namespace gdi

using namespace gdi;

void GdiSetFailBitmapCreation(BOOL bFail) { g_bFailBitmaps = bFail != FALSE; }

HBITMAP CreateBitmap(int nWidth, int nHeight, UINT nPlanes, UINT nBitCount, const void* lpBits)
{
    if (g_bFailBitmaps || nPlanes != 1)
        return nullptr;
    // Only the two surface formats of the stand-in exist; the real call also knows 4, 8, 16 and 24 bits.
    if (nBitCount != 1 && nBitCount != 32)
        return nullptr;
    if (nWidth == 0 || nHeight == 0)
        return DefaultBitmap();
    auto p = NewBitmap(nWidth, nHeight, static_cast<int>(nBitCount));
    if (!p)
        return nullptr;
    if (lpBits)
        Unpack(*p, static_cast<const BYTE*>(lpBits), static_cast<size_t>(p->WidthBytes()) * p->m_cy);
    return static_cast<HBITMAP>(Objects().Add(std::move(p)));
}

HBITMAP CreateCompatibleBitmap(HDC hdc, int cx, int cy)
{
    if (g_bFailBitmaps)
        return nullptr;
    int nBits = 32;
    // As on the real platform, a memory DC makes bitmaps in the format of the bitmap selected into it,
    // so a fresh memory DC (holding its 1x1 one-bit bitmap) makes one-bit bitmaps.
    if (Dc* pdc = GetDc(hdc); pdc && !pdc->IsSurface()) {
        if (Bitmap* pbm = GetBitmap(pdc->m_st.m_hBitmap))
            nBits = pbm->m_nBits;
    } else if (hdc && !pdc) {
        return nullptr;
    }
    if (cx == 0 || cy == 0)
        return DefaultBitmap();
    auto p = NewBitmap(cx, cy, nBits);
    return p ? static_cast<HBITMAP>(Objects().Add(std::move(p))) : nullptr;
}

LONG GetBitmapBits(HBITMAP hbit, LONG cb, LPVOID lpvBits)
{
    Bitmap* p = GetBitmap(hbit);
    if (!p || cb < 0)
        return 0;
    LONG nTotal = p->WidthBytes() * p->m_cy;
    if (!lpvBits)
        return nTotal;
    LONG n = cb < nTotal ? cb - cb % p->WidthBytes() : nTotal;
    Pack(*p, static_cast<BYTE*>(lpvBits), static_cast<size_t>(n));
    return n;
}

LONG SetBitmapBits(HBITMAP hbm, DWORD cb, const void* pvBits)
{
    Bitmap* p = GetBitmap(hbm);
    if (!p || !pvBits || p->m_bStock)
        return 0;
    LONG nTotal = p->WidthBytes() * p->m_cy;
    LONG n = static_cast<LONG>(cb) < nTotal ? static_cast<LONG>(cb) - static_cast<LONG>(cb) % p->WidthBytes() : nTotal;
    Unpack(*p, static_cast<const BYTE*>(pvBits), static_cast<size_t>(n));
    return n;
}

DWORD* GdiBitmapPixels(HBITMAP hbm)
{
    Bitmap* p = GetBitmap(hbm);
    return p && !p->IsMono() ? p->m_px.data() : nullptr;
}
