#include "Common_h/XMLParser/CXMLNode.h"

#include "Common_h/XMLParser/CXMLException.h"
#include "Platform/Types.h"

#include <libxml/tree.h>

#include <string>
#include <utility>
#include <vector>

namespace
{
const xmlChar* Xml(const std::string& sz)
{
    return reinterpret_cast<const xmlChar*>(sz.c_str());
}

// Takes a string the library allocated, converts and frees it.
CString TakeString(xmlChar* psz)
{
    if (psz == nullptr)
        return CString();
    CString cs = CString::FromUtf8(reinterpret_cast<const char*>(psz));
    xmlFree(psz);
    return cs;
}

// The writer puts a namespace's URI between quotes as it stands, so a URI holding "<" (which the
// parser gives for "&lt;"; "&amp;" it keeps as a character reference) would come out as XML that
// doesn't parse. While an object lives, such URIs of the elements at and below a node hold "&lt;" in
// its place; the destructor puts the originals back.
class CEscapedNamespaces
{
public:
    explicit CEscapedNamespaces(xmlNode* pTop)
    {
        for (xmlNode* pNode = pTop; pNode;)
        {
            if (pNode->type == XML_ELEMENT_NODE)
            {
                for (xmlNs* pNs = pNode->nsDef; pNs; pNs = pNs->next)
                    Escape(pNs);
            }
            // Depth first through elements (and the document's children).
            if (pNode->children && (pNode->type == XML_ELEMENT_NODE || pNode->type == XML_DOCUMENT_NODE))
            {
                pNode = pNode->children;
                continue;
            }
            while (pNode && pNode != pTop && pNode->next == nullptr)
                pNode = pNode->parent;
            pNode = (pNode == nullptr || pNode == pTop) ? nullptr : pNode->next;
        }
    }
    CEscapedNamespaces(const CEscapedNamespaces&) = delete;
    CEscapedNamespaces& operator=(const CEscapedNamespaces&) = delete;
    ~CEscapedNamespaces()
    {
        for (const auto& [pNs, pszOriginal] : m_aSwapped)
        {
            xmlFree(const_cast<xmlChar*>(pNs->href));
            pNs->href = pszOriginal;
        }
    }

private:
    void Escape(xmlNs* pNs)
    {
        if (pNs->href == nullptr || xmlStrchr(pNs->href, '<') == nullptr)
            return;
        std::string strEscaped;
        for (const xmlChar* p = pNs->href; *p; ++p)
        {
            if (*p == '<')
                strEscaped += "&lt;";
            else
                strEscaped += static_cast<char>(*p);
        }
        xmlChar* pszEscaped = xmlStrdup(Xml(strEscaped));
        if (pszEscaped == nullptr)
            return;
        m_aSwapped.emplace_back(pNs, pNs->href);
        pNs->href = pszEscaped;
    }

    std::vector<std::pair<xmlNs*, const xmlChar*>> m_aSwapped; // namespaces and their own URIs
};
} // namespace

CXMLNode::CXMLNode(std::shared_ptr<_xmlDoc> pDoc, _xmlNode* pNode) noexcept
    : m_pDoc(std::move(pDoc)), m_pNode(pNode)
{
}

void CXMLNode::CheckNode(const char16_t* szSource) const
{
    if (m_pNode == nullptr)
        throw CXMLException(E_POINTER, szSource, u"No node");
}

CString CXMLNode::GetName() const
{
    if (m_pNode == nullptr)
        return CString();
    if (m_pNode->type == XML_DOCUMENT_NODE)
        return u"#document";
    return m_pNode->name ? CString::FromUtf8(reinterpret_cast<const char*>(m_pNode->name)) : CString();
}

bool CXMLNode::IsElement() const noexcept
{
    return m_pNode != nullptr && m_pNode->type == XML_ELEMENT_NODE;
}

CString CXMLNode::GetAttribute(const CString& csName) const
{
    if (!IsElement())
        return CString();
    return TakeString(xmlGetProp(m_pNode, Xml(csName.ToUtf8())));
}

bool CXMLNode::HasAttribute(const CString& csName) const
{
    return IsElement() && xmlHasProp(m_pNode, Xml(csName.ToUtf8())) != nullptr;
}

