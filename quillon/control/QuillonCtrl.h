// CQuillonCtrl: the masked edit control, its property store, automation surface and masked text.
#pragma once
#include "base/coll.h"
#include "control/QuillonEnums.h"
#include "droplist/DropList.h"
#include "droplist/ItemIndex.h"
#include "framework/olectl.h"
#include "framework/pictholder.h"
#include "mask/MaskEdit.h"

struct IXMLDOMNodeList;

class CQuillonCtrl : public COleControl {
public:
    CQuillonCtrl();
    ~CQuillonCtrl() override;

    static const CLSID clsid;
    const CDispatchMap& GetDispatchMap() const override { return DispatchMap(); }
    const CEventMap& GetEventMap() const override { return EventMap(); }
    // The maps of every control, which the type library is also made from.
    static const CDispatchMap& DispatchMap();
    static const CEventMap& EventMap();
    const CLSID& GetClassIDRef() const override { return clsid; }
    HRESULT GetTypeLib(ITypeLib** ppTLib) override;
    const IID& GetPrimaryDispatchIID() const override;
    const IID& GetEventsIID() const override;

    // Property store
    void DoPropExchange(CPropExchange* pPX) override;
    void OnResetState() override;
    void UpdateInsets();
    void UpdatePictureSize();

    // Masked text
    void BuildLiteral();
    TCHAR ApplyCase(TCHAR ch) const;
    void ApplyTextToMask(const CString& text);
    CString GetMaskedText();
    void SetMaskedText(LPCTSTR value);
    CString GetEditMask();
    void SetEditMask(LPCTSTR value);

    // Items
    SHORT AddItem(LPCTSTR strText);
    SHORT AdoptItem(CString strText);
    BOOL RemoveItem(SHORT nIndex);
    void ClearItems();
    SHORT ItemCount();
    void DeleteItems(BOOL bCloseList);
    void EnsureSorted();
    void QuickSortItems(SHORT nLeft, SHORT nRight);
    CString GetItemText(SHORT index);
    void SetTextFromItem(SHORT index);

    // Methods of the automation surface that need the child edit or the list
    SHORT CaretPosition();
    SHORT SelStart();
    SHORT SelEnd();
    void SetSel(SHORT nStartChar, SHORT nEndChar, BOOL bNoScroll);
    void HideList();
    OLE_HANDLE EditHwnd();

    // Lifecycle and layout
    BOOL CreateEdit();
    void PlaceEdit(int left, int top, int right, int bottom);
    void OnSetFocus(CWnd* pOldWnd);
    void OnKillFocus(CWnd* pNewWnd);
    void OnSize(UINT nType, int cx, int cy);
    void OnMove(int x, int y);
    HBRUSH OnCtlColor(CDC* pDC, CWnd* pWnd, UINT nCtlColor);
    void OnDestroy();
    void OnFontChanged() override;
    BOOL PreTranslateMessage(MSG* pMsg) override;

    // Painting
    void OnDraw(CDC* pdc, const CRect& rcBounds, const CRect& rcInvalid) override;
    void DrawControlFace(CDC* pDC, const CRect& rc);
    void DrawFaceText(CDC* pDC, const CRect& rc);
    void DrawBorder(CDC* pDC, const CRect& rc);
    BOOL IsFaceActive();
    BOOL IsEditShowing();
    BOOL IsEditFocused();

    // Fill engine
    void FillButtonFace(CDC* pDC, OLE_COLOR clrFrom, OLE_COLOR clrTo, SHORT nFillType, const CRect& rc);

    // Button painters and glyphs
    void DrawDropButton(CDC* pDC, const CRect& rc);
    void DrawSpinButton(CDC* pDC, SHORT nWhich, const CRect& rc);
    void DrawSpinTriangle(CDC* pDC, SHORT nWhich, const CRect& rcButton, const CRect& rc);
    void DrawDownChevron(CDC* pDC, OLE_COLOR clr, SHORT nOffset, SHORT nArrowType, const CRect& rc);
    void DrawUpChevron(CDC* pDC, OLE_COLOR clr, SHORT nOffset, SHORT nArrowType, const CRect& rc);
    void DrawModernFrame(CDC* pDC, OLE_COLOR clrLine, OLE_COLOR clrCorner, const CRect& rc);

