// CMaskEdit: the control's child edit: the keystroke engine of the mask and the relay of its
// mouse, key and focus messages to the owning control.
#pragma once
#include "framework/edit.h"

class CQuillonCtrl;

class CMaskEdit : public CEdit {
public:
    CQuillonCtrl* m_pCtrl = nullptr;

    void OnChar(UINT nChar, UINT nRepCnt, UINT nFlags);
    void OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags);
    void MaskKeystroke(UINT nKey);
    void InsertCaseChar(TCHAR ch);
    void SyncTextFromEdit();

    void OnMouseMove(UINT nFlags, CPoint point);
    BOOL OnSetCursor(CWnd* pWnd, UINT nHitTest, UINT message);
    void OnKeyUp(UINT nChar, UINT nRepCnt, UINT nFlags);
    void OnKillFocus(CWnd* pNewWnd);
    void OnSetFocus(CWnd* pOldWnd);
    void OnLButtonDown(UINT nFlags, CPoint point);
    void OnLButtonUp(UINT nFlags, CPoint point);
    void OnLButtonDblClk(UINT nFlags, CPoint point);
    void OnRButtonDown(UINT nFlags, CPoint point);
    void OnRButtonUp(UINT nFlags, CPoint point);
    void OnRButtonDblClk(UINT nFlags, CPoint point);

    DECLARE_MESSAGE_MAP()

private:
    // The selection start and end as EM_GETSEL gives them.
    void ReadSel(int& nStart, int& nEnd) const { GetSel(nStart, nEnd); }
    // EM_SETSEL with the position as both ends, then EM_SCROLLCARET.
    void CaretTo(int nPos) { SetSel(nPos, nPos); }
    void WriteText(const CString& text) { SetWindowText(text); }
    CPoint ToControl(CPoint point) const;
};
