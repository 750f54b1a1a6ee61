#include "ProjectManager/Components/CProjectManager.h"

#include "Platform/AppFolders.h"
#include "Platform/FileOperations.h"
#include "ProjectManager/Components/CProjectDll.h"
#include "ProjectManager/Components/CProjectException.h"
#include "Utils/CTextFileWrite.h"

#include <memory>
#include <vector>

namespace
{
constexpr const char16_t* SOURCE_FILE = u"CProjectManager.cpp";

// Raises the failure of a step as the project's exception.
[[noreturn]] void Rethrow(UINT nMessageId, const char16_t* szPlace, int nLine)
{
    CProjectException::RaiseCurrent(nMessageId, szPlace, SOURCE_FILE, nLine);
}

// The path with "/" as its only separator, for comparisons.
CString Normalize(const CString& csPath)
{
    CString cs = csPath;
    cs.Replace(u'\\', u'/');
    return cs;
}

// Appends the full path of every file item below pItem.
void CollectFiles(const CProjectItem* pItem, CStringArray& aFiles)
{
    for (int i = 0; i < pItem->GetChildrenCount(); ++i)
    {
        const auto* pChild = static_cast<const CProjectItem*>(pItem->GetChild(i));
        if (pChild->GetType() == CProjectItem::FILE)
            aFiles.Add(pChild->GetFullPath());
        CollectFiles(pChild, aFiles);
    }
}

// The file item below pItem whose full path is csPath ("/" separators), or null.
ITreeItem* FindFile(CProjectItem* pItem, const CString& csPath)
{
    for (int i = 0; i < pItem->GetChildrenCount(); ++i)
    {
        auto* pChild = static_cast<CProjectItem*>(pItem->GetChild(i));
        if (pChild->GetType() == CProjectItem::FILE && Normalize(pChild->GetFullPath()) == csPath)
            return pChild;
        if (ITreeItem* pFound = FindFile(pChild, csPath))
            return pFound;
    }
    return nullptr;
}
} // namespace

CProjectManager::CProjectManager() = default;

CProjectManager::~CProjectManager()
{
    CloseAll();
}

CString CProjectManager::GetImportStyleSheet()
{
    return GetModuleFolder() + u"Translators\\vcp2tsp.xsl";
}

void CProjectManager::Create(const CString& csFile, const CString& csName)
{
    CString csText;
    csText.Format(u"<?xml version=\"1.0\" encoding=\"UTF-16\" ?>\r\n<project name=\"%s\" version=\"1.1\" "
                  u"type=\"Tessaroline Project\"></project>",
                  CProjectItem::EscapeXml(csName));
    try
    {
        CTextFileWrite file(csFile, CTextFileBase::ENCODING_UTF16_LE);
        if (!file.IsOpen())
            CProjectException::Raise(1, CProjectDll::IDS_CANT_CREATE, u"CProjectManager::Create", SOURCE_FILE,
                                     __LINE__);
        file.Write(csText);
        file.Close();
    }
    catch (...)
    {
        Rethrow(CProjectDll::IDS_CANT_CREATE, u"CProjectManager::Create", __LINE__);
    }
    Open(csFile);
    static_cast<CProjectItem*>(m_aRootItems.GetTail())->SetProperty(u"projectType", u"General");
}

