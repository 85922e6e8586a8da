// CPictureHolder: MFC's owner of a picture object (none, bitmap, icon or metafile).
#pragma once
#include "com/ocidl.h"
#include "base/rect.h"

class CDC;

class CPictureHolder {
public:
    CPictureHolder() = default;
    ~CPictureHolder() { SetPicture(nullptr); }
    CPictureHolder(const CPictureHolder&) = delete;
    CPictureHolder& operator=(const CPictureHolder&) = delete;

    BOOL CreateEmpty();
    BOOL CreateFromBitmap(HBITMAP hbm, HPALETTE hpal = nullptr, BOOL bTransferOwnership = FALSE);
    BOOL CreateFromIcon(HICON hicon, BOOL bTransferOwnership = FALSE);
    BOOL CreateFromMetafile(HMETAFILE hmf, int xExt, int yExt, BOOL bTransferOwnership = FALSE);
    // PICTYPE_NONE for an empty holder, PICTYPE_UNINITIALIZED when there is no object at all.
    SHORT GetType() const;
    LPPICTUREDISP GetPictureDispatch() const; // with a reference for the caller
    void SetPictureDispatch(LPPICTUREDISP pDisp);
    void SetPicture(IPicture* pPict);
    // Draws the picture into rcRender: a bitmap stretched to it, an icon at its own size at its top-left.
    // rcWBounds is the metafile frame, of no use here (see Render).
    void Render(CDC* pDC, const CRect& rcRender, const CRect& rcWBounds);

    IPicture* m_pPict = nullptr;

private:
    BOOL Create(PICTDESC& desc, BOOL bOwn);
};
