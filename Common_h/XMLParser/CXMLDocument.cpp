#include "Common_h/XMLParser/CXMLDocument.h"

#include "Platform/CFile.h"
#include "Platform/NativePath.h"

#include <libxml/entities.h>
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <libxml/xmlerror.h>
#include <libxml/xpath.h>
#include <libxslt/documents.h>
#include <libxslt/security.h>
#include <libxslt/transform.h>
#include <libxslt/xsltInternals.h>
#include <libxslt/xsltutils.h>

#include <climits>
#include <cstdarg>
#include <cstdio>
#include <mutex>
#include <string>
#include <unordered_map>

namespace
{
// Class not registered: the answer to an unknown service name.
constexpr HRESULT REGDB_E_CLASSNOTREG = static_cast<HRESULT>(0x80040154u);

// Options of every parse: no network, no DTD, no external entities, no output of the library.
constexpr int PARSE_OPTIONS = XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING;

// Whether the bytes may declare an entity, in an 8-bit form or in UTF-16 of either order.
bool MayDeclareEntities(std::string_view szData)
{
    static const std::string aszForms[] = {"<!ENTITY", std::string("<\0!\0E\0N\0T\0I\0T\0Y", 15),
                                           std::string("\0<\0!\0E\0N\0T\0I\0T\0Y", 16)};
    for (const std::string& szForm : aszForms)
        if (szData.find(szForm) != std::string_view::npos)
            return true;
    return false;
}

xsltDocLoaderFunc s_pfnDefaultLoader = nullptr; // the style sheet library's own loader
xsltSecurityPrefsPtr s_pSecurity = nullptr;     // what transformations may touch

// Documents that style sheets import or read with document() are parsed as safely as ours.
xmlDocPtr SafeLoader(const xmlChar* pszUri, xmlDictPtr pDict, int nOptions, void* pCtxt, xsltLoadType type)
{
    nOptions &=
        ~(XML_PARSE_NOENT | XML_PARSE_DTDLOAD | XML_PARSE_DTDATTR | XML_PARSE_DTDVALID | XML_PARSE_XINCLUDE);
    nOptions |= PARSE_OPTIONS;
    return s_pfnDefaultLoader(pszUri, pDict, nOptions, pCtxt, type);
}

void InitLibraries()
{
    static std::once_flag s_once;
    std::call_once(s_once,
                   []
                   {
                       xmlInitParser();
                       s_pfnDefaultLoader = xsltDocDefaultLoader;
                       xsltSetLoaderFunc(SafeLoader);
                       s_pSecurity = xsltNewSecurityPrefs();
                       for (xsltSecurityOption option :
                            {XSLT_SECPREF_WRITE_FILE, XSLT_SECPREF_CREATE_DIRECTORY,
                             XSLT_SECPREF_READ_NETWORK, XSLT_SECPREF_WRITE_NETWORK})
                           xsltSetSecurityPrefs(s_pSecurity, option, xsltSecurityForbid);
                   });
}

// Catches the messages of the libraries while it lives, so that they describe a failure
// instead of going to the standard error stream.
class CErrorCapture
{
public:
    CErrorCapture()
        : m_pfnStructured(xmlStructuredError), m_pStructuredCtx(xmlStructuredErrorContext),
          m_pfnGeneric(xmlGenericError), m_pGenericCtx(xmlGenericErrorContext), m_pfnXslt(xsltGenericError),
          m_pXsltCtx(xsltGenericErrorContext)
    {
        xmlSetStructuredErrorFunc(this, OnStructured);
        xmlSetGenericErrorFunc(this, OnGeneric);
        xsltSetGenericErrorFunc(this, OnGeneric);
    }
    CErrorCapture(const CErrorCapture&) = delete;
    CErrorCapture& operator=(const CErrorCapture&) = delete;
    ~CErrorCapture()
    {
        xmlSetStructuredErrorFunc(m_pStructuredCtx, m_pfnStructured);
        xmlSetGenericErrorFunc(m_pGenericCtx, m_pfnGeneric);
        xsltSetGenericErrorFunc(m_pXsltCtx, m_pfnXslt);
    }

