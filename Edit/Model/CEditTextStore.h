// CEditTextStore: a document held as an array of lines, with the raw edits, loading and safe saving.
#pragma once

#include "Edit/Model/IEditTextStore.h"

#include "Platform/CStringArray.h"

#include <cstdint>

class CEditTextStore : public IEditTextStore
{
public:
    CEditTextStore() = default;
    CEditTextStore(const CEditTextStore&) = delete;
    CEditTextStore& operator=(const CEditTextStore&) = delete;
    virtual ~CEditTextStore() = default;

    // ITextStore
    const CString& GetLine(int nLine) override;
    int GetLinesCount() override;

    // IEditTextStore
    // nEncoding and nEol receive what the file holds (see CTextFileRead); passed back to SaveToFile
    // they give the same bytes, except that mixed line ends all take the kind of the first one.
    // Any failure leaves the store without lines and gives FALSE.
    BOOL LoadFromFile(const CString& csFile, int& nEncoding, int& nEol) override;
    BOOL LoadFromFile(const CString& csFile) override;
    // Writes a temporary file beside the target, flushed to the device, and renames it over the
    // target, which keeps its permissions; a link is followed and stays a link. If asked, a complete
    // copy of the old file replaces csFile + ".bak" first. FALSE on any failure, with the cause for
    // GetLastError: the target is then the old file, or the new one complete, and no temporary file
    // is left. A folder, a pipe or device, a read-only file or one a writer holds for itself is
    // not touched.
    BOOL SaveToFile(const CString& csFile, BOOL bBackup, int nEncoding, int nEol) override;
    // Only "\r\n" breaks a line. The column is not checked: one behind the end appends, while ptEnd
    // still is ptStart.x plus the length.
    void InsertText(const CPoint& ptStart, const CString& csText, CPoint& ptEnd) override;
    void DeleteText(const CPoint& ptStart, const CPoint& ptEnd) override;
    // The store keeps nothing of what a load found: 0.
    int GetEol() override;
    // The system's 8-bit code page.
    int GetCodePage() override;
    void Create() override;
    void GetText(const CPoint& ptStart, const CPoint& ptEnd, CString& csText) override;
    void GetAllText(CString& csText) override;

    // Called with each position that enters GetText, and by the text buffer with each position of an
    // edit before anything else happens; a derived store may correct the position in place.
    virtual void CheckPoint(CPoint& pt);
    // Drops all lines, leaving none: the state between two documents.
    virtual void Clear();

    // Checks that no line holds the line break "\r\n" (lines are separated by the array, never inside
    // one). Raises the invalid-argument exception on the first fault found.
    void AssertValid() const;

    // What the last load found: line ends of another kind than the first (a save makes them all
    // the first kind), and bytes the encoding can't read (kept, and saved back as they were).
    [[nodiscard]] int GetLoadOtherLineEnds() const noexcept { return m_nLoadOtherLineEnds; }
    [[nodiscard]] std::uint64_t GetLoadInvalidBytes() const noexcept { return m_nLoadInvalidBytes; }

protected:
    // Makes room for nMore further lines so that large documents grow in few steps.
    void ReserveLines(int nMore);
    // Writes all lines to csFile, a line end between each two, and flushes it to the device. Raises
    // CFileException on any failure.
    void WriteLines(const CString& csFile, int nEncoding, int nEol);

    CStringArray m_aLines;                 // the document, one line each, without line ends
    int m_nLoadOtherLineEnds = 0;          // line ends of the last load unlike its first one
    std::uint64_t m_nLoadInvalidBytes = 0; // bytes of the last load its encoding can't read
};
