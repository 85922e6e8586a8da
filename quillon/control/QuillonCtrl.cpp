// CQuillonCtrl: construction, destruction, insets and picture size.
#include "control/QuillonCtrl.h"
#include "framework/olefact.h"
#include "gdi/wingdi.h"

// {5C4B1F20-3E2A-4B7D-9A61-2F0C8D7E4A10}
const CLSID CQuillonCtrl::clsid = {0x5C4B1F20, 0x3E2A, 0x4B7D, {0x9A, 0x61, 0x2F, 0x0C, 0x8D, 0x7E, 0x4A, 0x10}};

CQuillonCtrl::CQuillonCtrl()
{
    AfxOleLockApp();
    m_hWndPrevFocus = nullptr;
    m_edit.m_pCtrl = nullptr;
    m_strListClass.Empty();
    m_pEditBrush = new CBrush(RGB(0xFF, 0xFF, 0xFF));
}

CQuillonCtrl::~CQuillonCtrl()
{
    DeleteItems(FALSE);
    if (m_bEditCreated && m_edit.m_hWnd) m_edit.DestroyWindow();
    if (m_bListCreated && m_dropList.m_hWnd) m_dropList.DestroyWindow();
    delete m_pEditBrush; // normally gone with the window already
    AfxOleUnlockApp();
}

void CQuillonCtrl::UpdateInsets()
{
    SHORT inset;
    switch (m_nBorderType) {
    case BorderRegular: inset = 1; break;
    case BorderNone: inset = 0; break;
    case BorderRaised:
    case BorderLowered: inset = 2; break;
    default: return; // an unknown border kind leaves the insets as they were
    }
    m_nInsetTop = m_nInsetBottom = m_nInsetLeft = m_nInsetRight = inset;
}

void CQuillonCtrl::UpdatePictureSize()
{
    switch (m_picDrop.GetType()) {
    case PICTYPE_BITMAP: {
        OLE_HANDLE handle = 0;
        BITMAP bm{};
        m_picDrop.m_pPict->get_Handle(&handle);
        GetObject(reinterpret_cast<HGDIOBJ>(static_cast<uintptr_t>(handle)), sizeof bm, &bm);
        m_nPicWidth = static_cast<SHORT>(bm.bmWidth > 5 ? bm.bmWidth : 5);
        m_nPicHeight = static_cast<SHORT>(bm.bmHeight > 5 ? bm.bmHeight : 5);
        break;
    }
    case PICTYPE_ICON:
        m_nPicWidth = m_nPicHeight = 32;
        break;
    default:
        m_nPicWidth = m_nPicHeight = 0;
    }
}

void CQuillonCtrl::FireCtrlError(SHORT nError, SHORT nIndex)
{
    VARIANT args[2];
    VariantInit(&args[0]);
    VariantInit(&args[1]);
    args[0].vt = args[1].vt = VT_I2;
    args[0].iVal = nError;
    args[1].iVal = nIndex;
    FireEvent(eventidCtrlError, {args[0], args[1]});
}