    // The messages caught so far, or csDefault when there are none.
    CString Text(const char16_t* szDefault) const
    {
        if (m_szText.empty())
            return CString(szDefault);
        CString cs = CString::FromUtf8(m_szText);
        cs.Trim(u" \t\r\n");
        return cs;
    }

private:
    static void OnStructured(void* pCtx, xmlErrorPtr pError)
    {
        if (pError && pError->message)
            static_cast<CErrorCapture*>(pCtx)->Append(pError->message);
    }
    static void OnGeneric(void* pCtx, const char* szFormat, ...)
    {
        char szBuffer[512];
        va_list args;
        va_start(args, szFormat);
        std::vsnprintf(szBuffer, sizeof(szBuffer), szFormat, args);
        va_end(args);
        static_cast<CErrorCapture*>(pCtx)->Append(szBuffer);
    }
    void Append(const char* sz)
    {
        if (m_szText.size() < 4096)
            m_szText += sz;
    }

    xmlStructuredErrorFunc m_pfnStructured;
    void* m_pStructuredCtx;
    xmlGenericErrorFunc m_pfnGeneric;
    void* m_pGenericCtx;
    xmlGenericErrorFunc m_pfnXslt;
    void* m_pXsltCtx;
    std::string m_szText; // the messages, joined
};

// The size an entity expands to, with the entities it refers to; memoised, and a reference
// loop counts as the limit. Sizes saturate at the limit.
class CExpansionMeter
{
public:
    explicit CExpansionMeter(xmlDoc* pDoc) : m_pDoc(pDoc) {}

    // The expanded size of the entity references below pNode, attributes included.
    std::size_t Measure(xmlNode* pNode, int nDepth)
    {
        std::size_t nSize = 0;
        for (xmlNode* pChild = pNode; pChild && nSize < LIMIT;)
        {
            if (pChild->type == XML_ENTITY_REF_NODE)
                nSize = Add(nSize, EntitySize(xmlGetDocEntity(m_pDoc, pChild->name), nDepth));
            else if (nDepth > 0 && (pChild->type == XML_TEXT_NODE || pChild->type == XML_CDATA_SECTION_NODE))
                nSize = Add(nSize, pChild->content ? xmlStrlen(pChild->content) : 0);
            if (pChild->type == XML_ELEMENT_NODE)
            {
                for (xmlAttr* pAttr = pChild->properties; pAttr; pAttr = pAttr->next)
                    nSize = Add(nSize, Measure(pAttr->children, nDepth));
            }
            // Depth first through children, but never into an entity's own subtree.
            if (pChild->children && pChild->type != XML_ENTITY_REF_NODE && pChild->type != XML_DTD_NODE &&
                pChild->type != XML_ENTITY_DECL)
            {
                pChild = pChild->children;
                continue;
            }
            while (pChild && pChild->next == nullptr)
            {
                pChild = pChild->parent;
                if (pChild == nullptr || pChild == pNode->parent)
                    return nSize;
            }
            if (pChild)
                pChild = pChild->next;
        }
        return nSize;
    }

    static constexpr std::size_t LIMIT = CXMLDocument::MAX_ENTITY_EXPANSION;

private:
    static std::size_t Add(std::size_t a, std::size_t b) { return a + b > LIMIT ? LIMIT : a + b; }

    std::size_t EntitySize(xmlEntity* pEntity, int nDepth)
    {
        if (pEntity == nullptr)
            return 0;
        const auto it = m_mapSizes.find(pEntity);
        if (it != m_mapSizes.end())
            return it->second;
        if (nDepth > 40)
            return LIMIT;
        m_mapSizes[pEntity] = LIMIT; // a loop back to here is too much
        std::size_t nSize = 0;
        if (pEntity->children)
            nSize = Measure(pEntity->children, nDepth + 1);
        else if (pEntity->content)
            nSize = static_cast<std::size_t>(xmlStrlen(pEntity->content));
        m_mapSizes[pEntity] = nSize;
        return nSize;
    }

