// CProjectItem: a node of a project: the project itself, a folder or a file. Its data are string
// properties; it loads from and saves to the project's XML, gives the property sheet XML of the
// property window, and builds the compiler's command line fragments of a project's options.
#pragma once

#include "Common_h/XMLParser/CXMLDocument.h"
#include "ProjectManager/Components/ITreeItem.h"
#include "Utils/CHashTable.h"

#include <memory>
#include <vector>

// One option of the compiler a "Flash" project calls: a row of its property sheet and of its
// command line.
struct SCompilerOption
{
    // Kind bits.
    static constexpr DWORD TEXT = 1;
    static constexpr DWORD LIST = 2;
    static constexpr DWORD CHECKBOX = 4;
    static constexpr DWORD READONLY = 8;
    static constexpr DWORD BROWSE_FOLDER = 16;
    static constexpr DWORD BROWSE_FILE = 32;
    static constexpr DWORD MULTIPATH = 64;

    CString m_csKey;         // the property key, "" ends the table
    CString m_csFlag;        // the command line flag, or the row's label
    CString m_csDescription; // the help text of the row
    CString m_csList;        // the choices of a list, separated by ";"
    CString m_csDefault;     // the value when none is set
    DWORD m_dwKind = 0;      // kind bits
    BOOL m_bNoArgument = FALSE; // the row never reaches the command line
};

class CProjectItem : public ITreeItem
{
public:
    // Kinds of node.
    static constexpr int PROJECT = 1;
    static constexpr int FILE = 2;
    static constexpr int FOLDER = 4;

    explicit CProjectItem(int nType = PROJECT, CProjectItem* pParent = nullptr);
    CProjectItem(const CProjectItem&) = delete;
    CProjectItem& operator=(const CProjectItem&) = delete;
    ~CProjectItem() override = default;

    // The compiler's options in sheet and command line order, ended by a row with an empty key.
    static const SCompilerOption* GetCompilerOptions();

    // The kind of the element node by its name; any other name raises.
    static int GetNodeType(const CXMLNode& node);
    // The attribute csKey of the node, "" when missing.
    static CString GetNodeProperty(const CXMLNode& node, const CString& csKey);
    static void SetNodeProperty(CXMLDocument& document, CXMLNode& node, const CString& csKey,
                                const CString& csValue);

    // Reads the node and its subtree. csProjectFile is the file the project was read from; it is
    // the path of a project.
    void Load(const CXMLNode& node, const CString& csProjectFile);
    // Appends the item and its subtree to parent.
    void Save(CXMLDocument& document, CXMLNode& parent) const;

    // ITreeItem
    [[nodiscard]] CString GetTitle() const override { return GetProperty(u"name"); }
    [[nodiscard]] int GetType() const override { return m_nType; }
    [[nodiscard]] ITreeItem* GetParent() const override { return m_pParent; }
    [[nodiscard]] int GetChildrenCount() const override { return static_cast<int>(m_aChildren.size()); }
    [[nodiscard]] ITreeItem* GetChild(int nIndex) const override;
    [[nodiscard]] CString GetProperty(const CString& csKey) const override { return m_properties.GetValue(csKey); }
    void SetProperty(const CString& csKey, const CString& csValue) override { m_properties.SetValue(csKey, csValue); }
    [[nodiscard]] CString GetPropertiesXml(const CString& csSheet) const override;
    void Rename(const CString& csNew) override;
    void DoOpen() override;

    // Renames the file csOld to csNew on disk.
    void DoRename(const CString& csOld, const CString& csNew);

    // The item's path made absolute: "path" when absolute, else behind the parent's folder.
    [[nodiscard]] CString GetFullPath() const;
    // The folder of the item's files, with its closing separator: a project's or file's own folder;
    // for a folder item, its parent's.
    [[nodiscard]] CString GetFolder() const;
    // The project the item belongs to.
    [[nodiscard]] const CProjectItem* GetProject() const;

    // The command line fragment of option for csValue; "" when it gives none.
    [[nodiscard]] CString GetOptionArgument(const SCompilerOption& option, const CString& csValue) const;
    // The value an option shows when the project has none: for "-swf" the project's name with
    // ".swf", else the row's default.
    [[nodiscard]] CString GetOptionDefault(const SCompilerOption& option) const;

    // csText with "&", "<", ">", "\"" and "'" replaced by their entities, in that order.
    static CString EscapeXml(const CString& csText);
    // A path with a drive or starting at the root of the file system.
    static bool IsAbsolutePath(const CString& csPath);
    // The path up to and including its last "\\" or "/"; "" without one.
    static CString GetPathFolder(const CString& csPath);

private:
    // The keys the kind keeps beside "name", in file order.
    [[nodiscard]] std::vector<const char16_t*> GetKindKeys() const;
    // One row of the sheet.
    static CString PropRow(const CString& csName, const CString& csValue, const CString& csDescription,
                           const CString& csExtra = CString(), bool bReadOnly = false);
    static CString ChoiceRow(const CString& csName, const CString& csValue, const CString& csDescription,
                             const CString& csList, bool bReadOnly = false);
    // The row of one compiler option.
    [[nodiscard]] CString OptionRow(const SCompilerOption& option) const;

    int m_nType;                                          // PROJECT, FILE or FOLDER
    CProjectItem* m_pParent;                              // the parent, null for a project
    CHashTable m_properties;                              // key to value
    std::vector<std::unique_ptr<CProjectItem>> m_aChildren; // owned, in file order
};
