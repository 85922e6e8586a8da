// CFontHolder: making, swapping and releasing the font, and its notification link.
#include "fontholder.h"

void CFontHolder::InitializeFont(const FONTDESC* pFontDesc, LPDISPATCH pFontDispAmbient)
{
    IFont* font = nullptr;
    IFont* ambient = nullptr;
    if (pFontDispAmbient && SUCCEEDED(pFontDispAmbient->QueryInterface(IID_IFont, reinterpret_cast<void**>(&ambient)))) {
        ambient->Clone(&font);
        ambient->Release();
    }
    if (!font) {
        FONTDESC fallback{sizeof(FONTDESC), u"MS Sans Serif", {}, FW_NORMAL, 0, FALSE, FALSE, FALSE};
        fallback.cySize.int64 = 82500;
        OleCreateFontIndirect(pFontDesc ? pFontDesc : &fallback, IID_IFont, reinterpret_cast<void**>(&font));
    }
    SetFont(font);
    if (font) font->Release();
}

void CFontHolder::SetFont(IFont* pNewFont)
{
    if (pNewFont == m_pFont) return;
    if (pNewFont) pNewFont->AddRef();
    ReleaseFont();
    m_pFont = pNewFont;
    IConnectionPoint* cp = nullptr;
    if (m_pFont && m_pNotify && SUCCEEDED(m_pFont->QueryInterface(IID_IConnectionPoint, reinterpret_cast<void**>(&cp)))) {
        cp->Advise(m_pNotify, &m_dwConnectCookie);
        cp->Release();
    }
}

void CFontHolder::ReleaseFont()
{
    if (!m_pFont) return;
    IConnectionPoint* cp = nullptr;
    if (m_dwConnectCookie && SUCCEEDED(m_pFont->QueryInterface(IID_IConnectionPoint, reinterpret_cast<void**>(&cp)))) {
        cp->Unadvise(m_dwConnectCookie);
        cp->Release();
    }
    m_dwConnectCookie = 0;
    m_pFont->Release();
    m_pFont = nullptr;
}

LPFONTDISP CFontHolder::GetFontDispatch()
{
    LPFONTDISP disp = nullptr;
    if (m_pFont) m_pFont->QueryInterface(IID_IFontDisp, reinterpret_cast<void**>(&disp));
    return disp;
}

HFONT CFontHolder::GetFontHandle()
{
    HFONT h = nullptr;
    if (m_pFont) m_pFont->get_hFont(&h);
    return h;
}
