// CFindArray: ascending screen offsets with two searches. The sign of an entry is a mark of its
// owner (a collapsed block begins there), so both searches compare absolute values.
#pragma once

#include "Platform/CArray.h"
#include "Platform/Types.h"

class CFindArray : public CArray<int, const int&>
{
public:
    // Index of the entry equal to nValue (bExist TRUE); else the entry below it, or with bApprox
    // the nearer of the two around it, ties going down. -1 for an empty array or a value above
    // the last entry. Binary search.
    int QuickFind(int nValue, BOOL bApprox, BOOL& bExist) const;
    // The same answer by a walk from the start.
    int SimpleFind(int nValue, BOOL bApprox, BOOL& bExist) const;

private:
    // Decides between the entries at nLow and nHigh that enclose nValue.
    int Decide(int nValue, BOOL bApprox, BOOL& bExist, int nLow, int nHigh) const;
};
