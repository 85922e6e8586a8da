// OleSaveToStream and OleLoadFromStream for the standard font and picture objects.
#include "objbase.h"
#include "ocidl.h"
#include "stream.h"

namespace {

HRESULT CreateStdObject(REFCLSID clsid, IPersistStream** pp)
{
    if (clsid == CLSID_StdFont) {
        FONTDESC fd{sizeof(FONTDESC), u"", {}, FW_NORMAL, 0, FALSE, FALSE, FALSE};
        return OleCreateFontIndirect(&fd, IID_IPersistStream, reinterpret_cast<void**>(pp));
    }
    if (clsid == CLSID_StdPicture) return OleCreatePictureIndirect(nullptr, IID_IPersistStream, TRUE, reinterpret_cast<void**>(pp));
    return REGDB_E_CLASSNOTREG;
}

} // namespace

HRESULT OleSaveToStream(IPersistStream* pPStm, IStream* pStm)
{
    if (!pPStm) { // a null object is written as the null class identifier
        return StreamWrite(pStm, &IID_NULL, sizeof(CLSID));
    }
    CLSID clsid;
    HRESULT hr = pPStm->GetClassID(&clsid);
    if (SUCCEEDED(hr)) hr = StreamWrite(pStm, &clsid, sizeof clsid);
    return SUCCEEDED(hr) ? pPStm->Save(pStm, TRUE) : hr;
}

HRESULT OleLoadFromStream(IStream* pStm, REFIID iidInterface, void** ppvObj)
{
    *ppvObj = nullptr;
    CLSID clsid;
    if (StreamRead(pStm, &clsid, sizeof clsid) != S_OK) return E_FAIL;
    if (clsid == IID_NULL) return S_FALSE;
    IPersistStream* obj = nullptr;
    HRESULT hr = CreateStdObject(clsid, &obj);
    if (SUCCEEDED(hr)) hr = obj->Load(pStm);
    if (SUCCEEDED(hr)) hr = obj->QueryInterface(iidInterface, ppvObj);
    if (obj) obj->Release();
    return hr;
}
