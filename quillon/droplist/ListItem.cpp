// CQuillonCtrl: the item array, its limit and error reports, and the deferred sort.
#include "control/QuillonCtrl.h"
#include "droplist/CaseBlindSort.h"
#include "droplist/ListItem.h"
#include <utility>

namespace {
const CString& ItemText(const CObArray& items, int i) { return static_cast<const CListItem*>(items[i])->GetText(); }
} // namespace

SHORT CQuillonCtrl::AddItem(LPCTSTR strText) { return AdoptItem(strText); }

// The text is taken over by the new item, not copied: a document's reader hands over thousands.
SHORT CQuillonCtrl::AdoptItem(CString strText)
{
    if (m_items.GetSize() >= kMaxItems) {
        FireCtrlError(errListFull, 0);
        return -1;
    }
    CListItem* pItem = nullptr;
    try {
        pItem = new CListItem(std::move(strText));
        m_items.InsertAt(m_items.GetSize(), pItem);
    } catch (CMemoryException* e) {
        delete pItem;
        e->Delete();
        ThrowError(CTL_E_OUTOFMEMORY, AFX_IDP_E_OUTOFMEMORY);
    }
    m_bItemsDirty = TRUE;
    m_itemIndex.Invalidate();
    InvalidateControl(nullptr, TRUE);
    return static_cast<SHORT>(m_items.GetSize() - 1);
}

BOOL CQuillonCtrl::RemoveItem(SHORT nIndex)
{
    if (nIndex < 0 || nIndex >= m_items.GetSize()) {
        FireCtrlError(errBadIndex, nIndex);
        return FALSE;
    }
    HideList();
    delete m_items[nIndex];
    m_items.RemoveAt(nIndex, 1);
    m_bItemsDirty = TRUE;
    m_itemIndex.Invalidate();
    InvalidateControl(nullptr, TRUE);
    SetModifiedFlag(TRUE);
    return TRUE;
}

void CQuillonCtrl::ClearItems() { DeleteItems(TRUE); }

SHORT CQuillonCtrl::ItemCount() { return static_cast<SHORT>(m_items.GetSize()); }

void CQuillonCtrl::DeleteItems(BOOL bCloseList)
{
    for (int i = 0; i < m_items.GetSize(); ++i) delete m_items[i];
    m_items.SetSize(0);
    m_bItemsDirty = TRUE;
    m_itemIndex.Invalidate();
    if (!bCloseList) return;
    if (m_bListCreated) m_dropList.Hide();
    InvalidateControl(nullptr, TRUE);
}

void CQuillonCtrl::EnsureSorted()
{
    if (!m_bSorted || !m_bItemsDirty) return;
    if (m_items.GetSize() >= 2) {
        QuickSortItems(0, static_cast<SHORT>(m_items.GetSize() - 1));
        m_itemIndex.Invalidate();
    }
    m_bItemsDirty = FALSE;
}

void CQuillonCtrl::QuickSortItems(SHORT nLeft, SHORT nRight)
{
    CaseBlindQuickSort(
        nLeft, nRight, [this](int i) -> const CString& { return ItemText(m_items, i); },
        [this](int i, int j) {
            CObject* swap = m_items[i];
            m_items.SetAt(i, m_items[j]);
            m_items.SetAt(j, swap);
        });
}

CString CQuillonCtrl::GetItemText(SHORT index)
{
    if (index < 0 || index >= m_items.GetSize()) {
        FireCtrlError(errBadIndex, index);
        return CString();
    }
    return ItemText(m_items, index);
}

void CQuillonCtrl::SetTextFromItem(SHORT index)
{
    bool valid = index >= 0 && index < m_items.GetSize();
    m_strText = valid ? GetItemText(index) : CString();
    if (m_bEditCreated && AmbientUserMode()) {
        SetEditText(m_strText);
        if (valid) m_edit.SetSel(0, -1);
    }
    InvalidateControl(nullptr, TRUE);
}
