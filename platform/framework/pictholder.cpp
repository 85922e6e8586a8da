// CPictureHolder: making picture objects from handles and swapping them.
#include "pictholder.h"
#include "dc.h"

BOOL CPictureHolder::Create(PICTDESC& desc, BOOL bOwn)
{
    desc.cbSizeofstruct = sizeof desc;
    IPicture* pic = nullptr;
    if (FAILED(OleCreatePictureIndirect(&desc, IID_IPicture, bOwn, reinterpret_cast<void**>(&pic)))) return FALSE;
    SetPicture(pic);
    pic->Release();
    return TRUE;
}

BOOL CPictureHolder::CreateEmpty()
{
    PICTDESC d{};
    d.picType = PICTYPE_NONE;
    return Create(d, TRUE);
}

BOOL CPictureHolder::CreateFromBitmap(HBITMAP hbm, HPALETTE hpal, BOOL bTransferOwnership)
{
    PICTDESC d{};
    d.picType = PICTYPE_BITMAP;
    d.bmp.hbitmap = hbm;
    d.bmp.hpal = hpal;
    return Create(d, bTransferOwnership);
}

BOOL CPictureHolder::CreateFromIcon(HICON hicon, BOOL bTransferOwnership)
{
    PICTDESC d{};
    d.picType = PICTYPE_ICON;
    d.icon.hicon = hicon;
    return Create(d, bTransferOwnership);
}

BOOL CPictureHolder::CreateFromMetafile(HMETAFILE hmf, int xExt, int yExt, BOOL bTransferOwnership)
{
    PICTDESC d{};
    d.picType = PICTYPE_METAFILE;
    d.wmf.hmeta = hmf;
    d.wmf.xExt = xExt;
    d.wmf.yExt = yExt;
    return Create(d, bTransferOwnership);
}

SHORT CPictureHolder::GetType() const
{
    SHORT type = PICTYPE_UNINITIALIZED;
    if (m_pPict) m_pPict->get_Type(&type);
    return type;
}

LPPICTUREDISP CPictureHolder::GetPictureDispatch() const
{
    LPPICTUREDISP disp = nullptr;
    if (m_pPict) m_pPict->QueryInterface(IID_IPictureDisp, reinterpret_cast<void**>(&disp));
    return disp;
}

void CPictureHolder::SetPictureDispatch(LPPICTUREDISP pDisp)
{
    IPicture* pic = nullptr;
    if (pDisp) pDisp->QueryInterface(IID_IPicture, reinterpret_cast<void**>(&pic));
    SetPicture(pic);
    if (pic) pic->Release();
}

void CPictureHolder::SetPicture(IPicture* pPict)
{
    if (pPict) pPict->AddRef();
    if (m_pPict) m_pPict->Release();
    m_pPict = pPict;
}

void CPictureHolder::Render(CDC* pDC, const CRect& rcRender, const CRect&)
{
    OLE_HANDLE handle = 0;
    if (!pDC || !m_pPict || FAILED(m_pPict->get_Handle(&handle)) || !handle) return;
    switch (GetType()) {
    case PICTYPE_BITMAP: {
        HBITMAP hbm = reinterpret_cast<HBITMAP>(static_cast<uintptr_t>(handle));
        BITMAP bm{};
        if (!::GetObject(hbm, sizeof bm, &bm)) return;
        CDC dcBitmap;
        if (!dcBitmap.CreateCompatibleDC(pDC)) return;
        CSelectObject selected(&dcBitmap, hbm);
        pDC->StretchBlt(rcRender.left, rcRender.top, rcRender.Width(), rcRender.Height(), &dcBitmap, 0, 0,
                        bm.bmWidth, bm.bmHeight, SRCCOPY);
        break;
    }
    case PICTYPE_ICON:
        pDC->DrawIcon(rcRender.left, rcRender.top, reinterpret_cast<HICON>(static_cast<uintptr_t>(handle)));
        break;
    default:
        // Stand-in: a metafile here is a handle without records, so there is nothing to play back.
        break;
    }
}
