// CDropList: the popup window made once per control, its row height, where it opens, and how it
// opens and closes; the control's side of it (CreateDropList, GetRowHeight, HideList).
#include "droplist/DropList.h"
#include <algorithm>
#include "control/QuillonCtrl.h"
#include "droplist/ListGeometry.h"

BEGIN_MESSAGE_MAP(CDropList, CWnd)
    ON_WM_PAINT()
    ON_WM_LBUTTONDOWN()
    ON_WM_LBUTTONUP()
    ON_WM_MOUSEMOVE()
    ON_WM_TIMER()
    ON_WM_SETFOCUS()
END_MESSAGE_MAP()

namespace {
// No CS_DBLCLKS: a double click reaches the list as two presses.
constexpr UINT kListClassStyle = CS_VREDRAW | CS_HREDRAW | CS_SAVEBITS | CS_BYTEALIGNCLIENT;
} // namespace

CDropList::~CDropList()
{
    delete m_pPattern;
    delete m_pBuffer;
}

BOOL CQuillonCtrl::CreateDropList()
{
    if (m_bListCreated || !AmbientUserMode() || !m_strListClass.IsEmpty()) return m_bListCreated;
    // The class name is kept even when the window cannot be made, so that no later paint tries again.
    m_strListClass = AfxRegisterWndClass(kListClassStyle);
    if (m_strListClass.IsEmpty()) return FALSE;
    m_bListCreated = m_dropList.CreateEx(0, m_strListClass, u"", WS_POPUP, 1, 1, 10, 10, m_hWnd, 0);
    if (m_bListCreated) {
        m_dropList.ShowWindow(SW_HIDE);
        m_dropList.m_pCtrl = this;
    }
    return m_bListCreated;
}

SHORT CQuillonCtrl::GetRowHeight()
{
    CDC* pDC = GetDC();
    if (!pDC) return static_cast<SHORT>(m_nListOffset + 2); // nothing measured: a row without text height
    CRect measured(0, 0, 0, 0);
    {
        auto font = CSelectObject::Restoring(pDC, SelectStockFont(pDC));
        pDC->DrawText(CString(u"M"), &measured, DT_CALCRECT | DT_VCENTER);
    }
    ReleaseDC(pDC);
    // The measured height is taken as an unsigned 16-bit value, the row height as a short.
    return static_cast<SHORT>(m_nListOffset + 2 + static_cast<USHORT>(measured.bottom - measured.top));
}

void CQuillonCtrl::HideList()
{
    if (m_bListCreated) m_dropList.Hide();
    InvalidateControl(nullptr, TRUE);
}

void CDropList::PlaceList()
{
    const bool bVirtual = ::GetSystemMetrics(SM_CMONITORS) >= 2;
    const listgeo::ScreenSize screen{::GetSystemMetrics(bVirtual ? SM_CXVIRTUALSCREEN : SM_CXSCREEN),
                                     ::GetSystemMetrics(bVirtual ? SM_CYVIRTUALSCREEN : SM_CYSCREEN)};
    m_nPadTop = m_nPadBottom = m_nPadLeft = m_nPadRight = 1;
    m_nTopItem = 0;
    m_nHotItem = -1;
    // The candidates never exceed the item array's limit, so the count fits a short.
    m_nItemCount = static_cast<SHORT>(m_autoItems.size());
    m_nVisibleRows = static_cast<SHORT>(std::min<int>(m_nItemCount, listgeo::kMaxVisibleRows));
    CRect rcControl;
    m_pCtrl->GetWindowRect(&rcControl);
    int nHeight = listgeo::ContentHeight(m_pCtrl->GetRowHeight(), m_nVisibleRows, m_nPadTop, m_nPadBottom);
    m_rcScreen = listgeo::PlaceRect(rcControl, screen, nHeight);
    if (m_bSortCandidates && !m_autoItems.empty() && !m_pCtrl->IsCaseBlindAscending(m_autoItems))
        SortCandidates(0, static_cast<int>(m_autoItems.size()) - 1);
}

void CDropList::Show()
{
    PlaceList();
    m_bShown = TRUE;
    // Shown without SWP_NOACTIVATE, the popup is activated; its WM_SETFOCUS and the SetFocus below
    // bring the focus back to the edit, which keeps taking the keys while the list is open.
    SetWindowPos(&wndTop, m_rcScreen.left, m_rcScreen.top, m_rcScreen.Width(), m_rcScreen.Height(), SWP_SHOWWINDOW);
    if (m_pCtrl->m_bEditCreated) m_pCtrl->m_edit.SetFocus();
    SetCapture();
    InvalidateRect(nullptr, FALSE);
}

// A press in progress is ended too (its timer stopped and its flags cleared): once the list is gone
// its release goes elsewhere, and a repeat timer left running would scroll a hidden list.
void CDropList::Hide()
{
    if (::GetCapture() == m_hWnd) ::ReleaseCapture();
    m_bShown = FALSE;
    EndPresses();
    ShowWindow(SW_HIDE);
    m_pCtrl->InvalidateControl(nullptr, TRUE);
}

// The list never keeps the focus: the control passes it on to the edit.
void CDropList::OnSetFocus(CWnd*)
{
    m_pCtrl->SetFocus();
    Default();
}
