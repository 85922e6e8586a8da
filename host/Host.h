// CHost: the container: ambient properties, forms, control sites and persistence by ProgID.
#pragma once
#include <functional>
#include <memory>
#include <vector>
#include "host/ControlSite.h"

class CForm {
public:
    CForm(CHost& host, const RECT& rc) : m_host(host), m_rc(rc) {}
    // Makes a control through its class factory and resets it (a new control on the form).
    CControlSite* Create(const CString& progID, const RECT& rc, HRESULT* phr = nullptr);
    // Makes a control and loads it from a property bag's text ("" is an empty bag).
    CControlSite* Load(const CString& progID, const CString& bagText, const RECT& rc, HRESULT* phr = nullptr);
    const RECT& Rect() const { return m_rc; }
    const std::vector<std::unique_ptr<CControlSite>>& Sites() const { return m_sites; }

private:
    CControlSite* Make(const CString& progID, const RECT& rc, HRESULT* phr);
    CHost& m_host;
    RECT m_rc;
    std::vector<std::unique_ptr<CControlSite>> m_sites;
};

class CHost {
public:
    CHost();
    ~CHost();

    CForm* NewForm(const RECT& rc);

    // Ambient properties, answered to every site at each request.
    BOOL m_bUserMode = TRUE;
    OLE_COLOR m_clrAmbientFore = 0x80000008;
    OLE_COLOR m_clrAmbientBack = 0x80000005;
    IFont* AmbientFont() const { return m_pAmbientFont; }

    // Data-binding notifications (BoundPropertyChanged) of any control.
    std::function<void(CControlSite&, DISPID)> m_onPropertyChanged;

private:
    std::vector<std::unique_ptr<CForm>> m_forms;
    IFont* m_pAmbientFont = nullptr;
};
