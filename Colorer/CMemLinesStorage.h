// CMemLinesStorage: lines held in memory, for parsers of texts that have no buffer, and an editing
// surface that tells its parsers what changed.
#pragma once

#include "Colorer/ILinesStorage.h"

#include "Common_h/CEventHandlers.h"
#include "Platform/CPoint.h"

#include <vector>

class CMemLinesStorage : public ILinesStorage
{
public:
    CMemLinesStorage() : m_aLines(1) {}
    // The text with lines cut at "\r\n", "\n" or "\r".
    explicit CMemLinesStorage(const CString& csText) { SetText(csText); }
    CMemLinesStorage(const CMemLinesStorage&) = delete;
    CMemLinesStorage& operator=(const CMemLinesStorage&) = delete;

    int AddEventsHandler(IEditorEvents* pHandler) override { return m_handlers.AddHandler(pHandler); }
    int RemoveEventsHandler(IEditorEvents* pHandler) override { return m_handlers.RemoveHandler(pHandler); }
    const CString& GetLine(int nLine) override;
    int GetLinesCount() override { return static_cast<int>(m_aLines.size()); }

    void SetText(const CString& csText);
    // The whole text with "\r\n" between lines.
    [[nodiscard]] CString GetText() const;
    // The text between two positions, with "\r\n" between lines; positions are clamped.
    [[nodiscard]] CString GetText(const CPoint& ptStart, const CPoint& ptEnd) const;
    // Inserts csText at a clamped position; returns the position behind it.
    CPoint InsertText(const CPoint& ptStart, const CString& csText);
    // Deletes the text between two clamped positions.
    void DeleteText(const CPoint& ptStart, const CPoint& ptEnd);

private:
    [[nodiscard]] CPoint Clamp(const CPoint& pt) const noexcept;
    void Changed(int nFirstLine, int nOldCount, int nNewCount);

    std::vector<CString> m_aLines; // never empty
    CEventHandlers m_handlers;     // the parsers that read the lines; not owned
};
