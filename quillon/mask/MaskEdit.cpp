// CMaskEdit: the keystroke engine. With a mask it takes typed keys away from the edit control,
// overwrites in place and keeps the literals in their columns.
#include "mask/MaskEdit.h"
#include "control/QuillonCtrl.h"
#include "mask/MaskRules.h"

namespace {
constexpr UINT kBackspace = 8;
constexpr UINT kReturn = 13;
constexpr UINT kDeleteMarker = 190; // the Delete key, after the edit control removed the text
} // namespace

void CMaskEdit::SyncTextFromEdit()
{
    GetWindowText(m_pCtrl->m_strText);
    m_pCtrl->BoundPropertyChanged(DISPID_TEXT);
    m_pCtrl->FireChange();
}

void CMaskEdit::OnChar(UINT nChar, UINT nRepCnt, UINT nFlags)
{
    if (!m_pCtrl->m_strPasswordChar.IsEmpty()) {
        m_pCtrl->COleControl::OnChar(nChar, nRepCnt, nFlags);
        Default();
        SyncTextFromEdit();
        return;
    }
    UINT nConv = nChar <= 0xFFFF ? m_pCtrl->ApplyCase(static_cast<TCHAR>(nChar)) : nChar;
    m_pCtrl->COleControl::OnChar(nConv, nRepCnt, nFlags);
    if (!m_pCtrl->m_strEditMask.IsEmpty()) {
        MaskKeystroke(nChar);
    } else if (nConv != nChar && ((nConv >= u'A' && nConv <= u'Z') || (nConv >= u'a' && nConv <= u'z'))) {
        InsertCaseChar(static_cast<TCHAR>(nConv));
    } else {
        Default();
        SyncTextFromEdit();
    }
    if (nChar == kReturn) return;
    int nCaret, nEnd;
    ReadSel(nCaret, nEnd);
    m_pCtrl->AutoSuggest(nCaret);
    if (nChar == kBackspace) return;
    if (m_pCtrl->AutoAppend(nCaret) >= 0) SetSel(nCaret, -1);
}

void CMaskEdit::OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags)
{
    Default();
    if (m_pCtrl->m_strPasswordChar.IsEmpty() && nChar == VK_DELETE) {
        if (!m_pCtrl->m_strEditMask.IsEmpty()) MaskKeystroke(kDeleteMarker);
        else SyncTextFromEdit();
    }
    m_pCtrl->COleControl::OnKeyDown(nChar, nRepCnt, nFlags);
}

void CMaskEdit::InsertCaseChar(TCHAR ch)
{
    CString text = GetWindowText();
    int nStart, nEnd;
    ReadSel(nStart, nEnd);
    if (nStart < nEnd) text = text.Left(nStart) + ch + text.Mid(nEnd);
    else if (nStart >= text.GetLength()) text += ch;
    else text = text.Left(nStart) + ch + text.Mid(nStart);
    WriteText(text);
    CaretTo(nStart + 1);
    SyncTextFromEdit();
}

// The engine works on its own copies and goes on with them after each sync, even if a host's
// Change handler wrote Text in between.
void CMaskEdit::MaskKeystroke(UINT nKey)
{
    const CString L = m_pCtrl->m_strLiteral;
    const CString M = m_pCtrl->m_strEditMask;
    std::u16string T = GetWindowText().str();
    int nStart, nEnd;
    ReadSel(nStart, nEnd);
    if (nStart == 0 && nEnd == 0 && nKey == kBackspace) return;

    if (L.GetLength() > static_cast<int>(T.size())) T += L.Right(L.GetLength() - static_cast<int>(T.size())).str();

    if (nStart < nEnd) { // erase the selection back to the template
        std::u16string erased = T.substr(0, nStart) + L.Mid(nStart, nEnd - nStart).str();
        if (nEnd < static_cast<int>(T.size())) erased += T.substr(nEnd);
        T = erased;
        WriteText(CString(T));
        CaretTo(nStart);
        SyncTextFromEdit();
    }

    while (nStart < M.GetLength() && !mask::IsPlaceholder(M[nStart])) CaretTo(++nStart);

    if (nKey == kBackspace) {
        // Erase one placeholder, restoring the literals on the way back. Past the template's end
        // there is nothing to restore: the character there is removed instead.
        while (nStart > 0) {
            --nStart;
            if (nStart >= L.GetLength()) T.erase(nStart, 1);
            else T[nStart] = L[nStart];
            WriteText(CString(T));
            CaretTo(nStart);
            SyncTextFromEdit();
            if (nStart >= L.GetLength() || mask::IsPlaceholder(M[nStart])) break;
        }
        return;
    }
    if (nStart >= static_cast<int>(T.size())) {
        MessageBeep(MB_ICONEXCLAMATION);
        return;
    }
    if (nKey == kDeleteMarker) {
        SyncTextFromEdit();
        return;
    }
    if (nStart >= M.GetLength()) return; // past the mask's end: the key is ignored, without a beep
    TCHAR k = M[nStart];
    TCHAR ch = static_cast<TCHAR>(nKey);
    if (!mask::Accepts(k, ch)) {
        MessageBeep(MB_ICONEXCLAMATION);
        return;
    }
    T[nStart] = mask::StoredForm(k, ch, m_pCtrl->m_nCaseType);
    WriteText(CString(T));
    CaretTo(nStart + 1);
    SyncTextFromEdit();
}
