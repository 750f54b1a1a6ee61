#include "Edit/Model/CEditTextStore.h"

#include "Platform/CodePages.h"
#include "Platform/FileOperations.h"
#include "Platform/NativePath.h"
#include "Utils/CTextFileRead.h"
#include "Utils/CTextFileWrite.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

namespace
{
constexpr char16_t SZ_EOL[] = u"\r\n";
constexpr char16_t SZ_BACKUP_EXT[] = u".bak";
constexpr char16_t SZ_TEMP_PREFIX[] = u"TSTemp";
// Growth of the line array never falls below this many lines at a time.
constexpr int MIN_LINES_GROW_BY = 1024;

bool IsDirectory(const CString& csPath)
{
    std::error_code ec;
    return std::filesystem::is_directory(ToNativePath(csPath), ec);
}
} // namespace

const CString& CEditTextStore::GetLine(int nLine)
{
    return m_aLines.GetAt(nLine);
}

int CEditTextStore::GetLinesCount()
{
    return m_aLines.GetSize();
}

int CEditTextStore::GetEol()
{
    return 0;
}

int CEditTextStore::GetCodePage()
{
    return static_cast<int>(GetACP());
}

void CEditTextStore::CheckPoint(CPoint& /*pt*/) {}

void CEditTextStore::Create()
{
    m_aLines.RemoveAll();
    m_aLines.Add(CString());
}

void CEditTextStore::Clear()
{
    m_aLines.RemoveAll();
}

void CEditTextStore::AssertValid() const
{
    for (const CString& csLine : m_aLines)
        if (csLine.Find(SZ_EOL) >= 0)
            AfxThrowInvalidArgException();
}

void CEditTextStore::ReserveLines(int nMore)
{
    // The array's own rule grows a large array by 1024 elements at most, which makes loading and
    // pasting many lines quadratic; a grow-by of half the size keeps them linear.
    const int nSize = m_aLines.GetSize();
    if (nSize + nMore > m_aLines.GetAllocSize())
        m_aLines.SetSize(nSize, std::max({nMore, nSize / 2, MIN_LINES_GROW_BY}));
}

void CEditTextStore::InsertText(const CPoint& ptStart, const CString& csText, CPoint& ptEnd)
{
    CString& csLine = m_aLines.GetAt(ptStart.y);
    // The text may be the very line it goes into.
    const CString csOwnCopy = &csText == &csLine ? csText : CString();
    const CString& csSource = &csText == &csLine ? csOwnCopy : csText;

    int nBreak = csSource.Find(SZ_EOL);
    if (nBreak < 0)
    {
        csLine.Insert(ptStart.x, csSource.Str());
        ptEnd = CPoint(ptStart.x + csSource.GetLength(), ptStart.y);
        return;
    }

    // The line keeps what stands before the position plus the first piece; its old tail goes behind
    // the last piece. The lines between are put in all at once.
    const CString csTail = csLine.Mid(ptStart.x);
    csLine = csLine.Left(ptStart.x) + csSource.Left(nBreak);

    CStringArray aNewLines;
    int nFrom = nBreak + 2;
    while ((nBreak = csSource.Find(SZ_EOL, nFrom)) >= 0)
    {
        aNewLines.Add(csSource.Mid(nFrom, nBreak - nFrom));
        nFrom = nBreak + 2;
    }
    const CString csLast = csSource.Mid(nFrom);
    ptEnd = CPoint(csLast.GetLength(), ptStart.y + 1 + aNewLines.GetSize());
    aNewLines.Add(csLast + csTail);

    ReserveLines(aNewLines.GetSize());
    m_aLines.InsertAt(ptStart.y + 1, &aNewLines);
}

void CEditTextStore::DeleteText(const CPoint& ptStart, const CPoint& ptEnd)
{
    if (ptStart.y == ptEnd.y)
    {
        m_aLines.GetAt(ptStart.y).Delete(ptStart.x, ptEnd.x - ptStart.x);
        return;
    }
    // Both lines are checked before anything changes, so a bad range leaves the text whole.
    if (ptEnd.y < ptStart.y)
        AfxThrowInvalidArgException();
    CString& csFirst = m_aLines.GetAt(ptStart.y);
    const CString& csLast = m_aLines.GetAt(ptEnd.y);

    csFirst = csFirst.Left(ptStart.x) + csLast.Mid(ptEnd.x);
    m_aLines.RemoveAt(ptStart.y + 1, ptEnd.y - ptStart.y);
}

