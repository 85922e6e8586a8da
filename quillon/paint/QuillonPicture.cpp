// CQuillonCtrl: the drop picture on the drop button, drawn plainly, with a transparent colour, or embossed.
#include <vector>
#include "base/colors.h"
#include "control/QuillonCtrl.h"
#include "framework/dc.h"

namespace {

HBITMAP BitmapOf(IPicture* pPict)
{
    OLE_HANDLE handle = 0;
    if (!pPict || FAILED(pPict->get_Handle(&handle))) return nullptr;
    return reinterpret_cast<HBITMAP>(static_cast<uintptr_t>(handle));
}

// The raw bits of a bitmap, sized from what GetObject reports of it.
std::vector<BYTE> RawBits(HBITMAP hbm, BITMAP* pbm)
{
    *pbm = BITMAP{};
    ::GetObject(hbm, sizeof *pbm, pbm);
    std::vector<BYTE> bits(static_cast<size_t>(pbm->bmPlanes) * pbm->bmWidthBytes * pbm->bmHeight);
    if (!bits.empty()) ::GetBitmapBits(hbm, static_cast<LONG>(bits.size()), bits.data());
    return bits;
}

} // namespace

void CQuillonCtrl::DrawDropPicture(CDC* pDC, SHORT nOffset, const CRect& rcButton)
{
    // Centred on the button; the halves truncate toward zero, as the 16-bit arithmetic always did.
    SHORT x = static_cast<SHORT>(rcButton.left + (rcButton.right - m_nPicWidth - rcButton.left) / 2 + m_nPicXOffset + nOffset);
    SHORT y = static_cast<SHORT>(rcButton.top + (rcButton.bottom - m_nPicHeight - rcButton.top) / 2 + m_nPicYOffset + nOffset);
    CRect rc(x, y, x + m_nPicWidth, y + m_nPicHeight);
    // No clipping: a picture larger than the button paints over whatever lies beside it.
    BOOL bBitmap = m_picDrop.GetType() == PICTYPE_BITMAP;
    if (bBitmap && !GetEnabled() && m_bEmbossBitmap) DrawEmbossBitmap(pDC, rc);
    else if (bBitmap && m_bMaskBitmap) DrawMaskBitmap(pDC, rc);
    else m_picDrop.Render(pDC, rc, rc);
}

void CQuillonCtrl::DrawMaskBitmap(CDC* pDC, const CRect& rc)
{
    int w = rc.Width(), h = rc.Height();
    CDC dcBitmap, dcImage, dcMask;
    CBitmap bmImage, bmMask;
    if (!dcBitmap.CreateCompatibleDC(pDC) || !dcImage.CreateCompatibleDC(pDC) || !dcMask.CreateCompatibleDC(pDC) ||
        !bmImage.CreateCompatibleBitmap(pDC, w, h) || !bmMask.CreateBitmap(w, h, 1, 1, nullptr))
        return;
    CSelectObject bitmap(&dcBitmap, BitmapOf(m_picDrop.m_pPict)), image(&dcImage, &bmImage), mask(&dcMask, &bmMask);

    // The picture's top-left block, unscaled; then a mask in which the transparent colour is 1.
    dcImage.BitBlt(0, 0, w, h, &dcBitmap, 0, 0, SRCCOPY);
    dcImage.SetBkColor(TranslateColor(m_clrMask));
    dcMask.BitBlt(0, 0, w, h, &dcImage, 0, 0, SRCCOPY);
    // Transparent pixels of the image go black, so that OR-ing it leaves the target there.
    dcImage.SetBkColor(0);
    dcImage.SetTextColor(0xffffff);
    dcImage.BitBlt(0, 0, w, h, &dcMask, 0, 0, SRCAND);

    COLORREF oldText = pDC->SetTextColor(0);
    COLORREF oldBk = pDC->SetBkColor(0xffffff);
    pDC->BitBlt(rc.left, rc.top, w, h, &dcMask, 0, 0, SRCAND);
    pDC->BitBlt(rc.left, rc.top, w, h, &dcImage, 0, 0, SRCPAINT);
    pDC->SetTextColor(oldText);
    pDC->SetBkColor(oldBk);
}