    xmlDoc* m_pDoc;
    std::unordered_map<xmlEntity*, std::size_t> m_mapSizes; // sizes found so far
};

// The node set of an XPath evaluated on the document element; freed with the object.
class CNodeSet
{
public:
    CNodeSet(xmlDoc* pDoc, const CString& csXPath, const char16_t* szSource)
    {
        xmlNode* pRoot = xmlDocGetRootElement(pDoc);
        if (pRoot == nullptr)
            throw CXMLException(E_POINTER, szSource, u"The document has no element");
        CErrorCapture capture;
        xmlXPathContext* pContext = xmlXPathNewContext(pDoc);
        if (pContext == nullptr)
            throw CXMLException(E_OUTOFMEMORY, szSource);
        pContext->node = pRoot;
        const std::string szXPath = csXPath.ToUtf8();
        m_pResult = xmlXPathEvalExpression(reinterpret_cast<const xmlChar*>(szXPath.c_str()), pContext);
        xmlXPathFreeContext(pContext);
        if (m_pResult == nullptr)
            throw CXMLException(E_FAIL, szSource, capture.Text(u"Invalid XPath expression"));
        if (m_pResult->type != XPATH_NODESET)
        {
            xmlXPathFreeObject(m_pResult);
            throw CXMLException(E_FAIL, szSource, u"Expression does not return a DOM node");
        }
    }
    CNodeSet(const CNodeSet&) = delete;
    CNodeSet& operator=(const CNodeSet&) = delete;
    ~CNodeSet() { xmlXPathFreeObject(m_pResult); }

    int GetCount() const noexcept { return m_pResult->nodesetval ? m_pResult->nodesetval->nodeNr : 0; }
    xmlNode* GetAt(int nIndex) const noexcept { return m_pResult->nodesetval->nodeTab[nIndex]; }

private:
    xmlXPathObject* m_pResult = nullptr;
};

void FreeDoc(xmlDoc* pDoc)
{
    xmlFreeDoc(pDoc);
}

// Serialisation writes characters, never character references: the document's text is
// UTF-8 inside whatever its source was.
void MarkUtf8(xmlDoc* pDoc)
{
    if (pDoc->encoding != nullptr)
        xmlFree(const_cast<xmlChar*>(pDoc->encoding));
    pDoc->encoding = xmlStrdup(reinterpret_cast<const xmlChar*>("UTF-8"));
}
} // namespace

CXMLDocument::CXMLDocument(const CString& csClassName)
{
    Create(csClassName);
}

void CXMLDocument::Create(const CString& csClassName, DWORD /*nContext*/)
{
    InitLibraries();
    if (csClassName != CLASS_DOCUMENT_40 && csClassName != CLASS_DOCUMENT_30)
        throw CXMLException(REGDB_E_CLASSNOTREG, u"CXMLDocument::Create",
                            u"Unknown document service: " + csClassName);
    xmlDoc* pDoc = xmlNewDoc(reinterpret_cast<const xmlChar*>("1.0"));
    if (pDoc == nullptr)
        throw CXMLException(E_OUTOFMEMORY, u"CXMLDocument::Create");
    MarkUtf8(pDoc);
    m_pDoc.reset(pDoc, FreeDoc);
    m_bCreated = true;
}

_xmlDoc* CXMLDocument::Document(const char16_t* szSource) const
{
    if (!m_pDoc)
        throw CXMLException(E_POINTER, szSource, u"The document was not created");
    return m_pDoc.get();
}

_xmlDoc* CXMLDocument::Parse(const char* pData, std::size_t nSize, const char* szUrl, const char* szEncoding,
                             int nExtraOptions)
{
    if (nSize > static_cast<std::size_t>(INT_MAX))
        return nullptr;
    CErrorCapture capture;
    xmlParserCtxt* pContext = xmlNewParserCtxt();
    if (pContext == nullptr)
        return nullptr;
    // The library caps a text node at 10 MB, counted after conversion and so not alike for every
    // form of the same document. Where no entity is declared, nothing can expand, and the cap is
    // lifted for every form; documents that declare entities keep the library's caps as well as ours.
    const int nHuge = MayDeclareEntities(std::string_view(pData, nSize)) ? 0 : XML_PARSE_HUGE;
    xmlDoc* pDoc = xmlCtxtReadMemory(pContext, pData, static_cast<int>(nSize), szUrl, szEncoding,
                                     PARSE_OPTIONS | nHuge | nExtraOptions);
    xmlFreeParserCtxt(pContext);
    if (pDoc != nullptr)
    {
        // Entity references stay references in the tree; their text must stay within bounds
        // when a caller asks for it.
        CExpansionMeter meter(pDoc);
        if (meter.Measure(pDoc->children, 0) >= CExpansionMeter::LIMIT)
        {
            xmlFreeDoc(pDoc);
            return nullptr;
        }
        MarkUtf8(pDoc);
    }
    return pDoc;
}

