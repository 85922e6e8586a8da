// CDC and the GDI object wrappers of MFC (CGdiObject, CPen, CBrush, CFont, CBitmap), and the
// paint and client DCs of a window.
#pragma once
#include "gdi/wingdi.h"
#include "wnd.h"

class CGdiObject {
public:
    CGdiObject() = default;
    virtual ~CGdiObject() { DeleteObject(); }
    CGdiObject(const CGdiObject&) = delete;
    CGdiObject& operator=(const CGdiObject&) = delete;
    HGDIOBJ m_hObject = nullptr;
    HGDIOBJ GetSafeHandle() const { return m_hObject; }
    BOOL DeleteObject();
    BOOL Attach(HGDIOBJ h) { m_hObject = h; return h != nullptr; }
    HGDIOBJ Detach() { HGDIOBJ h = m_hObject; m_hObject = nullptr; return h; }
};

class CPen : public CGdiObject {
public:
    CPen() = default;
    CPen(int nPenStyle, int nWidth, COLORREF crColor) { CreatePen(nPenStyle, nWidth, crColor); }
    BOOL CreatePen(int nPenStyle, int nWidth, COLORREF crColor) { return Attach(::CreatePen(nPenStyle, nWidth, crColor)); }
    operator HPEN() const { return static_cast<HPEN>(m_hObject); }
};

class CBrush : public CGdiObject {
public:
    CBrush() = default;
    explicit CBrush(COLORREF crColor) { CreateSolidBrush(crColor); }
    BOOL CreateSolidBrush(COLORREF crColor) { return Attach(::CreateSolidBrush(crColor)); }
    BOOL CreatePatternBrush(class CBitmap* pBitmap);
    operator HBRUSH() const { return static_cast<HBRUSH>(m_hObject); }
};

class CFont : public CGdiObject {
public:
    BOOL CreateFontIndirect(const LOGFONT* lpLogFont) { return Attach(::CreateFontIndirect(lpLogFont)); }
    operator HFONT() const { return static_cast<HFONT>(m_hObject); }
    static CFont* FromHandle(HFONT hFont);
};

class CBitmap : public CGdiObject {
public:
    BOOL CreateCompatibleBitmap(class CDC* pDC, int nWidth, int nHeight);
    BOOL CreateBitmap(int nWidth, int nHeight, UINT nPlanes, UINT nBitcount, const void* lpBits)
    {
        return Attach(::CreateBitmap(nWidth, nHeight, nPlanes, nBitcount, lpBits));
    }
    operator HBITMAP() const { return static_cast<HBITMAP>(m_hObject); }
};

class CDC {
public:
    CDC() = default;
    virtual ~CDC();
    CDC(const CDC&) = delete;
    CDC& operator=(const CDC&) = delete;
    HDC m_hDC = nullptr;
    operator HDC() const { return m_hDC; }
    HDC GetSafeHdc() const { return m_hDC; }

    BOOL CreateCompatibleDC(CDC* pDC) { m_hDC = ::CreateCompatibleDC(pDC ? pDC->m_hDC : nullptr); m_bOwned = TRUE; return m_hDC != nullptr; }
    BOOL DeleteDC();
    void Attach(HDC hDC) { m_hDC = hDC; m_bOwned = FALSE; }
    HDC Detach() { HDC h = m_hDC; m_hDC = nullptr; return h; }

