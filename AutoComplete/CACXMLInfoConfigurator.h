// CACXMLInfoConfigurator: the configurator of the information of one word, such as the signature
// of a function with its current parameter. The keys lead to the word itself.
#pragma once

#include "AutoComplete/CACXMLConfigurator.h"

class CACXMLInfoConfigurator : public CACXMLConfigurator
{
public:
    using CACXMLConfigurator::CACXMLConfigurator;

    // Also sets the parameter currParam to the current parameter.
    CString GetTransformXslContent(const CString& csXsl, const SACTransformXslData& transformData,
                                   BOOL bCaseSensitive) override;
    // The keys joined as the base joins them, without the last ".".
    SACInputData::SACKey
    ACKeys2KeyData(const BCTL::Arrays::IStaticArray<SACInputData::SACKey>& aKeys) override;
    CString GetXslContent(int nScheme) override { return m_Cache.GetScheme(nScheme).m_csInfoXslFile; }
    // The information of the word the keys name, cached with the parameter; "" when no word
    // file of the schemes holds that word.
    CString GetTransformedXml(const SACInputData& inputData) override;
    // False while the current parameter differs from the one cached.
    BOOL IsCachedKeys(const SACInputData& inputData) override;

    void SetCurrParam(int nParam) noexcept { m_nCurrParam = nParam; }
    [[nodiscard]] int GetCurrParam() const noexcept { return m_nCurrParam; }

private:
    // True when a word file of the cached schemes has the word that the keys lead to.
    bool HasWord(const SACInputData& inputData);

    int m_nCurrParam = 0;    // the parameter the tip marks, from 0
    int m_nCachedParam = -1; // the parameter of the cached text
};
