// A type library over its source: the library owns one ITypeInfo per type, which live and die with it.
#include "typeinfo.h"
#include <memory>
#include "base/cstring.h"

namespace {

class CTypeLib;

BSTR Bstr(const std::u16string& s) { return SysAllocStringLen(s.data(), static_cast<UINT>(s.size())); }

void PutString(BSTR* out, const std::u16string& s)
{
    if (out) *out = Bstr(s);
}

bool SameName(const std::u16string& a, const char16_t* b) { return b && CString(a.c_str()).CompareNoCase(b) == 0; }

// References to a library's own types are their indices; those to an imported library's types count
// from this much times the import's place, from 1.
constexpr HREFTYPE kImportedRefBase = 0x10000;

// The index of a type of any library by its name, or -1.
int IndexByName(ITypeLib* lib, const std::u16string& name)
{
    for (UINT i = 0; i < lib->GetTypeInfoCount(); ++i) {
        BSTR typeName = nullptr;
        lib->GetDocumentation(static_cast<INT>(i), &typeName, nullptr, nullptr, nullptr);
        const bool bSame = BstrToString(typeName).str() == name;
        SysFreeString(typeName);
        if (bSame) return static_cast<int>(i);
    }
    return -1;
}

class CTypeInfo final : public ITypeInfo {
public:
    CTypeInfo(CTypeLib& lib, UINT index, const TypeLibType& type);
    HRESULT QueryInterface(REFIID riid, void** ppv) override;
    ULONG AddRef() override;
    ULONG Release() override;
    HRESULT GetTypeAttr(TYPEATTR** ppTypeAttr) override;
    HRESULT GetFuncDesc(UINT index, FUNCDESC** ppFuncDesc) override;
    HRESULT GetVarDesc(UINT index, VARDESC** ppVarDesc) override;
    HRESULT GetNames(MEMBERID memid, BSTR* rgBstrNames, UINT cMaxNames, UINT* pcNames) override;
    HRESULT GetRefTypeOfImplType(UINT index, HREFTYPE* pRefType) override;
    HRESULT GetImplTypeFlags(UINT index, INT* pImplTypeFlags) override;
    HRESULT GetIDsOfNames(LPOLESTR* rgszNames, UINT cNames, MEMBERID* pMemId) override;
    HRESULT GetDocumentation(MEMBERID memid, BSTR* pName, BSTR* pDoc, DWORD* pContext, BSTR* pFile) override;
    HRESULT GetRefTypeInfo(HREFTYPE hRefType, ITypeInfo** ppTInfo) override;
    HRESULT GetContainingTypeLib(ITypeLib** ppTLib, UINT* pIndex) override;
    void ReleaseTypeAttr(TYPEATTR* p) override { delete p; }
    void ReleaseFuncDesc(FUNCDESC* p) override
    {
        if (p) delete[] p->lprgelemdescParam;
        delete p;
    }
    void ReleaseVarDesc(VARDESC* p) override
    {
        if (p) delete p->lpvarValue;
        delete p;
    }

private:
    // Properties and constants are the type's variables, methods its functions, each in source order.
    std::vector<const TypeLibMember*> Members(bool bFunctions) const;
    const TypeLibMember* FindMember(MEMBERID memid) const;
    ELEMDESC Elem(VARTYPE vt, const std::u16string& userType) const;