void CEditTextStore::GetText(const CPoint& ptStart, const CPoint& ptEnd, CString& csText)
{
    CPoint ptFrom = ptStart;
    CPoint ptTo = ptEnd;
    CheckPoint(ptFrom);
    CheckPoint(ptTo);

    csText.Empty();
    if (ptFrom == ptTo)
        return;
    if (ptFrom.y == ptTo.y)
    {
        csText = m_aLines.GetAt(ptFrom.y).Mid(ptFrom.x, ptTo.x - ptFrom.x);
        return;
    }

    CString csResult = m_aLines.GetAt(ptFrom.y).Mid(ptFrom.x);
    csResult += SZ_EOL;
    for (int nLine = ptFrom.y + 1; nLine < ptTo.y; ++nLine)
    {
        csResult += m_aLines.GetAt(nLine);
        csResult += SZ_EOL;
    }
    csResult += m_aLines.GetAt(ptTo.y).Left(ptTo.x);
    csText = std::move(csResult);
}

void CEditTextStore::GetAllText(CString& csText)
{
    const int nLast = m_aLines.GetSize() - 1;
    GetText(CPoint(0, 0), CPoint(m_aLines.GetAt(nLast).GetLength(), nLast), csText);
}

BOOL CEditTextStore::LoadFromFile(const CString& csFile)
{
    int nEncoding = 0;
    int nEol = 1;
    return LoadFromFile(csFile, nEncoding, nEol);
}

BOOL CEditTextStore::LoadFromFile(const CString& csFile, int& nEncoding, int& nEol)
{
    try
    {
        m_aLines.RemoveAll();
        CTextFileRead file(csFile.GetString(), nEncoding);
        if (file.IsOpen())
        {
            // A read that fails leaves the line string as it was, and what it holds is appended all
            // the same: the line before, or an empty one at the start. A line read is moved into
            // the array, so the one before is taken from there.
            CString csLine;
            while (!file.Eof())
            {
                const bool bRead = file.ReadLine(csLine);
                const int nCount = m_aLines.GetSize();
                if (!bRead)
                    csLine = nCount > 0 ? m_aLines[nCount - 1] : CString();
                ReserveLines(1);
                m_aLines.SetSize(nCount + 1);
                m_aLines[nCount] = std::move(csLine);
            }
            if (m_aLines.GetSize() == 0)
                m_aLines.Add(CString());
            file.Close();
            nEol = file.GetLineEnd();
            return TRUE;
        }
    }
    catch (...)
    {
    }
    m_aLines.RemoveAll();
    return FALSE;
}

BOOL CEditTextStore::WriteLines(const CString& csFile, int nEncoding, int nEol)
{
    CTextFileWrite file(csFile.GetString(), nEncoding);
    file.SetLineEnd(nEol);
    if (!file.IsOpen())
        return FALSE;
    const int nCount = m_aLines.GetSize();
    for (int i = 0; i < nCount; ++i)
    {
        file.Write(m_aLines[i].GetString());
        if (i < nCount - 1)
            file.WriteEndl();
    }
    file.Close();
    return TRUE;
}

BOOL CEditTextStore::SaveToFile(const CString& csFile, BOOL bBackup, int nEncoding, int nEol)
{
    CString csTemp;
    try
    {
        // Backing up would move the folder away; nothing is touched.
        if (csFile.IsEmpty() || IsDirectory(csFile))
            return FALSE;

        const CString csBak = csFile + SZ_BACKUP_EXT;
        CString csDrive, csDir, csName, csExt;
        SplitPath(csFile, csDrive, csDir, csName, csExt);
        GetTempFileName(csDrive + csDir, SZ_TEMP_PREFIX, 0, csTemp);

        if (bBackup)
        {
            DeleteFile(csBak);
            MoveFileEx(csFile, csBak, MOVEFILE_REPLACE_EXISTING);
        }
        BOOL bWritten = TRUE;
        if (!csTemp.IsEmpty())
            bWritten = WriteLines(csTemp, nEncoding, nEol);
        if (bWritten && !MoveFileEx(csTemp, csFile, MOVEFILE_REPLACE_EXISTING))
            bWritten = WriteLines(csFile, nEncoding, nEol);
        if (bWritten)
        {
            if (!csTemp.IsEmpty())
                DeleteFile(csTemp);
            return TRUE;
        }
    }
    catch (...)
    {
    }
    // A failed save leaves no temporary file behind.
    if (!csTemp.IsEmpty())
        DeleteFile(csTemp);
    return FALSE;
}
