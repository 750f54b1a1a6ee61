// CACXMLCacher: what the configurator keeps between requests: the contents of the files of the
// schemes last read, with their types, and the transformed text of the last request.
#pragma once

#include "AutoComplete/SACInputData.h"
#include "AutoComplete/SACScheme.h"
#include "Common_h/BCTL/CArrayImpl.h"

class CACXMLCacher
{
public:
    // The select type of no request, so that a first request is never taken as cached.
    static constexpr const char16_t* NOT_INITED = u"__notinited__";

    // True when the scheme types are those stored, the same strings in the same order.
    [[nodiscard]] bool IsCachedXml(const SACInputData& inputData) const;
    // True when keys and select type are those of the request stored last.
    [[nodiscard]] bool IsCachedKeys(const SACInputData& inputData) const;
    // The number of schemes whose contents are stored.
    [[nodiscard]] int GetSchemesFilesCount() const noexcept { return m_aSchemes.GetSize(); }
    // The contents of scheme nScheme; CErrorBoundsException outside the stored ones.
    [[nodiscard]] SACScheme GetScheme(int nScheme) const { return m_aSchemes.GetValue(nScheme); }
    // The transformed text of the request stored last.
    [[nodiscard]] const CString& GetTransformedXml() const noexcept { return m_csTransformedXml; }

    // Stores the scheme types with the contents of their files.
    void CacheXml(const CStringArray& aSchemeTypes, const BCTL::Arrays::CArrayImpl<SACScheme>& aSchemes);
    // Stores the keys and select type of a request with its transformed text.
    void CacheKeys(const SACInputData& inputData, const CString& csTransformedXml);
    // Forgets the stored request: no keys, select type NOT_INITED, text "".
    void ResetKeys();

private:
    bool m_bXmlCached = false;                              // CacheXml has run
    CStringArray m_aSchemeTypes;                            // the types of the stored schemes
    BCTL::Arrays::CArrayImpl<SACScheme> m_aSchemes;         // the files' contents, one scheme each
    BCTL::Arrays::CArrayImpl<SACInputData::SACKey> m_aKeys; // keys of the stored request
    CString m_csSelectType = NOT_INITED;                    // select type of the stored request
    CString m_csTransformedXml;                             // its transformed text
};
