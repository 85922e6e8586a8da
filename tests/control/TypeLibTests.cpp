// QuillonLib against the control's maps, member by member, and the site's view of the control read from it.
#include <gtest/gtest.h>
#include "Harness.h"
#include "control/QuillonCtrl.h"
#include "server/QuillonApp.h"
#include "server/QuillonTypeLib.h"
#include "com/winreg.h"

namespace {

struct Member {
    bool bFound = false;
    bool bFunction = false;
    TYPEDESC type;
    WORD wFlags = 0;
    std::vector<TYPEDESC> params;
};

class TypeLib : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(CreateTypeLibFromSource(QuillonTypeLibSource(), &m_lib), S_OK); }
    CComPtr<ITypeInfo> Info(REFGUID guid)
    {
        CComPtr<ITypeInfo> info;
        EXPECT_EQ(m_lib->GetTypeInfoOfGuid(guid, &info), S_OK);
        return info;
    }
    static MEMBERID IdOf(ITypeInfo* info, const CString& name)
    {
        LPOLESTR names[] = {const_cast<LPOLESTR>(name.GetString())};
        MEMBERID id = MEMBERID_NIL;
        info->GetIDsOfNames(names, 1, &id);
        return id;
    }
    // The variable or function with the id.
    static Member Describe(ITypeInfo* info, MEMBERID memid)
    {
        TYPEATTR* attr = nullptr;
        info->GetTypeAttr(&attr);
        Member m;
        for (UINT i = 0; i < attr->cVars; ++i) {
            VARDESC* v = nullptr;
            info->GetVarDesc(i, &v);
            if (v->memid == memid) m = {true, false, v->elemdescVar.tdesc, v->wVarFlags, {}};
            info->ReleaseVarDesc(v);
        }
        for (UINT i = 0; i < attr->cFuncs; ++i) {
            FUNCDESC* f = nullptr;
            info->GetFuncDesc(i, &f);
            if (f->memid == memid) {
                m = {true, true, f->elemdescFunc.tdesc, f->wFuncFlags, {}};
                for (SHORT p = 0; p < f->cParams; ++p) m.params.push_back(f->lprgelemdescParam[p].tdesc);
            }
            info->ReleaseFuncDesc(f);
        }
        info->ReleaseTypeAttr(attr);
        return m;
    }
    static std::vector<std::string> Names(ITypeInfo* info, MEMBERID memid)
    {
        BSTR names[8] = {};
        UINT n = 0;
        info->GetNames(memid, names, 8, &n);
        std::vector<std::string> out;
        for (UINT i = 0; i < n; ++i) out.push_back(ToUtf8(BstrToString(names[i]))), SysFreeString(names[i]);
        return out;
    }
    CComPtr<ITypeLib> m_lib;
};

} // namespace

TEST_F(TypeLib, DispatchInterfaceDeclaresEveryEntryOfTheMapWithItsIdKindAndTypes)
{
    CComPtr<ITypeInfo> info = Info(DIID__DQuillon);
    TYPEATTR* attr = nullptr;
    ASSERT_EQ(info->GetTypeAttr(&attr), S_OK);
    EXPECT_EQ(attr->typekind, TKIND_DISPATCH);
    EXPECT_EQ(attr->cFuncs + attr->cVars, 68);
    info->ReleaseTypeAttr(attr);
    for (const DispEntry& e : CQuillonCtrl::DispatchMap().Entries()) {
        if (e.dispid == DISPID_TEXT) {
            EXPECT_FALSE(Describe(info.Get(), DISPID_TEXT).bFound) << "the stock text is not declared";
            continue;
        }
        SCOPED_TRACE(ToUtf8(e.name));
        EXPECT_EQ(IdOf(info.Get(), e.name), e.dispid);
        Member m = Describe(info.Get(), e.dispid);
        ASSERT_TRUE(m.bFound);
        EXPECT_EQ(m.bFunction, (e.flags & DISPATCH_METHOD) != 0);
        if (m.type.vt == VT_USERDEFINED) {
            CComPtr<ITypeInfo> ref;
            ASSERT_EQ(info->GetRefTypeInfo(m.type.hreftype, &ref), S_OK);
            TYPEATTR* refAttr = nullptr;
            ref->GetTypeAttr(&refAttr);
            if (refAttr->typekind == TKIND_ENUM) {
                EXPECT_EQ(e.vt, VT_I2) << "an enumerated property travels as a short";
                EXPECT_EQ(m.wFlags, VARFLAG_FBINDABLE | VARFLAG_FREQUESTEDIT);
            } else if (refAttr->typekind == TKIND_ALIAS) {
                EXPECT_EQ(refAttr->tdescAlias.vt, e.vt) << "an OLE Automation alias of the map's type";
            } else {
                EXPECT_EQ(refAttr->typekind, TKIND_DISPATCH);
                EXPECT_EQ(e.vt, VT_DISPATCH);
            }
            ref->ReleaseTypeAttr(refAttr);
        } else {
            EXPECT_EQ(m.type.vt, e.vt);
        }
        ASSERT_EQ(m.params.size(), e.params.size());
        for (size_t i = 0; i < e.params.size(); ++i) EXPECT_EQ(m.params[i].vt, e.params[i]);
        for (const auto& name : Names(info.Get(), e.dispid)) EXPECT_FALSE(name.empty()) << "every parameter is named";
    }
    const WORD kTextFlags = VARFLAG_FBINDABLE | VARFLAG_FREQUESTEDIT | VARFLAG_FDISPLAYBIND | VARFLAG_FDEFAULTBIND;
    EXPECT_EQ(IdOf(info.Get(), u"text"), 46) << "names are case-blind";
    EXPECT_EQ(Describe(info.Get(), 46).wFlags, kTextFlags);
    EXPECT_EQ(IdOf(info.Get(), u"_Text"), DISPID_VALUE);
    EXPECT_EQ(Describe(info.Get(), DISPID_VALUE).wFlags, kTextFlags);
    EXPECT_EQ(Names(info.Get(), 51), (std::vector<std::string>{"SetSel", "nStartChar", "nEndChar", "bNoScroll"}));
}

