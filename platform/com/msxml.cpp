// The DOM over libxml2: a parsed tree shared by the document, its nodes and its node lists.
#include "msxml.h"
#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/tree.h>
#include <libxml/xpath.h>
#include <cstdio>
#include <memory>
#include <string>
#include <utility>
#include <vector>
#include "base/crtio.h"
#include "sysfactory_p.h"

namespace {

// The parsed tree; nodes and lists handed out keep it alive after the document is released.
// Counted by hand, without atomics: the DOM lives in its apartment's one thread.
struct DomTree {
    DomTree(xmlDocPtr doc, size_t nBytes) : pDoc(doc), nSourceBytes(nBytes) {}
    ~DomTree() { xmlFreeDoc(pDoc); }
    DomTree(const DomTree&) = delete;
    DomTree& operator=(const DomTree&) = delete;
    xmlDocPtr pDoc;
    size_t nSourceBytes; // the file's size: room enough for its text as UTF-16, without regrowth
    ULONG nRefs = 0;
};

class TreeRef {
public:
    TreeRef() = default;
    explicit TreeRef(DomTree* p) : m_p(p) { if (m_p) ++m_p->nRefs; }
    TreeRef(const TreeRef& o) : TreeRef(o.m_p) {}
    TreeRef& operator=(TreeRef o) { std::swap(m_p, o.m_p); return *this; }
    ~TreeRef() { if (m_p && --m_p->nRefs == 0) delete m_p; }
    DomTree* operator->() const { return m_p; }
    explicit operator bool() const { return m_p != nullptr; }
    void reset() { *this = TreeRef(); }
private:
    DomTree* m_p = nullptr;
};

constexpr size_t kSerialSlack = 256; // the declaration and line ends the serialisation adds

// Appends UTF-8 text as UTF-16, ASCII on a short path.
void AppendUtf16(std::u16string& out, std::string_view utf8)
{
    size_t ascii = 0;
    while (ascii < utf8.size() && static_cast<unsigned char>(utf8[ascii]) < 0x80) ++ascii;
    size_t old = out.size();
    out.resize(old + ascii);
    for (size_t i = 0; i < ascii; ++i) out[old + i] = static_cast<char16_t>(utf8[i]);
    if (ascii < utf8.size()) out += FromUtf8(utf8.substr(ascii));
}

BSTR ToBstr(std::string_view utf8)
{
    thread_local std::u16string buffer;
    buffer.clear();
    AppendUtf16(buffer, utf8);
    // Node text is bounded by the parser's limits, far below 4G code units.
    return SysAllocStringLen(buffer.data(), static_cast<UINT>(buffer.size()));
}

std::string_view View(const xmlChar* s) { return s ? reinterpret_cast<const char*>(s) : ""; }

bool IsXmlBlank(char ch) { return ch == ' ' || ch == '\t' || ch == '\n' || ch == '\r'; }

std::string_view TrimBlanks(std::string_view s)
{
    while (!s.empty() && IsXmlBlank(s.front())) s.remove_prefix(1);
    while (!s.empty() && IsXmlBlank(s.back())) s.remove_suffix(1);
    return s;
}

BSTR NodeName(xmlNodePtr node)
{
    switch (node->type) {
    case XML_TEXT_NODE: return SysAllocString(u"#text");
    case XML_CDATA_SECTION_NODE: return SysAllocString(u"#cdata-section");
    case XML_COMMENT_NODE: return SysAllocString(u"#comment");
    case XML_DOCUMENT_NODE: return SysAllocString(u"#document");
    default: break;
    }
    if (node->type == XML_ELEMENT_NODE && node->ns && node->ns->prefix)
        return ToBstr(std::string(View(node->ns->prefix)) + ":" + std::string(View(node->name)));
    return ToBstr(View(node->name));
}

// The text of the nodes below: text and CDATA, with comments and instructions left out.
void AppendSubtreeText(xmlNodePtr node, std::string& out)
{
    for (xmlNodePtr c = node->children; c; c = c->next) {
        if (c->type == XML_TEXT_NODE || c->type == XML_CDATA_SECTION_NODE) out += View(c->content);
        else if (c->type == XML_ELEMENT_NODE || c->type == XML_ENTITY_REF_NODE) AppendSubtreeText(c, out);
    }
}

BSTR NodeText(xmlNodePtr node)
{
    if (node->type != XML_ELEMENT_NODE && node->type != XML_DOCUMENT_NODE) return ToBstr(TrimBlanks(View(node->content)));
    // An element with one text child, the common case, needs no copy.
    xmlNodePtr only = node->children;
    if (!only) return SysAllocString(u"");
    if (!only->next && only->type == XML_TEXT_NODE) return ToBstr(TrimBlanks(View(only->content)));
    thread_local std::string text;
    text.clear();
    AppendSubtreeText(node, text);
    return ToBstr(TrimBlanks(text));
}

// Serialisation, as MSXML gives it: markup escaped where it must be, empty elements closed as "/>".
// One pass over the text: ASCII widened in place, the rest of a run decoded at once.
void AppendEscaped(std::u16string& out, std::string_view text, bool bAttribute)
{
    size_t from = 0;
    auto flush = [&](size_t to) { if (to > from) AppendUtf16(out, text.substr(from, to - from)); };
    for (size_t i = 0; i < text.size(); ++i) {
        const char ch = text[i];
        const char16_t* entity = ch == '&' ? u"&amp;" : ch == '<' ? u"&lt;" : ch == '>' ? u"&gt;"
                               : ch == '"' && bAttribute ? u"&quot;" : nullptr;
        if (!entity) continue;
        flush(i);
        out += entity;
        from = i + 1;
    }
    flush(text.size());
}

void AppendMarkup(std::u16string& out, xmlNodePtr node);

void AppendElement(std::u16string& out, xmlNodePtr node)
{
    std::u16string name;
    if (node->ns && node->ns->prefix) { AppendUtf16(name, View(node->ns->prefix)); name += u':'; }
    AppendUtf16(name, View(node->name));
    out += u'<';
    out += name;
    for (xmlNsPtr ns = node->nsDef; ns; ns = ns->next) {
        out += ns->prefix ? u" xmlns:" : u" xmlns";
        if (ns->prefix) AppendUtf16(out, View(ns->prefix));
        out += u"=\"";
        AppendEscaped(out, View(ns->href), true);
        out += u'"';
    }
    for (xmlAttrPtr a = node->properties; a; a = a->next) {
        out += u' ';
        AppendUtf16(out, View(a->name));
        out += u"=\"";
        std::string value;
        AppendSubtreeText(reinterpret_cast<xmlNodePtr>(a), value);
        AppendEscaped(out, value, true);
        out += u'"';
    }
    if (!node->children) { out += u"/>"; return; }
    out += u'>';
    for (xmlNodePtr c = node->children; c; c = c->next) AppendMarkup(out, c);
    out += u"</";
    out += name;
    out += u'>';
}

void AppendMarkup(std::u16string& out, xmlNodePtr node)
{
    switch (node->type) {
    case XML_ELEMENT_NODE: AppendElement(out, node); break;
    case XML_TEXT_NODE: AppendEscaped(out, View(node->content), false); break;
    case XML_CDATA_SECTION_NODE: out += u"<![CDATA["; AppendUtf16(out, View(node->content)); out += u"]]>"; break;
    case XML_COMMENT_NODE: out += u"<!--"; AppendUtf16(out, View(node->content)); out += u"-->"; break;
    case XML_PI_NODE:
        out += u"<?";
        AppendUtf16(out, View(node->name));
        if (node->content) { out += u' '; AppendUtf16(out, View(node->content)); }
        out += u"?>";
        break;
    case XML_ENTITY_REF_NODE: out += u'&'; AppendUtf16(out, View(node->name)); out += u';'; break;
    case XML_DOCUMENT_NODE:
        // The declaration is kept as MSXML keeps it, as the first line of the document's text.
        if (auto doc = reinterpret_cast<xmlDocPtr>(node); doc->version) {
            out += u"<?xml version=\"";
            AppendUtf16(out, View(doc->version));
            out += u"\"?>\r\n";
        }
        for (xmlNodePtr c = node->children; c; c = c->next) { AppendMarkup(out, c); out += u"\r\n"; }
        break;
    default: break;
    }
}

template <class I>
HRESULT Hand(I* object, void** ppv)
{
    *ppv = object;
    return S_OK;
}

// Nodes and lists come and go by the ten thousand while a document is walked; each class keeps its
// freed blocks for the next one instead of going back to the heap (one thread: no locking).
// Under AddressSanitizer the blocks go back to the heap, so that a node used after its release is caught.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool kKeepFreedNodes = false;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
constexpr bool kKeepFreedNodes = false;
#else
constexpr bool kKeepFreedNodes = true;
#endif
#else
constexpr bool kKeepFreedNodes = true;
#endif

template <class T>
struct CFreeList {
    static void* Allocate(size_t size)
    {
        if (size == sizeof(T) && Head()) {
            void* p = Head();
            Head() = *static_cast<void**>(p);
            return p;
        }
        return ::operator new(size);
    }
    static void Free(void* p, size_t size)
    {
        if (!kKeepFreedNodes || size != sizeof(T)) return ::operator delete(p);
        *static_cast<void**>(p) = Head();
        Head() = p;
    }
    static void*& Head()
    {
        thread_local void* head = nullptr;
        return head;
    }
};

class CDomNodeList;

// IXMLDOMNode over one libxml2 node; the document derives from it with its tree's root.
template <class Base>
class CDomNodeImpl : public Base {
public:
    HRESULT get_nodeName(BSTR* name) override
    {
        if (!name) return E_POINTER;
        *name = NodeName(Node());
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
    static void* operator new(size_t size) { return CFreeList<CDomNode>::Allocate(size); }
    static void operator delete(void* p, size_t size) { CFreeList<CDomNode>::Free(p, size); }
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

// A list holds a selection's nodes, or walks an element's children along their sibling links from
// where the last lookup stopped: lists are read front to back, and a child list costs no copy.
class CDomNodeList final : public IXMLDOMNodeList {
public:
    CDomNodeList(TreeRef tree, std::vector<xmlNodePtr> nodes)
        : m_tree(std::move(tree)), m_nodes(std::move(nodes)), m_nLength(m_nodes.size()) {}
    CDomNodeList(TreeRef tree, xmlNodePtr parent) : m_tree(std::move(tree)), m_pParent(parent)
    {
        for (xmlNodePtr c = parent->children; c; c = c->next) ++m_nLength;
    }
    static void* operator new(size_t size) { return CFreeList<CDomNodeList>::Allocate(size); }
    static void operator delete(void* p, size_t size) { CFreeList<CDomNodeList>::Free(p, size); }
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
        if (index < 0 || static_cast<size_t>(index) >= m_nLength) return S_FALSE;
        *listItem = new CDomNode(m_tree, NodeAt(static_cast<size_t>(index)));
        return S_OK;
    }
    HRESULT get_length(LONG* listLength) override
    {
        if (!listLength) return E_POINTER;
        // A list never holds more nodes than a document of at most 2 GB can.
        *listLength = static_cast<LONG>(m_nLength);
        return S_OK;
    }

private:
    friend class CComRefCount<CDomNodeList>;
    ~CDomNodeList() = default;
    xmlNodePtr NodeAt(size_t index)
    {
        if (!m_pParent) return m_nodes[index];
        if (!m_pCursor || index < m_nCursor) m_pCursor = m_pParent->children, m_nCursor = 0;
        for (; m_nCursor < index; ++m_nCursor) m_pCursor = m_pCursor->next;
        return m_pCursor;
    }
    CComRefCount<CDomNodeList> m_ref;
    TreeRef m_tree;
    std::vector<xmlNodePtr> m_nodes; // a selection
    xmlNodePtr m_pParent = nullptr;   // or the element whose children these are
    size_t m_nLength = 0;
    xmlNodePtr m_pCursor = nullptr; // the child last looked up, at m_nCursor
    size_t m_nCursor = 0;
};

template <class Base>
HRESULT CDomNodeImpl<Base>::get_text(BSTR* text)
{
    if (!text) return E_POINTER;
    *text = Node() ? NodeText(Node()) : SysAllocString(u"");
    return S_OK;
}

template <class Base>
HRESULT CDomNodeImpl<Base>::get_childNodes(IXMLDOMNodeList** childList)
{
    if (!childList) return E_POINTER;
    *childList = Node() ? new CDomNodeList(Tree(), Node()) : new CDomNodeList(Tree(), std::vector<xmlNodePtr>{});
    return S_OK;
}

template <class Base>
HRESULT CDomNodeImpl<Base>::get_xml(BSTR* xmlString)
{
    if (!xmlString) return E_POINTER;
    std::u16string text;
    if (Tree()) text.reserve(Tree()->nSourceBytes + kSerialSlack);
    if (Node()) AppendMarkup(text, Node());
    // A document the parser accepts is far below 4G code units.
    *xmlString = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
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

struct SourceFile {
    FILE* pFile;
    size_t nBytes = 0;
};

int ReadFromFile(void* context, char* buffer, int len)
{
    auto* src = static_cast<SourceFile*>(context);
    FILE* f = src->pFile;
    // The parser asks for at most an int's worth, so what fread gives fits back into one.
    int n = static_cast<int>(std::fread(buffer, 1, static_cast<size_t>(len), f));
    src->nBytes += static_cast<size_t>(n);
    return n == 0 && std::ferror(f) ? -1 : n;
}

int CloseFile(void*) { return 0; } // the file is closed by its opener

// Short text nodes are kept inside their node (XML_PARSE_COMPACT): the line breaks between elements
// cost no allocation each.
constexpr int kParseOptions = XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_COMPACT;

void IgnoreGenericError(void*, const char*, ...) {}
void IgnoreStructuredError(void*, xmlErrorPtr) {}

// libxml2 reports encoding and input errors through its process-wide handlers, which write to
// standard error; a parse here stays silent, as the DOM does, and puts the handlers back after.
class CQuietErrors {
public:
    CQuietErrors() : m_generic(xmlGenericError), m_genericContext(xmlGenericErrorContext),
                     m_structured(xmlStructuredError), m_structuredContext(xmlStructuredErrorContext)
    {
        xmlSetGenericErrorFunc(nullptr, &IgnoreGenericError);
        xmlSetStructuredErrorFunc(nullptr, &IgnoreStructuredError);
    }
    ~CQuietErrors()
    {
        xmlSetGenericErrorFunc(m_genericContext, m_generic);
        xmlSetStructuredErrorFunc(m_structuredContext, m_structured);
    }
    CQuietErrors(const CQuietErrors&) = delete;
    CQuietErrors& operator=(const CQuietErrors&) = delete;

private:
    xmlGenericErrorFunc m_generic;
    void* m_genericContext;
    xmlStructuredErrorFunc m_structured;
    void* m_structuredContext;
};

// Reads the file in the parser's own pieces; the encoding comes from the byte-order mark or the
// declaration. Only a plain local file is opened: no URL, no decompression.
xmlDocPtr ParseFileSafely(SourceFile& src)
{
    CQuietErrors quiet;
    xmlParserCtxtPtr ctxt = xmlCreateIOParserCtxt(nullptr, nullptr, &ReadFromFile, &CloseFile, &src, XML_CHAR_ENCODING_NONE);
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
        CString path = BstrToString(xmlSource.bstrVal);
        if (path.IsEmpty()) return S_FALSE;
        xmlInitParser();
        SourceFile src{std::fopen(FileSystemName(path).c_str(), "rb")};
        if (!src.pFile) return S_FALSE;
        xmlDocPtr doc = ParseFileSafely(src);
        std::fclose(src.pFile);
        if (!doc) return S_FALSE;
        m_tree = TreeRef(new DomTree(doc, src.nBytes));
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

} // namespace

HRESULT MsxmlDllGetClassObject(REFCLSID rclsid, REFIID riid, void** ppv)
{
    return GetSystemClassObject<CDomDocument>(CLSID_DOMDocument, rclsid, riid, ppv);
}
