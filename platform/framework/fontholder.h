// CFontHolder: MFC's owner of a font object, with change notification to its control.
#pragma once
#include "com/ocidl.h"

class CFontHolder {
public:
    explicit CFontHolder(IPropertyNotifySink* pNotify) : m_pNotify(pNotify) {}
    ~CFontHolder() { ReleaseFont(); }
    CFontHolder(const CFontHolder&) = delete;
    CFontHolder& operator=(const CFontHolder&) = delete;

    // A clone of the ambient font if there is one, else a font made from the description
    // (MS Sans Serif 8.25 pt when there is none).
    void InitializeFont(const FONTDESC* pFontDesc = nullptr, LPDISPATCH pFontDispAmbient = nullptr);
    // Takes a reference to the font and listens to its changes.
    void SetFont(IFont* pNewFont);
    void ReleaseFont();
    LPFONTDISP GetFontDispatch(); // with a reference for the caller
    HFONT GetFontHandle();

    IFont* m_pFont = nullptr;

private:
    IPropertyNotifySink* m_pNotify;
    DWORD m_dwConnectCookie = 0;
};