    CTypeLib& m_lib;
    UINT m_index;
    const TypeLibType& m_type;
};

class CTypeLib final : public ITypeLib {
public:
    explicit CTypeLib(TypeLibSource source) : m_source(std::move(source))
    {
        for (UINT i = 0; i < m_source.types.size(); ++i) m_infos.push_back(std::make_unique<CTypeInfo>(*this, i, m_source.types[i]));
        for (const TypeLibSource* imported : m_source.imports) {
            CComPtr<ITypeLib> lib;
            CreateTypeLibFromSource(*imported, &lib);
            m_imports.push_back(std::move(lib));
        }
    }
    HRESULT QueryInterface(REFIID riid, void** ppv) override
    {
        if (!ppv) return E_POINTER;
        *ppv = nullptr;
        if (riid != IID_IUnknown && riid != IID_ITypeLib) return E_NOINTERFACE;
        AddRef();
        *ppv = static_cast<ITypeLib*>(this);
        return S_OK;
    }
    ULONG AddRef() override { return m_ref.AddRefImpl(); }
    ULONG Release() override { return m_ref.ReleaseImpl(this); }
    UINT GetTypeInfoCount() override { return static_cast<UINT>(m_infos.size()); }
    HRESULT GetTypeInfo(UINT index, ITypeInfo** ppTInfo) override
    {
        if (!ppTInfo) return E_POINTER;
        *ppTInfo = nullptr;
        if (index >= m_infos.size()) return TYPE_E_ELEMENTNOTFOUND;
        *ppTInfo = m_infos[index].get();
        AddRef();
        return S_OK;
    }
    HRESULT GetTypeInfoType(UINT index, TYPEKIND* pTKind) override
    {
        if (!pTKind) return E_POINTER;
        if (index >= m_infos.size()) return TYPE_E_ELEMENTNOTFOUND;
        *pTKind = m_source.types[index].kind;
        return S_OK;
    }
    HRESULT GetTypeInfoOfGuid(REFGUID guid, ITypeInfo** ppTInfo) override
    {
        for (UINT i = 0; i < m_source.types.size(); ++i)
            if (m_source.types[i].guid == guid) return GetTypeInfo(i, ppTInfo);
        if (ppTInfo) *ppTInfo = nullptr;
        return TYPE_E_ELEMENTNOTFOUND;
    }
    HRESULT GetLibAttr(TLIBATTR** ppTLibAttr) override
    {
        if (!ppTLibAttr) return E_POINTER;
        *ppTLibAttr = new TLIBATTR{m_source.libid, 0, SYS_WIN32, m_source.wMajorVerNum, m_source.wMinorVerNum, 0};
        return S_OK;
    }
    HRESULT GetDocumentation(INT index, BSTR* pName, BSTR* pDoc, DWORD* pContext, BSTR* pFile) override
    {
        if (index == -1) {
            PutString(pName, m_source.name);
            PutString(pDoc, m_source.helpString);
            if (pContext) *pContext = 0;
            if (pFile) *pFile = nullptr;
            return S_OK;
        }
        if (index < 0 || static_cast<size_t>(index) >= m_infos.size()) return TYPE_E_ELEMENTNOTFOUND;
        return m_infos[static_cast<size_t>(index)]->GetDocumentation(MEMBERID_NIL, pName, pDoc, pContext, pFile);
    }
    void ReleaseTLibAttr(TLIBATTR* p) override { delete p; }

