#include "AutoComplete/CACXMLInfoConfigurator.h"

#include "Common_h/XMLParser/CXMLDocument.h"

CString CACXMLInfoConfigurator::GetTransformXslContent(const CString& csXsl,
                                                       const SACTransformXslData& transformData,
                                                       BOOL bCaseSensitive)
{
    CString csResult = CACXMLConfigurator::GetTransformXslContent(csXsl, transformData, bCaseSensitive);
    CString csParam;
    csParam.Format(u"<xsl:param name=\"currParam\" select=\"'%d'\"/>", m_nCurrParam);
    csResult.Replace(u"<xsl:param name=\"currParam\" select=\"''\"/>", csParam.Str());
    return csResult;
}

SACInputData::SACKey
CACXMLInfoConfigurator::ACKeys2KeyData(const BCTL::Arrays::IStaticArray<SACInputData::SACKey>& aKeys)
{
    SACInputData::SACKey key = CACXMLConfigurator::ACKeys2KeyData(aKeys);
    for (CString* pText : {&key.m_csKeyName, &key.m_csKeyType})
    {
        if (!pText->IsEmpty() && (*pText)[pText->GetLength() - 1] == u'.')
            pText->Truncate(pText->GetLength() - 1);
    }
    return key;
}

BOOL CACXMLInfoConfigurator::IsCachedKeys(const SACInputData& inputData)
{
    return m_nCurrParam == m_nCachedParam && CACXMLConfigurator::IsCachedKeys(inputData);
}

CString CACXMLInfoConfigurator::GetTransformedXml(const SACInputData& inputData)
{
    BOOL bCachedKeys = IsCachedKeys(inputData);
    if (!IsCachedXml(inputData))
    {
        // New schemes: whatever request was cached belonged to the former ones.
        CacheXml(inputData);
        bCachedKeys = FALSE;
    }
    if (!bCachedKeys)
        CacheKeys(inputData, CACXMLConfigurator::GetTransformedXml(inputData));
    m_nCachedParam = m_nCurrParam;
    if (!bCachedKeys && inputData.m_aKeys.GetSize() > 0 && !HasWord(inputData))
    {
        CacheKeys(inputData, CString());
        return CString();
    }
    return m_Cache.GetTransformedXml();
}

bool CACXMLInfoConfigurator::HasWord(const SACInputData& inputData)
{
    CString csXPath = u"/root";
    for (int i = 0; i < inputData.m_aKeys.GetSize(); ++i)
    {
        const SACInputData::SACKey key = inputData.m_aKeys.GetValue(i);
        // A name with an apostrophe can't be named in the path and is no word.
        if (key.m_csKeyName.Find(u'\'') >= 0 || key.m_csKeyType.Find(u'\'') >= 0)
            return false;
        if (key.m_csKeyType.IsEmpty())
            csXPath.AppendFormat(u"/element[@name = '%s']", key.m_csKeyName);
        else
            csXPath.AppendFormat(u"/element[@name = '%s' and @type = '%s']", key.m_csKeyName,
                                 key.m_csKeyType);
    }
    // Each word file is asked on its own: joined, two files would not be one document.
    for (int i = 0; i < m_Cache.GetSchemesFilesCount(); ++i)
    {
        CXMLDocument doc(CXMLDocument::CLASS_DOCUMENT_40);
        if (doc.Open(m_Cache.GetScheme(i).m_csXmlFile, FALSE) && doc.GetNodesCount(csXPath) > 0)
            return true;
    }
    return false;
}
