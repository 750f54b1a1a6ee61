// CACXMLConfigurator: finds the completion schemes of a request in the catalogue, keeps the
// contents of their files, puts the request into a style sheet as its parameters and joins the
// transformed word files of all schemes under one "root".
#pragma once

#include "AutoComplete/CACXMLCacher.h"
#include "AutoComplete/IACSettings.h"
#include "AutoComplete/SACInputData.h"
#include "AutoComplete/SACScheme.h"
#include "AutoComplete/SACTransformXslData.h"

class CACXMLConfigurator
{
public:
    // pSettings names the catalogue; null takes the process-wide settings. Not owned.
    explicit CACXMLConfigurator(IACSettings* pSettings = nullptr);
    CACXMLConfigurator(const CACXMLConfigurator&) = delete;
    CACXMLConfigurator& operator=(const CACXMLConfigurator&) = delete;
    virtual ~CACXMLConfigurator() = default;

    // csXsl with its parameters keyName, keyType, selectType and isRoot set from transformData;
    // the key name is lower-cased unless bCaseSensitive. An empty style sheet stays empty.
    virtual CString GetTransformXslContent(const CString& csXsl, const SACTransformXslData& transformData,
                                           BOOL bCaseSensitive);
    // The children of "root" in the transformation of scheme nScheme's word file, then "\r\n";
    // "" without a style sheet or with a word file that doesn't parse.
    virtual CString GetSchemeTransformedXml(int nScheme, const SACTransformXslData& transformData);
    // The keys joined into one: each name and each type followed by ".".
    virtual SACInputData::SACKey
    ACKeys2KeyData(const BCTL::Arrays::IStaticArray<SACInputData::SACKey>& aKeys);
    // The style sheet that this configurator runs for scheme nScheme, from the cache.
    virtual CString GetXslContent(int nScheme) = 0;
    // The transformed text of the request cached last.
    virtual CString GetCachedTransformedXml();
    // The words for a request: "<root>\r\n", each scheme's transformation, "</root>"; the cached
    // text when the request is that cached. Reads the schemes' files when their types change.
    virtual CString GetTransformedXml(const SACInputData& inputData);
    virtual BOOL IsCachedXml(const SACInputData& inputData);
    virtual BOOL IsCachedKeys(const SACInputData& inputData);
    // Stores the transformed text of a request.
    virtual void CacheKeys(const SACInputData& inputData, const CString& csTransformedXml);

    // The request as style sheet parameters.
    SACTransformXslData ACInputData2TransformXslData(const SACInputData& inputData);
    // Appends the files of the request's schemes, in the order of its types, with relative names
    // made absolute; a scheme whose word file or a named style sheet is missing is left out.
    // CACException when the catalogue doesn't load.
    void GetFiles(const SACInputData& inputData, BCTL::Arrays::IArray<SACScheme>& aSchemes);
    // Reads the files of the request's schemes into the cache and forgets the cached request.
    void CacheXml(const SACInputData& inputData);

    [[nodiscard]] const CACXMLCacher& GetCache() const noexcept { return m_Cache; }

    // The folder of the catalogue, closed by "\\".
    CString GetACFolder();
    // True for a name that doesn't start at a root or a drive.
    static bool IsRelativePath(const CString& csPath);

protected:
    IACSettings& m_Settings; // where the catalogue is
    CACXMLCacher m_Cache;    // files of the schemes and the last request
};
