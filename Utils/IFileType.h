// IFileType: one kind of file the editor knows: its filter, names and icon.
#pragma once

#include "Platform/CString.h"
#include "Platform/CStringArray.h"

struct IFileType
{
    virtual ~IFileType() = default;

    // The open dialog filter, such as "*.html; *.htm".
    [[nodiscard]] virtual CString GetFilter() const = 0;
    // Replaces aExt with the extensions of the filter, without "*." ("cpp", "h", ...).
    virtual void GetExtArray(CStringArray& aExt) const = 0;
    // The type's name, such as "html".
    [[nodiscard]] virtual CString GetTypeName() const = 0;
    // The menu text, such as "&HTML"; with bNoAmpersand every "&" is removed.
    [[nodiscard]] virtual CString GetTypeDescription(bool bNoAmpersand) const = 0;
    // The icon's image file, relative to the folder of the table, such as "Images/jscript.bmp".
    [[nodiscard]] virtual CString GetImagePath() const = 0;
    // The index of the icon in an image list, -1 until set.
    [[nodiscard]] virtual int GetIconIndex() const = 0;
    virtual void SetIconIndex(int nIndex) = 0;
    [[nodiscard]] virtual bool IsDefault() const = 0;
    // True for an entry of the extended table.
    [[nodiscard]] virtual bool IsExtended() const = 0;
};
