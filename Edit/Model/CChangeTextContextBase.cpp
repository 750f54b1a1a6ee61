#include "Edit/Model/CChangeTextContextBase.h"

void CChangeTextContextBase::ChangePoints(CArray<CPoint>* pPoints)
{
    if (!pPoints)
        return;
    for (int i = 0; i < pPoints->GetSize(); ++i)
        ChangePoint(&pPoints->ElementAt(i), FALSE);
}