BOOL CXMLDocument::Open(const CString& csText, BOOL bIsFile)
{
    Document(u"CXMLDocument::Open");
    xmlDoc* pDoc = nullptr;
    if (bIsFile)
    {
        const std::string szPath = ToNativePath(csText);
        std::string szData;
        try
        {
            CFile file;
            if (file.Open(csText, CFile::modeRead | CFile::shareDenyNone))
            {
                char szBuffer[65536];
                for (UINT nRead; (nRead = file.Read(szBuffer, sizeof(szBuffer))) > 0;)
                    szData.append(szBuffer, nRead);
                file.Close();
                pDoc = Parse(szData.data(), szData.size(), szPath.c_str(), nullptr, 0);
            }
        }
        catch (const CFileException&)
        {
            pDoc = nullptr;
        }
    }
    else
    {
        const std::string szText = csText.ToUtf8();
        pDoc = Parse(szText.data(), szText.size(), nullptr, "UTF-8", XML_PARSE_IGNORE_ENC);
    }
    if (pDoc == nullptr)
    {
        // A failed load leaves an empty document, as a new one.
        pDoc = xmlNewDoc(reinterpret_cast<const xmlChar*>("1.0"));
        if (pDoc == nullptr)
            throw CXMLException(E_OUTOFMEMORY, u"CXMLDocument::Open");
        m_pDoc.reset(pDoc, FreeDoc);
        return FALSE;
    }
    m_pDoc.reset(pDoc, FreeDoc);
    return TRUE;
}

CString CXMLDocument::GetNodeValue(const CString& csXPath, BOOL bText)
{
    const CNodeSet nodes(Document(u"CXMLDocument::GetNodeValue"), csXPath, u"CXMLDocument::GetNodeValue");
    if (nodes.GetCount() == 0)
        return CString();
    const CXMLNode node(m_pDoc, nodes.GetAt(0));
    return bText ? node.GetText() : node.GetXml();
}

void CXMLDocument::GetNodes(CStringArray& aResult, const CString& csXPath, BOOL bText)
{
    const CNodeSet nodes(Document(u"CXMLDocument::GetNodes"), csXPath, u"CXMLDocument::GetNodes");
    for (int i = 0; i < nodes.GetCount(); ++i)
    {
        const CXMLNode node(m_pDoc, nodes.GetAt(i));
        aResult.Add(bText ? node.GetText() : node.GetXml());
    }
}

int CXMLDocument::GetNodesCount(const CString& csXPath)
{
    const CNodeSet nodes(Document(u"CXMLDocument::GetNodesCount"), csXPath, u"CXMLDocument::GetNodesCount");
    return nodes.GetCount();
}

BOOL CXMLDocument::SetNodesText(const CString& csXPath, const CString& csText)
{
    xmlDoc* pDoc = Document(u"CXMLDocument::SetNodesText");
    const CNodeSet nodes(pDoc, csXPath, u"CXMLDocument::SetNodesText");
    if (nodes.GetCount() == 0)
        return FALSE;
    const std::string szText = csText.ToUtf8();
    // The content is taken as markup by the library, so the text goes in escaped.
    xmlChar* pszEscaped = xmlEncodeSpecialChars(pDoc, reinterpret_cast<const xmlChar*>(szText.c_str()));
    if (pszEscaped == nullptr)
        throw CXMLException(E_OUTOFMEMORY, u"CXMLDocument::SetNodesText");
    for (int i = 0; i < nodes.GetCount(); ++i)
        xmlNodeSetContent(nodes.GetAt(i), pszEscaped);
    xmlFree(pszEscaped);
    return TRUE;
}

CString CXMLDocument::GetXml()
{
    return GetDocumentNode().GetXml();
}

