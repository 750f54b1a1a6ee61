// CTextColorBuffer: the colour records of a document, kept in step with its text.
#pragma once

#include "Edit/Model/CEmptyTextBufferEvents.h"
#include "Edit/Model/CLineColorInfo.h"
#include "Edit/Model/ITextColorBuffer.h"

#include "Platform/CArray.h"

// One CLineColorInfo per line of the attached buffer. The parser paints ranges; inserted text takes
// the colour of the run it lands in, so the paint stays put while the user types. A line that has
// never been coloured holds no records (it reads as all zero), so a loaded document costs one
// pointer a line here until it is painted; edits of many lines move the line array once.
class CTextColorBuffer : public CArray<CLineColorInfo, const CLineColorInfo&>,
                         public ITextColorBuffer,
                         public CEmptyTextBufferEvents
{
public:
    CTextColorBuffer() = default;
    CTextColorBuffer(const CTextColorBuffer&) = delete;
    CTextColorBuffer& operator=(const CTextColorBuffer&) = delete;
    ~CTextColorBuffer() override = default;

    // ITextColorBuffer. Positions outside the lines raise the invalid-argument exception.
    void SetTextColor(const CPoint& pt, const COLOR_INFO& info) override;
    void SetTextColor(const CPoint& ptStart, const CPoint& ptEnd, const COLOR_INFO& info) override;
    // All zero while not attached.
    COLOR_INFO GetTextColor(const CPoint& pt) override;
    void ClearTextColors() override;

    // The two edits move the records; every other event is ignored.
    void OnAfterInsert(ITextBuffer* pBuffer, const CPoint& ptStart, const CString& csText,
                       const CPoint& ptEnd, IChangeContext* pContext) override;
    void OnAfterDelete(ITextBuffer* pBuffer, const CPoint& ptStart, const CPoint& ptEnd,
                       IChangeContext* pContext) override;

    // Listens to the buffer and sizes the records to its lines, all zero.
    void AttachToBuffer(ITextBuffer* pBuffer) override;
    [[nodiscard]] BOOL IsAttached() const noexcept { return m_bAttached; }
    // Forgets the buffer and drops the records; unregistering is the buffer's business (its Close).
    void Detach() noexcept;

    // The count of records of line nLine: its text's length, whether it holds records or not.
    [[nodiscard]] int GetLineLength(int nLine) const;
    // Checks that the lines are in step with the attached buffer (one entry per line, records of a
    // coloured line as many as its characters); raises std::logic_error naming the first fault.
    void AssertValid() const;

private:
    // Line nLine with its records, created all zero if it has none yet.
    CLineColorInfo& Colored(int nLine);
    // The record that text inserted at x of a line with the records aLine takes.
    static COLOR_INFO ChooseInsertColor(const CLineColorInfo& aLine, int x);

    BOOL m_bAttached = FALSE;         // set by AttachToBuffer, cleared by Detach
    ITextBuffer* m_pBuffer = nullptr; // the buffer listened to; not owned
};
