// IFileTypes: the table of file types: filters for dialogs, names for combo boxes, and the type of
// a file by its name, extension or menu text.
#pragma once

#include "Platform/CString.h"
#include "Platform/CStringArray.h"
#include "Utils/IFileType.h"

struct IFileTypes
{
    virtual ~IFileTypes() = default;

    // Reads the table from "FileTypes\\filetypes.xml" and "FileTypes\\extendedtypes.xml" beside
    // the executable. False when the main file can't be read; the extended file is optional.
    virtual bool Load() = 0;
    // The open dialog filter: all files first, then "<description> files (<filter>)|<filter>|" for
    // each entry of the table chosen by bExtended except "none", ended by "|".
    [[nodiscard]] virtual CString GetFilterComboList(bool bExtended) const = 0;
    // The type names of the chosen table, each followed by "|".
    [[nodiscard]] virtual CString GetTypeNamesComboList(bool bExtended) const = 0;
    // Lookups; an entry that isn't there gives the type "none", never null.
    virtual IFileType* GetFileTypeByTypeName(const CString& csName) = 0;
    virtual IFileType* GetFileTypeByExt(const CString& csExt) = 0;
    virtual IFileType* GetFileTypeByDescription(const CString& csDesc, bool bNoAmpersand) = 0;
    // The entry at nIndex of the whole table; an index outside raises the invalid-argument exception.
    virtual IFileType* GetFileType(int nIndex) = 0;
    // The number of entries of the table chosen by bExtended.
    [[nodiscard]] virtual int GetTypesCount(bool bExtended) const = 0;
    // Appends the filter of each entry of the chosen table.
    virtual void GetFilterArray(CStringArray& aFilters, bool bExtended) const = 0;
};
