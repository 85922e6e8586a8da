// CQuillonCtrl as the server shell shows it: its page list, the PropertyPages property that opens
// the frame, the Properties verb and the About box.
#include "control/QuillonCtrl.h"
#include "framework/dialog.h"
#include "server/QuillonPages.h"
#include "server/resource.h"

LPCLSID CQuillonCtrl::GetPropPageIDs(ULONG& cPropPages)
{
    static CLSID pages[] = {CQuillonPropPage::clsid, CMorePropPage::clsid, CLSID_StockColorPage,
                            CLSID_StockFontPage, CLSID_StockPicturePage, CAboutPropPage::clsid};
    cPropPages = 6;
    return pages;
}

UINT CQuillonCtrl::GetUserTypeNameID() { return IDS_QUILLON; }

// Recomposed on resize, not linked inside, activated inside-out and when visible, the client site
// set first.
const DWORD CQuillonCtrl::dwOleMisc = OLEMISC_RECOMPOSEONRESIZE | OLEMISC_CANTLINKINSIDE | OLEMISC_INSIDEOUT |
                                      OLEMISC_ACTIVATEWHENVISIBLE | OLEMISC_SETCLIENTSITEFIRST;

// The verb map: ON_OLEVERB(AFX_IDS_VERB_PROPERTIES, OnProperties), the framework's own handler.
const std::vector<COleControl::VerbHandler>& CQuillonCtrl::GetVerbMap() const
{
    static const std::vector<VerbHandler> verbs{
        [](COleControl* p, LPMSG msg, HWND parent, LPCRECT rc) { return p->OnProperties(msg, parent, rc); },
    };
    return verbs;
}

// Any value of 1 or more opens the frame; the value is not kept, so the property goes on reading 0.
void CQuillonCtrl::SetPropertyPages(SHORT nNewValue)
{
    if (nNewValue < 1) return;
    if (SUCCEEDED(ShowSitePropertyFrame())) return;   // the host showed its own frame
    HWND parent = GetInPlaceParentWindow();
    IUnknown* object = static_cast<IDispatch*>(this);
    HWND owner = CWnd::GetSafeOwner_(parent, nullptr);
    LCID lcid = AmbientLocaleID();
    ULONG cPages = 0;
    LPCLSID pages = GetPropPageIDs(cPages);
    RECT rcParent{}, rcOwner{};
    if (parent) ::GetWindowRect(parent, &rcParent);
    if (owner) ::GetWindowRect(owner, &rcOwner);
    CString caption = GetUserType();
    PreModalDialog(owner);
    OleCreatePropertyFrame(owner, static_cast<UINT>(rcParent.left - rcOwner.left), static_cast<UINT>(rcParent.top - rcOwner.top),
                           caption, 1, &object, cPages, pages, lcid, 0, nullptr);
    PostModalDialog(owner);
}

void CQuillonCtrl::AboutBox()
{
    CDialogEx dlgAbout(IDD_ABOUTBOX_QUILLON);
    dlgAbout.DoModal();
}
