// CDropList: the popup list of auto-complete candidates under the control: its window, placement,
// painting with a scroll bar of its own, and its mouse and key handling.
#pragma once
#include <vector>
#include "framework/dc.h"

class CQuillonCtrl;

class CDropList : public CWnd {
public:
    CDropList() = default;
    ~CDropList() override;

    // Placement and opening (DropList.cpp)
    void Show();
    void Hide();
    void PlaceList();
    void OnSetFocus(CWnd* pOldWnd);

    // Candidates (AutoComplete.cpp)
    void ClearCandidates() { m_autoItems.clear(); }
    void SortCandidates(int nLeft, int nRight);
    const CString& GetCandidateText(int nItem) const;
    SHORT GetSourceIndex(int nItem) const;

    // Painting (ListPaint.cpp)
    void OnPaint();
    void DrawRows(CDC* pDC, const CRect& rcClient);
    void DrawRow(CDC* pDC, int nItem, CRect rcRow);
    void DrawScrollBar(CDC* pDC, const CRect& rcClient);
    void LayoutScrollBar(const CRect& rcClient);
    void BuildTrackPattern();
    void DrawArrowButton(CDC* pDC, BOOL bPressed, int nDirection, const CRect& rc);
    void DrawThumbAndTrack(CDC* pDC, const CRect& rcThumb);
    void DrawModernFace(CDC* pDC, BOOL bPressed, SHORT nFill, const CRect& rc);
    void DrawListFrame(CDC* pDC, const CRect& rcClient);

    // Input (ListInput.cpp)
    void OnLButtonDown(UINT nFlags, CPoint point);
    void OnLButtonUp(UINT nFlags, CPoint point);
    void OnMouseMove(UINT nFlags, CPoint point);
    void OnTimer(UINT_PTR nIDEvent);
    void OnListKey(UINT nKey);
    void OnListWheel(SHORT zDelta);
    void BarPress(int x, int y);
    BOOL TrackPointer(int x, int y);
    void HotTrack(int x, int y);
    void ScrollList(int nAction, int nPos = 0);
    void ThumbToTop(int nAction);
    void InvalidateRows();
    void PassClickOn(UINT nFlags);

    CQuillonCtrl* m_pCtrl = nullptr;
    COLORREF m_rgbItemBack = 0, m_rgbItemText = 0, m_rgbFrame = 0, m_rgbHighBack = 0, m_rgbHighText = 0,
             m_rgbBarBack = 0, m_rgbBarBackTo = 0, m_rgbBarFore = 0;
    BOOL m_bShown = FALSE, m_bIgnoreRelease = FALSE, m_bSortCandidates = FALSE;
    USHORT m_nBarStyle = 0;
    SHORT m_nHotItem = -1, m_nTextIndent = 0, m_nVisibleRows = 0, m_nTopItem = 0, m_nItemCount = 0;
    SHORT m_nPadTop = 1, m_nPadBottom = 1, m_nPadLeft = 1, m_nPadRight = 1;
    SHORT m_nScrollMin = 0, m_nScrollMax = 32767, m_nScrollPos = 0;
    BOOL m_bUpHeld = FALSE, m_bDownHeld = FALSE;
    SHORT m_nThumbSize = 8;
    BOOL m_bPageUpHeld = FALSE, m_bPageDownHeld = FALSE, m_bThumbHeld = FALSE;
    SHORT m_nDragPos = 0;
    COLORREF m_rgbPatternFor = 0;
    BOOL m_bUpSunken = FALSE, m_bDownSunken = FALSE, m_bFirstTick = TRUE;
    CRect m_rcBar, m_rcUp, m_rcDown, m_rcThumb, m_rcPageUp, m_rcPageDown;
    CRect m_rcThumbStart, m_rcThumbNow;
    CPoint m_ptPress;
    CBitmap* m_pPattern = nullptr;
    CBitmap* m_pBuffer = nullptr;
    int m_nBufferWidth = 0, m_nBufferHeight = 0;
    // The candidates, each as the index of its item in the control's array, in the order shown.
    // Indices rather than copies of the texts: an open list closes before any item it shows can
    // change, and the next search builds the candidates anew.
    std::vector<SHORT> m_autoItems;
    CRect m_rcScreen;

    DECLARE_MESSAGE_MAP()

private:
    BOOL HasBar() const { return m_nScrollMax > m_nScrollMin; }
    CRect RowArea() const;
    CRect RowRect(int nSlot, int nRowHeight, const CRect& rcClient) const;
    void FillTrack(CDC* pDC, const CRect& rc);
    void DrawEdges(CDC* pDC, int nSet, const CRect& rc);
    void TakeHot();
    void MoveViewTo(int nNew);
    void EndPresses();
};
