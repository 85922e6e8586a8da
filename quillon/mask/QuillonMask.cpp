// CQuillonCtrl: the EditMask and Text properties, shaped by the mask.
#include "control/QuillonCtrl.h"
#include "mask/MaskRules.h"

void CQuillonCtrl::BuildLiteral()
{
    m_strLiteral = mask::BuildLiteral(m_strEditMask);
    if (m_bEditCreated && AmbientUserMode()) SetEditText(m_strLiteral);
}

TCHAR CQuillonCtrl::ApplyCase(TCHAR ch) const { return mask::ApplyCase(m_nCaseType, ch); }

void CQuillonCtrl::ApplyTextToMask(const CString& text)
{
    m_strText = mask::ApplyTextToMask(m_strEditMask, text, m_nCaseType);
}

CString CQuillonCtrl::GetMaskedText()
{
    if (m_bUseMaskChars) return m_strText;
    return mask::StripLiterals(m_strEditMask, m_strText);
}

void CQuillonCtrl::SetMaskedText(LPCTSTR value)
{
    if (m_bUseMaskChars) {
        m_strText = value;
        if (m_nCaseType == CaseUpper) m_strText.MakeUpper();
        else if (m_nCaseType == CaseLower) m_strText.MakeLower();
    } else {
        ApplyTextToMask(value);
    }
    if (m_bEditCreated && AmbientUserMode()) SetEditText(m_strText);
    BoundPropertyChanged(DISPID_TEXT);
    FireChange();
    SetModifiedFlag(TRUE);
    InvalidateControl(nullptr, TRUE);
}

CString CQuillonCtrl::GetEditMask() { return m_strEditMask; }

void CQuillonCtrl::SetEditMask(LPCTSTR value)
{
    m_strEditMask = value;
    BuildLiteral();
    SetModifiedFlag(TRUE);
    InvalidateControl(nullptr, TRUE);
}

void CQuillonCtrl::SetEditText(const CString& text) { m_edit.SetWindowText(text); }
