// COleControl: MFC's base of an ActiveX control: COM doors, stock properties, ambient
// properties, events, the modified flag, invalidation and property exchange.
#pragma once
#include <memory>
#include <vector>
#include "base/coll.h"
#include "com/proppage.h"
#include "dc.h"
#include "dispmap.h"
#include "fontholder.h"
#include "pxchange.h"

struct ITypeLib;

// The automation error a control's method raises through COleControl::ThrowError; the dispatch
// turns it into DISP_E_EXCEPTION with the code and description in EXCEPINFO.
class COleDispatchException : public CException {
public:
    COleDispatchException(HRESULT sc, const char16_t* pszDescription, UINT nHelpID)
        : m_scError(sc), m_pszDescription(pszDescription), m_dwHelpContext(nHelpID) {}
    HRESULT m_scError;
    const char16_t* m_pszDescription; // one of the framework's texts, which live as long as the program
    DWORD m_dwHelpContext;
};

// Ids of the framework's own error texts, as ThrowError takes them.
#define AFX_IDP_E_OUTOFMEMORY 0xFEA2

class COleControl : public CWnd,
                    public IDispatch,
                    public IPersistPropertyBag,
                    public IPersistStreamInit,
                    public IConnectionPointContainer,
                    public IConnectionPoint,
                    public IOleObject,
                    public IProvideClassInfo,
                    public IOleInPlaceObject,
                    public IOleInPlaceActiveObject,
                    public IViewObject,
                    public ISpecifyPropertyPages {
public:
    COleControl();
    ~COleControl() override;

    // IUnknown: one reference count for all the interfaces.
    HRESULT QueryInterface(REFIID riid, void** ppv) override;
    ULONG AddRef() override;
    ULONG Release() override;

    // IDispatch, through the class's dispatch map.
    HRESULT GetTypeInfoCount(UINT* pctinfo) override;
    // The primary dispatch interface's description, from the control's type library.
    HRESULT GetTypeInfo(UINT iTInfo, LCID lcid, ITypeInfo** ppTInfo) override;
    HRESULT GetIDsOfNames(REFIID riid, LPCOLESTR* rgszNames, UINT cNames, LCID lcid, DISPID* rgDispId) override;
    HRESULT Invoke(DISPID dispIdMember, REFIID riid, LCID lcid, WORD wFlags, DISPPARAMS* pDispParams,
                   VARIANT* pVarResult, EXCEPINFO* pExcepInfo, UINT* puArgErr) override;

    // IPersistPropertyBag and IPersistStreamInit (one GetClassID, InitNew and Load serve both).
    HRESULT GetClassID(CLSID* pClassID) override;
    HRESULT InitNew() override;
    HRESULT Load(IPropertyBag* pPropBag, IErrorLog* pErrorLog) override;
    HRESULT Save(IPropertyBag* pPropBag, BOOL fClearDirty, BOOL fSaveAllProperties) override;
    HRESULT IsDirty() override;
    HRESULT Load(IStream* pStm) override;
    HRESULT Save(IStream* pStm, BOOL fClearDirty) override;

    // IConnectionPointContainer: the one point, for the class's events interface.
    HRESULT FindConnectionPoint(REFIID riid, IConnectionPoint** ppCP) override;
    // IConnectionPoint: the host's event sink, an IDispatch.
    HRESULT Advise(IUnknown* pUnkSink, DWORD* pdwCookie) override;
    HRESULT Unadvise(DWORD dwCookie) override;

    // IOleObject
    HRESULT SetClientSite(IOleClientSite* pClientSite) override;
    HRESULT GetClientSite(IOleClientSite** ppClientSite) override;
    HRESULT Close(DWORD dwSaveOption) override;
    HRESULT DoVerb(LONG iVerb, MSG* lpmsg, IOleClientSite* pActiveSite, LONG lindex, HWND hwndParent,
                   LPCRECT lprcPosRect) override;
    // The class's status for DVASPECT_CONTENT, none for the other aspects.
    HRESULT GetMiscStatus(DWORD dwAspect, DWORD* pdwStatus) override;

    // ISpecifyPropertyPages, from the class's page list.
    HRESULT GetPages(CAUUID* pPages) override;

    // IProvideClassInfo
    HRESULT GetClassInfo(ITypeInfo** ppTI) override;

    // IOleInPlaceObject, IOleInPlaceActiveObject, IViewObject: the control in the container's window.
    HRESULT InPlaceActivate(HWND hwndParent, LPCRECT lprcPosRect) override;
    HRESULT InPlaceDeactivate() override;
    HRESULT SetObjectRects(LPCRECT lprcPosRect, LPCRECT lprcClipRect) override;
    HRESULT GetWindow(HWND* phwnd) override;
    HRESULT TranslateAccelerator(MSG* lpmsg) override;
    HRESULT Draw(HDC hdcDraw, LPCRECT lprcBounds) override;

    // Overridables
    virtual const CDispatchMap& GetDispatchMap() const = 0;
    virtual const CEventMap& GetEventMap() const = 0;
    virtual const CLSID& GetClassIDRef() const = 0;
    // The library describing the control and its primary dispatch interface in it; a control
    // without one answers TYPE_E_LIBNOTREGISTERED. When it fails, the type information is read
    // from the library in the module's own file, if it has one.
    virtual HRESULT GetTypeLib(ITypeLib** ppTLib);
    virtual const IID& GetPrimaryDispatchIID() const;
    // The events interface the class fires, as its library declares it; IID_NULL for none.
    virtual const IID& GetEventsIID() const;
    virtual void DoPropExchange(CPropExchange* pPX);
    virtual void OnResetState();
    virtual void OnFontChanged();
    virtual void OnBackColorChanged();
    virtual void OnForeColorChanged();
    virtual void OnEnabledChanged();
    virtual void OnTextChanged();
    virtual void OnDraw(CDC* pdc, const CRect& rcBounds, const CRect& rcInvalid);
    // The class's property pages, in order, and their count.
    virtual LPCLSID GetPropPageIDs(ULONG& cPropPages);
    // The string resource of the class's user type name.
    virtual UINT GetUserTypeNameID() { return 0; }
    // The class's OLEMISC bits, the same it registers.
    virtual DWORD GetMiscStatus() { return 0; }
    // The class's own verbs, numbered from 0: their handlers, as the verb map lists them.
    using VerbHandler = BOOL (*)(COleControl* pCtrl, LPMSG lpMsg, HWND hWndParent, LPCRECT lpRect);
    virtual const std::vector<VerbHandler>& GetVerbMap() const;

    // The Properties verb: the host's own frame if it has one, else the frame with the class's pages.
    BOOL OnProperties(LPMSG lpMsg, HWND hWndParent, LPCRECT lpRect);
    // Tell the container that a modal dialog opens and has closed.
    void PreModalDialog(HWND hWndParent = nullptr);
    void PostModalDialog(HWND hWndParent = nullptr);
    // The user type name, from the string resource.
    CString GetUserType();
    LCID AmbientLocaleID();
    // The site's own frame (IOleControlSite::ShowPropertyFrame); S_OK when it showed it.
    HRESULT ShowSitePropertyFrame();
    // The window of the in-place site, frame or document, the first that answers; else null.
    HWND GetInPlaceParentWindow();

    // Handlers of the framework: the stock mouse and key events, painting and focus.
    void OnPaint();
    void OnLButtonDown(UINT nFlags, CPoint point);
    void OnLButtonUp(UINT nFlags, CPoint point);
    void OnLButtonDblClk(UINT nFlags, CPoint point);
    void OnRButtonDown(UINT nFlags, CPoint point);
    void OnRButtonUp(UINT nFlags, CPoint point);
    void OnRButtonDblClk(UINT nFlags, CPoint point);
    void OnMouseMove(UINT nFlags, CPoint point);
    void OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags);
    void OnKeyUp(UINT nChar, UINT nRepCnt, UINT nFlags);
    void OnChar(UINT nChar, UINT nRepCnt, UINT nFlags);
    void OnSetFocus(CWnd* pOldWnd) { Default(); (void)pOldWnd; }
    void OnKillFocus(CWnd* pNewWnd) { Default(); (void)pNewWnd; }

    // Stock events
    void FireClick();
    void FireDblClick();
    void FireKeyDown(USHORT* pnChar, short nShiftState);
    void FireKeyUp(USHORT* pnChar, short nShiftState);
    void FireKeyPress(USHORT* pnChar);
    void FireMouseDown(short nButton, short nShiftState, LONG x, LONG y);
    void FireMouseUp(short nButton, short nShiftState, LONG x, LONG y);
    void FireMouseMove(short nButton, short nShiftState, LONG x, LONG y);

    // The device context of the control's window with the stock font selected into it.
    CDC* GetDC();
    int ReleaseDC(CDC* pDC);
    CFont* SelectStockFont(CDC* pDC);

    // Ambient properties, asked of the site at each use.
    BOOL GetAmbientProperty(DISPID dwDispid, VARTYPE vtProp, void* pvProp);
    BOOL AmbientUserMode();
    OLE_COLOR AmbientBackColor();
    OLE_COLOR AmbientForeColor();
    LPFONTDISP AmbientFont(); // with a reference for the caller, or null

    // Ends the automation call that is running with an error: sc, and the framework's text nDescriptionID.
    [[noreturn]] void ThrowError(HRESULT sc, UINT nDescriptionID, UINT nHelpID = static_cast<UINT>(-1));
    void SetModifiedFlag(BOOL bModified = TRUE) { m_bModified = bModified; }
    BOOL IsModified() const { return m_bModified; }
    void InvalidateControl(LPCRECT lpRect = nullptr, BOOL bErase = TRUE);
    // Raises an event: arguments in declaration order; by-reference ones point at the caller's value.
    void FireEvent(DISPID dispid, std::vector<VARIANT> args = {});
    void BoundPropertyChanged(DISPID dispid);
    COLORREF TranslateColor(OLE_COLOR clrColor, HPALETTE hpal = nullptr);

    // Stock properties
    OLE_COLOR GetBackColor() { return m_clrBackColor; }
    void SetBackColor(OLE_COLOR clr);
    OLE_COLOR GetForeColor() { return m_clrForeColor; }
    void SetForeColor(OLE_COLOR clr);
    BOOL GetEnabled() { return m_bEnabled; }
    void SetEnabled(BOOL bEnabled);
    LPFONTDISP GetFont() { return m_font.GetFontDispatch(); }
    void SetFont(LPFONTDISP pFontDisp);
    CFontHolder& InternalGetFont() { return m_font; }
    CString GetText() { return m_strStockText; }
    void SetText(LPCTSTR pszText);
    OLE_HANDLE GetHwnd() { return static_cast<OLE_HANDLE>(reinterpret_cast<uintptr_t>(m_hWnd)); }
    void SetHwnd(OLE_HANDLE) {}

    // Rows of the stock properties, for a class's dispatch map.
    static DispEntry StockBackColor();
    static DispEntry StockForeColor();
    static DispEntry StockEnabled();
    static DispEntry StockFont();
    static DispEntry StockHwnd();
    static DispEntry StockText();

