// CXMLNode: a handle to one node of a CXMLDocument, for the callers that walk and build trees
// (projects). It keeps its document alive; a null handle refers to nothing.
#pragma once

#include "Platform/CString.h"

#include <memory>
#include <vector>

struct _xmlDoc;
struct _xmlNode;

class CXMLNode
{
public:
    CXMLNode() = default;
    CXMLNode(std::shared_ptr<_xmlDoc> pDoc, _xmlNode* pNode) noexcept;

    [[nodiscard]] bool IsNull() const noexcept { return m_pNode == nullptr; }
    // The element's or attribute's name; "#document" for the document, "" for a null handle.
    [[nodiscard]] CString GetName() const;
    // True for an element node.
    [[nodiscard]] bool IsElement() const noexcept;

    // The attribute's value, "" when the element has no such attribute.
    [[nodiscard]] CString GetAttribute(const CString& csName) const;
    [[nodiscard]] bool HasAttribute(const CString& csName) const;
    // Creates or replaces the attribute; the value is stored as text, not as markup.
    void SetAttribute(const CString& csName, const CString& csValue);

    // The element children, in document order.
    [[nodiscard]] std::vector<CXMLNode> GetChildElements() const;
    // Appends a new element as the last child and returns it. On the document node the element
    // becomes the document element, which fails when there is one already.
    CXMLNode AppendElement(const CString& csName);

    // The node's text: an attribute's value, or the text of an element and its descendants with
    // white space cut at both ends.
    [[nodiscard]] CString GetText() const;
    // The node's XML serialisation.
    [[nodiscard]] CString GetXml() const;

    [[nodiscard]] _xmlNode* GetHandle() const noexcept { return m_pNode; }

private:
    // Raises the null-pointer failure for operations on a null handle.
    void CheckNode(const char16_t* szSource) const;

    std::shared_ptr<_xmlDoc> m_pDoc; // the document the node belongs to
    _xmlNode* m_pNode = nullptr;     // the node, owned by the document
};
