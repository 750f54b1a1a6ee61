#include "AutoComplete/CACXMLConfigurator.h"

#include "AutoComplete/CACException.h"
#include "AutoComplete/CACSettings.h"
#include "Common_h/XMLParser/CXMLDocument.h"
#include "Platform/FileOperations.h"

#include <algorithm>

namespace
{
// The four parameters as a style sheet declares them empty, and as they are filled in.
const char16_t* const PARAMS[][2] = {
    {u"<xsl:param name=\"keyName\" select=\"''\"/>", u"<xsl:param name=\"keyName\" select=\"'%s'\"/>"},
    {u"<xsl:param name=\"keyType\" select=\"''\"/>", u"<xsl:param name=\"keyType\" select=\"'%s'\"/>"},
    {u"<xsl:param name=\"selectType\" select=\"''\"/>", u"<xsl:param name=\"selectType\" select=\"'%s'\"/>"},
    {u"<xsl:param name=\"isRoot\" select=\"''\"/>", u"<xsl:param name=\"isRoot\" select=\"'%s'\"/>"},
};

// A value that goes into an attribute of the style sheet as an XPath string: markup characters
// escaped, and the apostrophe, which would end the string, dropped.
CString XslLiteral(const CString& csValue)
{
    CString csText = csValue;
    csText.Replace(u"&", u"&amp;");
    csText.Replace(u"<", u"&lt;");
    csText.Replace(u"\"", u"&quot;");
    csText.Remove(u'\'');
    return csText;
}

// The whole XML of the file csFile, "" when it is unnamed or doesn't load.
CString ReadXmlFile(const CString& csFile)
{
    if (csFile.IsEmpty())
        return CString();
    CXMLDocument doc(CXMLDocument::CLASS_DOCUMENT_40);
    return doc.Open(csFile, TRUE) ? doc.GetXml() : CString();
}
} // namespace

CACXMLConfigurator::CACXMLConfigurator(IACSettings* pSettings)
    : m_Settings(pSettings ? *pSettings : CACSettings::Instance())
{
}

CString CACXMLConfigurator::GetTransformXslContent(const CString& csXsl,
                                                   const SACTransformXslData& transformData,
                                                   BOOL bCaseSensitive)
{
    if (csXsl.IsEmpty())
        return csXsl;
    CString csKeyName = transformData.m_Key.m_csKeyName;
    if (!bCaseSensitive)
        csKeyName.MakeLower();
    const CString aValues[] = {csKeyName, transformData.m_Key.m_csKeyType, transformData.m_csSelectType,
                               transformData.m_csIsRoot};
    CString csResult = csXsl;
    for (int i = 0; i < 4; ++i)
    {
        CString csParam;
        csParam.Format(PARAMS[i][1], XslLiteral(aValues[i]));
        csResult.Replace(PARAMS[i][0], csParam.Str());
    }
    return csResult;
}

CString CACXMLConfigurator::GetSchemeTransformedXml(int nScheme, const SACTransformXslData& transformData)
{
    const SACScheme scheme = m_Cache.GetScheme(nScheme);
    if (scheme.m_csTransformXslFile.IsEmpty())
        return CString();
    CXMLDocument doc(CXMLDocument::CLASS_DOCUMENT_40);
    if (!doc.Open(scheme.m_csXmlFile, FALSE))
        return CString();
    CString csResult;
    try
    {
        // Files named in the word file, such as the image strip, are relative to the catalogue.
        const CString csPath = doc.GetNodeValue(u"/root/*/@path");
        if (!csPath.IsEmpty() && IsRelativePath(csPath))
            doc.SetNodesText(u"/root/*/@path", GetACFolder() + csPath);
        const BOOL bCaseSensitive = doc.GetNodeValue(u"/root/register/@use").CompareNoCase(u"true") == 0;
        const CString csXsl = GetTransformXslContent(GetXslContent(nScheme), transformData, bCaseSensitive);
        CXMLDocument result(CXMLDocument::CLASS_DOCUMENT_40);
        if (result.Open(doc.TransformNode(csXsl), FALSE))
            csResult += result.GetChildrenXml(u"/root");
        csResult += u"\r\n";
    }
    catch (const CXMLException& e)
    {
        // What has been gathered stands; the failure itself is only kept for a debugger.
        CString csError;
        csError.Format(u"sourse='%s', \n descr='%s', \n msg='%s'", e.Source(), e.Description(),
                       e.ErrorMessage());
    }
    return csResult;
}

SACInputData::SACKey
CACXMLConfigurator::ACKeys2KeyData(const BCTL::Arrays::IStaticArray<SACInputData::SACKey>& aKeys)
{
    SACInputData::SACKey key;
    for (int i = 0; i < aKeys.GetSize(); ++i)
    {
        const SACInputData::SACKey step = aKeys.GetValue(i);
        key.m_csKeyName += step.m_csKeyName + u".";
        key.m_csKeyType += step.m_csKeyType + u".";
    }
    return key;
}

CString CACXMLConfigurator::GetCachedTransformedXml()
{
    return m_Cache.GetTransformedXml();
}

