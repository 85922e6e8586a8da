// A type library printed as ODL text, read through ITypeLib and ITypeInfo alone.
#include "TypeLibText.h"
#include <algorithm>
#include <sstream>
#include <vector>
#include "com/objbase.h"

namespace {

std::string Utf8(BSTR b)
{
    std::string s = ToUtf8(BstrToString(b));
    SysFreeString(b);
    return s;
}

std::string Guid(REFGUID g)
{
    const std::string s = ToUtf8(GuidString(g));
    return s.substr(1, s.size() - 2); // ODL writes a uuid without its braces
}

struct Doc {
    std::string name, help;
};

Doc DocOf(ITypeInfo* info, MEMBERID memid)
{
    BSTR name = nullptr, help = nullptr;
    info->GetDocumentation(memid, &name, &help, nullptr, nullptr);
    return {Utf8(name), Utf8(help)};
}

// The name of a type another one refers to; an interface is named as the pointer that is passed.
std::string ReferencedTypeName(ITypeInfo* info, HREFTYPE hreftype)
{
    CComPtr<ITypeInfo> ref;
    TYPEATTR* attr = nullptr;
    if (info->GetRefTypeInfo(hreftype, &ref) != S_OK || ref->GetTypeAttr(&attr) != S_OK) return "?";
    const bool bInterface = attr->typekind == TKIND_DISPATCH || attr->typekind == TKIND_INTERFACE;
    ref->ReleaseTypeAttr(attr);
    return DocOf(ref.Get(), MEMBERID_NIL).name + (bInterface ? "*" : "");
}

std::string TypeName(ITypeInfo* info, const TYPEDESC& t)
{
    if (t.vt == VT_USERDEFINED) return ReferencedTypeName(info, t.hreftype);
    const bool bByRef = (t.vt & VT_BYREF) != 0;
    std::string name;
    switch (t.vt & ~VT_BYREF) {
    case VT_EMPTY: name = "void"; break;
    case VT_I2: name = "short"; break;
    case VT_I4: name = "long"; break;
    case VT_UI4: name = "unsigned long"; break;
    case VT_BSTR: name = "BSTR"; break;
    case VT_BOOL: name = "VARIANT_BOOL"; break;
    case VT_DISPATCH: name = "IDispatch*"; break;
    case VT_VARIANT: name = "VARIANT"; break;
    default: name = "VARTYPE(" + std::to_string(t.vt & ~VT_BYREF) + ")"; break;
    }
    return bByRef ? name + "*" : name;
}

// "[id(46), bindable, requestedit, displaybind, defaultbind]"
std::string Attributes(MEMBERID memid, WORD wFlags)
{
    std::string out = "[id(" + std::to_string(memid) + ")";
    const std::pair<WORD, const char*> names[] = {{VARFLAG_FBINDABLE, "bindable"}, {VARFLAG_FREQUESTEDIT, "requestedit"},
                                                  {VARFLAG_FDISPLAYBIND, "displaybind"}, {VARFLAG_FDEFAULTBIND, "defaultbind"},
                                                  {VARFLAG_FHIDDEN, "hidden"}};
    for (const auto& [flag, name] : names)
        if (wFlags & flag) out += std::string(", ") + name;
    return out + "]";
}

void PrintEnum(std::ostringstream& out, ITypeInfo* info, const TYPEATTR& attr)
{
    out << "    typedef enum {\n";
    for (UINT i = 0; i < attr.cVars; ++i) {
        VARDESC* v = nullptr;
        info->GetVarDesc(i, &v);
        const Doc d = DocOf(info, v->memid);
        out << "        [helpstring(\"" << d.help << "\")] " << d.name << " = " << v->lpvarValue->lVal
            << (i + 1 < attr.cVars ? ",\n" : "\n");
        info->ReleaseVarDesc(v);
    }
    out << "    } " << DocOf(info, MEMBERID_NIL).name << ";\n\n";
}

void PrintDispinterface(std::ostringstream& out, ITypeInfo* info, const TYPEATTR& attr)
{
    const Doc d = DocOf(info, MEMBERID_NIL);
    out << "    [uuid(" << Guid(attr.guid) << "), helpstring(\"" << d.help << "\")" << (attr.wTypeFlags & TYPEFLAG_FHIDDEN ? ", hidden" : "")
        << "]\n    dispinterface " << d.name << " {\n        properties:\n";
    for (UINT i = 0; i < attr.cVars; ++i) {
        VARDESC* v = nullptr;
        info->GetVarDesc(i, &v);
        out << "            " << Attributes(v->memid, v->wVarFlags) << " " << TypeName(info, v->elemdescVar.tdesc) << " "
            << DocOf(info, v->memid).name << ";\n";
        info->ReleaseVarDesc(v);
    }
    out << "        methods:\n";
    for (UINT i = 0; i < attr.cFuncs; ++i) {
        FUNCDESC* f = nullptr;
        info->GetFuncDesc(i, &f);
        BSTR names[16] = {};
        UINT n = 0;
        info->GetNames(f->memid, names, 16, &n);
        out << "            " << Attributes(f->memid, f->wFuncFlags) << " " << TypeName(info, f->elemdescFunc.tdesc) << " "
            << Utf8(names[0]) << "(";
        for (SHORT p = 0; p < f->cParams; ++p)
            out << (p ? ", " : "") << TypeName(info, f->lprgelemdescParam[p].tdesc) << " "
                << (static_cast<UINT>(p) + 1 < n ? Utf8(names[p + 1]) : "");
        out << ");\n";
        info->ReleaseFuncDesc(f);
    }
    out << "    };\n\n";
}

void PrintCoclass(std::ostringstream& out, ITypeInfo* info, const TYPEATTR& attr)
{
    const Doc d = DocOf(info, MEMBERID_NIL);
    out << "    [uuid(" << Guid(attr.guid) << "), helpstring(\"" << d.help << "\")" << (attr.wTypeFlags & TYPEFLAG_FCONTROL ? ", control" : "")
        << "]\n    coclass " << d.name << " {\n";
    for (UINT i = 0; i < attr.cImplTypes; ++i) {
        INT flags = 0;
        HREFTYPE ref = 0;
        CComPtr<ITypeInfo> impl;
        info->GetImplTypeFlags(i, &flags);
        info->GetRefTypeOfImplType(i, &ref);
        info->GetRefTypeInfo(ref, &impl);
        out << "        [" << (flags & IMPLTYPEFLAG_FDEFAULT ? "default" : "") << (flags & IMPLTYPEFLAG_FSOURCE ? ", source" : "")
            << "] dispinterface " << DocOf(impl.Get(), MEMBERID_NIL).name << ";\n";
    }
    out << "    };\n";
}

// The types of a type's properties, results and parameters.
std::vector<TYPEDESC> MemberTypes(ITypeInfo* info)
{
    std::vector<TYPEDESC> out;
    TYPEATTR* attr = nullptr;
    if (info->GetTypeAttr(&attr) != S_OK) return out;
    for (UINT i = 0; i < attr->cVars; ++i) {
        VARDESC* v = nullptr;
        if (info->GetVarDesc(i, &v) != S_OK) continue;
        out.push_back(v->elemdescVar.tdesc);
        info->ReleaseVarDesc(v);
    }
    for (UINT i = 0; i < attr->cFuncs; ++i) {
        FUNCDESC* f = nullptr;
        if (info->GetFuncDesc(i, &f) != S_OK) continue;
        out.push_back(f->elemdescFunc.tdesc);
        for (SHORT p = 0; p < f->cParams; ++p) out.push_back(f->lprgelemdescParam[p].tdesc);
        info->ReleaseFuncDesc(f);
    }
    info->ReleaseTypeAttr(attr);
    return out;
}

// The libraries other than this one whose types its members name, as importlib lines; OLE
// Automation is imported from the file every system has.
std::string Imports(ITypeLib* lib)
{
    std::vector<GUID> seen;
    std::string out;
    TLIBATTR* own = nullptr;
    lib->GetLibAttr(&own);
    seen.push_back(own->guid);
    lib->ReleaseTLibAttr(own);
    for (UINT i = 0; i < lib->GetTypeInfoCount(); ++i) {
        CComPtr<ITypeInfo> info;
        lib->GetTypeInfo(i, &info);
        for (const TYPEDESC& t : MemberTypes(info.Get())) {
            CComPtr<ITypeInfo> ref;
            CComPtr<ITypeLib> container;
            TLIBATTR* attr = nullptr;
            if (t.vt != VT_USERDEFINED || info->GetRefTypeInfo(t.hreftype, &ref) != S_OK ||
                ref->GetContainingTypeLib(&container, nullptr) != S_OK || container->GetLibAttr(&attr) != S_OK)
                continue;
            if (std::find(seen.begin(), seen.end(), attr->guid) == seen.end()) {
                seen.push_back(attr->guid);
                BSTR name = nullptr;
                container->GetDocumentation(-1, &name, nullptr, nullptr, nullptr);
                const std::string libName = Utf8(name);
                out += "    importlib(\"" + (attr->guid == LIBID_StdOle ? std::string("stdole2") : libName) + ".tlb\");\n";
            }
            container->ReleaseTLibAttr(attr);
        }
    }
    return out.empty() ? out : out + "\n";
}

} // namespace

