// QuillonLib's source: names, dispids, kinds and types from the control's maps; enumerated types,
// parameter names and member flags added here.
#include "server/QuillonTypeLib.h"
#include <map>
#include "control/QuillonCtrl.h"
#include "server/QuillonApp.h"

namespace {

struct EnumSource {
    const char16_t* name;
    std::vector<std::pair<const char16_t*, const char16_t*>> symbols; // symbol, help string; values from 0
};

const std::vector<EnumSource>& Enumerations()
{
    static const std::vector<EnumSource> enums{
        {u"enumBorder", {{u"BorderRegular", u"Regular"}, {u"BorderNone", u"None"}, {u"BorderRaised", u"Raised"}, {u"BorderLowered", u"Lowered"}}},
        {u"enumArrowType", {{u"ArrowSmall", u"Small Triangle"}, {u"ArrowLarge", u"Large Triangle"}, {u"ArrowLine1", u"Line Type 1"}, {u"ArrowLine2", u"Line Type 2"}}},
        {u"enumCaseType", {{u"CaseNone", u"None"}, {u"CaseUpper", u"Upper"}, {u"CaseLower", u"Lower"}}},
        {u"enumAuto", {{u"AutoNone", u"None"}, {u"AutoAppend", u"Append"}, {u"AutoSuggest", u"Suggest"}, {u"AutoBoth", u"Both"}}},
        {u"enumScrollStyle", {{u"ScrollRegular", u"Regular"}, {u"ScrollThin", u"Thin"}, {u"ScrollModern", u"Modern (XP)"}}},
        {u"enumAlignment", {{u"AlignLeft", u"Left Justify"}, {u"AlignRight", u"Right Justify"}, {u"AlignCenter", u"Center"}}},
        {u"enumDisplay", {{u"DisplayRegular", u"Regular"}, {u"DisplayFlat", u"Flat"}}},
        {u"enumFillType", {{u"FillSolid", u"Solid"}, {u"FillHorizontal", u"Horizontal"}, {u"FillVertical", u"Vertical"},
                           {u"FillDiagonal", u"Diagonal"}, {u"FillRevDiag", u"Reverse Diagonal"}, {u"FillHorzBump", u"Horizontal Bump"},
                           {u"FillVertBump", u"Vertical Bump"}, {u"FillDiamond", u"Diamond"}, {u"FillPyramid", u"Pyramid"},
                           {u"FillCircle", u"Circle"}, {u"FillEllipse", u"Ellipse"}, {u"FillHorzEdge", u"Horizontal Edge"},
                           {u"FillVertEdge", u"Vertical Edge"}, {u"FillVertEdge2", u"Vertical Edge 2"}}},
        {u"enumButtonStyle", {{u"ButtonRegular", u"Regular"}, {u"ButtonModern", u"Modern"}}},
        {u"enumControlStyle", {{u"StyleControl", u"Style"}, {u"StyleDefault", u"Default"}, {u"StyleFlat", u"Standard"},
                               {u"StyleXPBlue", u"XP Blue"}, {u"StyleXPOlive", u"XP Olive"}, {u"StyleVistaBlue", u"Vista Blue"}}},
        {u"enumProperties", {{u"None", u"None"}, {u"Display", u"Display"}}},
    };
    return enums;
}

// The properties declared with an enumerated type.
const std::map<std::u16string, std::u16string>& EnumeratedProperties()
{
    static const std::map<std::u16string, std::u16string> types{
        {u"BorderType", u"enumBorder"}, {u"ArrowType", u"enumArrowType"}, {u"CaseType", u"enumCaseType"},
        {u"Alignment", u"enumAlignment"}, {u"DisplayStyle", u"enumDisplay"}, {u"AutoComplete", u"enumAuto"},
        {u"ScrollStyle", u"enumScrollStyle"}, {u"ButtonFillType", u"enumFillType"}, {u"ButtonStyle", u"enumButtonStyle"},
        {u"ControlStyle", u"enumControlStyle"}, {u"PropertyPages", u"enumProperties"},
    };
    return types;
}

// Parameter names of the methods and events that take arguments, in order.
const std::map<std::u16string, std::vector<std::u16string>>& ParameterNames()
{
    static const std::map<std::u16string, std::vector<std::u16string>> names{
        {u"SetSel", {u"nStartChar", u"nEndChar", u"bNoScroll"}},
        {u"RemoveItem", {u"nIndex"}},
        {u"AddItem", {u"strText"}},
        {u"ReadFile", {u"strFileName", u"nFileInfo"}},
        {u"WriteFile", {u"strFileName", u"nFileInfo"}},
        {u"ReadXMLString", {u"nFileInfo"}},
        {u"ClickSpin", {u"nButton"}},
        {u"CtrlError", {u"nError", u"nIndex"}},
        {u"KeyDown", {u"KeyCode", u"Shift"}},
        {u"KeyPress", {u"KeyAscii"}},
        {u"KeyUp", {u"KeyCode", u"Shift"}},
        {u"MouseDown", {u"Button", u"Shift", u"x", u"y"}},
        {u"MouseMove", {u"Button", u"Shift", u"x", u"y"}},
        {u"MouseUp", {u"Button", u"Shift", u"x", u"y"}},
    };
    return names;
}

std::vector<TypeLibParam> Params(const std::u16string& member, const std::vector<VARTYPE>& types)
{
    const auto it = ParameterNames().find(member);
    std::vector<TypeLibParam> params;
    for (size_t i = 0; i < types.size(); ++i)
        params.push_back({it != ParameterNames().end() && i < it->second.size() ? it->second[i] : u"", types[i], {}});
    return params;
}

// The OLE Automation type a property's plain automation type stands for, as the control declares it:
// every colour is an OLE_COLOR, the font an IFontDisp, the drop button's picture an IPictureDisp and
// the window an OLE_HANDLE.
std::u16string StdOleType(const DispEntry& e)
{
    if (e.flags & DISPATCH_METHOD) return u"";
    if (e.vt == VT_UI4) return u"OLE_COLOR";
    if (e.dispid == DISPID_FONT) return u"IFontDisp";
    if (e.vt == VT_DISPATCH) return u"IPictureDisp";
    if (e.dispid == DISPID_HWND) return u"OLE_HANDLE";
    return u"";
}

constexpr WORD kTextFlags = VARFLAG_FBINDABLE | VARFLAG_FREQUESTEDIT | VARFLAG_FDISPLAYBIND | VARFLAG_FDEFAULTBIND;
constexpr WORD kEnumeratedFlags = VARFLAG_FBINDABLE | VARFLAG_FREQUESTEDIT;

TypeLibType DispatchInterface()
{
    TypeLibType t{TKIND_DISPATCH, DIID__DQuillon, u"_DQuillon", u"Dispatch interface for Quillon Control", TYPEFLAG_FHIDDEN | TYPEFLAG_FDISPATCHABLE, {}, {}, VT_EMPTY};
    for (const DispEntry& e : CQuillonCtrl::DispatchMap().Entries()) {
        if (e.dispid == DISPID_TEXT) continue; // the stock text: only its dispid is used, to notify the host
        const std::u16string name = e.name.str();
        TypeLibMember m;
        m.kind = e.flags & DISPATCH_METHOD ? TypeLibMember::Method : TypeLibMember::Property;
        m.name = name;
        m.memid = e.dispid;
        m.vt = e.vt;
        if (auto it = EnumeratedProperties().find(name); it != EnumeratedProperties().end()) {
            m.userType = it->second;
            m.wFlags = kEnumeratedFlags;
        } else {
            m.userType = StdOleType(e);
        }
        if (name == u"Text" || e.dispid == DISPID_VALUE) m.wFlags = kTextFlags; // the control's text and _Text
        m.params = Params(name, e.params);
        t.members.push_back(std::move(m));
    }
    return t;
}

TypeLibType EventInterface()
{
    TypeLibType t{TKIND_DISPATCH, DIID__DQuillonEvents, u"_DQuillonEvents", u"Event interface for Quillon Control", TYPEFLAG_FDISPATCHABLE, {}, {}, VT_EMPTY};
    for (const EventEntry& e : CQuillonCtrl::EventMap().Entries())
        t.members.push_back({TypeLibMember::Method, e.name.str(), e.dispid, VT_EMPTY, {}, 0, Params(e.name.str(), e.params), 0, {}});
    return t;
}

TypeLibSource BuildSource()
{
    TypeLibSource lib{LIBID_QuillonLib, kLibVerMajor, kLibVerMinor, u"QuillonLib", u"Quillon (2.0) Masked Edit ActiveX Control", {},
                      {&StdOleTypeLibSource()}};
    for (const EnumSource& e : Enumerations()) {
        TypeLibType t{TKIND_ENUM, {}, e.name, {}, 0, {}, {}, VT_EMPTY};
        for (size_t i = 0; i < e.symbols.size(); ++i)
            // Constants are numbered as the compiler numbers them, from 0x40000000 in declaration order.
            t.members.push_back({TypeLibMember::Constant, e.symbols[i].first, static_cast<MEMBERID>(0x40000000 + i), VT_I4,
                                 {}, 0, {}, static_cast<LONG>(i), e.symbols[i].second});
        lib.types.push_back(std::move(t));
    }
    lib.types.push_back(DispatchInterface());
    lib.types.push_back(EventInterface());
    lib.types.push_back({TKIND_COCLASS, CQuillonCtrl::clsid, u"Quillon", u"Quillon Control", TYPEFLAG_FCANCREATE | TYPEFLAG_FCONTROL, {},
                         {{u"_DQuillon", IMPLTYPEFLAG_FDEFAULT}, {u"_DQuillonEvents", IMPLTYPEFLAG_FDEFAULT | IMPLTYPEFLAG_FSOURCE}}, VT_EMPTY});
    return lib;
}

} // namespace

const TypeLibSource& QuillonTypeLibSource()
{
    static const TypeLibSource source = BuildSource();
    return source;
}

// The control reads its library through the registry, at the version it was built with.
HRESULT CQuillonCtrl::GetTypeLib(ITypeLib** ppTLib) { return LoadRegTypeLib(LIBID_QuillonLib, kLibVerMajor, kLibVerMinor, 0, ppTLib); }

const IID& CQuillonCtrl::GetPrimaryDispatchIID() const { return DIID__DQuillon; }
const IID& CQuillonCtrl::GetEventsIID() const { return DIID__DQuillonEvents; }
