// The DOM over libxml2: a parsed tree shared by the document, its nodes and its node lists.
#include "msxml.h"
#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/tree.h>
#include <libxml/xpath.h>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>
#include "base/crtio.h"

namespace {

// The parsed tree; nodes and lists handed out keep it alive after the document is released.
struct DomTree {
    explicit DomTree(xmlDocPtr doc) : pDoc(doc) {}
    ~DomTree() { xmlFreeDoc(pDoc); }
    DomTree(const DomTree&) = delete;
    DomTree& operator=(const DomTree&) = delete;
    xmlDocPtr pDoc;
};
using TreeRef = std::shared_ptr<DomTree>;

BSTR ToBstr(std::string_view utf8)
{
    std::u16string s = FromUtf8(utf8);
    return SysAllocStringLen(s.data(), static_cast<UINT>(s.size()));
}

bool IsXmlBlank(char ch) { return ch == ' ' || ch == '\t' || ch == '\n' || ch == '\r'; }

std::string_view TrimBlanks(std::string_view s)
{
    while (!s.empty() && IsXmlBlank(s.front())) s.remove_prefix(1);
    while (!s.empty() && IsXmlBlank(s.back())) s.remove_suffix(1);
    return s;
}

std::string NodeName(xmlNodePtr node)
{
    switch (node->type) {
    case XML_TEXT_NODE: return "#text";
    case XML_CDATA_SECTION_NODE: return "#cdata-section";
    case XML_COMMENT_NODE: return "#comment";
    case XML_DOCUMENT_NODE: return "#document";
    default: break;
    }
    std::string name = node->name ? reinterpret_cast<const char*>(node->name) : "";
    if (node->type == XML_ELEMENT_NODE && node->ns && node->ns->prefix)
        name = reinterpret_cast<const char*>(node->ns->prefix) + (":" + name);
    return name;
}

template <class I>
HRESULT Hand(I* object, void** ppv)
{
    *ppv = object;
    return S_OK;
}

class CDomNodeList;

// IXMLDOMNode over one libxml2 node; the document derives from it with its tree's root.
template <class Base>
class CDomNodeImpl : public Base {
public:
    HRESULT get_nodeName(BSTR* name) override
    {
        if (!name) return E_POINTER;
        *name = ToBstr(NodeName(Node()));
        return S_OK;
    }
    HRESULT get_text(BSTR* text) override;
    HRESULT get_childNodes(IXMLDOMNodeList** childList) override;
    HRESULT get_xml(BSTR* xmlString) override;
    HRESULT selectNodes(BSTR queryString, IXMLDOMNodeList** resultList) override;

protected:
    virtual xmlNodePtr Node() const = 0;
    virtual TreeRef Tree() const = 0;
};

class CDomNode final : public CDomNodeImpl<IXMLDOMNode> {
public:
    CDomNode(TreeRef tree, xmlNodePtr node) : m_tree(std::move(tree)), m_pNode(node) {}
    HRESULT QueryInterface(REFIID riid, void** ppv) override
    {
        if (!ppv) return E_POINTER;
        if (riid != IID_IUnknown && riid != IID_IXMLDOMNode) { *ppv = nullptr; return E_NOINTERFACE; }
        AddRef();
        return Hand(static_cast<IXMLDOMNode*>(this), ppv);
    }
    ULONG AddRef() override { return m_ref.AddRefImpl(); }
    ULONG Release() override { return m_ref.ReleaseImpl(this); }

protected:
    xmlNodePtr Node() const override { return m_pNode; }
    TreeRef Tree() const override { return m_tree; }

private:
    friend class CComRefCount<CDomNode>;
    ~CDomNode() = default;
    CComRefCount<CDomNode> m_ref;
    TreeRef m_tree;
    xmlNodePtr m_pNode;
};

class CDomNodeList final : public IXMLDOMNodeList {
public:
    CDomNodeList(TreeRef tree, std::vector<xmlNodePtr> nodes) : m_tree(std::move(tree)), m_nodes(std::move(nodes)) {}
    HRESULT QueryInterface(REFIID riid, void** ppv) override
    {
        if (!ppv) return E_POINTER;
        if (riid != IID_IUnknown && riid != IID_IXMLDOMNodeList) { *ppv = nullptr; return E_NOINTERFACE; }
        AddRef();
        return Hand(static_cast<IXMLDOMNodeList*>(this), ppv);
    }
    ULONG AddRef() override { return m_ref.AddRefImpl(); }
    ULONG Release() override { return m_ref.ReleaseImpl(this); }
    HRESULT get_item(LONG index, IXMLDOMNode** listItem) override
    {
        if (!listItem) return E_POINTER;
        *listItem = nullptr;
        if (index < 0 || static_cast<size_t>(index) >= m_nodes.size()) return S_FALSE;
        *listItem = new CDomNode(m_tree, m_nodes[static_cast<size_t>(index)]);
        return S_OK;
    }
    HRESULT get_length(LONG* listLength) override
    {
        if (!listLength) return E_POINTER;
        // A list never holds more nodes than a document of at most 2 GB can.
        *listLength = static_cast<LONG>(m_nodes.size());
        return S_OK;
    }

private:
    friend class CComRefCount<CDomNodeList>;
    ~CDomNodeList() = default;
    CComRefCount<CDomNodeList> m_ref;
    TreeRef m_tree;
    std::vector<xmlNodePtr> m_nodes;
};

template <class Base>
HRESULT CDomNodeImpl<Base>::get_text(BSTR* text)
{
    if (!text) return E_POINTER;
    xmlChar* content = Node() ? xmlNodeGetContent(Node()) : nullptr;
    std::string_view s = content ? reinterpret_cast<const char*>(content) : "";
    *text = ToBstr(TrimBlanks(s));
    xmlFree(content);
    return S_OK;
}

template <class Base>
HRESULT CDomNodeImpl<Base>::get_childNodes(IXMLDOMNodeList** childList)
{
    if (!childList) return E_POINTER;
    std::vector<xmlNodePtr> children;
    for (xmlNodePtr c = Node() ? Node()->children : nullptr; c; c = c->next) children.push_back(c);
    *childList = new CDomNodeList(Tree(), std::move(children));
    return S_OK;
}

template <class Base>
HRESULT CDomNodeImpl<Base>::get_xml(BSTR* xmlString)
{
    if (!xmlString) return E_POINTER;
    std::string text;
    if (xmlNodePtr node = Node(); node && node->type == XML_DOCUMENT_NODE) {
        xmlChar* mem = nullptr;
        int size = 0;
        xmlDocDumpMemoryEnc(reinterpret_cast<xmlDocPtr>(node), &mem, &size, "UTF-8");
        if (mem) text.assign(reinterpret_cast<const char*>(mem), static_cast<size_t>(size));
        xmlFree(mem);
    } else if (node) {
        xmlBufferPtr buf = xmlBufferCreate();
        xmlNodeDump(buf, node->doc, node, 0, 0);
        text.assign(reinterpret_cast<const char*>(xmlBufferContent(buf)), static_cast<size_t>(xmlBufferLength(buf)));
        xmlBufferFree(buf);
    }
    *xmlString = ToBstr(text);
    return S_OK;
}

void IgnoreXPathError(void*, xmlErrorPtr) {}

template <class Base>
HRESULT CDomNodeImpl<Base>::selectNodes(BSTR queryString, IXMLDOMNodeList** resultList)
{
    if (!resultList) return E_POINTER;
    *resultList = nullptr;
    std::vector<xmlNodePtr> found;
    if (Node()) {
        xmlXPathContextPtr ctx = xmlXPathNewContext(Node()->doc ? Node()->doc : reinterpret_cast<xmlDocPtr>(Node()));
        ctx->node = Node();
        ctx->error = &IgnoreXPathError;
        std::string expr = ToUtf8(BstrToString(queryString));
        xmlXPathObjectPtr result = xmlXPathEvalExpression(reinterpret_cast<const xmlChar*>(expr.c_str()), ctx);
        bool ok = result && result->type == XPATH_NODESET;
        if (ok && result->nodesetval)
            found.assign(result->nodesetval->nodeTab, result->nodesetval->nodeTab + result->nodesetval->nodeNr);
        xmlXPathFreeObject(result);
        xmlXPathFreeContext(ctx);
        if (!ok) return E_FAIL;
    }
    *resultList = new CDomNodeList(Tree(), std::move(found));
    return S_OK;
}

// Parse state: a document type declaration stops the parser before any of it is read.
struct ParseGuard {
    bool bRefused = false;
};

void RefuseDocumentType(void* ctx, const xmlChar*, const xmlChar*, const xmlChar*)
{
    auto ctxt = static_cast<xmlParserCtxtPtr>(ctx);
    static_cast<ParseGuard*>(ctxt->_private)->bRefused = true;
    xmlStopParser(ctxt);
}

bool ReadWholeFile(const std::string& path, std::string& bytes)
{
    FILE* f = std::fopen(path.c_str(), "rb");
    if (!f) return false;
    char chunk[1 << 16];
    size_t n;
    while ((n = std::fread(chunk, 1, sizeof chunk, f)) > 0) bytes.append(chunk, n);
    bool ok = !std::ferror(f);
    std::fclose(f);
    return ok;
}

constexpr int kParseOptions = XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING;

xmlDocPtr ParseSafely(const std::string& bytes)
{
    // The parser takes an int size; larger files are refused rather than cut.
    if (bytes.empty() || bytes.size() > static_cast<size_t>(INT32_MAX)) return nullptr;
    xmlParserCtxtPtr ctxt = xmlCreateMemoryParserCtxt(bytes.data(), static_cast<int>(bytes.size()));
    if (!ctxt) return nullptr;
    ParseGuard guard;
    ctxt->_private = &guard;
    xmlCtxtUseOptions(ctxt, kParseOptions);
    ctxt->sax->internalSubset = &RefuseDocumentType;
    ctxt->sax->externalSubset = &RefuseDocumentType;
    xmlParseDocument(ctxt);
    xmlDocPtr doc = ctxt->myDoc;
    ctxt->myDoc = nullptr;
    bool ok = ctxt->wellFormed && !guard.bRefused && doc && !doc->intSubset && !doc->extSubset;
    xmlFreeParserCtxt(ctxt);
    if (!ok && doc) xmlFreeDoc(doc);
    return ok ? doc : nullptr;
}

class CDomDocument final : public CDomNodeImpl<IXMLDOMDocument> {
public:
    HRESULT QueryInterface(REFIID riid, void** ppv) override
    {
        if (!ppv) return E_POINTER;
        if (riid != IID_IUnknown && riid != IID_IXMLDOMNode && riid != IID_IXMLDOMDocument) {
            *ppv = nullptr;
            return E_NOINTERFACE;
        }
        AddRef();
        return Hand(static_cast<IXMLDOMDocument*>(this), ppv);
    }
    ULONG AddRef() override { return m_ref.AddRefImpl(); }
    ULONG Release() override { return m_ref.ReleaseImpl(this); }
    HRESULT put_async(VARIANT_BOOL) override { return S_OK; }
    HRESULT load(VARIANT xmlSource, VARIANT_BOOL* isSuccessful) override
    {
        if (!isSuccessful) return E_POINTER;
        *isSuccessful = VARIANT_FALSE;
        m_tree.reset();
        if (xmlSource.vt != VT_BSTR) return E_INVALIDARG;
        std::string bytes;
        CString path = BstrToString(xmlSource.bstrVal);
        if (path.IsEmpty() || !ReadWholeFile(FileSystemName(path), bytes)) return S_FALSE;
        xmlInitParser();
        xmlDocPtr doc = ParseSafely(bytes);
        if (!doc) return S_FALSE;
        m_tree = std::make_shared<DomTree>(doc);
        *isSuccessful = VARIANT_TRUE;
        return S_OK;
    }

protected:
    xmlNodePtr Node() const override { return m_tree ? reinterpret_cast<xmlNodePtr>(m_tree->pDoc) : nullptr; }
    TreeRef Tree() const override { return m_tree; }

private:
    friend class CComRefCount<CDomDocument>;
    ~CDomDocument() = default;
    CComRefCount<CDomDocument> m_ref;
    TreeRef m_tree;
};

class CDomFactory final : public IClassFactory {
public:
    HRESULT QueryInterface(REFIID riid, void** ppv) override
    {
        if (!ppv) return E_POINTER;
        if (riid != IID_IUnknown && riid != IID_IClassFactory) { *ppv = nullptr; return E_NOINTERFACE; }
        return Hand(static_cast<IClassFactory*>(this), ppv);
    }
    ULONG AddRef() override { return 2; }   // a static object
    ULONG Release() override { return 1; }
    HRESULT CreateInstance(IUnknown* pUnkOuter, REFIID riid, void** ppv) override
    {
        if (!ppv) return E_POINTER;
        *ppv = nullptr;
        if (pUnkOuter) return CLASS_E_NOAGGREGATION;
        auto* doc = new CDomDocument;
        HRESULT hr = doc->QueryInterface(riid, ppv);
        doc->Release();
        return hr;
    }
    HRESULT LockServer(BOOL) override { return S_OK; }
};

} // namespace

HRESULT MsxmlDllGetClassObject(REFCLSID rclsid, REFIID riid, void** ppv)
{
    static CDomFactory factory;
    if (!ppv) return E_POINTER;
    *ppv = nullptr;
    if (rclsid != CLSID_DOMDocument) return CLASS_E_CLASSNOTAVAILABLE;
    return factory.QueryInterface(riid, ppv);
}
