// CControlInfo: what a container knows of a control's members and events, read from its type
// information alone (the coclass, its default interface and its default source interface).
#pragma once
#include <vector>
#include "com/typeinfo.h"

// A parameter, or a result (without a name): its automation type, the name of a type of the
// control's library for VT_USERDEFINED (an enumeration), and whether it is passed by reference.
struct ElemInfo {
    CString name;
    VARTYPE vt = VT_EMPTY; // without VT_BYREF
    CString typeName;
    bool bByRef = false;
};

struct MemberInfo {
    CString name;
    DISPID dispid = DISPID_UNKNOWN;
    WORD wInvoke = 0;       // DISPATCH_METHOD, or DISPATCH_PROPERTYGET with DISPATCH_PROPERTYPUT unless read-only
    ElemInfo result;        // a property's type or a method's result; VT_EMPTY for none
    std::vector<ElemInfo> params;
    bool IsMethod() const { return (wInvoke & DISPATCH_METHOD) != 0; }
    bool IsReadOnly() const { return !IsMethod() && !(wInvoke & DISPATCH_PROPERTYPUT); }
};

struct EventInfo {
    CString name;
    DISPID dispid = DISPID_UNKNOWN;
    std::vector<ElemInfo> params; // in declaration order
};

class CControlInfo {
public:
    // Reads the control's class information; a control without any has no members and no events.
    explicit CControlInfo(IUnknown* pControl);

    // Properties, then methods, then events, each in the order the library declares them.
    const std::vector<MemberInfo>& Members() const { return m_members; }
    const std::vector<EventInfo>& Events() const { return m_events; }
    // The events interface to connect a sink to; IID_NULL when the class declares none.
    const IID& EventsIID() const { return m_iidEvents; }

    // By name without regard to case, as automation looks names up; or by dispid. Null if none.
    const MemberInfo* FindMember(const CString& name) const;
    const MemberInfo* FindMember(DISPID dispid) const;
    const EventInfo* FindEvent(const CString& name) const;
    const EventInfo* FindEvent(DISPID dispid) const;

private:
    void ReadMembers(ITypeInfo* pDispatch);
    void ReadEvents(ITypeInfo* pEvents);

    std::vector<MemberInfo> m_members;
    std::vector<EventInfo> m_events;
    IID m_iidEvents = IID_NULL;
};
