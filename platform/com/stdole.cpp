// OLE Automation's type library, stdole2.tlb, as far as controls import it.
#include "typeinfo.h"
#include "ocidl.h"

namespace {

constexpr GUID kOleColorAlias = {0x66504301, 0xBE0F, 0x101A, {0x8B, 0xBB, 0x00, 0xAA, 0x00, 0x30, 0x0C, 0xAB}};

TypeLibType Alias(const GUID& guid, const char16_t* name, VARTYPE vt)
{
    return TypeLibType{TKIND_ALIAS, guid, name, {}, 0, {}, {}, vt};
}

TypeLibSource BuildSource()
{
    TypeLibSource lib{LIBID_StdOle, 2, 0, u"stdole", u"OLE Automation", {}, {}};
    lib.types.push_back(Alias(kOleColorAlias, u"OLE_COLOR", VT_UI4));
    // Stand-in: OLE_HANDLE's own uuid is not given; containers know the alias by its name.
    lib.types.push_back(Alias(GUID{}, u"OLE_HANDLE", VT_I4));
    lib.types.push_back({TKIND_DISPATCH, IID_IFontDisp, u"IFontDisp", {}, TYPEFLAG_FDISPATCHABLE, {}, {}, VT_EMPTY});
    lib.types.push_back({TKIND_DISPATCH, IID_IPictureDisp, u"IPictureDisp", {}, TYPEFLAG_FDISPATCHABLE, {}, {}, VT_EMPTY});
    return lib;
}

} // namespace

const TypeLibSource& StdOleTypeLibSource()
{
    static const TypeLibSource source = BuildSource();
    return source;
}
