// CChangeTextContextBase: the context of one edit; the derived class maps a single point.
#pragma once

#include "Edit/Model/IChangeContext.h"

class CChangeTextContextBase : public IChangeContext
{
public:
    CChangeTextContextBase() = default;
    CChangeTextContextBase(const CChangeTextContextBase&) = delete;
    CChangeTextContextBase& operator=(const CChangeTextContextBase&) = delete;
    // Contexts are owned and destroyed through this base by the group context.
    virtual ~CChangeTextContextBase() = default;

    // Moves each point of the array as a start (bEnd 0).
    void ChangePoints(CArray<CPoint>* pPoints) override;
};
