// Fuzz entry point of XML documents: the input is parsed as text (the path every loader takes), then
// queried, serialized and parsed again. A document that parsed must serialize to XML that parses.
#include "Common_h/XMLParser/CXMLDocument.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize)
{
    const CString csText = CString::FromUtf8(std::string_view(reinterpret_cast<const char*>(pData), nSize));
    try
    {
        CXMLDocument doc(CXMLDocument::CLASS_DOCUMENT_40);
        if (!doc.Open(csText, FALSE))
            return 0;
        doc.GetNodesCount(u"//*");
        doc.GetNodeValue(u"/*/@*");
        CStringArray aNodes;
        doc.GetNodes(aNodes, u"/*/*", TRUE);
        doc.GetChildrenXml(u"/*");
        const CString csXml = doc.GetXml();
        CXMLDocument again(CXMLDocument::CLASS_DOCUMENT_40);
        if (!again.Open(csXml, FALSE))
            std::abort();
    }
    catch (const CXMLException&)
    {
    }
    return 0;
}
