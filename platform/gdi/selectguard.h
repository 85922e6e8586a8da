// Selects an object into a device context for the length of a scope and puts back what it
// displaced: the guard for code that works on a raw HDC, as CSelectObject is for a CDC.
#pragma once
#include "wingdi.h"

class CScopedSelect {
public:
    CScopedSelect(HDC hdc, HGDIOBJ h) : m_hdc(hdc), m_hOld(::SelectObject(hdc, h)) {}
    ~CScopedSelect()
    {
        if (m_hOld) ::SelectObject(m_hdc, m_hOld);
    }
    CScopedSelect(const CScopedSelect&) = delete;
    CScopedSelect& operator=(const CScopedSelect&) = delete;

private:
    HDC m_hdc;
    HGDIOBJ m_hOld;
};
