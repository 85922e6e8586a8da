// The pages' exchanges: each row reads its property into its member when the page opens and, when
// the user changed its field, writes it on Apply, in the order of the rows below.
#include "server/QuillonPages.h"
#include "server/resource.h"

const CLSID CQuillonPropPage::clsid = {0x5D3A1E21, 0x7C44, 0x4B8E, {0x9A, 0x61, 0x2F, 0x0B, 0x31, 0xC7, 0x52, 0x01}};
const CLSID CMorePropPage::clsid = {0x5D3A1E22, 0x7C44, 0x4B8E, {0x9A, 0x61, 0x2F, 0x0B, 0x31, 0xC7, 0x52, 0x01}};
const CLSID CAboutPropPage::clsid = {0x5D3A1E23, 0x7C44, 0x4B8E, {0x9A, 0x61, 0x2F, 0x0B, 0x31, 0xC7, 0x52, 0x01}};

CQuillonPropPage::CQuillonPropPage() : COlePropertyPage(IDD_PROPPAGE_QUILLON, IDS_QUILLON_PPG_CAPTION) {}
CMorePropPage::CMorePropPage() : COlePropertyPage(IDD_PROPPAGE_MORE, IDS_MORE_PPG_CAPTION) {}
CAboutPropPage::CAboutPropPage() : COlePropertyPage(IDD_PROPPAGE_ABOUT, IDS_ABOUT_PPG_CAPTION) {}

// ArrowType first and ReverseBorder last, so that Text is set before DisplayStyle.
void CQuillonPropPage::DoDataExchange(CDataExchange* pDX)
{
    DDP_Text(pDX, IDC_ARROWTYPE, m_nArrowType, u"ArrowType");
    DDX_CBIndex(pDX, IDC_ARROWTYPE, m_nArrowType);
    DDP_Text(pDX, IDC_BORDERTYPE, m_nBorderType, u"BorderType");
    DDX_CBIndex(pDX, IDC_BORDERTYPE, m_nBorderType);
    DDP_Check(pDX, IDC_DROPBUTTON, m_bDropButton, u"DropButton");
    DDX_Check(pDX, IDC_DROPBUTTON, m_bDropButton);
    DDP_Text(pDX, IDC_DROPWIDTH, m_nDropWidth, u"DropWidth");
    DDX_Text(pDX, IDC_DROPWIDTH, m_nDropWidth);
    DDP_Text(pDX, IDC_INITIALDELAY, m_nInitialDelay, u"InitialDelay");
    DDX_Text(pDX, IDC_INITIALDELAY, m_nInitialDelay);
    DDP_Text(pDX, IDC_REPEATRATE, m_nRepeatRate, u"RepeatRate");
    DDX_Text(pDX, IDC_REPEATRATE, m_nRepeatRate);
    DDP_Check(pDX, IDC_SPINBUTTON, m_bSpinButton, u"SpinButton");
    DDX_Check(pDX, IDC_SPINBUTTON, m_bSpinButton);
    DDP_Text(pDX, IDC_SPINWIDTH, m_nSpinWidth, u"SpinWidth");
    DDX_Text(pDX, IDC_SPINWIDTH, m_nSpinWidth);
    DDP_Text(pDX, IDC_TEXT, m_strText, u"Text");
    DDX_Text(pDX, IDC_TEXT, m_strText);
    DDP_Text(pDX, IDC_BUTTONBEVEL, m_nButtonBevel, u"ButtonBevel");
    DDX_Text(pDX, IDC_BUTTONBEVEL, m_nButtonBevel);
    DDP_Text(pDX, IDC_PICXOFFSET, m_nPicXOffset, u"PicXOffset");
    DDX_Text(pDX, IDC_PICXOFFSET, m_nPicXOffset);
    DDP_Text(pDX, IDC_PICYOFFSET, m_nPicYOffset, u"PicYOffset");
    DDX_Text(pDX, IDC_PICYOFFSET, m_nPicYOffset);
    DDP_Text(pDX, IDC_DISPLAYSTYLE, m_nDisplayStyle, u"DisplayStyle");
    DDX_CBIndex(pDX, IDC_DISPLAYSTYLE, m_nDisplayStyle);
    DDP_Text(pDX, IDC_ALIGNMENT, m_nAlignment, u"Alignment");
    DDX_CBIndex(pDX, IDC_ALIGNMENT, m_nAlignment);
    DDP_Text(pDX, IDC_BUTTONFILLTYPE, m_nButtonFillType, u"ButtonFillType");
    DDX_CBIndex(pDX, IDC_BUTTONFILLTYPE, m_nButtonFillType);
    DDP_Text(pDX, IDC_BUTTONSTYLE, m_nButtonStyle, u"ButtonStyle");
    DDX_CBIndex(pDX, IDC_BUTTONSTYLE, m_nButtonStyle);
    DDP_Check(pDX, IDC_REVERSEBORDER, m_bReverseBorder, u"ReverseBorder");
    DDX_Check(pDX, IDC_REVERSEBORDER, m_bReverseBorder);
    DDP_PostProcessing(pDX);
}

