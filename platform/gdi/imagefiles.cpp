// Image files for surfaces and pictures: PNG writing and reading (libpng), Windows BMP and ICO reading.
#include <png.h>
#include <algorithm>
#include <cstring>
#include <fstream>
#include <iterator>
#include "gdi/objects_p.h"

using namespace gdi;

namespace {

using Bytes = std::vector<uint8_t>;

bool ReadAll(const char* pszPath, Bytes* pOut)
{
    std::ifstream f(pszPath, std::ios::binary);
    if (!f)
        return false;
    pOut->assign(std::istreambuf_iterator<char>(f), std::istreambuf_iterator<char>());
    return true;
}

uint32_t U16(const Bytes& b, size_t i) { return i + 2 <= b.size() ? b[i] | (b[i + 1] << 8) : 0; }
uint32_t U32(const Bytes& b, size_t i) { return i + 4 <= b.size() ? U16(b, i) | (U16(b, i + 2) << 16) : 0; }

// An image as 0x00RRGGBB pixels with an optional alpha (0 = transparent) per pixel.
struct Image {
    int cx = 0, cy = 0;
    std::vector<uint32_t> px;
    std::vector<uint8_t> alpha;
};

bool DecodePng(png_image* pimg, Image* pOut)
{
    pimg->format = PNG_FORMAT_BGRA;
    pOut->cx = static_cast<int>(pimg->width);
    pOut->cy = static_cast<int>(pimg->height);
    if (pOut->cx <= 0 || pOut->cy <= 0 || static_cast<long long>(pOut->cx) * pOut->cy > (1LL << 26)) {
        png_image_free(pimg);
        return false;
    }
    Bytes buf(PNG_IMAGE_SIZE(*pimg));
    if (!png_image_finish_read(pimg, nullptr, buf.data(), 0, nullptr))
        return false;
    size_t n = static_cast<size_t>(pOut->cx) * pOut->cy;
    pOut->px.resize(n);
    pOut->alpha.resize(n);
    for (size_t i = 0; i < n; ++i) {
        pOut->px[i] = buf[4 * i] | (buf[4 * i + 1] << 8) | (buf[4 * i + 2] << 16);
        pOut->alpha[i] = buf[4 * i + 3];
    }
    return true;
}

// A DIB: BITMAPINFOHEADER, colour table, bits (1, 4, 8, 24 or 32 bits, uncompressed or 32-bit bitfields).
// For an icon, nRows is the image's own height (the header counts the AND mask too) and the AND mask
// that follows the image goes to *pMask.
constexpr long long kMaxDibSide = 16384;

bool DecodeDib(const Bytes& b, size_t at, size_t bitsAt, bool bIcon, Image* pOut, std::vector<uint8_t>* pMask)
{
    uint32_t nHeader = U32(b, at);
    // The height is signed (negative for top-down rows); its size is taken in 64 bits, since the
    // most negative height has no positive counterpart in 32.
    long long cx = static_cast<int32_t>(U32(b, at + 4)), cyRaw = static_cast<int32_t>(U32(b, at + 8));
    int nBits = static_cast<int>(U16(b, at + 14));
    uint32_t nCompression = U32(b, at + 16), nUsed = U32(b, at + 32);
    bool bTopDown = cyRaw < 0;
    long long cyWide = bTopDown ? -cyRaw : cyRaw;
    if (bIcon)
        cyWide /= 2;
    if (nHeader < 40 || cx <= 0 || cyWide <= 0 || cx > kMaxDibSide || cyWide > kMaxDibSide ||
        (nCompression != 0 && !(nCompression == 3 && nBits == 32)) ||
        (nBits != 1 && nBits != 4 && nBits != 8 && nBits != 24 && nBits != 32))
        return false;
    const int cy = static_cast<int>(cyWide);
    size_t nColors = nBits <= 8 ? (nUsed ? nUsed : (1u << nBits)) : 0;
    size_t palAt = at + nHeader + (nCompression == 3 && nHeader == 40 ? 12 : 0);
    if (bitsAt == 0)
        bitsAt = palAt + 4 * nColors;
    size_t nStride = ((static_cast<size_t>(cx) * nBits + 31) / 32) * 4;
    size_t nMaskStride = ((static_cast<size_t>(cx) + 31) / 32) * 4;
    if (bitsAt + nStride * cy + (bIcon ? nMaskStride * cy : 0) > b.size())
        return false;
    pOut->cx = static_cast<int>(cx);
    pOut->cy = cy;
    pOut->px.assign(static_cast<size_t>(cx) * cy, 0);
    pOut->alpha.assign(static_cast<size_t>(cx) * cy, 255);
    if (pMask)
        pMask->assign(static_cast<size_t>(cx) * cy, 0);
    for (int y = 0; y < cy; ++y) {
        int row = bTopDown ? y : cy - 1 - y;
        const uint8_t* p = b.data() + bitsAt + nStride * row;
        for (int x = 0; x < cx; ++x) {
            size_t i = static_cast<size_t>(y) * cx + x;
            if (nBits <= 8) {
                int nPerByte = 8 / nBits;
                unsigned v = (p[x / nPerByte] >> ((nPerByte - 1 - x % nPerByte) * nBits)) & ((1u << nBits) - 1);
                size_t e = palAt + 4 * (v < nColors ? v : 0);
                pOut->px[i] = e + 3 <= b.size() ? b[e] | (b[e + 1] << 8) | (b[e + 2] << 16) : 0;
            } else {
                const uint8_t* q = p + x * (nBits / 8);
                pOut->px[i] = q[0] | (q[1] << 8) | (q[2] << 16);
                if (nBits == 32)
                    pOut->alpha[i] = q[3];
            }
            if (pMask) {
                const uint8_t* m = b.data() + bitsAt + nStride * cy + nMaskStride * row;
                (*pMask)[i] = (m[x >> 3] >> (7 - (x & 7))) & 1;
            }
        }
    }
    return true;
}

HBITMAP ToBitmap(const Image& img)
{
    auto p = NewBitmap(img.cx, img.cy, 32);
    if (!p)
        return nullptr;
    p->m_px = img.px;
    return static_cast<HBITMAP>(Objects().Add(std::move(p)));
}

}  // namespace

