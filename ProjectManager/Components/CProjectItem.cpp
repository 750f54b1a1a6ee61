#include "ProjectManager/Components/CProjectItem.h"

#include "Platform/CException.h"
#include "Platform/ExplodeString.h"
#include "Platform/FileOperations.h"
#include "ProjectManager/Components/CProjectDll.h"
#include "ProjectManager/Components/CProjectException.h"
#include "Utils/CFileTypes.h"

namespace
{
constexpr const char16_t* SOURCE_FILE = u"CProjectItem.cpp";

// Raises the failure of a step as the project's exception.
[[noreturn]] void Rethrow(UINT nMessageId, const char16_t* szPlace, int nLine)
{
    CProjectException::RaiseCurrent(nMessageId, szPlace, SOURCE_FILE, nLine);
}
} // namespace

CProjectItem::CProjectItem(int nType, CProjectItem* pParent) : m_nType(nType), m_pParent(pParent) {}

const SCompilerOption* CProjectItem::GetCompilerOptions()
{
    using O = SCompilerOption;
    static const SCompilerOption s_aOptions[] = {
        {u"flash_swf", u"-swf", u"-swf <file> : specify input SWF which contains assets", u"", u"", O::TEXT},
        {u"flash_cp", u"-cp",
         u"-cp <path> : add a directory path to the ClassPath : this is the list of directories that MTASC "
         u"will "
         u"use to look for .as files. You can use several times -cp to add several directories",
         u"", u"", O::TEXT | O::BROWSE_FOLDER | O::MULTIPATH},
        {u"flash_main", u"-main",
         u"-main : will automatically call static function main once all classes are registered", u"", u"0",
         O::CHECKBOX},
        {u"flash_header", u"-header",
         u"-header <width:height:fps:bgcolor> : does not load a SWF, instead create a new one containing "
         u"only "
         u"compiled code and using provided header informations. bgcolor is optional and should be 6 digits "
         u"hexadecimal value",
         u"", u"", O::TEXT},
        {u"flash_mx", u"-mx", u"-mx : use precompiled MX classes", u"", u"0", O::CHECKBOX},
        {u"flash_version", u"-version",
         u"-version <n> : specify SWF version : 6 to generate Player 6r89 compatible SWF or 8 to access "
         u"Flash8 "
         u"features",
         u"6;8", u"8", O::LIST | O::READONLY},
        {u"flash_v", u"-v",
         u"-v : activate verbose mode, printing some additional informations about compiling process", u"",
         u"0", O::CHECKBOX},
        {u"flash_out", u"-out", u"-out <file> : change output swf file", u"", u"", O::TEXT},
        {u"flash_msvc", u"-msvc",
         u"-msvc : use Microsoft Visual Studio errors style formating instead of Java style (for file names "
         u"and "
         u"lines number)",
         u"", u"0", O::CHECKBOX},
        {u"flash_strict", u"-strict",
         u"-strict : will use strict compilation mode which require that all variables are explicitely typed",
         u"", u"0", O::CHECKBOX},
        {u"flash_exclude", u"-exclude",
         u"-exclude <file> : exclude code generation of classes listed in specified file (format is one full "
         u"class path per line)",
         u"", u"", O::TEXT},
        {u"flash_trace", u"-trace", u"-trace <function> : specify a custom trace function", u"", u"0",
         O::CHECKBOX},
        {u"flash_keep", u"-keep",
         u"-keep : keep AS2 classes compiled by MCC into the SWF. (this could cause some classes to be "
         u"present "
         u"two times if also compiled with MTASC)",
         u"", u"0", O::CHECKBOX},
        {u"flash_frame", u"-frame", u"-frame <f> : will export AS2 classes into target frame of swf", u"",
         u"", O::TEXT},
        {u"flash_pack", u"-pack",
         u"-pack <path> : compile all the files contained in specified package - not recursively (eg to "
         u"compile "
         u"files in c:\\flash\\code\\my\\app do mtasc -cp c:\\flash\\code -pack my/app)",
         u"", u"", O::TEXT},
        {u"flash_group", u"-group",
         u"-group : will merge classes into one single clip (this will reduce SWF size but might cause some "
         u"problems if you're using -keep or -mx)",
         u"", u"0", O::CHECKBOX},
        {u"flash_wimp", u"-wimp",
         u"-wimp : adds warnings for import statements that are not used in the file", u"", u"0",
         O::CHECKBOX},
        {u"flash_infer", u"-infer", u"-infer : adds type inference for initialized local variables", u"",
         u"0", O::CHECKBOX},
        {u"flash_flapath", u".fla path", u"Path to .fla file", u"", u"", O::TEXT | O::BROWSE_FILE, TRUE},
        {u"", u"", u"", u"", u"", 0, FALSE}};
    return s_aOptions;
}