    // Pictures
    void DrawDropPicture(CDC* pDC, SHORT nOffset, const CRect& rcButton);
    void DrawMaskBitmap(CDC* pDC, const CRect& rc);
    void DrawEmbossBitmap(CDC* pDC, const CRect& rc);
    HICON MakeMaskedIcon(CDC* pDC, HBITMAP hBitmap);

    // Style presets
    SHORT GetControlStyle();
    void SetControlStyle(SHORT nNewValue);
    void ApplyStyleDefault();
    void ApplyStyleFlat();
    void ApplyStyleXPBlue();
    void ApplyStyleXPOlive();
    void ApplyStyleVistaBlue();

    // Button interaction
    void OnLButtonDown(UINT nFlags, CPoint point);
    void OnLButtonUp(UINT nFlags, CPoint point);
    void OnMouseMove(UINT nFlags, CPoint point);
    void OnLButtonDblClk(UINT nFlags, CPoint point);
    void OnTimer(UINT_PTR nIDEvent);
    BOOL OnMouseWheel(UINT nFlags, short zDelta, CPoint pt);
    void OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags);
    void OnEnable(BOOL bEnable);
    BOOL HitDropButton(int x, int y);
    BOOL HitSpinUp(int x, int y);
    BOOL HitSpinDown(int x, int y);
    void PressButtonAt(int x, int y);
    void StopTimer();

    // The drop list and auto-complete
    BOOL CreateDropList();
    HWND ListWindow() const { return m_dropList.m_hWnd; }
    SHORT GetRowHeight();
    void AutoSuggest(int nCaret);
    SHORT AutoAppend(int nCaret);
    // An item's text, for an index known to be valid; no error is reported.
    const CString& ItemAt(int index) const;
    bool IsCaseBlindAscending(const std::vector<SHORT>& list);

    // XML document: the writer, the reader and the file dialogs of XMLWrite and XMLRead
    CString BuildXmlString(SHORT nFileInfo);
    CString FormatXmlShort(LPCTSTR strName, SHORT nValue);
    CString FormatXmlColor(LPCTSTR strName, ULONG nValue);
    CString FormatXmlFont(LPCTSTR strName, IFont* pFont);
    CString ReadXMLString(SHORT nFileInfo);
    BOOL WriteFile(LPCTSTR strFileName, SHORT nFileInfo);
    BOOL WriteXmlFile(LPCTSTR strFileName);
    BOOL ReadFile(LPCTSTR strFileName, SHORT nFileInfo);
    BOOL ReadXmlFile(LPCTSTR strFileName, SHORT nFileInfo);
    void ApplyXmlProperty(const CString& strName, const CString& strValue);
    void ApplyXmlFont(IFont* pFont, const CString& strValue);
    BOOL ReadXmlItem(IXMLDOMNodeList* pChildren);
    void SetXMLRead(LPCTSTR strValue);
    void SetXMLWrite(LPCTSTR strValue);

    // Property pages, the About box and the Properties verb
    LPCLSID GetPropPageIDs(ULONG& cPropPages) override;
    UINT GetUserTypeNameID() override;
    // What a container reads before it creates the control, from the registry or from the object.
    static const DWORD dwOleMisc;
    DWORD GetMiscStatus() override { return dwOleMisc; }
    using COleControl::GetMiscStatus;   // the IOleObject door beside the overridable
    const std::vector<VerbHandler>& GetVerbMap() const override;
    void SetPropertyPages(SHORT nNewValue);
    void AboutBox();

    // Events
    void FireChange() { FireEvent(eventidChange); }
    void FireCtrlError(SHORT nError, SHORT nIndex);

    // Persisted members, in exchange order
    CPictureHolder m_picDrop;
    OLE_COLOR m_clrBack = 0, m_clrFore = 0, m_clrBorder = 0, m_clrDropBack = 0, m_clrDropBackTo = 0,
              m_clrDropFore = 0, m_clrSpinBack = 0, m_clrSpinBackTo = 0, m_clrSpinFore = 0, m_clrDisabled = 0,
              m_clrMask = 0, m_clrScrollBack = 0, m_clrScrollBackTo = 0, m_clrScrollFore = 0;
    SHORT m_nBorderType = 0, m_nArrowType = 0, m_nCaseType = 0, m_nAlignment = 0, m_nDisplayStyle = 0,
          m_nAutoComplete = 0, m_nScrollStyle = 0, m_nButtonFillType = 0, m_nButtonStyle = 0, m_nDropWidth = 0,
          m_nSpinWidth = 0, m_nButtonBevel = 0, m_nInitialDelay = 0, m_nRepeatRate = 0, m_nPicXOffset = 0,
          m_nPicYOffset = 0, m_nListOffset = 0, m_nAutoFindSize = 0;
    BOOL m_bDropButton = FALSE, m_bSpinButton = FALSE, m_bSelectOnFocus = FALSE, m_bMaskBitmap = FALSE,
         m_bEmbossBitmap = FALSE, m_bUseMaskChars = FALSE, m_bMatchCase = FALSE, m_bSorted = FALSE,
         m_bReverseBorder = FALSE;
    CString m_strEditMask, m_strText, m_strPasswordChar;

    // Run-time members
    SHORT m_nDropPressed = 0, m_nSpinPressed = 0;
    BOOL m_bEditCreated = FALSE, m_bListCreated = FALSE, m_bDropCaptured = FALSE, m_bSpinRepeating = FALSE,
         m_bSpinFirstTick = TRUE, m_bMouseOver = FALSE, m_bFirstDrawFired = FALSE, m_bItemsDirty = TRUE;
    CString m_strLiteral;
    LONG m_clrEditBrush = -1;
    SHORT m_nInsetTop = 0, m_nInsetBottom = 0, m_nInsetLeft = 0, m_nInsetRight = 0;
    SHORT m_nPicHeight = 0, m_nPicWidth = 0;
    CObArray m_items;
    CItemIndex m_itemIndex{m_items};
    CString m_strListClass;
    CMaskEdit m_edit;
    CDropList m_dropList;
    CBrush* m_pEditBrush = nullptr;
    HWND m_hWndPrevFocus = nullptr;

    DECLARE_MESSAGE_MAP()

