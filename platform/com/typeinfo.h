// Type information as oaidl.h names it: ITypeLib and ITypeInfo over a library's enumerations,
// dispatch interfaces and coclasses. Stand-in: a library is built from a TypeLibSource, what the
// type library compiler would have made of the library's ODL text; CreateTypeLibFromSource plays
// the part of reading that compiled form.
#pragma once
#include <string>
#include <vector>
#include "variant.h"

enum TYPEKIND { TKIND_ENUM = 0, TKIND_RECORD, TKIND_MODULE, TKIND_INTERFACE, TKIND_DISPATCH, TKIND_COCLASS, TKIND_ALIAS, TKIND_UNION };
enum INVOKEKIND { INVOKE_FUNC = 1, INVOKE_PROPERTYGET = 2, INVOKE_PROPERTYPUT = 4, INVOKE_PROPERTYPUTREF = 8 };
enum FUNCKIND { FUNC_VIRTUAL, FUNC_PUREVIRTUAL, FUNC_NONVIRTUAL, FUNC_STATIC, FUNC_DISPATCH };
enum VARKIND { VAR_PERINSTANCE, VAR_STATIC, VAR_CONST, VAR_DISPATCH };
enum CALLCONV { CC_STDCALL = 4 };
enum SYSKIND { SYS_WIN16, SYS_WIN32, SYS_MAC, SYS_WIN64 };

// Member flags; a dispatch property (a VARDESC) and a method (a FUNCDESC) use the same values.
#define VARFLAG_FREADONLY 0x1
#define VARFLAG_FSOURCE 0x2
#define VARFLAG_FBINDABLE 0x4
#define VARFLAG_FREQUESTEDIT 0x8
#define VARFLAG_FDISPLAYBIND 0x10
#define VARFLAG_FDEFAULTBIND 0x20
#define VARFLAG_FHIDDEN 0x40
#define FUNCFLAG_FBINDABLE 0x4
#define FUNCFLAG_FREQUESTEDIT 0x8
#define FUNCFLAG_FDISPLAYBIND 0x10
#define FUNCFLAG_FDEFAULTBIND 0x20
#define FUNCFLAG_FHIDDEN 0x40
#define IMPLTYPEFLAG_FDEFAULT 0x1
#define IMPLTYPEFLAG_FSOURCE 0x2
#define TYPEFLAG_FCANCREATE 0x2
#define TYPEFLAG_FCONTROL 0x20
#define TYPEFLAG_FHIDDEN 0x10
#define TYPEFLAG_FDISPATCHABLE 0x1000
#define PARAMFLAG_NONE 0x0

typedef LONG MEMBERID;
typedef DWORD HREFTYPE;
#define MEMBERID_NIL DISPID_UNKNOWN

// A type: an automation VARTYPE, or VT_USERDEFINED with the reference of another type of the library
// or of a library it imports. Stand-in: a pointer to an interface is described by the interface's own
// reference, without the VT_PTR level above it.
struct TYPEDESC {
    HREFTYPE hreftype = 0;
    VARTYPE vt = VT_EMPTY;
};
struct PARAMDESC {
    void* pparamdescex = nullptr;
    USHORT wParamFlags = PARAMFLAG_NONE;
};
struct ELEMDESC {
    TYPEDESC tdesc;
    PARAMDESC paramdesc;
};
struct FUNCDESC {
    MEMBERID memid;
    ELEMDESC* lprgelemdescParam;
    FUNCKIND funckind;
    INVOKEKIND invkind;
    CALLCONV callconv;
    SHORT cParams;
    SHORT cParamsOpt;
    ELEMDESC elemdescFunc;
    WORD wFuncFlags;
};
struct VARDESC {
    MEMBERID memid;
    VARIANT* lpvarValue; // a constant's value (VAR_CONST)
    ELEMDESC elemdescVar;
    WORD wVarFlags;
    VARKIND varkind;
};
struct TYPEATTR {
    GUID guid;
    LCID lcid;
    TYPEKIND typekind;
    WORD cFuncs;
    WORD cVars;
    WORD cImplTypes;
    WORD wTypeFlags;
    WORD wMajorVerNum;
    WORD wMinorVerNum;
    TYPEDESC tdescAlias; // what an alias (TKIND_ALIAS) stands for
};
struct TLIBATTR {
    GUID guid;
    LCID lcid;
    SYSKIND syskind;
    WORD wMajorVerNum;
    WORD wMinorVerNum;
    WORD wLibFlags;
};

struct ITypeLib;

struct ITypeInfo : IUnknown {
    virtual HRESULT GetTypeAttr(TYPEATTR** ppTypeAttr) = 0;
    virtual HRESULT GetFuncDesc(UINT index, FUNCDESC** ppFuncDesc) = 0;
    virtual HRESULT GetVarDesc(UINT index, VARDESC** ppVarDesc) = 0;
    // The member's name, then its parameters' names.
    virtual HRESULT GetNames(MEMBERID memid, BSTR* rgBstrNames, UINT cMaxNames, UINT* pcNames) = 0;
    virtual HRESULT GetRefTypeOfImplType(UINT index, HREFTYPE* pRefType) = 0;
    virtual HRESULT GetImplTypeFlags(UINT index, INT* pImplTypeFlags) = 0;
    // Case-blind; the first name is a member's, the others its parameters'.
    virtual HRESULT GetIDsOfNames(LPOLESTR* rgszNames, UINT cNames, MEMBERID* pMemId) = 0;
    // MEMBERID_NIL: the type's own name and help string. Any out pointer may be null.
    virtual HRESULT GetDocumentation(MEMBERID memid, BSTR* pBstrName, BSTR* pBstrDocString, DWORD* pdwHelpContext,
                                     BSTR* pBstrHelpFile) = 0;
    virtual HRESULT GetRefTypeInfo(HREFTYPE hRefType, ITypeInfo** ppTInfo) = 0;
    virtual HRESULT GetContainingTypeLib(ITypeLib** ppTLib, UINT* pIndex) = 0;
    virtual void ReleaseTypeAttr(TYPEATTR* pTypeAttr) = 0;
    virtual void ReleaseFuncDesc(FUNCDESC* pFuncDesc) = 0;
    virtual void ReleaseVarDesc(VARDESC* pVarDesc) = 0;
protected:
    ~ITypeInfo() = default;
};