    // The reference of a type by name: one of the library's own, else of an import. Every name was
    // checked when the library was made.
    HREFTYPE RefOf(const std::u16string& name) const
    {
        for (size_t i = 0; i < m_source.types.size(); ++i)
            if (m_source.types[i].name == name) return static_cast<HREFTYPE>(i);
        for (size_t k = 0; k < m_imports.size(); ++k)
            if (int i = IndexByName(m_imports[k].Get(), name); i >= 0)
                return static_cast<HREFTYPE>((k + 1) * kImportedRefBase + static_cast<size_t>(i));
        return static_cast<HREFTYPE>(-1);
    }
    HRESULT RefTypeInfo(HREFTYPE ref, ITypeInfo** ppTInfo)
    {
        if (ref < kImportedRefBase) return GetTypeInfo(ref, ppTInfo);
        const size_t k = ref / kImportedRefBase - 1;
        if (k >= m_imports.size()) return TYPE_E_ELEMENTNOTFOUND;
        return m_imports[k]->GetTypeInfo(ref % kImportedRefBase, ppTInfo);
    }

private:
    friend class CComRefCount<CTypeLib>;
    ~CTypeLib() = default;
    CComRefCount<CTypeLib> m_ref;
    const TypeLibSource m_source;
    std::vector<std::unique_ptr<CTypeInfo>> m_infos;
    std::vector<CComPtr<ITypeLib>> m_imports;
};

CTypeInfo::CTypeInfo(CTypeLib& lib, UINT index, const TypeLibType& type) : m_lib(lib), m_index(index), m_type(type) {}

HRESULT CTypeInfo::QueryInterface(REFIID riid, void** ppv)
{
    if (!ppv) return E_POINTER;
    *ppv = nullptr;
    if (riid != IID_IUnknown && riid != IID_ITypeInfo) return E_NOINTERFACE;
    AddRef();
    *ppv = static_cast<ITypeInfo*>(this);
    return S_OK;
}

// A type description keeps its library alive, and the library keeps its type descriptions.
ULONG CTypeInfo::AddRef() { return m_lib.AddRef(); }
ULONG CTypeInfo::Release() { return m_lib.Release(); }

std::vector<const TypeLibMember*> CTypeInfo::Members(bool bFunctions) const
{
    std::vector<const TypeLibMember*> out;
    for (const auto& m : m_type.members)
        if ((m.kind == TypeLibMember::Method) == bFunctions) out.push_back(&m);
    return out;
}

const TypeLibMember* CTypeInfo::FindMember(MEMBERID memid) const
{
    for (const auto& m : m_type.members)
        if (m.memid == memid) return &m;
    return nullptr;
}

ELEMDESC CTypeInfo::Elem(VARTYPE vt, const std::u16string& userType) const
{
    ELEMDESC e;
    // Every user type was checked when the library was made.
    if (!userType.empty()) e.tdesc = TYPEDESC{m_lib.RefOf(userType), VT_USERDEFINED};
    else e.tdesc.vt = vt;
    return e;
}

HRESULT CTypeInfo::GetTypeAttr(TYPEATTR** ppTypeAttr)
{
    if (!ppTypeAttr) return E_POINTER;
    TLIBATTR* lib = nullptr;
    m_lib.GetLibAttr(&lib);
    // A type has far fewer than 65,536 members.
    *ppTypeAttr = new TYPEATTR{m_type.guid, 0, m_type.kind, static_cast<WORD>(Members(true).size()),
                               static_cast<WORD>(Members(false).size()), static_cast<WORD>(m_type.impls.size()),
                               m_type.wTypeFlags, lib->wMajorVerNum, lib->wMinorVerNum, TYPEDESC{0, m_type.vtAlias}};
    m_lib.ReleaseTLibAttr(lib);
    return S_OK;
}

HRESULT CTypeInfo::GetFuncDesc(UINT index, FUNCDESC** ppFuncDesc)
{
    if (!ppFuncDesc) return E_POINTER;
    *ppFuncDesc = nullptr;
    const auto functions = Members(true);
    if (index >= functions.size()) return TYPE_E_ELEMENTNOTFOUND;
    const TypeLibMember& m = *functions[index];
    auto* params = new ELEMDESC[m.params.size()];
    for (size_t i = 0; i < m.params.size(); ++i) params[i] = Elem(m.params[i].vt, m.params[i].userType);
    // A method has a handful of parameters.
    *ppFuncDesc = new FUNCDESC{m.memid, params, FUNC_DISPATCH, INVOKE_FUNC, CC_STDCALL,
                               static_cast<SHORT>(m.params.size()), 0, Elem(m.vt, m.userType), m.wFlags};
    return S_OK;
}

HRESULT CTypeInfo::GetVarDesc(UINT index, VARDESC** ppVarDesc)
{
    if (!ppVarDesc) return E_POINTER;
    *ppVarDesc = nullptr;
    const auto variables = Members(false);
    if (index >= variables.size()) return TYPE_E_ELEMENTNOTFOUND;
    const TypeLibMember& m = *variables[index];
    VARIANT* value = nullptr;
    if (m.kind == TypeLibMember::Constant) {
        value = new VARIANT{};
        value->vt = VT_I4;
        value->lVal = m.nValue;
    }
    *ppVarDesc = new VARDESC{m.memid, value, Elem(m.vt, m.userType), m.wFlags,
                             m.kind == TypeLibMember::Constant ? VAR_CONST : VAR_DISPATCH};
    return S_OK;
}

HRESULT CTypeInfo::GetNames(MEMBERID memid, BSTR* rgBstrNames, UINT cMaxNames, UINT* pcNames)
{
    if (!rgBstrNames || !pcNames) return E_POINTER;
    *pcNames = 0;
    const TypeLibMember* m = FindMember(memid);
    if (!m) return TYPE_E_ELEMENTNOTFOUND;
    if (cMaxNames > 0) rgBstrNames[(*pcNames)++] = Bstr(m->name);
    for (size_t i = 0; i < m->params.size() && *pcNames < cMaxNames; ++i) rgBstrNames[(*pcNames)++] = Bstr(m->params[i].name);
    return S_OK;
}

HRESULT CTypeInfo::GetRefTypeOfImplType(UINT index, HREFTYPE* pRefType)
{
    if (!pRefType) return E_POINTER;
    if (index >= m_type.impls.size()) return TYPE_E_ELEMENTNOTFOUND;
    *pRefType = m_lib.RefOf(m_type.impls[index].typeName);
    return S_OK;
}

HRESULT CTypeInfo::GetImplTypeFlags(UINT index, INT* pImplTypeFlags)
{
    if (!pImplTypeFlags) return E_POINTER;
    if (index >= m_type.impls.size()) return TYPE_E_ELEMENTNOTFOUND;
    *pImplTypeFlags = m_type.impls[index].flags;
    return S_OK;
}

HRESULT CTypeInfo::GetIDsOfNames(LPOLESTR* rgszNames, UINT cNames, MEMBERID* pMemId)
{
    if (!rgszNames || !pMemId || cNames == 0) return E_INVALIDARG;
    for (UINT i = 0; i < cNames; ++i) pMemId[i] = MEMBERID_NIL;
    const TypeLibMember* found = nullptr;
    for (const auto& m : m_type.members)
        if (SameName(m.name, rgszNames[0])) { found = &m; break; }
    if (!found) return DISP_E_UNKNOWNNAME;
    pMemId[0] = found->memid;
    HRESULT hr = S_OK;
    for (UINT i = 1; i < cNames; ++i) {
        for (size_t p = 0; p < found->params.size(); ++p)
            if (SameName(found->params[p].name, rgszNames[i])) pMemId[i] = static_cast<MEMBERID>(p);
        if (pMemId[i] == MEMBERID_NIL) hr = DISP_E_UNKNOWNNAME;
    }
    return hr;
}

HRESULT CTypeInfo::GetDocumentation(MEMBERID memid, BSTR* pName, BSTR* pDoc, DWORD* pContext, BSTR* pFile)
{
    const TypeLibMember* m = memid == MEMBERID_NIL ? nullptr : FindMember(memid);
    if (memid != MEMBERID_NIL && !m) return TYPE_E_ELEMENTNOTFOUND;
    PutString(pName, m ? m->name : m_type.name);
    PutString(pDoc, m ? m->helpString : m_type.helpString);
    if (pContext) *pContext = 0;
    if (pFile) *pFile = nullptr;
    return S_OK;
}

HRESULT CTypeInfo::GetRefTypeInfo(HREFTYPE hRefType, ITypeInfo** ppTInfo) { return m_lib.RefTypeInfo(hRefType, ppTInfo); }

HRESULT CTypeInfo::GetContainingTypeLib(ITypeLib** ppTLib, UINT* pIndex)
{
    if (pIndex) *pIndex = m_index;
    if (ppTLib) {
        m_lib.AddRef();
        *ppTLib = &m_lib;
    }
    return S_OK;
}

bool Declares(const TypeLibSource& source, const std::u16string& name)
{
    for (const auto& t : source.types)
        if (t.name == name) return true;
    return false;
}

// Every type a member, a parameter or a coclass names must be one of the library's own or an import's.
bool NamesKnownTypes(const TypeLibSource& source)
{
    auto known = [&](const std::u16string& name) {
        if (name.empty() || Declares(source, name)) return true;
        for (const TypeLibSource* imported : source.imports)
            if (Declares(*imported, name)) return true;
        return false;
    };
    for (const auto& t : source.types) {
        for (const auto& impl : t.impls)
            if (impl.typeName.empty() || !known(impl.typeName)) return false;
        for (const auto& m : t.members) {
            if (!known(m.userType)) return false;
            for (const auto& p : m.params)
                if (!known(p.userType)) return false;
        }
    }
    return true;
}

} // namespace

HRESULT CreateTypeLibFromSource(const TypeLibSource& source, ITypeLib** ppTLib)
{
    if (!ppTLib) return E_POINTER;
    *ppTLib = nullptr;
    if (!NamesKnownTypes(source)) return E_INVALIDARG;
    *ppTLib = new CTypeLib(source);
    return S_OK;
}
