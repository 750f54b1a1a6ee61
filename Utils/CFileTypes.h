// CFileTypes: the table of file types, read from two XML files beside the executable: the main
// table and an optional extended one. Lookups that find nothing give the type "none".
#pragma once

#include "Platform/CArray.h"
#include "Utils/CFileType.h"
#include "Utils/IFileTypes.h"

class CFileTypes : public IFileTypes
{
public:
    CFileTypes() = default;
    CFileTypes(const CFileTypes&) = delete;
    CFileTypes& operator=(const CFileTypes&) = delete;

    bool Load() override;
    // Load from the files "filetypes.xml" and "extendedtypes.xml" in csFolder (closed by a
    // separator). A file whose count of attribute values isn't a multiple of five raises the
    // invalid-argument exception; the entries read before it stay.
    bool LoadFrom(const CString& csFolder);

    [[nodiscard]] CString GetFilterComboList(bool bExtended) const override;
    [[nodiscard]] CString GetTypeNamesComboList(bool bExtended) const override;
    IFileType* GetFileTypeByTypeName(const CString& csName) override;
    IFileType* GetFileTypeByExt(const CString& csExt) override;
    IFileType* GetFileTypeByDescription(const CString& csDesc, bool bNoAmpersand) override;
    IFileType* GetFileType(int nIndex) override;
    [[nodiscard]] int GetTypesCount(bool bExtended) const override;
    void GetFilterArray(CStringArray& aFilters, bool bExtended) const override;

private:
    // Appends the entries of csFile; false if it doesn't open.
    bool LoadFile(const CString& csFile, bool bExtended);
    // The entry "none"; a table without one answers with a built-in entry of that name.
    IFileType* GetNoneType();

    CArray<CFileType, const CFileType&> m_aTypes; // main entries, then extended ones, in file order
    CFileType m_noneType{u"none", u"N&one", u"*.*", u"", false, false}; // when the table has no "none"
};

// The process's table, loaded on the first call.
IFileTypes* GetFileTypes();