// CaseType before EditMask, so that the mask's text is cased; PasswordChar last.
void CMorePropPage::DoDataExchange(CDataExchange* pDX)
{
    DDP_Text(pDX, IDC_CASETYPE, m_nCaseType, u"CaseType");
    DDX_CBIndex(pDX, IDC_CASETYPE, m_nCaseType);
    DDP_Text(pDX, IDC_EDITMASK, m_strEditMask, u"EditMask");
    DDX_Text(pDX, IDC_EDITMASK, m_strEditMask);
    DDP_Check(pDX, IDC_ENABLED, m_bEnabled, u"Enabled");
    DDX_Check(pDX, IDC_ENABLED, m_bEnabled);
    DDP_Check(pDX, IDC_USEMASKCHARS, m_bUseMaskChars, u"UseMaskChars");
    DDX_Check(pDX, IDC_USEMASKCHARS, m_bUseMaskChars);
    DDP_Check(pDX, IDC_SELECTONFOCUS, m_bSelectOnFocus, u"SelectOnFocus");
    DDX_Check(pDX, IDC_SELECTONFOCUS, m_bSelectOnFocus);
    DDP_Check(pDX, IDC_MASKBITMAP, m_bMaskBitmap, u"MaskBitmap");
    DDX_Check(pDX, IDC_MASKBITMAP, m_bMaskBitmap);
    DDP_Check(pDX, IDC_EMBOSSBITMAP, m_bEmbossBitmap, u"EmbossBitmap");
    DDX_Check(pDX, IDC_EMBOSSBITMAP, m_bEmbossBitmap);
    DDP_Text(pDX, IDC_AUTOCOMPLETE, m_nAutoComplete, u"AutoComplete");
    DDX_CBIndex(pDX, IDC_AUTOCOMPLETE, m_nAutoComplete);
    DDP_Text(pDX, IDC_AUTOFINDSIZE, m_nAutoFindSize, u"AutoFindSize");
    DDX_Text(pDX, IDC_AUTOFINDSIZE, m_nAutoFindSize);
    DDP_Text(pDX, IDC_LISTOFFSET, m_nListOffset, u"ListOffset");
    DDX_Text(pDX, IDC_LISTOFFSET, m_nListOffset);
    DDP_Check(pDX, IDC_MATCHCASE, m_bMatchCase, u"MatchCase");
    DDX_Check(pDX, IDC_MATCHCASE, m_bMatchCase);
    DDP_Text(pDX, IDC_SCROLLSTYLE, m_nScrollStyle, u"ScrollStyle");
    DDX_CBIndex(pDX, IDC_SCROLLSTYLE, m_nScrollStyle);
    DDP_Check(pDX, IDC_SORTED, m_bSorted, u"Sorted");
    DDX_Check(pDX, IDC_SORTED, m_bSorted);
    DDP_Text(pDX, IDC_PASSWORDCHAR, m_strPasswordChar, u"PasswordChar");
    DDX_Text(pDX, IDC_PASSWORDCHAR, m_strPasswordChar);
    DDP_PostProcessing(pDX);
}
