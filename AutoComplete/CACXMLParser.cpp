#include "AutoComplete/CACXMLParser.h"

#include "Common_h/XMLParser/CXMLDocument.h"
#include "Tessaroline/Components/Find/CRegularExpression.h"

#include <climits>
#include <memory>

namespace
{
// A whole number at the start of csText, after blanks and an optional sign; with bHex a "0x" prefix
// makes it hexadecimal. False when no digit follows. Wraps at 32 bits.
bool ParseInt(const CString& csText, bool bHex, int& nValue)
{
    const std::u16string& str = csText.Str();
    std::size_t i = 0;
    while (i < str.size() && (str[i] == u' ' || str[i] == u'\t'))
        ++i;
    bool bNegative = false;
    if (i < str.size() && (str[i] == u'-' || str[i] == u'+'))
        bNegative = str[i++] == u'-';
    unsigned nBase = 10;
    if (bHex && i + 1 < str.size() && str[i] == u'0' && (str[i + 1] == u'x' || str[i + 1] == u'X'))
    {
        nBase = 16;
        i += 2;
    }
    std::uint32_t nResult = 0;
    bool bDigits = false;
    for (; i < str.size(); ++i)
    {
        const char16_t ch = str[i];
        unsigned nDigit;
        if (ch >= u'0' && ch <= u'9')
            nDigit = ch - u'0';
        else if (nBase == 16 && ch >= u'a' && ch <= u'f')
            nDigit = ch - u'a' + 10;
        else if (nBase == 16 && ch >= u'A' && ch <= u'F')
            nDigit = ch - u'A' + 10;
        else
            break;
        nResult = nResult * nBase + nDigit;
        bDigits = true;
    }
    if (!bDigits)
        return false;
    nValue = static_cast<int>(bNegative ? 0u - nResult : nResult);
    return true;
}

// The select type in an XPath string, or "" when it can't stand there.
CString TypeForXPath(const CString& csType)
{
    return csType.Find(u'\'') >= 0 ? CString() : csType;
}
} // namespace

CACXMLParser::CACXMLParser(IACSettings* pSettings)
    : m_WordsConfigurator(pSettings), m_InfoConfigurator(pSettings)
{
}

IACCompleteData* CACXMLParser::GetCompleteData(const SACInputData& inputData)
{
    const bool bParseRoot = !IsRootParsed(inputData, m_WordsConfigurator);
    if (!bParseRoot && m_WordsConfigurator.IsCachedKeys(inputData))
        return &m_CompleteData;
    // Reading the settings has made the text of the request already.
    const CString csXml = bParseRoot ? ParseRoot(inputData, m_WordsConfigurator)
                                     : m_WordsConfigurator.GetTransformedXml(inputData);
    m_WordsConfigurator.CacheKeys(inputData, csXml);
    ParseWords(csXml);
    return &m_CompleteData;
}

CString CACXMLParser::GetTTTriggerChars(const SACInputData& inputData)
{
    if (!IsRootParsed(inputData, m_WordsConfigurator))
        ParseRoot(inputData, m_WordsConfigurator);
    return m_csTTTriggerChars;
}

CString CACXMLParser::GetInfo(const SACInputData& inputData, int nParam)
{
    m_InfoConfigurator.SetCurrParam(nParam);
    CString csInfo = ParseRoot(inputData, m_InfoConfigurator);
    csInfo.Replace(u"<br/>", u"<br>");
    csInfo.Replace(u"<nbsp/>", u"&nbsp;");
    return csInfo;
}

BOOL CACXMLParser::IsCompleteFirstChar(const SACInputData& inputData, const CString& csChar)
{
    if (!IsRootParsed(inputData, m_WordsConfigurator))
        ParseRoot(inputData, m_WordsConfigurator);
    return Matches(m_csCompleteFirstChars, csChar);
}

BOOL CACXMLParser::IsCompleteChar(const SACInputData& inputData, const CString& csChar)
{
    if (!IsRootParsed(inputData, m_WordsConfigurator))
        ParseRoot(inputData, m_WordsConfigurator);
    return Matches(m_csCompleteChars, csChar);
}

BOOL CACXMLParser::IsAnyCompleteChar(const CString& csType, const CString& csChar)
{
    SACInputData inputData;
    inputData.m_aSchemeTypes.Add(csType);
    if (!IsRootParsed(inputData, m_WordsConfigurator))
        ParseRoot(inputData, m_WordsConfigurator);
    return Matches(m_csAllCompleteChars, csChar);
}