struct ITypeLib : IUnknown {
    virtual UINT GetTypeInfoCount() = 0;
    virtual HRESULT GetTypeInfo(UINT index, ITypeInfo** ppTInfo) = 0;
    virtual HRESULT GetTypeInfoType(UINT index, TYPEKIND* pTKind) = 0;
    virtual HRESULT GetTypeInfoOfGuid(REFGUID guid, ITypeInfo** ppTInfo) = 0;
    virtual HRESULT GetLibAttr(TLIBATTR** ppTLibAttr) = 0;
    // Index -1: the library's own name and help string.
    virtual HRESULT GetDocumentation(INT index, BSTR* pBstrName, BSTR* pBstrDocString, DWORD* pdwHelpContext,
                                     BSTR* pBstrHelpFile) = 0;
    virtual void ReleaseTLibAttr(TLIBATTR* pTLibAttr) = 0;
protected:
    ~ITypeLib() = default;
};

inline constexpr IID IID_ITypeInfo = {0x00020401, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr IID IID_ITypeLib = {0x00020402, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

#define TYPE_E_ELEMENTNOTFOUND ((HRESULT)0x8002802B)

// The library's source, in ODL's terms. A type named in a member's userType is one of the library's
// own types or of a library it imports, by name; otherwise vt gives the automation type.
struct TypeLibParam {
    std::u16string name;
    VARTYPE vt = VT_EMPTY;
    std::u16string userType;
};
struct TypeLibMember {
    enum Kind { Property, Method, Constant } kind = Property;
    std::u16string name;
    MEMBERID memid = 0;
    VARTYPE vt = VT_EMPTY; // a property's or a method's result type; VT_EMPTY for void
    std::u16string userType;
    WORD wFlags = 0;       // VARFLAG_ / FUNCFLAG_
    std::vector<TypeLibParam> params;
    LONG nValue = 0;       // a constant's value
    std::u16string helpString;
};
struct TypeLibImpl {
    std::u16string typeName;
    INT flags = 0; // IMPLTYPEFLAG_
};
struct TypeLibType {
    TYPEKIND kind = TKIND_DISPATCH;
    GUID guid{};
    std::u16string name;
    std::u16string helpString;
    WORD wTypeFlags = 0;
    std::vector<TypeLibMember> members;
    std::vector<TypeLibImpl> impls; // a coclass's interfaces
    VARTYPE vtAlias = VT_EMPTY;     // the type an alias stands for
};
struct TypeLibSource {
    GUID libid{};
    WORD wMajorVerNum = 1;
    WORD wMinorVerNum = 0;
    std::u16string name;
    std::u16string helpString;
    std::vector<TypeLibType> types;
    std::vector<const TypeLibSource*> imports; // the libraries importlib names
};

// The library the source describes; E_INVALIDARG when a member names a type the library lacks.
HRESULT CreateTypeLibFromSource(const TypeLibSource& source, ITypeLib** ppTLib);

// OLE Automation (stdole2.tlb), as controls import it: the aliases OLE_COLOR and OLE_HANDLE and the
// dispatch interfaces IFontDisp and IPictureDisp. Stand-in: the two interfaces are declared without
// their members.
inline constexpr GUID LIBID_StdOle = {0x00020430, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
const TypeLibSource& StdOleTypeLibSource();

// A module's type library resource. Stand-in: the module enters the source its TYPELIB resource
// was compiled from; LoadTypeLib finds it by the module's path.
void AddTypeLibResource(HINSTANCE hModule, const TypeLibSource& (*pfnSource)());
// Withdraws it, as the module unloads.
void RemoveTypeLibResource(HINSTANCE hModule);

#define DISP_E_BADINDEX ((HRESULT)0x8002000B)
#define TYPE_E_REGISTRYACCESS ((HRESULT)0x8002801C)
#define TYPE_E_LIBNOTREGISTERED ((HRESULT)0x8002801D)
#define TYPE_E_CANTLOADLIBRARY ((HRESULT)0x80029C4A)

// The library in a module's file; TYPE_E_CANTLOADLIBRARY when the file holds none.
HRESULT LoadTypeLib(LPCOLESTR szFile, ITypeLib** pptlib);
// Under HKEY_CLASSES_ROOT: TypeLib\{libid}\major.minor with the help string, FLAGS, HELPDIR and
// 0\win32 (the file), and Interface\{iid} for each dispatch interface, with its TypeLib and Version.
HRESULT RegisterTypeLib(ITypeLib* ptlib, LPCOLESTR szFullPath, LPCOLESTR szHelpDir);
// Removes what RegisterTypeLib wrote for that version; TYPE_E_REGISTRYACCESS when it is not there.
HRESULT UnRegisterTypeLib(REFGUID libID, WORD wVerMajor, WORD wVerMinor, LCID lcid, SYSKIND syskind);
// The library registered at that version; TYPE_E_LIBNOTREGISTERED when there is none.
HRESULT LoadRegTypeLib(REFGUID rguid, WORD wVerMajor, WORD wVerMinor, LCID lcid, ITypeLib** pptlib);
