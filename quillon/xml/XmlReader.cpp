// CQuillonCtrl: a document read from a file through the DOM and applied element by element.
#include "com/msxml.h"
#include "com/objbase.h"
#include "control/QuillonCtrl.h"
#include "framework/filedlg.h"
#include <utility>

namespace {

constexpr const char16_t* kXmlQuery = u"//quEditXML/*";
constexpr int kMinDialogName = 3;

struct XmlFailure {
    SHORT nError = 0; // 0: the document is ready to apply
    SHORT nIndex = 0;
};

bool ReadsItems(SHORT nFileInfo) { return nFileInfo == 0 || nFileInfo == 1; }

// A string the DOM handed out (read once the call has returned), copied into a CString whose buffer
// is reused from node to node.
bool TakeString(HRESULT hr, BSTR& bstr, CString& out)
{
    // A BSTR's length is below 2G code units.
    out.SetString(bstr, bstr ? static_cast<int>(SysStringLen(bstr)) : 0);
    SysFreeString(bstr);
    bstr = nullptr;
    return hr == S_OK;
}

// The node at an index with its name and text; false when any of the three cannot be had.
bool FetchNode(IXMLDOMNodeList* pList, LONG i, CComPtr<IXMLDOMNode>& node, CString& strName, CString& strText)
{
    if (pList->get_item(i, &node) != S_OK || !node) return false;
    BSTR bstr = nullptr;
    if (!TakeString(node->get_nodeName(&bstr), bstr, strName)) return false;
    bstr = nullptr;
    return TakeString(node->get_text(&bstr), bstr, strText);
}

// Parses the file and selects the elements to apply. The control is not touched here.
XmlFailure LoadXmlNodes(LPCTSTR strFileName, CComPtr<IXMLDOMDocument>& doc, CComPtr<IXMLDOMNodeList>& nodes,
                        LONG& nLength)
{
    if (FAILED(CoCreateInstance(CLSID_DOMDocument, nullptr, CLSCTX_INPROC_SERVER, IID_IXMLDOMDocument,
                                reinterpret_cast<void**>(&doc))) || !doc)
        return {errXmlDocument, 0};
    doc->put_async(VARIANT_FALSE);
    COleVariant vFile(strFileName);
    VARIANT_BOOL bLoaded = VARIANT_FALSE;
    if (FAILED(doc->load(vFile, &bLoaded)) || bLoaded != VARIANT_TRUE) return {errXmlFile, 0};
    BSTR bstrXml = nullptr;
    CString strXml;
    if (!TakeString(doc->get_xml(&bstrXml), bstrXml, strXml) || strXml.IsEmpty()) return {errXmlText, 0};
    BSTR bstrQuery = SysAllocString(kXmlQuery);
    HRESULT hr = doc->selectNodes(bstrQuery, &nodes);
    SysFreeString(bstrQuery);
    if (FAILED(hr) || !nodes) return {errXmlNodes, 0};
    if (FAILED(nodes->get_length(&nLength)) || nLength <= 0) return {errXmlNodes, 1};
    return {};
}

// Walks the elements in document order until the end or the first node that cannot be fetched.
BOOL ApplyXmlNodes(CQuillonCtrl& ctrl, IXMLDOMNodeList* pNodes, LONG nLength, SHORT nFileInfo)
{
    BOOL bResult = TRUE;
    CString strName, strText;
    for (LONG i = 0; i < nLength && bResult; ++i) {
        CComPtr<IXMLDOMNode> node;
        if (!FetchNode(pNodes, i, node, strName, strText)) return FALSE;
        ctrl.ApplyXmlProperty(strName, strText);
        if (strName == u"ITEM" && ReadsItems(nFileInfo)) {
            CComPtr<IXMLDOMNodeList> children;
            bResult = node->get_childNodes(&children) == S_OK && children ? ctrl.ReadXmlItem(children.Get()) : FALSE;
        }
    }
    return bResult;
}

} // namespace

// Failures up to the node list leave the control as it was; from the clearing of the list on,
// every element read stays applied.
BOOL CQuillonCtrl::ReadXmlFile(LPCTSTR strFileName, SHORT nFileInfo)
{
    CoInitialize(nullptr);
    BOOL bResult = FALSE;
    {
        CComPtr<IXMLDOMDocument> doc;
        CComPtr<IXMLDOMNodeList> nodes;
        LONG nLength = 0;
        XmlFailure failure = LoadXmlNodes(strFileName, doc, nodes, nLength);
        if (failure.nError != 0) {
            FireCtrlError(failure.nError, failure.nIndex);
        } else {
            ClearItems();
            bResult = ApplyXmlNodes(*this, nodes.Get(), nLength, nFileInfo);
        }
    }
    CoUninitialize();
    return bResult;
}

// Each Text child adds an item; other children and deeper descendants are passed over.
BOOL CQuillonCtrl::ReadXmlItem(IXMLDOMNodeList* pChildren)
{
    LONG nLength = 0;
    if (FAILED(pChildren->get_length(&nLength))) return FALSE;
    CString strName;
    for (LONG i = 0; i < nLength; ++i) {
        CComPtr<IXMLDOMNode> child;
        CString strText;
        if (!FetchNode(pChildren, i, child, strName, strText)) return FALSE;
        if (strName == u"Text") AdoptItem(std::move(strText));
    }
    return TRUE;
}

BOOL CQuillonCtrl::ReadFile(LPCTSTR strFileName, SHORT nFileInfo) { return ReadXmlFile(strFileName, nFileInfo); }

// Reads properties and items from the file the user picks; the value itself is not kept.
void CQuillonCtrl::SetXMLRead(LPCTSTR strValue)
{
    if (CString(strValue).GetLength() < kMinDialogName) return;
    CFileDialog dlg(TRUE, u"xml", strValue, OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT, nullptr, nullptr, 0, TRUE);
    if (dlg.DoModal() == IDOK) ReadXmlFile(dlg.GetPathName(), 1);
}
