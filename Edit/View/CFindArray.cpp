#include "Edit/View/CFindArray.h"

#include <cstdlib>

int CFindArray::QuickFind(int nValue, BOOL bApprox, BOOL& bExist) const
{
    bExist = FALSE;
    const int nSize = GetSize();
    if (nSize == 0 || nValue > std::abs(GetAt(nSize - 1)))
        return -1;
    int nLow = 0;
    int nHigh = nSize - 1;
    while (nHigh - nLow > 1)
    {
        const int nMiddle = (nLow + nHigh) / 2;
        const int nProbe = std::abs(GetAt(nMiddle));
        if (nProbe == nValue)
        {
            bExist = TRUE;
            return nMiddle;
        }
        if (nProbe > nValue)
            nHigh = nMiddle;
        else
            nLow = nMiddle;
    }
    return Decide(nValue, bApprox, bExist, nLow, nHigh);
}

int CFindArray::SimpleFind(int nValue, BOOL bApprox, BOOL& bExist) const
{
    bExist = FALSE;
    const int nSize = GetSize();
    if (nSize == 0 || nValue > std::abs(GetAt(nSize - 1)))
        return -1;
    int nHigh = 0;
    while (std::abs(GetAt(nHigh)) < nValue)
        ++nHigh;
    return Decide(nValue, bApprox, bExist, nHigh > 0 ? nHigh - 1 : 0, nHigh);
}

int CFindArray::Decide(int nValue, BOOL bApprox, BOOL& bExist, int nLow, int nHigh) const
{
    if (std::abs(GetAt(nLow)) == nValue)
    {
        bExist = TRUE;
        return nLow;
    }
    if (std::abs(GetAt(nHigh)) == nValue)
    {
        bExist = TRUE;
        return nHigh;
    }
    if (!bApprox || nHigh == 0)
        return nHigh - 1;
    const int nBelow = std::abs(GetAt(nHigh - 1));
    const int nAbove = std::abs(GetAt(nHigh));
    return nValue <= (nBelow + nAbove) / 2 ? nHigh - 1 : nHigh;
}