    HGDIOBJ SelectObject(CGdiObject* pObject) { return ::SelectObject(m_hDC, pObject->m_hObject); }
    HGDIOBJ SelectObject(HGDIOBJ h) { return ::SelectObject(m_hDC, h); }
    HGDIOBJ SelectStockObject(int nIndex) { return ::SelectObject(m_hDC, ::GetStockObject(nIndex)); }
    COLORREF SetTextColor(COLORREF c) { return ::SetTextColor(m_hDC, c); }
    COLORREF SetBkColor(COLORREF c) { return ::SetBkColor(m_hDC, c); }
    int SetBkMode(int nBkMode) { return ::SetBkMode(m_hDC, nBkMode); }
    void FillRect(LPCRECT lpRect, CBrush* pBrush) { ::FillRect(m_hDC, lpRect, static_cast<HBRUSH>(pBrush->m_hObject)); }
    void FillSolidRect(LPCRECT lpRect, COLORREF clr);
    BOOL MoveTo(int x, int y) { return ::MoveToEx(m_hDC, x, y, nullptr); }
    BOOL LineTo(int x, int y) { return ::LineTo(m_hDC, x, y); }
    BOOL Polyline(const POINT* lpPoints, int nCount) { return ::Polyline(m_hDC, lpPoints, nCount); }
    BOOL Polygon(const POINT* lpPoints, int nCount) { return ::Polygon(m_hDC, lpPoints, nCount); }
    BOOL Rectangle(int x1, int y1, int x2, int y2) { return ::Rectangle(m_hDC, x1, y1, x2, y2); }
    BOOL Ellipse(int x1, int y1, int x2, int y2) { return ::Ellipse(m_hDC, x1, y1, x2, y2); }
    COLORREF SetPixel(int x, int y, COLORREF c) { return ::SetPixel(m_hDC, x, y, c); }
    COLORREF GetPixel(int x, int y) const { return ::GetPixel(m_hDC, x, y); }
    BOOL BitBlt(int x, int y, int nWidth, int nHeight, CDC* pSrcDC, int xSrc, int ySrc, DWORD dwRop)
    {
        return ::BitBlt(m_hDC, x, y, nWidth, nHeight, pSrcDC ? pSrcDC->m_hDC : nullptr, xSrc, ySrc, dwRop);
    }
    BOOL StretchBlt(int x, int y, int nWidth, int nHeight, CDC* pSrcDC, int xSrc, int ySrc, int nSrcWidth,
                    int nSrcHeight, DWORD dwRop)
    {
        return ::StretchBlt(m_hDC, x, y, nWidth, nHeight, pSrcDC ? pSrcDC->m_hDC : nullptr, xSrc, ySrc, nSrcWidth, nSrcHeight, dwRop);
    }
    BOOL PatBlt(int x, int y, int nWidth, int nHeight, DWORD dwRop) { return ::PatBlt(m_hDC, x, y, nWidth, nHeight, dwRop); }
    int DrawText(const CString& str, LPRECT lpRect, UINT nFormat)
    {
        return ::DrawText(m_hDC, str.GetString(), str.GetLength(), lpRect, nFormat);
    }
    CSize GetTextExtent(const CString& str) const;
    BOOL DrawIcon(int x, int y, HICON hIcon) { return ::DrawIcon(m_hDC, x, y, hIcon); }

    static CDC* FromHandle(HDC hDC);

protected:
    BOOL m_bOwned = FALSE;
};

// Selects an object into a DC for the length of a scope, and puts back what it displaced.
class CSelectObject {
public:
    CSelectObject(CDC* pDC, CGdiObject* pObject) : CSelectObject(pDC, pObject->m_hObject) {}
    CSelectObject(CDC* pDC, HGDIOBJ hObject) : m_pDC(pDC), m_hOld(pDC->SelectObject(hObject)) {}
    // Puts back at the end of the scope what a selection made elsewhere displaced (SelectStockFont).
    static CSelectObject Restoring(CDC* pDC, CGdiObject* pOld) { return CSelectObject(pDC, pOld, 0); }
    ~CSelectObject()
    {
        if (m_hOld) m_pDC->SelectObject(m_hOld);
    }
    CSelectObject(const CSelectObject&) = delete;
    CSelectObject& operator=(const CSelectObject&) = delete;

private:
    CSelectObject(CDC* pDC, CGdiObject* pOld, int) : m_pDC(pDC), m_hOld(pOld ? pOld->m_hObject : nullptr) {}
    CDC* m_pDC;
    HGDIOBJ m_hOld;
};

// BeginPaint and EndPaint around a WM_PAINT.
class CPaintDC : public CDC {
public:
    explicit CPaintDC(CWnd* pWnd);
    ~CPaintDC() override;
    PAINTSTRUCT m_ps{};
private:
    HWND m_hWnd;
};

// GetDC and ReleaseDC of a window.
class CClientDC : public CDC {
public:
    explicit CClientDC(CWnd* pWnd);
    ~CClientDC() override;
private:
    HWND m_hWnd;
};

// The WM_CTLCOLOR thunk: wraps the DC and the child and asks the class's OnCtlColor.
template <class T>
LRESULT AfxHandleCtlColor(T* self, WPARAM wParam, LPARAM lParam, UINT nCtlColor)
{
    CDC dc;
    dc.Attach(reinterpret_cast<HDC>(wParam));
    HBRUSH brush = self->OnCtlColor(&dc, CWnd::FromHandle(reinterpret_cast<HWND>(lParam)), nCtlColor);
    dc.Detach();
    return reinterpret_cast<LRESULT>(brush);
}