int CProjectItem::GetNodeType(const CXMLNode& node)
{
    const CString csName = node.GetName();
    if (node.IsElement())
    {
        if (csName == u"file")
            return FILE;
        if (csName == u"folder")
            return FOLDER;
        if (csName == u"project")
            return PROJECT;
    }
    CProjectException::Raise(1, CProjectDll::IDS_CANT_LOAD_ITEM, u"CProjectItem::GetNodeType", SOURCE_FILE,
                             __LINE__, u"Unexpected error");
}

CString CProjectItem::GetNodeProperty(const CXMLNode& node, const CString& csKey)
{
    try
    {
        return node.GetAttribute(csKey);
    }
    catch (...)
    {
        Rethrow(CProjectDll::IDS_CANT_LOAD_ITEM, u"CProjectItem::GetNodeProperty", __LINE__);
    }
}

void CProjectItem::SetNodeProperty(CXMLDocument& /*document*/, CXMLNode& node, const CString& csKey,
                                   const CString& csValue)
{
    try
    {
        node.SetAttribute(csKey, csValue);
    }
    catch (...)
    {
        Rethrow(CProjectDll::IDS_CANT_SAVE_ITEM, u"CProjectItem::SetNodeProperty", __LINE__);
    }
}

std::vector<const char16_t*> CProjectItem::GetKindKeys() const
{
    switch (m_nType)
    {
    case PROJECT:
        return {u"serverURL", u"version", u"type", u"projectType"};
    case FILE:
        return {u"path", u"hmode", u"cp"};
    default:
        return {};
    }
}

void CProjectItem::Load(const CXMLNode& node, const CString& csProjectFile)
{
    try
    {
        m_nType = GetNodeType(node);
        m_properties.RemoveAll();
        m_aChildren.clear();
        SetProperty(u"name", GetNodeProperty(node, u"name"));
        for (const char16_t* szKey : GetKindKeys())
            SetProperty(szKey, GetNodeProperty(node, szKey));
        if (m_nType == PROJECT)
        {
            SetProperty(u"path", csProjectFile);
            for (const SCompilerOption* pOption = GetCompilerOptions(); !pOption->m_csKey.IsEmpty();
                 ++pOption)
                SetProperty(pOption->m_csKey, GetNodeProperty(node, pOption->m_csKey));
        }
        for (const CXMLNode& child : node.GetChildElements())
        {
            auto pChild = std::make_unique<CProjectItem>(FILE, this);
            pChild->Load(child, csProjectFile);
            m_aChildren.push_back(std::move(pChild));
        }
    }
    catch (...)
    {
        Rethrow(CProjectDll::IDS_CANT_LOAD_ITEM, u"CProjectItem::Load", __LINE__);
    }
}

void CProjectItem::Save(CXMLDocument& document, CXMLNode& parent) const
{
    try
    {
        const char16_t* szElement = m_nType == PROJECT ? u"project" : m_nType == FOLDER ? u"folder" : u"file";
        CXMLNode node = parent.AppendElement(szElement);
        SetNodeProperty(document, node, u"name", GetProperty(u"name"));
        for (const char16_t* szKey : GetKindKeys())
            SetNodeProperty(document, node, szKey, GetProperty(szKey));
        if (m_nType == PROJECT)
        {
            for (const SCompilerOption* pOption = GetCompilerOptions(); !pOption->m_csKey.IsEmpty();
                 ++pOption)
                SetNodeProperty(document, node, pOption->m_csKey, GetProperty(pOption->m_csKey));
        }
        for (const auto& pChild : m_aChildren)
            pChild->Save(document, node);
    }
    catch (...)
    {
        Rethrow(CProjectDll::IDS_CANT_SAVE_ITEM, u"CProjectItem::Save", __LINE__);
    }
}

ITreeItem* CProjectItem::GetChild(int nIndex) const
{
    if (nIndex < 0 || nIndex >= GetChildrenCount())
        AfxThrowInvalidArgException();
    return m_aChildren[static_cast<std::size_t>(nIndex)].get();
}

bool CProjectItem::IsAbsolutePath(const CString& csPath)
{
    if (csPath.GetLength() >= 2 && csPath[1] == u':')
        return true;
    return csPath.Left(1) == u"/" || csPath.Left(2) == u"\\\\";
}

CString CProjectItem::GetPathFolder(const CString& csPath)
{
    const int nSlash = std::max(csPath.ReverseFind(u'\\'), csPath.ReverseFind(u'/'));
    return nSlash < 0 ? CString() : csPath.Left(nSlash + 1);
}

const CProjectItem* CProjectItem::GetProject() const
{
    const CProjectItem* pItem = this;
    while (pItem->m_pParent)
        pItem = pItem->m_pParent;
    return pItem;
}

