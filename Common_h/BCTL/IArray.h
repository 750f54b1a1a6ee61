// IArray: a changeable array that can pass a component border. Index errors raise
// CErrorBoundsException; any other failure of the storage is passed on as CUnknownException.
#pragma once

#include "Common_h/BCTL/IStaticArray.h"

namespace BCTL::Arrays
{
template <typename T> struct IArray : public virtual IStaticArray<T>
{
    // Stores value at nIndex, which lies in 0 .. size - 1.
    virtual void SetValue(int nIndex, const T& value) = 0;
    // Inserts value before nIndex, which lies in 0 .. size; size appends.
    virtual void InsertValue(int nIndex, const T& value) = 0;
    virtual void AddValue(const T& value) = 0;
    // Removes nCount elements from nIndex, which lies in 0 .. size - 1; nCount -1 removes to the end.
    virtual void RemoveValue(int nIndex, int nCount) = 0;
    // Removes everything and frees the storage.
    virtual void Clear() = 0;
};
} // namespace BCTL::Arrays
