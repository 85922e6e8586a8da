// Auto-complete: the Suggest pass that fills and opens the list, the Append pass that completes the
// edit's text from the first matching item, and the candidates the list holds.
#include "control/QuillonCtrl.h"
#include "droplist/CaseBlindSort.h"
#include "droplist/DropList.h"
#include "droplist/ListItem.h"

namespace {
constexpr OLE_COLOR kSysWindow = 0x80000005, kSysBtnText = 0x80000012, kSysHighlight = 0x8000000D,
                    kSysHighlightText = 0x8000000E;
} // namespace

const CString& CQuillonCtrl::ItemAt(int index) const { return static_cast<const CListItem*>(m_items[index])->GetText(); }

bool CQuillonCtrl::IsCaseBlindAscending(const std::vector<SHORT>& list) { return m_itemIndex.IsCaseBlindAscending(list); }

void CQuillonCtrl::AutoSuggest(int nCaret)
{
    if (!m_bEditCreated || !m_bListCreated) {
        HideList();
        return;
    }
    const CString strEdit = m_edit.GetWindowText();
    m_strText = strEdit;
    if (m_nAutoFindSize <= 0 || nCaret < m_nAutoFindSize || (m_nAutoComplete != enumAuto::AutoSuggest && m_nAutoComplete != AutoBoth)) {
        HideList();
        return;
    }
    EnsureSorted();
    m_dropList.ClearCandidates();
    m_itemIndex.FindExtending(strEdit, m_bMatchCase, m_dropList.m_autoItems);
    if (m_dropList.m_autoItems.empty()) {
        HideList();
        return;
    }
    CDropList& list = m_dropList;
    list.m_rgbItemBack = TranslateColor(kSysWindow);
    list.m_rgbItemText = TranslateColor(kSysBtnText);
    list.m_rgbHighBack = TranslateColor(kSysHighlight);
    list.m_rgbHighText = TranslateColor(kSysHighlightText);
    list.m_rgbFrame = TranslateColor(m_clrBorder);
    list.m_rgbBarBack = TranslateColor(m_clrScrollBack);
    list.m_rgbBarBackTo = TranslateColor(m_clrScrollBackTo);
    list.m_rgbBarFore = TranslateColor(m_clrScrollFore);
    list.m_nBarStyle = static_cast<USHORT>(m_nScrollStyle); // its put keeps it to the three styles
    list.m_nTextIndent = m_nInsetLeft;
    list.m_bSortCandidates = m_bSorted;
    list.m_bIgnoreRelease = TRUE;
    list.Show();
}

SHORT CQuillonCtrl::AutoAppend(int nCaret)
{
    if (!m_bEditCreated) return -1;
    const CString strTyped = m_edit.GetWindowText();
    m_strText = strTyped;
    if (m_nAutoFindSize <= 0 || nCaret < m_nAutoFindSize || (m_nAutoComplete != enumAuto::AutoAppend && m_nAutoComplete != AutoBoth))
        return -1;
    EnsureSorted();
    const CString strHead = strTyped.Left(nCaret);
    // A caret past the text's end leaves a head shorter than nCaret, which no item's first nCaret units equal.
    if (strHead.GetLength() < nCaret) return -1;
    const int found = m_itemIndex.FindFirstStarting(strHead, m_bMatchCase);
    if (found < 0) return -1;
    // The typed part keeps the case the user typed; only the rest comes from the item.
    m_strText = strHead + ItemAt(found).Mid(nCaret);
    if (m_bEditCreated && AmbientUserMode()) m_edit.SetWindowText(m_strText);
    return static_cast<SHORT>(found); // an item index, below the array's limit
}

const CString& CDropList::GetCandidateText(int nItem) const { return m_pCtrl->ItemAt(m_autoItems[nItem]); }

SHORT CDropList::GetSourceIndex(int nItem) const
{
    return nItem >= 0 && nItem < static_cast<int>(m_autoItems.size()) ? m_autoItems[nItem] : SHORT(-1);
}

// The items' own sort, over the candidates, so that candidates that compare equal end in the same order.
void CDropList::SortCandidates(int nLeft, int nRight)
{
    CaseBlindQuickSort(
        nLeft, nRight, [this](int i) -> const CString& { return GetCandidateText(i); },
        [this](int i, int j) { std::swap(m_autoItems[i], m_autoItems[j]); });
}
