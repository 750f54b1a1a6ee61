// What the completion suites share: the test data, requests built from lists, and CString in
// CppUnit's equality assertions.
#pragma once

#include "AutoComplete/CACSettings.h"
#include "AutoComplete/SACInputData.h"
#include "Common_h/XMLParser/CXMLDocument.h"

#include <cppunit/extensions/HelperMacros.h>
#include <initializer_list>
#include <string>
#include <utility>

template <> struct CppUnit::assertion_traits<CString>
{
    static bool equal(const CString& a, const CString& b) { return a == b; }
    static std::string toString(const CString& cs) { return "\"" + cs.ToUtf8() + "\""; }
};

namespace ACTestData
{
// The folder of the test data and its catalogue.
inline const char16_t* const FOLDER = u"..\\Autocomplete\\Tests\\TestFiles\\";

inline CString File(const char16_t* szName)
{
    return CString(FOLDER) + szName;
}

// Settings loaded without a profile, naming csCatalogue.
class CTestSettings : public CACSettings
{
public:
    explicit CTestSettings(const CString& csCatalogue = File(u"acschemes.xml"))
    {
        Load(nullptr);
        SetACPath(csCatalogue);
    }
};

using CKeys = std::initializer_list<std::pair<const char16_t*, const char16_t*>>;

// A request of the scheme types, the keys (name and type) and the select type.
inline SACInputData Request(std::initializer_list<const char16_t*> aTypes, CKeys aKeys,
                            const char16_t* szSelect)
{
    SACInputData inputData;
    for (const char16_t* szType : aTypes)
        inputData.m_aSchemeTypes.Add(szType);
    for (const auto& [szName, szType] : aKeys)
        inputData.m_aKeys.AddValue({szName, szType});
    inputData.m_csSelectType = szSelect;
    return inputData;
}

// The element children of the root of an XML text, as GetChildrenXml gives them; "" if the text
// doesn't parse.
inline CString Children(const CString& csXml, BOOL bIsFile = FALSE)
{
    CXMLDocument doc(CXMLDocument::CLASS_DOCUMENT_40);
    return doc.Open(csXml, bIsFile) ? doc.GetChildrenXml(u"/*") : CString(u"(no document)");
}

// The XML of a test file as the configurator reads it.
inline CString FileXml(const char16_t* szName)
{
    CXMLDocument doc(CXMLDocument::CLASS_DOCUMENT_40);
    return doc.Open(File(szName), TRUE) ? doc.GetXml() : CString();
}
} // namespace ACTestData