CString CProjectItem::GetFullPath() const
{
    const CString csPath = GetProperty(u"path");
    if (m_nType == FOLDER || IsAbsolutePath(csPath) || m_pParent == nullptr)
        return csPath;
    CString csRelative = csPath;
    if (csRelative.Left(2) == u".\\" || csRelative.Left(2) == u"./")
        csRelative = csRelative.Mid(2);
    return m_pParent->GetFolder() + csRelative;
}

CString CProjectItem::GetFolder() const
{
    if (m_nType == FOLDER)
        return m_pParent ? m_pParent->GetFolder() : CString();
    return GetPathFolder(GetFullPath());
}

CString CProjectItem::EscapeXml(const CString& csText)
{
    CString csEscaped = csText;
    csEscaped.Replace(u"&", u"&amp;");
    csEscaped.Replace(u"<", u"&lt;");
    csEscaped.Replace(u">", u"&gt;");
    csEscaped.Replace(u"\"", u"&quot;");
    csEscaped.Replace(u"'", u"&apos;");
    return csEscaped;
}

CString CProjectItem::PropRow(const CString& csName, const CString& csValue, const CString& csDescription,
                              const CString& csExtra, bool bReadOnly)
{
    CString csRow = u"<prop";
    if (bReadOnly)
        csRow += u" readonly = \"true\"";
    csRow.AppendFormat(u" name = \"%s\" value = \"%s\" description = \"%s\"", EscapeXml(csName),
                       EscapeXml(csValue), EscapeXml(csDescription));
    return csRow + csExtra + u"/>\r\n";
}

CString CProjectItem::ChoiceRow(const CString& csName, const CString& csValue, const CString& csDescription,
                                const CString& csList, bool bReadOnly)
{
    CString csRow = u"<prop";
    if (bReadOnly)
        csRow += u" readonly = \"true\"";
    csRow.AppendFormat(u" name = \"%s\" value = \"%s\" description = \"%s\">\r\n", EscapeXml(csName),
                       EscapeXml(csValue), EscapeXml(csDescription));
    CString csChoices = csList;
    csChoices.Replace(u'|', u';');
    CStringArray aChoices;
    ExplodeString(csChoices, u";", aChoices);
    for (int i = 0; i < aChoices.GetSize(); ++i)
    {
        if (!aChoices[i].IsEmpty())
            csRow += u"<item value = \"" + EscapeXml(aChoices[i]) + u"\"/>";
    }
    return csRow + u"</prop>\r\n";
}

CString CProjectItem::OptionRow(const SCompilerOption& option) const
{
    CString csValue = GetProperty(option.m_csKey);
    if (csValue.IsEmpty())
        csValue = GetOptionDefault(option);
    const bool bReadOnly = (option.m_dwKind & SCompilerOption::READONLY) != 0;
    if (option.m_dwKind & SCompilerOption::CHECKBOX)
    {
        CString csRow;
        csRow.Format(u"<prop type=\"checkbox\" name = \"%s\" value = \"%d\" description = \"%s\"/>\r\n",
                     EscapeXml(option.m_csFlag), csValue == u"1" ? 1 : 0, EscapeXml(option.m_csDescription));
        return csRow;
    }
    if (option.m_dwKind & SCompilerOption::LIST)
        return ChoiceRow(option.m_csFlag, csValue, option.m_csDescription, option.m_csList, bReadOnly);
    if (option.m_dwKind & SCompilerOption::TEXT)
    {
        CString csExtra;
        if (option.m_dwKind & SCompilerOption::BROWSE_FOLDER)
            csExtra += u" browsefolderdlg = \"true\"";
        else if (option.m_dwKind & SCompilerOption::BROWSE_FILE)
            csExtra += u" browsefiledlg = \"true\"";
        if (option.m_dwKind & SCompilerOption::MULTIPATH)
            csExtra += u" multipath = \"true\"";
        return PropRow(option.m_csFlag, csValue, option.m_csDescription, csExtra, bReadOnly);
    }
    return CString();
}

