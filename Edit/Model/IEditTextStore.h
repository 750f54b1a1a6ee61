// IEditTextStore: a document held as lines, with the raw edits, loading and saving.
#pragma once

#include "Edit/Model/ITextStore.h"

#include "Platform/CPoint.h"
#include "Platform/Types.h"

struct IEditTextStore : public ITextStore
{
    // Loads csFile. nEncoding: in, the code page for a file without a byte order mark; out, what
    // was used. nEol: out, the line end kind found (0 if none was recorded).
    virtual BOOL LoadFromFile(const CString& csFile, int& nEncoding, int& nEol) = 0;
    // Loads with code page 0, throwing away what the load found.
    virtual BOOL LoadFromFile(const CString& csFile) = 0;
    // Saves safely through a temporary file; bBackup keeps the old file as csFile + ".bak".
    virtual BOOL SaveToFile(const CString& csFile, BOOL bBackup, int nEncoding, int nEol) = 0;
    // Inserts csText ("\r\n" between lines) at ptStart; ptEnd receives the position behind it.
    virtual void InsertText(const CPoint& ptStart, const CString& csText, CPoint& ptEnd) = 0;
    // Removes the range; ptStart must not lie behind ptEnd.
    virtual void DeleteText(const CPoint& ptStart, const CPoint& ptEnd) = 0;
    virtual int GetEol() = 0;
    virtual int GetCodePage() = 0;
    // Makes the store hold one empty line.
    virtual void Create() = 0;
    // The text of the range, with "\r\n" between lines.
    virtual void GetText(const CPoint& ptStart, const CPoint& ptEnd, CString& csText) = 0;
    virtual void GetAllText(CString& csText) = 0;

protected:
    ~IEditTextStore() = default;
};
