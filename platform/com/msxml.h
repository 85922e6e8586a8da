// MSXML: the DOM document of CLSID_DOMDocument, its nodes and node lists, as msxml.h names them.
#pragma once
#include "variant.h"

inline constexpr CLSID CLSID_DOMDocument = {0x2933BF90, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};
inline constexpr IID IID_IXMLDOMNode = {0x2933BF80, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};
inline constexpr IID IID_IXMLDOMDocument = {0x2933BF81, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};
inline constexpr IID IID_IXMLDOMNodeList = {0x2933BF82, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

struct IXMLDOMNodeList;

// Stand-in: the DOM interfaces derive from IUnknown alone (no IDispatch), and hold only the
// members listed here.
struct IXMLDOMNode : IUnknown {
    // "#text", "#comment", "#cdata-section", "#document", or the element's or instruction's name.
    virtual HRESULT get_nodeName(BSTR* name) = 0;
    // The text of the subtree: entities and character references decoded, the text and CDATA
    // nodes below concatenated, leading and trailing white space removed (preserveWhiteSpace is
    // never set in this stand-in).
    virtual HRESULT get_text(BSTR* text) = 0;
    // Every child node, elements, text, comments and instructions alike.
    virtual HRESULT get_childNodes(IXMLDOMNodeList** childList) = 0;
    // The node as XML text.
    virtual HRESULT get_xml(BSTR* xmlString) = 0;
    // The nodes an XPath 1.0 expression selects from this node, in document order. Stand-in:
    // libxml2's XPath stands in for MSXML's selection language.
    virtual HRESULT selectNodes(BSTR queryString, IXMLDOMNodeList** resultList) = 0;
protected:
    ~IXMLDOMNode() = default;
};

struct IXMLDOMNodeList : IUnknown {
    // S_FALSE and no node for an index outside the list.
    virtual HRESULT get_item(LONG index, IXMLDOMNode** listItem) = 0;
    virtual HRESULT get_length(LONG* listLength) = 0;
protected:
    ~IXMLDOMNodeList() = default;
};

struct IXMLDOMDocument : IXMLDOMNode {
    // Stand-in: loading is always synchronous; put_async is accepted either way.
    virtual HRESULT put_async(VARIANT_BOOL isAsync) = 0;
    // Parses a file named by a VT_BSTR path: UTF-8, or UTF-16 with its byte-order mark. Never
    // touches the network and never resolves an external entity. Stand-in: a document with a
    // document type declaration (internal or external subset) is refused as malformed, which also
    // bounds the expansion of entities; only local file paths are taken, not URLs.
    virtual HRESULT load(VARIANT xmlSource, VARIANT_BOOL* isSuccessful) = 0;
protected:
    ~IXMLDOMDocument() = default;
};

// The DOM's in-process server, as msxml3.dll's DllGetClassObject. COM knows it from the start
// (CoRevokeInprocServer removes it, for a machine without it).
HRESULT MsxmlDllGetClassObject(REFCLSID rclsid, REFIID riid, void** ppv);