TEST_F(TypeLib, EventsEnumerationsCoclassAndTheLibraryItself)
{
    CComPtr<ITypeInfo> events = Info(DIID__DQuillonEvents);
    for (const EventEntry& e : CQuillonCtrl::EventMap().Entries()) {
        Member m = Describe(events.Get(), e.dispid);
        EXPECT_TRUE(m.bFound && m.bFunction) << ToUtf8(e.name);
        ASSERT_EQ(m.params.size(), e.params.size()) << ToUtf8(e.name);
        for (size_t i = 0; i < e.params.size(); ++i) EXPECT_EQ(m.params[i].vt, e.params[i]) << ToUtf8(e.name);
    }
    EXPECT_EQ(Names(events.Get(), DISPID_KEYDOWN), (std::vector<std::string>{"KeyDown", "KeyCode", "Shift"}));

    // enumFillType through the FillType property: its last symbol and help string.
    CComPtr<ITypeInfo> dispatch = Info(DIID__DQuillon), fill;
    ASSERT_EQ(dispatch->GetRefTypeInfo(Describe(dispatch.Get(), 34).type.hreftype, &fill), S_OK);
    MEMBERID id = IdOf(fill.Get(), u"FillVertEdge2");
    VARDESC* v = nullptr;
    ASSERT_EQ(fill->GetVarDesc(FillVertEdge2, &v), S_OK);
    EXPECT_EQ(v->memid, id);
    EXPECT_EQ(v->varkind, VAR_CONST);
    EXPECT_EQ(v->lpvarValue->lVal, FillVertEdge2);
    fill->ReleaseVarDesc(v);
    BSTR name = nullptr, help = nullptr;
    fill->GetDocumentation(id, &name, &help, nullptr, nullptr);
    EXPECT_EQ(BstrToString(help), u"Vertical Edge 2");
    SysFreeString(name), SysFreeString(help);

    CComPtr<ITypeInfo> coclass = Info(CQuillonCtrl::clsid);
    INT flags = 0;
    HREFTYPE ref = 0;
    CComPtr<ITypeInfo> source;
    ASSERT_EQ(coclass->GetImplTypeFlags(1, &flags), S_OK);
    EXPECT_EQ(flags, IMPLTYPEFLAG_FDEFAULT | IMPLTYPEFLAG_FSOURCE);
    coclass->GetRefTypeOfImplType(1, &ref);
    ASSERT_EQ(coclass->GetRefTypeInfo(ref, &source), S_OK);
    EXPECT_EQ(source.Get(), events.Get());

    TLIBATTR* lib = nullptr;
    ASSERT_EQ(m_lib->GetLibAttr(&lib), S_OK);
    EXPECT_EQ(lib->guid, LIBID_QuillonLib);
    EXPECT_EQ(lib->wMajorVerNum, 2);
    EXPECT_EQ(lib->wMinorVerNum, 0);
    m_lib->ReleaseTLibAttr(lib);
    m_lib->GetDocumentation(-1, &name, &help, nullptr, nullptr);
    EXPECT_EQ(BstrToString(name), u"QuillonLib");
    EXPECT_EQ(BstrToString(help), u"Quillon (2.0) Masked Edit ActiveX Control");
    SysFreeString(name), SysFreeString(help);

    TypeLibSource broken = QuillonTypeLibSource();
    broken.types.back().impls[0].typeName = u"_DMissing";
    ITypeLib* none = nullptr;
    EXPECT_EQ(CreateTypeLibFromSource(broken, &none), E_INVALIDARG) << "a type the library lacks";
    EXPECT_EQ(none, nullptr);
}