std::string TypeLibAsOdl(ITypeLib* lib)
{
    std::ostringstream out;
    TLIBATTR* libAttr = nullptr;
    lib->GetLibAttr(&libAttr);
    BSTR name = nullptr, help = nullptr;
    lib->GetDocumentation(-1, &name, &help, nullptr, nullptr);
    out << "[uuid(" << Guid(libAttr->guid) << "), version(" << libAttr->wMajorVerNum << "." << libAttr->wMinorVerNum
        << "), helpstring(\"" << Utf8(help) << "\"), control]\nlibrary " << Utf8(name) << " {\n" << Imports(lib);
    lib->ReleaseTLibAttr(libAttr);
    for (UINT i = 0; i < lib->GetTypeInfoCount(); ++i) {
        CComPtr<ITypeInfo> info;
        lib->GetTypeInfo(i, &info);
        TYPEATTR* attr = nullptr;
        info->GetTypeAttr(&attr);
        if (attr->typekind == TKIND_ENUM) PrintEnum(out, info.Get(), *attr);
        else if (attr->typekind == TKIND_DISPATCH) PrintDispinterface(out, info.Get(), *attr);
        else if (attr->typekind == TKIND_COCLASS) PrintCoclass(out, info.Get(), *attr);
        info->ReleaseTypeAttr(attr);
    }
    out << "};\n";
    return out.str();
}
