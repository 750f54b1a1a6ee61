#include "Edit/Model/CChangeTextContext.h"

CChangeTextContext::~CChangeTextContext()
{
    Clear();
}

void CChangeTextContext::ChangePoint(CPoint* pPoint, BOOL bEnd)
{
    for (int i = 0; i < m_aContexts.GetSize(); ++i)
        m_aContexts[i]->ChangePoint(pPoint, bEnd);
}

void CChangeTextContext::ChangePoints(CArray<CPoint>* pPoints)
{
    for (int i = 0; i < m_aContexts.GetSize(); ++i)
        m_aContexts[i]->ChangePoints(pPoints);
}

void CChangeTextContext::Add(std::unique_ptr<CChangeTextContextBase> pContext)
{
    if (pContext)
        m_aContexts.Add(std::move(pContext));
}

void CChangeTextContext::Clear()
{
    // The storage is kept: the buffer clears its context around every edit.
    m_aContexts.SetSize(0);
}