private:
    void ApplyResetDifferences();
    void ResetRunTimeState();
    void SetEditText(const CString& text);

    // Property gets and puts of the dispatch map (QuillonAccess.cpp).
    friend struct QuillonDispatchTable;
    friend struct QuillonXmlTable;
    template <SHORT CQuillonCtrl::*Member> SHORT GetShort() { return this->*Member; }
    template <BOOL CQuillonCtrl::*Member> BOOL GetBool() { return this->*Member; }
    template <OLE_COLOR CQuillonCtrl::*Member> OLE_COLOR GetColor() { return this->*Member; }
    template <OLE_COLOR CQuillonCtrl::*Member> void PutColorA(OLE_COLOR v) { this->*Member = v; StoreAndRepaint(); }
    template <BOOL CQuillonCtrl::*Member> void PutBoolA(BOOL v) { this->*Member = v; StoreAndRepaint(); }
    template <BOOL CQuillonCtrl::*Member> void PutBoolB(BOOL v) { this->*Member = v; SetModifiedFlag(TRUE); }
    template <SHORT CQuillonCtrl::*Member> void PutShortA(SHORT v) { this->*Member = v; StoreAndRepaint(); }
    template <SHORT CQuillonCtrl::*Member> void PutShortB(SHORT v) { this->*Member = v; SetModifiedFlag(TRUE); }
    template <SHORT CQuillonCtrl::*Member, SHORT Bound> void PutShortC(SHORT v)
    {
        if (static_cast<USHORT>(v) < Bound) PutShortA<Member>(v);
    }
    template <SHORT CQuillonCtrl::*Member, SHORT Bound> void PutShortCNoRepaint(SHORT v)
    {
        if (static_cast<USHORT>(v) < Bound) PutShortB<Member>(v);
    }
    void StoreAndRepaint() { SetModifiedFlag(TRUE); InvalidateControl(nullptr, TRUE); }

    void SetBorderType(SHORT v);
    void SetDropWidth(SHORT v);
    void SetAutoFindSize(SHORT v);
    LPPICTUREDISP GetDropPicture();
    void SetDropPicture(LPPICTUREDISP pPict);
    CString GetPasswordChar();
    void SetPasswordChar(LPCTSTR v);
    CString GetEmptyString();
    SHORT GetZero();
};