void CProjectManager::Open(const CString& csFile)
{
    std::vector<std::unique_ptr<CProjectItem>> aItems;
    try
    {
        CXMLDocument doc(CXMLDocument::CLASS_DOCUMENT_30);
        if (!doc.Open(csFile, TRUE))
            CProjectException::Raise(1, CProjectDll::IDS_CANT_OPEN, u"CProjectManager::Open", SOURCE_FILE,
                                     __LINE__);
        if (doc.GetDocumentElement().IsNull())
            CProjectException::Raise(E_POINTER, CProjectDll::IDS_CANT_OPEN, u"CProjectManager::Open",
                                     SOURCE_FILE, __LINE__);
        for (const CXMLNode& node : doc.GetDocumentNode().GetChildElements())
        {
            auto pItem = std::make_unique<CProjectItem>();
            pItem->Load(node, csFile);
            aItems.push_back(std::move(pItem));
        }
    }
    catch (...)
    {
        Rethrow(CProjectDll::IDS_CANT_OPEN, u"CProjectManager::Open", __LINE__);
    }
    // All items were read: only now does the list change.
    for (auto& pItem : aItems)
    {
        m_aRootItems.AddTail(pItem.get());
        m_lOwnedRoots.AddTail(std::move(pItem));
    }
    if (m_pExplorer)
        m_pExplorer->Refresh();
    m_bOpen = true;
}

void CProjectManager::Save()
{
    try
    {
        for (POSITION pos = m_aRootItems.GetHeadPosition(); pos;)
        {
            const auto* pItem = static_cast<const CProjectItem*>(m_aRootItems.GetNext(pos));
            CXMLDocument doc(CXMLDocument::CLASS_DOCUMENT_30);
            doc.AppendProcessingInstruction(u"xml", u"version=\"1.0\" encoding=\"UTF-16\"");
            CXMLNode docNode = doc.GetDocumentNode();
            pItem->Save(doc, docNode);
            if (!doc.Save(pItem->GetProperty(u"path")))
                CProjectException::Raise(1, CProjectDll::IDS_CANT_SAVE, u"CProjectManager::Save", SOURCE_FILE,
                                         __LINE__);
        }
    }
    catch (...)
    {
        // Whatever failed, the caller hears of the save.
        try
        {
            throw;
        }
        catch (const CCommonException& e)
        {
            CProjectException::Raise(e.GetCode(), CProjectDll::IDS_CANT_SAVE, u"CProjectManager::Save",
                                     SOURCE_FILE, __LINE__);
        }
        catch (...)
        {
            Rethrow(CProjectDll::IDS_CANT_SAVE, u"CProjectManager::Save", __LINE__);
        }
    }
    m_bModified = false;
}

void CProjectManager::Close()
{
    if (m_pExplorer)
        m_pExplorer->Clear(m_aRootItems);
    CloseAll();
    m_bOpen = false;
    m_bModified = false;
}

void CProjectManager::CloseAll()
{
    m_aRootItems.RemoveAll();
    m_lOwnedRoots.RemoveAll();
}

void CProjectManager::Import(const CString& csFile)
{
    CString csTarget;
    try
    {
        CXMLDocument docSource(CXMLDocument::CLASS_DOCUMENT_30);
        if (!docSource.Open(csFile, TRUE))
            CProjectException::Raise(1, CProjectDll::IDS_CANT_IMPORT, u"CProjectManager::Import", SOURCE_FILE,
                                     __LINE__);
        CXMLDocument docXsl(CXMLDocument::CLASS_DOCUMENT_30);
        if (!docXsl.Open(GetImportStyleSheet(), TRUE))
            CProjectException::Raise(1, CProjectDll::IDS_CANT_IMPORT, u"CProjectManager::Import", SOURCE_FILE,
                                     __LINE__);
        const CString csResult = docSource.TransformNode(docXsl.GetXml());
        if (csResult.IsEmpty())
            CProjectException::Raise(1, CProjectDll::IDS_CANT_IMPORT, u"CProjectManager::Import", SOURCE_FILE,
                                     __LINE__);

        const int nDot = csFile.ReverseFind(u'.');
        const int nSlash = std::max(csFile.ReverseFind(u'/'), csFile.ReverseFind(u'\\'));
        csTarget = nDot > nSlash ? csFile.Left(nDot + 1) + u"tsproj" : csFile + u".tsproj";
        if (FileExists(csTarget))
            CProjectException::Raise(1, CProjectDll::IDS_IMPORT_EXISTS, u"CProjectManager::Import",
                                     SOURCE_FILE, __LINE__);
        CTextFileWrite file(csTarget, CTextFileBase::ENCODING_UTF16_LE);
        if (!file.IsOpen())
            CProjectException::Raise(1, CProjectDll::IDS_CANT_IMPORT, u"CProjectManager::Import", SOURCE_FILE,
                                     __LINE__);
        file.Write(csResult);
        file.Close();
    }
    catch (...)
    {
        Rethrow(CProjectDll::IDS_CANT_IMPORT, u"CProjectManager::Import", __LINE__);
    }
    try
    {
        Open(csTarget);
    }
    catch (const CCommonException& e)
    {
        CProjectException::Raise(e.GetCode(), CProjectDll::IDS_CANT_IMPORT, u"CProjectManager::Import",
                                 SOURCE_FILE, __LINE__);
    }
}

