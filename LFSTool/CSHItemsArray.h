// CSHItemsArray: the items of one folder, in order of adding.
#pragma once

#include "LFSTool/CSHItem.h"
#include "Platform/CArray.h"
#include "Platform/CString.h"
#include "Platform/Types.h"

class CSHItemsArray : public CArray<CSHItem, CSHItem&>
{
public:
    // Appends a copy of the item.
    void AddItem(CSHItem item) { Add(item); }
    // A copy of the item at nIndex; outside the array raises the invalid-argument exception.
    [[nodiscard]] CSHItem GetAt(int nIndex) const { return CArray::GetAt(nIndex); }

    // The first item whose name equals csName without regard to case and whose folder flag equals bDir;
    // -1 if none does. Names are those GetAllInfo filled.
    [[nodiscard]] int FindByFileNameAndDirAttribute(const CString& csName, BOOL bDir) const;
};
