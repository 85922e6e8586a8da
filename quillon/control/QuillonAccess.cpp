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
    if (m_bEditCreated && !m_strPasswordChar.IsEmpty()) m_edit.SetPasswordChar(m_strPasswordChar[0]);
    StoreAndRepaint();
}

CString CQuillonCtrl::GetEmptyString() { return CString(); }
SHORT CQuillonCtrl::GetZero() { return 0; }

// Without a child edit (design mode, or before the first paint) these give their neutral results.
SHORT CQuillonCtrl::CaretPosition() { return SelStart(); }

SHORT CQuillonCtrl::SelStart()
{
    if (!AmbientUserMode() || !m_bEditCreated) return -1;
    int nStart, nEnd;
    m_edit.GetSel(nStart, nEnd);
    return static_cast<SHORT>(nStart);
}

SHORT CQuillonCtrl::SelEnd()
{
    if (!AmbientUserMode() || !m_bEditCreated) return -1;
    int nStart, nEnd;
    m_edit.GetSel(nStart, nEnd);
    return static_cast<SHORT>(nEnd);
}

// The positions are widened with their sign, so that -1 means to EM_SETSEL what it always means.
void CQuillonCtrl::SetSel(SHORT nStartChar, SHORT nEndChar, BOOL bNoScroll)
{
    if (!AmbientUserMode() || !m_bEditCreated) return;
    m_edit.SetSel(nStartChar, nEndChar, bNoScroll);
}

OLE_HANDLE CQuillonCtrl::EditHwnd()
{
    return m_bEditCreated ? static_cast<OLE_HANDLE>(reinterpret_cast<uintptr_t>(m_edit.m_hWnd)) : 0;
}
