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

void CChangeTextContext::Add(CChangeTextContextBase* pContext)
{
    if (!pContext)
        return;
    try
    {
        m_aContexts.Add(pContext);
    }
    catch (...)
    {
        delete pContext;
        throw;
    }
}

void CChangeTextContext::Clear()
{
    for (int i = 0; i < m_aContexts.GetSize(); ++i)
        delete m_aContexts[i];
    // The storage is kept: the buffer clears its context around every edit.
    m_aContexts.SetSize(0);
}