CString CProjectItem::GetPropertiesXml(const CString& csSheet) const
{
    CString csXml = u"<properties>\r\n";
    csXml += u"<headercombo value = \"" + EscapeXml(u"ProjectManager") + u"\">\r\n</headercombo>\r\n";
    csXml += u"<proplist>\r\n";
    if (csSheet == u"Flash")
    {
        if (m_nType == PROJECT)
        {
            for (const SCompilerOption* pOption = GetCompilerOptions(); !pOption->m_csKey.IsEmpty();
                 ++pOption)
                csXml += OptionRow(*pOption);
        }
    }
    else
    {
        csXml += PropRow(u"Name", GetProperty(u"name"), u"The name of the item");
        if (m_nType != FOLDER)
            csXml += PropRow(u"Location", GetFullPath(), u"The item's file", CString(), true);
        if (m_nType == FILE)
        {
            csXml += PropRow(u"Encoding", GetProperty(u"cp"), u"The code page of the file");
            csXml +=
                ChoiceRow(u"Highlighiting mode", GetProperty(u"hmode"), u"The syntax the file is shown in",
                          GetFileTypes()->GetTypeNamesComboList(false));
        }
        if (m_nType == PROJECT)
        {
            csXml += PropRow(u"Server URL", GetProperty(u"serverURL"),
                             u"The address that serves the project's files");
            csXml += ChoiceRow(u"Project type", GetProperty(u"projectType"), u"What the project builds",
                               u"General;Flash");
        }
    }
    return csXml + u"</proplist>\r\n</properties>";
}

void CProjectItem::Rename(const CString& csNew)
{
    CString csOld, csTarget;
    try
    {
        if (csNew.IsEmpty() || csNew.FindOneOf(u"\\/") >= 0)
            CProjectException::Raise(E_INVALIDARG, CProjectDll::IDS_CANT_RENAME, u"CProjectItem::Rename",
                                     SOURCE_FILE, __LINE__);
        if (m_nType == FILE)
        {
            csOld = GetFullPath();
            csTarget = GetPathFolder(csOld) + csNew;
        }
    }
    catch (...)
    {
        Rethrow(CProjectDll::IDS_CANT_RENAME, u"CProjectItem::Rename", __LINE__);
    }
    if (m_nType == FILE)
    {
        DoRename(csOld, csTarget);
        const CString csPath = GetProperty(u"path");
        SetProperty(u"path", GetPathFolder(csPath) + csNew);
    }
    SetProperty(u"name", csNew);
}

void CProjectItem::DoRename(const CString& csOld, const CString& csNew)
{
    if (!MoveFileEx(csOld, csNew, 0))
        CProjectException::Raise(static_cast<HRESULT>(0x80070000u | (GetLastError() & 0xFFFFu)),
                                 CProjectDll::IDS_CANT_RENAME, u"CProjectItem::DoRename", SOURCE_FILE,
                                 __LINE__);
}

void CProjectItem::DoOpen()
{
    if (m_nType != FILE)
        return;
    const CString csPath = GetFullPath();
    if (!FileExists(csPath))
        CProjectException::Raise(1, CProjectDll::IDS_NO_FILE, u"CProjectItem::DoOpen", SOURCE_FILE, __LINE__,
                                 u"File '" + csPath + u"' does not exist");
}

CString CProjectItem::GetOptionDefault(const SCompilerOption& option) const
{
    if (option.m_csFlag != u"-swf")
        return option.m_csDefault;
    CString csDrive, csDir, csName, csExt;
    SplitPath(GetProject()->GetProperty(u"path"), csDrive, csDir, csName, csExt);
    return csName + u".swf";
}

CString CProjectItem::GetOptionArgument(const SCompilerOption& option, const CString& csValue) const
{
    CString csTrimmed = csValue;
    csTrimmed.Trim(u" \t");
    if (csTrimmed.IsEmpty() || option.m_bNoArgument)
        return CString();
    const DWORD dwKind = option.m_dwKind;
    if (dwKind & (SCompilerOption::TEXT | SCompilerOption::LIST))
    {
        const bool bBrowse = (dwKind & (SCompilerOption::BROWSE_FOLDER | SCompilerOption::BROWSE_FILE)) != 0;
        const CString& csFlag = option.m_csFlag;
        const bool bPaths =
            csFlag == u"-swf" || csFlag == u"-out" || csFlag == u"-exclude" || csFlag == u"-pack";
        if (!bBrowse && !bPaths)
            return csFlag + u" " + csTrimmed;
        // A list of paths: each one quoted behind its own flag.
        CString csList = csTrimmed;
        csList.Replace(u'|', u';');
        CStringArray aPieces;
        ExplodeString(csList, u";", aPieces);
        CString csResult;
        for (int i = 0; i < aPieces.GetSize(); ++i)
        {
            CString csPiece = aPieces[i];
            csPiece.Trim(u" \t\r\n\"");
            if (csPiece.IsEmpty())
                continue;
            if (csFlag == u"-swf" && !IsAbsolutePath(csPiece))
                csPiece = GetProject()->GetFolder() + csPiece.TrimLeft(u"/\\");
            csResult += csFlag + u" \"" + csPiece + u"\" ";
        }
        return csResult.TrimRight(u" ");
    }
    if (dwKind & SCompilerOption::CHECKBOX)
        return csTrimmed == u"1" ? option.m_csFlag : CString();
    return CString();
}
