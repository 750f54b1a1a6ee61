// CChangeTextContext: the contexts of all edits of one undo group, applied in the order of the edits.
#pragma once

#include "Edit/Model/CChangeTextContextBase.h"

#include "Platform/CArray.h"

#include <memory>

class CChangeTextContext : public IChangeContext
{
public:
    CChangeTextContext() = default;
    CChangeTextContext(const CChangeTextContext&) = delete;
    CChangeTextContext& operator=(const CChangeTextContext&) = delete;
    virtual ~CChangeTextContext();

    // Passes the point through every edit of the group, first to last.
    void ChangePoint(CPoint* pPoint, BOOL bEnd) override;
    void ChangePoints(CArray<CPoint>* pPoints) override;

    // Appends the context of the next edit; null is ignored.
    void Add(std::unique_ptr<CChangeTextContextBase> pContext);
    // Destroys the contexts and empties the group.
    virtual void Clear();

    [[nodiscard]] int GetCount() const noexcept { return m_aContexts.GetSize(); }

private:
    CArray<std::unique_ptr<CChangeTextContextBase>> m_aContexts; // owned, in order of the edits
};
