// CTextStoreSearchLines: a line store of the text model as a search source. The store has no selection,
// so the source keeps the last one set.
#pragma once

#include "ISearchLines.h"

#include "Edit/Model/ITextStore.h"

class CTextStoreSearchLines : public ISearchLines
{
public:
    // The store is not owned and must outlive the source.
    explicit CTextStoreSearchLines(ITextStore& store) noexcept : m_store(store) {}
    CTextStoreSearchLines(const CTextStoreSearchLines&) = delete;
    CTextStoreSearchLines& operator=(const CTextStoreSearchLines&) = delete;
    virtual ~CTextStoreSearchLines() = default;

    // ISearchLines
    CString GetLine(int nLine) override { return m_store.GetLine(nLine); }
    int GetLinesCount() override { return m_store.GetLinesCount(); }
    void SetSelection(const CPoint& ptStart, const CPoint& ptEnd) override;
    void GetSelection(CPoint& ptStart, CPoint& ptEnd) override;
    const CString* GetLineText(int nLine) override { return &m_store.GetLine(nLine); }

private:
    ITextStore& m_store;
    CPoint m_ptSelStart; // the selection, (0, 0) to (0, 0) at first
    CPoint m_ptSelEnd;
};
