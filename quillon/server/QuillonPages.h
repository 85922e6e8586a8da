// The control's property pages: General (dialog 200), More (201) and About (202).
#pragma once
#include "framework/olepage.h"

class CQuillonPropPage : public COlePropertyPage {
public:
    CQuillonPropPage();
    static const CLSID clsid;
    HRESULT GetClassID(CLSID* pClassID) override { *pClassID = clsid; return S_OK; }
    void DoDataExchange(CDataExchange* pDX) override;

    int m_nArrowType = 0, m_nBorderType = 0, m_bDropButton = 0, m_nDropWidth = 0, m_nInitialDelay = 0,
        m_nRepeatRate = 0, m_bSpinButton = 0, m_nSpinWidth = 0, m_nButtonBevel = 0, m_nPicXOffset = 0,
        m_nPicYOffset = 0, m_nDisplayStyle = 0, m_nAlignment = 0, m_nButtonFillType = 0, m_nButtonStyle = 0,
        m_bReverseBorder = 0;
    CString m_strText;
};

class CMorePropPage : public COlePropertyPage {
public:
    CMorePropPage();
    static const CLSID clsid;
    HRESULT GetClassID(CLSID* pClassID) override { *pClassID = clsid; return S_OK; }
    void DoDataExchange(CDataExchange* pDX) override;

    int m_nCaseType = 0, m_bEnabled = 0, m_bUseMaskChars = 0, m_bSelectOnFocus = 0, m_bMaskBitmap = 0,
        m_bEmbossBitmap = 0, m_nAutoComplete = 0, m_nAutoFindSize = 0, m_nListOffset = 0, m_bMatchCase = 0,
        m_nScrollStyle = 0, m_bSorted = 0;
    CString m_strEditMask, m_strPasswordChar;
};

class CAboutPropPage : public COlePropertyPage {
public:
    CAboutPropPage();
    static const CLSID clsid;
    HRESULT GetClassID(CLSID* pClassID) override { *pClassID = clsid; return S_OK; }
};