void CXMLNode::SetAttribute(const CString& csName, const CString& csValue)
{
    CheckNode(u"CXMLNode::SetAttribute");
    const std::string szName = csName.ToUtf8();
    if (!IsElement() || xmlValidateName(Xml(szName), 0) != 0)
        throw CXMLException(E_INVALIDARG, u"CXMLNode::SetAttribute", u"Bad attribute name or node");
    if (xmlSetProp(m_pNode, Xml(szName), Xml(csValue.ToUtf8())) == nullptr)
        throw CXMLException(E_OUTOFMEMORY, u"CXMLNode::SetAttribute");
}

std::vector<CXMLNode> CXMLNode::GetChildElements() const
{
    std::vector<CXMLNode> aChildren;
    if (m_pNode == nullptr)
        return aChildren;
    for (xmlNode* pChild = m_pNode->children; pChild; pChild = pChild->next)
    {
        if (pChild->type == XML_ELEMENT_NODE)
            aChildren.emplace_back(m_pDoc, pChild);
    }
    return aChildren;
}

CXMLNode CXMLNode::AppendElement(const CString& csName)
{
    CheckNode(u"CXMLNode::AppendElement");
    const std::string szName = csName.ToUtf8();
    if (xmlValidateName(Xml(szName), 0) != 0)
        throw CXMLException(E_INVALIDARG, u"CXMLNode::AppendElement", u"Bad element name");
    xmlDoc* pDoc = m_pDoc.get();
    if (m_pNode->type == XML_DOCUMENT_NODE && xmlDocGetRootElement(pDoc) != nullptr)
        throw CXMLException(E_FAIL, u"CXMLNode::AppendElement", u"Only one top level element is allowed");
    if (m_pNode->type != XML_DOCUMENT_NODE && m_pNode->type != XML_ELEMENT_NODE)
        throw CXMLException(E_INVALIDARG, u"CXMLNode::AppendElement", u"The node takes no children");
    xmlNode* pNew = xmlNewDocNode(pDoc, nullptr, Xml(szName), nullptr);
    if (pNew == nullptr)
        throw CXMLException(E_OUTOFMEMORY, u"CXMLNode::AppendElement");
    if (xmlAddChild(m_pNode, pNew) == nullptr)
    {
        xmlFreeNode(pNew);
        throw CXMLException(E_FAIL, u"CXMLNode::AppendElement");
    }
    return CXMLNode(m_pDoc, pNew);
}

CString CXMLNode::GetText() const
{
    if (m_pNode == nullptr)
        return CString();
    xmlNode* pNode = m_pNode;
    if (pNode->type == XML_DOCUMENT_NODE)
        pNode = xmlDocGetRootElement(m_pDoc.get());
    if (pNode == nullptr)
        return CString();
    CString csText = TakeString(xmlNodeGetContent(pNode));
    if (pNode->type == XML_ELEMENT_NODE)
        csText.Trim(u" \t\r\n");
    return csText;
}

CString CXMLNode::GetXml() const
{
    if (m_pNode == nullptr)
        return CString();
    xmlBuffer* pBuffer = xmlBufferCreate();
    if (pBuffer == nullptr)
        throw CXMLException(E_OUTOFMEMORY, u"CXMLNode::GetXml");
    CString csXml;
    const CEscapedNamespaces escaped(m_pNode);
    if (m_pNode->type == XML_DOCUMENT_NODE)
    {
        for (xmlNode* pChild = m_pNode->children; pChild; pChild = pChild->next)
        {
            xmlBufferEmpty(pBuffer);
            xmlNodeDump(pBuffer, m_pDoc.get(), pChild, 0, 0);
            csXml += CString::FromUtf8(reinterpret_cast<const char*>(xmlBufferContent(pBuffer)));
            csXml += u"\r\n";
        }
    }
    else
    {
        xmlNodeDump(pBuffer, m_pDoc.get(), m_pNode, 0, 0);
        csXml = CString::FromUtf8(reinterpret_cast<const char*>(xmlBufferContent(pBuffer)));
        if (m_pNode->type == XML_ATTRIBUTE_NODE)
            csXml.TrimLeft(u" ");
    }
    xmlBufferFree(pBuffer);
    return csXml;
}
