// CHost and CForm: the container's ambient properties and the making of controls by ProgID.
#include "host/Host.h"
#include "com/objbase.h"

CHost::CHost()
{
    FONTDESC fd{sizeof(FONTDESC), u"MS Sans Serif", {}, FW_NORMAL, 0, FALSE, FALSE, FALSE};
    fd.cySize.int64 = 82500; // 8.25 pt
    OleCreateFontIndirect(&fd, IID_IFont, reinterpret_cast<void**>(&m_pAmbientFont));
}

CHost::~CHost()
{
    m_forms.clear();
    if (m_pAmbientFont) m_pAmbientFont->Release();
}

CForm* CHost::NewForm(const RECT& rc)
{
    m_forms.push_back(std::make_unique<CForm>(*this, rc));
    return m_forms.back().get();
}

CControlSite* CForm::Make(const CString& progID, const RECT& rc, HRESULT* phr)
{
    CLSID clsid;
    IUnknown* control = nullptr;
    HRESULT hr = CLSIDFromProgID(progID, &clsid);
    if (SUCCEEDED(hr)) hr = CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, reinterpret_cast<void**>(&control));
    if (phr) *phr = hr;
    if (FAILED(hr)) return nullptr;
    m_sites.push_back(std::make_unique<CControlSite>(m_host, control, rc));
    control->Release();
    return m_sites.back().get();
}

CControlSite* CForm::Create(const CString& progID, const RECT& rc, HRESULT* phr)
{
    CControlSite* site = Make(progID, rc, phr);
    if (site) {
        HRESULT hr = site->InitNew();
        if (phr) *phr = hr;
    }
    return site;
}

CControlSite* CForm::Load(const CString& progID, const CString& bagText, const RECT& rc, HRESULT* phr)
{
    CControlSite* site = Make(progID, rc, phr);
    if (site) {
        HRESULT hr = site->Load(bagText);
        if (phr) *phr = hr;
    }
    return site;
}
