// CQuillonCtrl: the puts with rules of their own, and the methods that need the child windows.
#include "control/QuillonCtrl.h"

void CQuillonCtrl::SetBorderType(SHORT v)
{
    if (static_cast<USHORT>(v) >= 4) return;
    m_nBorderType = v;
    UpdateInsets();
    StoreAndRepaint();
}

void CQuillonCtrl::SetDropWidth(SHORT v)
{
    m_nDropWidth = v < 2 ? 2 : v;
    StoreAndRepaint();
}

void CQuillonCtrl::SetAutoFindSize(SHORT v)
{
    m_nAutoFindSize = v < 1 ? 1 : v;
    SetModifiedFlag(TRUE);
}

LPPICTUREDISP CQuillonCtrl::GetDropPicture() { return m_picDrop.GetPictureDispatch(); }

void CQuillonCtrl::SetDropPicture(LPPICTUREDISP pPict)
{
    m_picDrop.SetPictureDispatch(pPict);
    UpdatePictureSize();
    StoreAndRepaint();
}

CString CQuillonCtrl::GetPasswordChar() { return m_strPasswordChar; }

// Only the first character echoes; an empty string leaves the edit's echo as it was.
void CQuillonCtrl::SetPasswordChar(LPCTSTR v)
{
    m_strPasswordChar = v;
    StoreAndRepaint();
}

CString CQuillonCtrl::GetEmptyString() { return CString(); }
SHORT CQuillonCtrl::GetZero() { return 0; }

// Without a child edit (design mode, or before the first paint) these give their neutral results.
SHORT CQuillonCtrl::CaretPosition() { return SelStart(); }
SHORT CQuillonCtrl::SelStart() { return -1; }
SHORT CQuillonCtrl::SelEnd() { return -1; }
void CQuillonCtrl::SetSel(SHORT, SHORT, BOOL) {}
OLE_HANDLE CQuillonCtrl::EditHwnd() { return 0; }

void CQuillonCtrl::HideList() { InvalidateControl(); }