// The control finds its library through the registry, so only while the library is registered.
TEST_F(ControlTest, ControlDescribesItselfThroughItsRegisteredLibrary)
{
    IDispatch* control = static_cast<IDispatch*>(static_cast<COleControl*>(Inside(Create())));
    ASSERT_EQ(UnRegisterTypeLib(LIBID_QuillonLib, kLibVerMajor, kLibVerMinor, 0, SYS_WIN32), S_OK);
    CComPtr<ITypeInfo> info;
    EXPECT_EQ(control->GetTypeInfo(0, 0, &info), TYPE_E_LIBNOTREGISTERED);
    ASSERT_EQ(DllRegisterServer(), S_OK);
    ASSERT_EQ(control->GetTypeInfo(0, 0, &info), S_OK);
    TYPEATTR* attr = nullptr;
    info->GetTypeAttr(&attr);
    EXPECT_EQ(attr->guid, DIID__DQuillon);
    info->ReleaseTypeAttr(attr);
    CComPtr<ITypeInfo> other, coclass;
    EXPECT_EQ(control->GetTypeInfo(1, 0, &other), DISP_E_BADINDEX);
    ASSERT_EQ(static_cast<COleControl*>(Inside(Create()))->GetClassInfo(&coclass), S_OK);
    coclass->GetTypeAttr(&attr);
    EXPECT_EQ(attr->typekind, TKIND_COCLASS);
    EXPECT_EQ(attr->guid, CQuillonCtrl::clsid);
    coclass->ReleaseTypeAttr(attr);
    RegClearClassesRoot();
}

// The site knows the control as its class information declares it: members with their kinds, types
// and parameter names, and the events, whose interface is the one point the control connects.
TEST_F(ControlTest, SiteKnowsTheControlFromItsTypeInformation)
{
    const CControlInfo& info = Create()->Info();
    EXPECT_EQ(info.Members().size(), 68u);
    const MemberInfo* border = info.FindMember(u"bordertype");
    ASSERT_TRUE(border);
    EXPECT_EQ(border->name, u"BorderType");
    EXPECT_EQ(border->dispid, 2);
    EXPECT_EQ(border->wInvoke, DISPATCH_PROPERTYGET | DISPATCH_PROPERTYPUT);
    EXPECT_EQ(border->result.vt, VT_USERDEFINED);
    EXPECT_EQ(border->result.typeName, u"enumBorder");
    const MemberInfo* setSel = info.FindMember(51);
    ASSERT_TRUE(setSel && setSel->IsMethod());
    ASSERT_EQ(setSel->params.size(), 3u);
    EXPECT_EQ(setSel->params[2].name, u"bNoScroll");
    EXPECT_EQ(setSel->params[2].vt, VT_BOOL);
    EXPECT_EQ(info.FindMember(u"AddItem")->result.vt, VT_I2);
    // The types the control imports from OLE Automation, resolved to what travels.
    for (auto [name, type, vt] : {std::tuple{u"BackColor", u"OLE_COLOR", VT_UI4}, std::tuple{u"hWnd", u"OLE_HANDLE", VT_I4},
                                  std::tuple{u"Font", u"IFontDisp", VT_DISPATCH}, std::tuple{u"DropPicture", u"IPictureDisp", VT_DISPATCH}}) {
        EXPECT_EQ(info.FindMember(name)->result.typeName, type) << ToUtf8(std::u16string(name));
        EXPECT_EQ(info.FindMember(name)->result.vt, vt) << ToUtf8(std::u16string(name));
    }
    EXPECT_EQ(info.FindMember(DISPID_TEXT), nullptr) << "the stock text is not declared";
    EXPECT_EQ(info.FindMember(u"Bogus"), nullptr);

    EXPECT_EQ(info.EventsIID(), DIID__DQuillonEvents);
    const auto& events = CQuillonCtrl::EventMap().Entries();
    ASSERT_EQ(info.Events().size(), events.size());
    for (size_t i = 0; i < events.size(); ++i) {
        const EventInfo& e = info.Events()[i];
        EXPECT_EQ(e.name, events[i].name);
        EXPECT_EQ(e.dispid, events[i].dispid);
        ASSERT_EQ(e.params.size(), events[i].params.size()) << ToUtf8(e.name);
        for (size_t p = 0; p < e.params.size(); ++p)
            EXPECT_EQ(e.params[p].vt | (e.params[p].bByRef ? VT_BYREF : 0), events[i].params[p]) << ToUtf8(e.name);
    }
    EXPECT_EQ(info.FindEvent(u"keypress")->params[0].name, u"KeyAscii");

    CComPtr<IConnectionPointContainer> points;
    CComPtr<IConnectionPoint> point;
    ASSERT_EQ(Create()->Control()->QueryInterface(IID_IConnectionPointContainer, reinterpret_cast<void**>(&points)), S_OK);
    EXPECT_EQ(points->FindConnectionPoint(DIID__DQuillon, &point), CONNECT_E_NOCONNECTION);
    EXPECT_FALSE(point);

    CControlInfo none(m_host.AmbientFont()); // an object without class information
    EXPECT_TRUE(none.Members().empty() && none.Events().empty());
    EXPECT_EQ(none.EventsIID(), IID_NULL);
}
