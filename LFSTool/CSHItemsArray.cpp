#include "CSHItemsArray.h"

int CSHItemsArray::FindByFileNameAndDirAttribute(const CString& csName, BOOL bDir) const
{
    for (int i = 0; i < GetCount(); ++i)
    {
        const CSHItem& item = CArray::GetAt(i);
        if (item.GetIsDirectory() == bDir && item.GetItemName().CompareNoCase(csName.Str()) == 0)
            return i;
    }
    return -1;
}
