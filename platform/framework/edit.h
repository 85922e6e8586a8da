// CEdit: MFC's wrapper of the single-line EDIT window class.
#pragma once
#include "user/editctl.h"
#include "wnd.h"

class CEdit : public CWnd {
public:
    BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
    {
        return CreateEx(0, WC_EDIT, u"", dwStyle, rect, pParentWnd, nID);
    }
    // Start and end of the selection, as EM_GETSEL gives them.
    void GetSel(int& nStartChar, int& nEndChar) const
    {
        DWORD start = 0, end = 0;
        ::SendMessage(m_hWnd, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
        nStartChar = static_cast<int>(start);
        nEndChar = static_cast<int>(end);
    }
    void SetSel(int nStartChar, int nEndChar, BOOL bNoScroll = FALSE)
    {
        ::SendMessage(m_hWnd, EM_SETSEL, static_cast<WPARAM>(nStartChar), static_cast<LPARAM>(nEndChar));
        if (!bNoScroll) ::SendMessage(m_hWnd, EM_SCROLLCARET, 0, 0);
    }
    void SetPasswordChar(TCHAR ch) { ::SendMessage(m_hWnd, EM_SETPASSWORDCHAR, ch, 0); }
};