CString CACXMLParser::ParseRoot(const SACInputData& inputData, CACXMLConfigurator& configurator)
{
    const CString csXml = configurator.GetTransformedXml(inputData);
    m_aRootSchemeTypes.Copy(inputData.m_aSchemeTypes);
    m_csRootSelectType = inputData.m_csSelectType;
    CXMLDocument doc(CXMLDocument::CLASS_DOCUMENT_40);
    if (!doc.Open(csXml, FALSE))
        return csXml;

    // Every type's complete characters as alternatives of one expression.
    m_csAllCompleteChars.Empty();
    CStringArray aChars;
    doc.GetNodes(aChars, u"/root/Completechars/@chars", TRUE);
    for (int i = 0; i < aChars.GetSize(); ++i)
        m_csAllCompleteChars += aChars[i] + u"|";

    // The image strip: no file, or one that doesn't load, leaves the list without icons.
    m_CompleteData.SetBitmap(nullptr, 0);
    const CString csImages = doc.GetNodeValue(u"/root/imagelist/@path");
    const COLORREF crMask = ParseColorMask(doc.GetNodeValue(u"/root/imagelist/@colormask"));
    auto pBitmap = std::make_unique<CBitmap>();
    if (!csImages.IsEmpty() && pBitmap->LoadFromFile(csImages))
        m_CompleteData.SetBitmap(std::move(pBitmap), crMask);
    else
        m_CompleteData.SetBitmap(nullptr, crMask);

    m_csTTTriggerChars = doc.GetNodeValue(u"/root/TTTriggerChars/@chars");

    const CString csType = TypeForXPath(inputData.m_csSelectType);
    if (inputData.m_csSelectType.IsEmpty())
    {
        m_csCompleteChars = doc.GetNodeValue(u"/root/Completechars/@chars");
        m_csCompleteFirstChars = doc.GetNodeValue(u"/root/CompleteFirstchars/@chars");
    }
    else
    {
        CString csXPath;
        csXPath.Format(u"/root/Completechars[@type = '%s']/@chars", csType);
        m_csCompleteChars = doc.GetNodeValue(csXPath);
        csXPath.Format(u"/root/CompleteFirstchars[@type = '%s']/@chars", csType);
        m_csCompleteFirstChars = doc.GetNodeValue(csXPath);
    }
    return csXml;
}

void CACXMLParser::ParseWords(const CString& csXml)
{
    CACCompleteData::CWordsArray& aWords = m_CompleteData.Words();
    aWords.RemoveAll();
    CXMLDocument doc(CXMLDocument::CLASS_DOCUMENT_40);
    if (!doc.Open(csXml, FALSE))
        return;
    // The words are the "element" children of "root", read from the nodes themselves: a list of
    // a few thousand words is not parsed again word by word.
    const CXMLNode root = doc.GetDocumentElement();
    if (root.IsNull() || root.GetName() != u"root")
        return;
    for (const CXMLNode& element : root.GetChildElements())
    {
        if (element.GetName() != u"element")
            continue;
        IACCompleteData::SACWord word;
        word.m_csWordName = element.GetAttribute(u"name");
        word.m_csDescription = element.GetAttribute(u"description");
        word.m_csWordType = element.GetAttribute(u"type");
        word.m_csInfo = element.GetAttribute(u"info");
        if (!ParseInt(element.GetAttribute(u"iconIndex"), false, word.m_nIconIndex))
            word.m_nIconIndex = 0;
        aWords.Add(word);
    }
    m_CompleteData.SortWords();
}

COLORREF CACXMLParser::ParseColorMask(const CString& csMask)
{
    CRegularExpression reHex(u"0x([0-9a-fA-F]{6})", 0);
    CRegularExpression reRgb(u"(\\d+),(\\d+),(\\d+)", 0);
    int nStart = 0;
    int nEnd = 0;
    // Any result but 0 of the first test, no match included, reads the value as a number; the
    // triple form is reached only by a result of 0. The order of the tests is kept as it is.
    if (reHex.Exec(csMask, 0, &nStart, &nEnd) != 0)
    {
        int nValue = 0;
        return ParseInt(csMask, true, nValue) ? static_cast<COLORREF>(nValue) : 0;
    }
    if (reRgb.Exec(csMask, 0, &nStart, &nEnd) <= 0)
        return 0;
    int aRgb[3] = {0, 0, 0};
    for (int i = 0; i < 3; ++i)
        ParseInt(reRgb.GetMatchText(i + 1), false, aRgb[i]);
    return RGB(aRgb[0] & 0xFF, aRgb[1] & 0xFF, aRgb[2] & 0xFF);
}

bool CACXMLParser::IsRootParsed(const SACInputData& inputData, CACXMLConfigurator& configurator)
{
    if (!configurator.IsCachedXml(inputData) || inputData.m_csSelectType != m_csRootSelectType ||
        inputData.m_aSchemeTypes.GetSize() != m_aRootSchemeTypes.GetSize())
        return false;
    for (int i = 0; i < m_aRootSchemeTypes.GetSize(); ++i)
    {
        if (inputData.m_aSchemeTypes[i] != m_aRootSchemeTypes[i])
            return false;
    }
    return true;
}

BOOL CACXMLParser::Matches(const CString& csPattern, const CString& csChar)
{
    CRegularExpression regexp;
    if (!regexp.Compile(csPattern, 0))
        return FALSE;
    int nStart = 0;
    int nEnd = 0;
    return regexp.Exec(csChar, 0, &nStart, &nEnd) > 0;
}