protected:
    // Hears the stock font's changes.
    class CFontNotify : public IPropertyNotifySink {
    public:
        explicit CFontNotify(COleControl* p) : m_pCtrl(p) {}
        HRESULT QueryInterface(REFIID riid, void** ppv) override;
        ULONG AddRef() override { return 2; }   // lives inside the control
        ULONG Release() override { return 1; }
        HRESULT OnChanged(DISPID) override { m_pCtrl->OnFontChanged(); return S_OK; }
        HRESULT OnRequestEdit(DISPID) override { return S_OK; }
    private:
        COleControl* m_pCtrl;
    };

    CFontNotify m_xFontNotification{this};
    CFontHolder m_font{&m_xFontNotification};
    OLE_COLOR m_clrBackColor = 0x80000005;
    OLE_COLOR m_clrForeColor = 0x80000008;
    BOOL m_bEnabled = TRUE;
    CString m_strStockText;

    DECLARE_MESSAGE_MAP()

private:
    void ButtonDown(short iButton, UINT nFlags, CPoint point);
    void ButtonUp(short iButton, UINT nFlags, CPoint point);
    void ButtonDblClk(short iButton, UINT nFlags, CPoint point);
    void ExchangeStockProps(CPropExchange* pPX);
    short m_iButtonState = 0;   // buttons held down over the control
    short m_iDblClkState = 0;   // buttons whose release ends a double click
    std::vector<std::unique_ptr<CDC>> m_dcs;
    HRESULT Exchange(CPropExchange& px, BOOL fClearDirty);

    CComRefCount<COleControl> m_ref;
    IOleClientSite* m_pClientSite = nullptr;
    friend class COleControlPages;
    std::vector<std::pair<DWORD, IDispatch*>> m_sinks;
    DWORD m_nextCookie = 1;
    BOOL m_bModified = FALSE;
    friend class CComRefCount<COleControl>;
};