void CQuillonCtrl::DrawEmbossBitmap(CDC* pDC, const CRect& rc)
{
    int cx = ::GetSystemMetrics(SM_CXICON), cy = ::GetSystemMetrics(SM_CYICON);
    CDC dcShape;
    CBitmap bmShape;
    if (!dcShape.CreateCompatibleDC(pDC) || !bmShape.CreateBitmap(cx, cy, 1, 1, nullptr)) return;
    CSelectObject shape(&dcShape, &bmShape);
    dcShape.PatBlt(0, 0, cx, cy, WHITENESS);
    // The icon's opaque pixels that are not pure white become 0: the shape.
    HICON hIcon = MakeMaskedIcon(pDC, BitmapOf(m_picDrop.m_pPict));
    if (hIcon) dcShape.DrawIcon(0, 0, hIcon);

    // A 0 in the shape takes the brush, a 1 leaves the target (text colour black, background white).
    COLORREF oldBk = pDC->SetBkColor(0xffffff);
    CBrush highlight(::GetSysColor(COLOR_BTNHIGHLIGHT)), shadow(::GetSysColor(COLOR_BTNSHADOW));
    {
        CSelectObject brush(pDC, &highlight);
        pDC->BitBlt(rc.left + 1, rc.top + 1, cx, cy, &dcShape, 0, 0, 0xB8074A);
    }
    {
        CSelectObject brush(pDC, &shadow);
        pDC->BitBlt(rc.left, rc.top, cx, cy, &dcShape, 0, 0, 0xB8074A);
    }
    pDC->SetBkColor(oldBk);

    if (hIcon) ::DestroyIcon(hIcon);
}

HICON CQuillonCtrl::MakeMaskedIcon(CDC* pDC, HBITMAP hBitmap)
{
    int cx = ::GetSystemMetrics(SM_CXICON), cy = ::GetSystemMetrics(SM_CYICON);
    BITMAP bm{};
    if (!hBitmap || !::GetObject(hBitmap, sizeof bm, &bm)) return nullptr;
    CDC dcBitmap, dcImage, dcMask;
    CBitmap bmImage, bmMask;
    if (!dcBitmap.CreateCompatibleDC(pDC) || !dcImage.CreateCompatibleDC(pDC) || !dcMask.CreateCompatibleDC(pDC) ||
        !bmImage.CreateCompatibleBitmap(pDC, cx, cy) || !bmMask.CreateBitmap(cx, cy, 1, 1, nullptr))
        return nullptr;
    {
        CSelectObject bitmap(&dcBitmap, hBitmap), image(&dcImage, &bmImage), mask(&dcMask, &bmMask);
        // The mask colour is taken as a plain COLORREF here; only DrawMaskBitmap translates it.
        CBrush maskBrush(m_clrMask);
        CRect all(0, 0, cx, cy);
        dcImage.FillRect(&all, &maskBrush);
        // A smaller bitmap lands 1:1 in the corner, a larger one is shrunk along the axis that is too long.
        dcImage.StretchBlt(0, 0, bm.bmWidth < cx ? bm.bmWidth : cx, bm.bmHeight < cy ? bm.bmHeight : cy, &dcBitmap, 0, 0,
                           bm.bmWidth, bm.bmHeight, SRCCOPY);
        dcImage.SetBkColor(m_clrMask);
        dcMask.BitBlt(0, 0, cx, cy, &dcImage, 0, 0, SRCCOPY);
        dcImage.SetBkColor(0);
        dcImage.SetTextColor(0xffffff);
        dcImage.BitBlt(0, 0, cx, cy, &dcMask, 0, 0, SRCAND);
    }

    BITMAP bmInfoMask, bmInfoImage;
    std::vector<BYTE> andBits = RawBits(bmMask, &bmInfoMask);
    std::vector<BYTE> xorBits = RawBits(bmImage, &bmInfoImage);
    // The stand-in module has no instance handle; an icon belongs to no module here.
    return ::CreateIcon(nullptr, cx, cy, static_cast<BYTE>(bmInfoImage.bmPlanes), static_cast<BYTE>(bmInfoImage.bmBitsPixel),
                        andBits.data(), xorBits.data());
}