CString CACXMLConfigurator::GetTransformedXml(const SACInputData& inputData)
{
    if (!IsCachedXml(inputData))
        CacheXml(inputData);
    if (IsCachedKeys(inputData))
        return m_Cache.GetTransformedXml();
    const SACTransformXslData transformData = ACInputData2TransformXslData(inputData);
    CString csXml = u"<root>\r\n";
    for (int i = 0; i < m_Cache.GetSchemesFilesCount(); ++i)
        csXml += GetSchemeTransformedXml(i, transformData);
    csXml += u"</root>";
    return csXml;
}

BOOL CACXMLConfigurator::IsCachedXml(const SACInputData& inputData)
{
    return m_Cache.IsCachedXml(inputData);
}

BOOL CACXMLConfigurator::IsCachedKeys(const SACInputData& inputData)
{
    return m_Cache.IsCachedKeys(inputData);
}

void CACXMLConfigurator::CacheKeys(const SACInputData& inputData, const CString& csTransformedXml)
{
    m_Cache.CacheKeys(inputData, csTransformedXml);
}

SACTransformXslData CACXMLConfigurator::ACInputData2TransformXslData(const SACInputData& inputData)
{
    SACTransformXslData transformData;
    transformData.m_Key = ACKeys2KeyData(inputData.m_aKeys);
    transformData.m_csSelectType = inputData.m_csSelectType;
    transformData.m_csIsRoot = inputData.m_aKeys.GetSize() == 0 ? u"true" : u"";
    return transformData;
}

void CACXMLConfigurator::GetFiles(const SACInputData& inputData, BCTL::Arrays::IArray<SACScheme>& aSchemes)
{
    const CString csACPath = m_Settings.GetACPath();
    CXMLDocument catalogue(CXMLDocument::CLASS_DOCUMENT_40);
    if (!catalogue.Open(csACPath, TRUE))
    {
        CString csMessage;
        csMessage.Format(u"Can't load xml :%s", csACPath);
        throw CACException(u"CACXMLConfigurator::GetFiles", csMessage);
    }
    const CString csFolder = GetACFolder();
    for (int nType = 0; nType < inputData.m_aSchemeTypes.GetSize(); ++nType)
    {
        const CString& csType = inputData.m_aSchemeTypes[nType];
        // A type with an apostrophe can't be named in the path and matches no scheme.
        if (csType.Find(u'\'') >= 0)
            continue;
        CString csXPath;
        csXPath.Format(u"/ACSchemes/ACScheme[@type='%s']", csType);
        CStringArray aNodes;
        catalogue.GetNodes(aNodes, csXPath, FALSE);
        for (int nNode = 0; nNode < aNodes.GetSize(); ++nNode)
        {
            CXMLDocument node(CXMLDocument::CLASS_DOCUMENT_40);
            if (!node.Open(aNodes[nNode], FALSE))
                continue;
            csXPath.Format(u"/ACScheme[@type='%s']", csType);
            SACScheme scheme;
            CString* aFiles[] = {&scheme.m_csXmlFile, &scheme.m_csTransformXslFile, &scheme.m_csInfoXslFile};
            const char16_t* aAttributes[] = {u"/@file", u"/@transformxsl", u"/@infoxsl"};
            for (int i = 0; i < 3; ++i)
            {
                *aFiles[i] = node.GetNodeValue(csXPath + aAttributes[i]);
                if (!aFiles[i]->IsEmpty() && IsRelativePath(*aFiles[i]))
                    *aFiles[i] = csFolder + *aFiles[i];
            }
            if (scheme.m_csXmlFile.IsEmpty() || !FileExists(scheme.m_csXmlFile) ||
                (!scheme.m_csTransformXslFile.IsEmpty() && !FileExists(scheme.m_csTransformXslFile)) ||
                (!scheme.m_csInfoXslFile.IsEmpty() && !FileExists(scheme.m_csInfoXslFile)))
                continue;
            aSchemes.AddValue(scheme);
        }
    }
}

void CACXMLConfigurator::CacheXml(const SACInputData& inputData)
{
    BCTL::Arrays::CArrayImpl<SACScheme> aFiles;
    GetFiles(inputData, aFiles);
    BCTL::Arrays::CArrayImpl<SACScheme> aContents;
    for (int i = 0; i < aFiles.GetSize(); ++i)
    {
        const SACScheme files = aFiles.GetValue(i);
        aContents.AddValue({ReadXmlFile(files.m_csXmlFile), ReadXmlFile(files.m_csTransformXslFile),
                            ReadXmlFile(files.m_csInfoXslFile)});
    }
    m_Cache.ResetKeys();
    m_Cache.CacheXml(inputData.m_aSchemeTypes, aContents);
}

CString CACXMLConfigurator::GetACFolder()
{
    const CString csPath = m_Settings.GetACPath();
    const int nSlash = std::max(csPath.ReverseFind(u'/'), csPath.ReverseFind(u'\\'));
    // A bare file name lies in the working directory, one under the root in the root.
    if (nSlash < 0)
        return u".\\";
    return nSlash == 0 ? csPath.Left(1) : csPath.Left(nSlash) + u"\\";
}

bool CACXMLConfigurator::IsRelativePath(const CString& csPath)
{
    if (csPath.IsEmpty())
        return true;
    const char16_t chFirst = csPath[0];
    if (chFirst == u'/' || chFirst == u'\\')
        return false;
    // A drive letter, as in "C:\\".
    return !(csPath.GetLength() > 1 && csPath[1] == u':');
}