CString CXMLDocument::TransformNode(const CString& csXsl)
{
    xmlDoc* pDoc = Document(u"CXMLDocument::TransformNode");
    if (xmlDocGetRootElement(pDoc) == nullptr)
        throw CXMLException(E_POINTER, u"CXMLDocument::TransformNode", u"The document has no element");
    const std::string szXsl = csXsl.ToUtf8();
    xmlDoc* pXslDoc = Parse(szXsl.data(), szXsl.size(), nullptr, "UTF-8", XML_PARSE_IGNORE_ENC);
    if (pXslDoc == nullptr)
        return CString();

    CErrorCapture capture;
    xsltStylesheet* pStyle = xsltParseStylesheetDoc(pXslDoc);
    if (pStyle == nullptr)
    {
        xmlFreeDoc(pXslDoc);
        return CString();
    }
    xsltTransformContext* pContext = xsltNewTransformContext(pStyle, pDoc);
    if (pContext == nullptr)
    {
        xsltFreeStylesheet(pStyle);
        throw CXMLException(E_OUTOFMEMORY, u"CXMLDocument::TransformNode");
    }
    xsltSetCtxtSecurityPrefs(s_pSecurity, pContext);
    xmlDoc* pResult = xsltApplyStylesheetUser(pStyle, pDoc, nullptr, nullptr, nullptr, pContext);
    const bool bFailed = pResult == nullptr || pContext->state != XSLT_STATE_OK;
    xsltFreeTransformContext(pContext);

    CString csResult;
    if (!bFailed)
    {
        // Serialised in UTF-8 whatever encoding the sheet declares: the result is characters.
        xmlOutputBuffer* pOutput = xmlAllocOutputBuffer(nullptr);
        if (pOutput != nullptr)
        {
            xsltSaveResultTo(pOutput, pResult, pStyle);
            const xmlChar* pContent = xmlOutputBufferGetContent(pOutput);
            if (pContent != nullptr)
                csResult = CString::FromUtf8(std::string_view(reinterpret_cast<const char*>(pContent),
                                                              xmlOutputBufferGetSize(pOutput)));
            xmlOutputBufferClose(pOutput);
        }
    }
    if (pResult != nullptr)
        xmlFreeDoc(pResult);
    xsltFreeStylesheet(pStyle);
    if (bFailed)
        throw CXMLException(E_FAIL, u"CXMLDocument::TransformNode",
                            capture.Text(u"The transformation failed"));
    return csResult;
}

CString CXMLDocument::GetChildrenXml(const CString& csXPath)
{
    const CNodeSet nodes(Document(u"CXMLDocument::GetChildrenXml"), csXPath + u"/*",
                         u"CXMLDocument::GetChildrenXml");
    CString csXml;
    for (int i = 0; i < nodes.GetCount(); ++i)
        csXml += CXMLNode(m_pDoc, nodes.GetAt(i)).GetXml() + u"\r\n";
    return csXml;
}

CXMLNode CXMLDocument::GetDocumentElement()
{
    return CXMLNode(m_pDoc, xmlDocGetRootElement(Document(u"CXMLDocument::GetDocumentElement")));
}

CXMLNode CXMLDocument::GetDocumentNode()
{
    return CXMLNode(m_pDoc, reinterpret_cast<xmlNode*>(Document(u"CXMLDocument::GetDocumentNode")));
}

void CXMLDocument::AppendProcessingInstruction(const CString& csTarget, const CString& csData)
{
    xmlDoc* pDoc = Document(u"CXMLDocument::AppendProcessingInstruction");
    xmlNode* pPI = xmlNewDocPI(pDoc, reinterpret_cast<const xmlChar*>(csTarget.ToUtf8().c_str()),
                               reinterpret_cast<const xmlChar*>(csData.ToUtf8().c_str()));
    if (pPI == nullptr)
        throw CXMLException(E_OUTOFMEMORY, u"CXMLDocument::AppendProcessingInstruction");
    if (xmlAddChild(reinterpret_cast<xmlNode*>(pDoc), pPI) == nullptr)
    {
        xmlFreeNode(pPI);
        throw CXMLException(E_FAIL, u"CXMLDocument::AppendProcessingInstruction");
    }
}

BOOL CXMLDocument::Save(const CString& csFile)
{
    const CString csXml = GetXml();
    std::string szBytes("\xFF\xFE", 2);
    szBytes.reserve(2 + 2 * static_cast<std::size_t>(csXml.GetLength()));
    for (const char16_t ch : csXml.Str())
    {
        szBytes.push_back(static_cast<char>(ch & 0xFF));
        szBytes.push_back(static_cast<char>(ch >> 8));
    }
    try
    {
        CFile file;
        if (!file.Open(csFile, CFile::modeCreate | CFile::modeWrite))
            return FALSE;
        file.Write(szBytes.data(), static_cast<UINT>(szBytes.size()));
        file.Close();
        return TRUE;
    }
    catch (const CFileException&)
    {
        return FALSE;
    }
}
