// CXMLDocument: the XML document service of the system: parsing, XPath on absolute paths, text and
// XML of nodes, and XSLT. A handle is reference counted: copies refer to one document.
// Parsing never touches the network, never loads a DTD or an external entity, and refuses a
// document whose entity references would expand beyond a fixed limit.
#pragma once

#include "Common_h/XMLParser/CXMLException.h"
#include "Common_h/XMLParser/CXMLNode.h"
#include "Platform/CString.h"
#include "Platform/CStringArray.h"
#include "Platform/Types.h"

#include <cstddef>
#include <memory>

class CXMLDocument
{
public:
    // The class names of the two service levels; both give the same service.
    static constexpr const char16_t* CLASS_DOCUMENT_40 = u"Msxml2.DOMDocument.4.0";
    static constexpr const char16_t* CLASS_DOCUMENT_30 = u"Msxml2.DOMDocument.3.0";
    // Largest text that entity references in one document may expand to, in bytes.
    static constexpr std::size_t MAX_ENTITY_EXPANSION = 4 * 1024 * 1024;

    // An empty handle: every operation but Create raises CXMLException with E_POINTER.
    CXMLDocument() = default;
    // Creates at once, as Create does.
    explicit CXMLDocument(const CString& csClassName);

    // Creates an empty document of the service named. An unknown name raises CXMLException
    // (0x80040154, class not registered). nContext is the context mask of the request.
    void Create(const CString& csClassName, DWORD nContext = 23);
    // True once Create has succeeded.
    [[nodiscard]] bool IsCreated() const noexcept { return m_bCreated; }

    // bIsFile non-zero: loads the file named by csText ("\\" or "/"); otherwise parses csText as
    // XML (a declared encoding is ignored: the text is already characters). Non-zero on success.
    // A failure is no exception: the result is 0 and the document is empty.
    BOOL Open(const CString& csText, BOOL bIsFile);

    // The text (bText non-zero) or XML of the first node that csXPath selects; "" if none.
    CString GetNodeValue(const CString& csXPath, BOOL bText = TRUE);
    // Appends the text or XML of each node that csXPath selects, in document order.
    void GetNodes(CStringArray& aResult, const CString& csXPath, BOOL bText);
    // The number of nodes that csXPath selects.
    int GetNodesCount(const CString& csXPath);
    // Writes csText into every node csXPath selects; 1 if there were any, else 0.
    BOOL SetNodesText(const CString& csXPath, const CString& csText);
    // The whole document's XML: each top-level node followed by "\r\n".
    CString GetXml();
    // Transforms the document with the style sheet csXsl (text) and returns the result's text;
    // "" if the style sheet doesn't parse. A failure while transforming raises CXMLException.
    CString TransformNode(const CString& csXsl);
    // The XML of each child element of the node csXPath selects, each followed by "\r\n".
    CString GetChildrenXml(const CString& csXPath);

    // Tree access for callers that build documents.
    // The document element; a null node when there is none.
    CXMLNode GetDocumentElement();
    // The document itself as a node, the parent of the document element.
    CXMLNode GetDocumentNode();
    // Appends a processing instruction at the document's top level.
    void AppendProcessingInstruction(const CString& csTarget, const CString& csData);
    // Writes GetXml to csFile in UTF-16 little-endian with a byte order mark. FALSE on failure.
    BOOL Save(const CString& csFile);

private:
    // The document, or CXMLException with E_POINTER.
    _xmlDoc* Document(const char16_t* szSource) const;
    // Parses UTF-8 bytes into a new document, null on failure. szUrl names the source for
    // relative references; szEncoding null lets the parser find the encoding.
    static _xmlDoc* Parse(const char* pData, std::size_t nSize, const char* szUrl, const char* szEncoding,
                          int nExtraOptions);

    std::shared_ptr<_xmlDoc> m_pDoc; // the document, shared by copies of the handle
    bool m_bCreated = false;         // Create has run
};