const CProjectItem* CProjectManager::GetActiveProject() const
{
    return m_aRootItems.IsEmpty() ? nullptr : static_cast<const CProjectItem*>(m_aRootItems.GetHead());
}

CString CProjectManager::GetServerURL() const
{
    const CProjectItem* pProject = GetActiveProject();
    return pProject ? pProject->GetProperty(u"serverURL") : CString();
}

CString CProjectManager::GetRelativePath(const CString& csPath) const
{
    const CString csFolder = Normalize(GetProjectPath(false));
    const CString csNormal = Normalize(csPath);
    if (csFolder.IsEmpty() || csNormal.Left(csFolder.GetLength()) != csFolder)
        return csPath;
    return csPath.Mid(csFolder.GetLength());
}

ITreeItem* CProjectManager::FindItem(const CString& csPath, ITreeItem* pItem)
{
    const CString csWanted = Normalize(csPath);
    if (pItem)
        return FindFile(static_cast<CProjectItem*>(pItem), csWanted);
    for (POSITION pos = m_aRootItems.GetHeadPosition(); pos;)
    {
        if (ITreeItem* pFound = FindFile(static_cast<CProjectItem*>(m_aRootItems.GetNext(pos)), csWanted))
            return pFound;
    }
    return nullptr;
}

void CProjectManager::GetFiles(CStringArray& aFiles) const
{
    aFiles.RemoveAll();
    for (POSITION pos = m_aRootItems.GetHeadPosition(); pos;)
        CollectFiles(static_cast<const CProjectItem*>(m_aRootItems.GetNext(pos)), aFiles);
}

CString CProjectManager::GetProjectPath(bool bFull) const
{
    const CProjectItem* pProject = GetActiveProject();
    if (pProject == nullptr)
        return CString();
    const CString csPath = pProject->GetProperty(u"path");
    return bFull ? csPath : CProjectItem::GetPathFolder(csPath);
}

CString CProjectManager::GetCommandLine() const
{
    const CProjectItem* pProject = GetActiveProject();
    if (pProject == nullptr)
        return CString();
    CString csLine;
    for (const SCompilerOption* pOption = CProjectItem::GetCompilerOptions(); !pOption->m_csKey.IsEmpty();
         ++pOption)
    {
        const CString csFragment =
            pProject->GetOptionArgument(*pOption, pProject->GetProperty(pOption->m_csKey));
        if (!csFragment.IsEmpty())
            csLine += csFragment + u" ";
    }
    return csLine.TrimRight(u" ");
}

CString CProjectManager::GetFlaPath() const
{
    const CProjectItem* pProject = GetActiveProject();
    return u"\"" + (pProject ? pProject->GetProperty(u"flash_flapath") : CString()) + u"\"";
}

CString CProjectManager::GetSwfPath() const
{
    const CProjectItem* pProject = GetActiveProject();
    if (pProject == nullptr)
        return CString();
    CString csSwf = pProject->GetProperty(u"flash_swf");
    if (csSwf.IsEmpty() || CProjectItem::IsAbsolutePath(csSwf))
        return csSwf;
    return GetProjectPath(false) + csSwf.TrimLeft(u"/\\");
}
