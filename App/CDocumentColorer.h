// CDocumentColorer: the parser of one document, and the colours it gives the document's text. The
// parser hears every edit of the buffer; the lines from the first one it no longer vouches for are
// coloured anew when the program gets round to it (PaintPending), not inside the edit.
#pragma once

#include "Colorer/CTextBufferLinesStorage.h"
#include "Colorer/IParser.h"

#include "Platform/CString.h"

#include <functional>
#include <memory>

class CTextBuffer;

class CDocumentColorer : private IParserEvents
{
public:
    // A parser of the type the file name and the first line tell ("text" when neither does) over
    // the buffer, which must be filled and outlive the colorer. Every line waits for colours.
    CDocumentColorer(CTextBuffer* pBuffer, const CString& csFileName);
    ~CDocumentColorer();
    CDocumentColorer(const CDocumentColorer&) = delete;
    CDocumentColorer& operator=(const CDocumentColorer&) = delete;

    // Called once each time lines come to wait, so that the owner can have them painted later.
    void SetPendingHandler(std::function<void()> fnPending) { m_fnPending = std::move(fnPending); }
    // The first line that waits for colours; -1 when none does.
    [[nodiscard]] int GetFirstPending() const noexcept { return m_nFirstPending; }
    // Colours the waiting lines; FALSE when none waited.
    BOOL PaintPending();
    [[nodiscard]] CString GetType() const;

private:
    void OnTypeChanged(IParser* pParser) override;
    void OnLinesInvalidated(IParser* pParser, int nFirstLine) override;
    void OnParsed(IParser*, int) override {}

    CTextBuffer* m_pBuffer;
    CTextBufferLinesStorage m_Storage;
    std::unique_ptr<IParser> m_pParser;
    std::function<void()> m_fnPending;
    int m_nFirstPending = 0;
};
