// CDC and the GDI object wrappers: ownership and the few members with bodies.
#include "dc.h"
#include <map>
#include <memory>

BOOL CGdiObject::DeleteObject()
{
    if (!m_hObject) return FALSE;
    BOOL ok = ::DeleteObject(m_hObject);
    m_hObject = nullptr;
    return ok;
}

BOOL CBrush::CreatePatternBrush(CBitmap* pBitmap) { return Attach(::CreatePatternBrush(static_cast<HBITMAP>(pBitmap->m_hObject))); }

BOOL CBitmap::CreateCompatibleBitmap(CDC* pDC, int nWidth, int nHeight)
{
    return Attach(::CreateCompatibleBitmap(pDC->m_hDC, nWidth, nHeight));
}

CFont* CFont::FromHandle(HFONT hFont)
{
    // Temporary wrappers that do not own the font (MFC frees its temporaries at idle time).
    static std::map<HFONT, std::unique_ptr<CFont>> temps;
    auto& p = temps[hFont];
    if (!p) p = std::make_unique<CFont>();
    p->m_hObject = hFont;
    return p.get();
}

CDC::~CDC()
{
    if (m_bOwned) DeleteDC();
}

BOOL CDC::DeleteDC()
{
    if (!m_hDC) return FALSE;
    BOOL ok = ::DeleteDC(m_hDC);
    m_hDC = nullptr;
    return ok;
}

void CDC::FillSolidRect(LPCRECT lpRect, COLORREF clr)
{
    COLORREF old = ::SetBkColor(m_hDC, clr);
    ::ExtTextOut(m_hDC, 0, 0, ETO_OPAQUE, lpRect, nullptr, 0, nullptr);
    ::SetBkColor(m_hDC, old);
}

CSize CDC::GetTextExtent(const CString& str) const
{
    SIZE size{0, 0};
    ::GetTextExtentPoint32(m_hDC, str.GetString(), str.GetLength(), &size);
    return CSize(size.cx, size.cy);
}

CDC* CDC::FromHandle(HDC hDC)
{
    static std::map<HDC, std::unique_ptr<CDC>> temps;
    auto& p = temps[hDC];
    if (!p) p = std::make_unique<CDC>();
    p->m_hDC = hDC;
    return p.get();
}

CPaintDC::CPaintDC(CWnd* pWnd) : m_hWnd(pWnd->m_hWnd) { Attach(::BeginPaint(m_hWnd, &m_ps)); }
CPaintDC::~CPaintDC() { ::EndPaint(m_hWnd, &m_ps); m_hDC = nullptr; }

CClientDC::CClientDC(CWnd* pWnd) : m_hWnd(pWnd->m_hWnd) { Attach(::GetDC(m_hWnd)); }
CClientDC::~CClientDC() { ::ReleaseDC(m_hWnd, m_hDC); m_hDC = nullptr; }
