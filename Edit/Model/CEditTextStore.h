// CEditTextStore: a document held as an array of lines, with the raw edits, loading and safe saving.
#pragma once

#include "Edit/Model/IEditTextStore.h"

#include "Platform/CStringArray.h"

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
    // Any failure leaves the store without lines and gives FALSE.
    BOOL LoadFromFile(const CString& csFile, int& nEncoding, int& nEol) override;
    BOOL LoadFromFile(const CString& csFile) override;
    // Moves the old file to csFile + ".bak" if asked, writes a temporary file beside the target and
    // renames it over the target. FALSE on any failure; a target that is a folder is left untouched.
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

protected:
    // Makes room for nMore further lines so that large documents grow in few steps.
    void ReserveLines(int nMore);
    // Writes all lines to csFile, a line end between each two. FALSE if the file can't be made.
    BOOL WriteLines(const CString& csFile, int nEncoding, int nEol);

    CStringArray m_aLines; // the document, one line each, without line ends
};