BOOL SaveBitmapPng(HBITMAP hbm, const char* pszPath)
{
    Bitmap* p = GetBitmap(hbm);
    if (!p || !pszPath)
        return FALSE;
    png_image img{};
    img.version = PNG_IMAGE_VERSION;
    img.width = static_cast<png_uint_32>(p->m_cx);
    img.height = static_cast<png_uint_32>(p->m_cy);
    img.format = PNG_FORMAT_RGB;
    Bytes buf(static_cast<size_t>(p->m_cx) * p->m_cy * 3);
    for (size_t i = 0; i < p->m_px.size(); ++i) {
        buf[3 * i] = static_cast<uint8_t>(p->m_px[i] >> 16);
        buf[3 * i + 1] = static_cast<uint8_t>(p->m_px[i] >> 8);
        buf[3 * i + 2] = static_cast<uint8_t>(p->m_px[i]);
    }
    return png_image_write_to_file(&img, pszPath, 0, buf.data(), 0, nullptr) ? TRUE : FALSE;
}

HBITMAP LoadBitmapPng(const char* pszPath)
{
    png_image img{};
    img.version = PNG_IMAGE_VERSION;
    Image out;
    if (!pszPath || !png_image_begin_read_from_file(&img, pszPath) || !DecodePng(&img, &out))
        return nullptr;
    // Bitmaps have no alpha: partly transparent pixels are blended over black, as an opaque copy shows them.
    for (size_t i = 0; i < out.px.size(); ++i) {
        uint32_t a = out.alpha[i], v = out.px[i];
        out.px[i] = ((((v >> 16) & 0xFF) * a / 255) << 16) | ((((v >> 8) & 0xFF) * a / 255) << 8) | ((v & 0xFF) * a / 255);
    }
    return ToBitmap(out);
}

HBITMAP LoadBitmapFile(const char* pszPath)
{
    Bytes b;
    Image img;
    if (!pszPath || !ReadAll(pszPath, &b) || b.size() < 54 || b[0] != 'B' || b[1] != 'M')
        return nullptr;
    if (!DecodeDib(b, 14, U32(b, 10), false, &img, nullptr))
        return nullptr;
    return ToBitmap(img);
}

HICON LoadIconFile(const char* pszPath)
{
    Bytes b;
    if (!pszPath || !ReadAll(pszPath, &b) || b.size() < 6 || U16(b, 0) != 0 || U16(b, 2) != 1)
        return nullptr;
    size_t nCount = U16(b, 4), best = SIZE_MAX;
    long long bestArea = -1;
    uint32_t bestBits = 0;
    for (size_t i = 0; i < nCount && 6 + 16 * (i + 1) <= b.size(); ++i) {
        size_t e = 6 + 16 * i;
        long long w = b[e] ? b[e] : 256, h = b[e + 1] ? b[e + 1] : 256;
        uint32_t nBits = U16(b, e + 6);
        if (w * h > bestArea || (w * h == bestArea && nBits > bestBits))
            best = i, bestArea = w * h, bestBits = nBits;
    }
    if (best == SIZE_MAX)
        return nullptr;
    size_t nSize = U32(b, 6 + 16 * best + 8), at = U32(b, 6 + 16 * best + 12);
    if (at >= b.size() || nSize > b.size() - at)
        return nullptr;
    Image img;
    std::vector<uint8_t> mask;
    static const uint8_t kPngSig[] = {0x89, 'P', 'N', 'G'};
    if (nSize >= 8 && std::memcmp(b.data() + at, kPngSig, 4) == 0) {
        png_image pimg{};
        pimg.version = PNG_IMAGE_VERSION;
        if (!png_image_begin_read_from_memory(&pimg, b.data() + at, nSize) || !DecodePng(&pimg, &img))
            return nullptr;
        mask.assign(img.px.size(), 0);
    } else if (!DecodeDib(b, at, 0, true, &img, &mask)) {
        return nullptr;
    }
    // Alpha, where the image has it, decides transparency together with the AND mask.
    auto p = std::make_unique<Icon>();
    p->m_nType = kObjIcon;
    p->m_cx = img.cx;
    p->m_cy = img.cy;
    p->m_mask = mask;
    p->m_color = img.px;
    bool bAlpha = std::any_of(img.alpha.begin(), img.alpha.end(), [](uint8_t a) { return a != 255; }) &&
                  std::any_of(img.alpha.begin(), img.alpha.end(), [](uint8_t a) { return a != 0; });
    for (size_t i = 0; bAlpha && i < img.px.size(); ++i) {
        if (img.alpha[i] < 128)
            p->m_mask[i] = 1, p->m_color[i] = 0;
    }
    return static_cast<HICON>(Objects().Add(std::move(p)));
}
