#include "AutoComplete/CACXMLCacher.h"

bool CACXMLCacher::IsCachedXml(const SACInputData& inputData) const
{
    if (!m_bXmlCached || inputData.m_aSchemeTypes.GetSize() != m_aSchemeTypes.GetSize())
        return false;
    for (int i = 0; i < m_aSchemeTypes.GetSize(); ++i)
    {
        if (inputData.m_aSchemeTypes[i] != m_aSchemeTypes[i])
            return false;
    }
    return true;
}

bool CACXMLCacher::IsCachedKeys(const SACInputData& inputData) const
{
    return inputData.m_csSelectType == m_csSelectType &&
           static_cast<const BCTL::Arrays::CArrayEx<SACInputData::SACKey>&>(inputData.m_aKeys) == m_aKeys;
}

void CACXMLCacher::CacheXml(const CStringArray& aSchemeTypes,
                            const BCTL::Arrays::CArrayImpl<SACScheme>& aSchemes)
{
    m_aSchemeTypes.Copy(aSchemeTypes);
    m_aSchemes = aSchemes;
    m_bXmlCached = true;
}

void CACXMLCacher::CacheKeys(const SACInputData& inputData, const CString& csTransformedXml)
{
    m_aKeys = inputData.m_aKeys;
    m_csSelectType = inputData.m_csSelectType;
    m_csTransformedXml = csTransformedXml;
}

void CACXMLCacher::ResetKeys()
{
    m_aKeys.Clear();
    m_csSelectType = NOT_INITED;
    m_csTransformedXml.Empty();
}
