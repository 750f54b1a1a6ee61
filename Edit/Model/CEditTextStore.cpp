#include "Edit/Model/CEditTextStore.h"

#include "Platform/CFile.h"
#include "Platform/CodePages.h"
#include "Platform/FileOperations.h"
#include "Utils/CTextFileRead.h"
#include "Utils/CTextFileWrite.h"

#include <algorithm>
#include <utility>

namespace
{
constexpr char16_t SZ_EOL[] = u"\r\n";
constexpr char16_t SZ_BACKUP_EXT[] = u".bak";
constexpr char16_t SZ_TEMP_PREFIX[] = u"TSTemp";
// Growth of the line array never falls below this many lines at a time.
constexpr int MIN_LINES_GROW_BY = 1024;
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
    // The text may be a line of this store, which moves when lines are inserted.
    const CString* pLines = m_aLines.GetData();
    const bool bOwnLine = &csText >= pLines && &csText < pLines + m_aLines.GetSize();
    const CString csOwnCopy = bOwnLine ? csText : CString();
    const CString& csSource = bOwnLine ? csOwnCopy : csText;

    int nBreak = csSource.Find(SZ_EOL);
    if (nBreak < 0)
    {
        csLine.Insert(ptStart.x, csSource.Str());
        ptEnd = CPoint(ptStart.x + csSource.GetLength(), ptStart.y);
        return;
    }

    // The line keeps what stands before the position plus the first piece; its old tail goes behind
    // the last piece. Room for the new lines is made in one move, and each is then filled in place.
    const CString csTail = csLine.Mid(ptStart.x);
    csLine = csLine.Left(ptStart.x) + csSource.Left(nBreak);
    int nNewLines = 0;
    for (int nAt = nBreak; nAt >= 0; nAt = csSource.Find(SZ_EOL, nAt + 2))
        ++nNewLines;
    ReserveLines(nNewLines);
    m_aLines.InsertAt(ptStart.y + 1, CString(), nNewLines);

    int y = ptStart.y + 1;
    int nFrom = nBreak + 2;
    while ((nBreak = csSource.Find(SZ_EOL, nFrom)) >= 0)
    {
        m_aLines[y++].Str().assign(csSource.Str(), static_cast<std::size_t>(nFrom),
                                   static_cast<std::size_t>(nBreak - nFrom));
        nFrom = nBreak + 2;
    }
    CString& csLast = m_aLines[y];
    csLast.Str().assign(csSource.Str(), static_cast<std::size_t>(nFrom));
    ptEnd = CPoint(csLast.GetLength(), y);
    csLast += csTail;
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
    m_nLoadOtherLineEnds = 0;
    m_nLoadInvalidBytes = 0;
    try
    {
        m_aLines.RemoveAll();
        CTextFileRead file(csFile.GetString(), nEncoding);
        if (file.IsOpen())
        {
            CString csLine;
            while (file.ReadLine(csLine))
            {
                const int nCount = m_aLines.GetSize();
                ReserveLines(1);
                m_aLines.SetSize(nCount + 1);
                m_aLines[nCount] = std::move(csLine);
            }
            if (m_aLines.GetSize() == 0)
                m_aLines.Add(CString());
            file.Close();
            nEol = file.GetLineEnd();
            m_nLoadOtherLineEnds = file.GetOtherLineEnds();
            m_nLoadInvalidBytes = file.GetInvalidBytes();
            return TRUE;
        }
    }
    catch (...)
    {
    }
    m_aLines.RemoveAll();
    return FALSE;
}

void CEditTextStore::WriteLines(const CString& csFile, int nEncoding, int nEol)
{
    CFile file(csFile, CFile::modeCreate | CFile::modeWrite | CFile::typeBinary);
    CTextFileWrite writer(&file, nEncoding);
    writer.SetLineEnd(nEol);
    const int nCount = m_aLines.GetSize();
    for (int i = 0; i < nCount; ++i)
    {
        writer.Write(m_aLines[i].Str());
        if (i < nCount - 1)
            writer.WriteEndl();
    }
    writer.Close();
    // On the device before it takes the target's name, so that the name never leads to a part.
    file.Flush();
    file.Close();
}

BOOL CEditTextStore::SaveToFile(const CString& csFile, BOOL bBackup, int nEncoding, int nEol)
{
    // The failure of a step: its code is what GetLastError gives the caller.
    struct SFailure
    {
        DWORD dwError;
    };
    const auto Check = [](BOOL bDone)
    {
        if (!bDone)
            throw SFailure{GetLastError() != ERROR_SUCCESS ? GetLastError() : ERROR_GEN_FAILURE};
    };

    CString csTemp, csBackupTemp;
    DWORD dwError = ERROR_GEN_FAILURE;
    try
    {
        // Backing up would copy a folder; nothing is touched.
        if (csFile.IsEmpty() || IsDirectory(csFile))
            throw SFailure{ERROR_ACCESS_DENIED};

        // A link stays a link: the file it leads to takes the new content.
        CString csTarget;
        Check(ResolveLinks(csFile, csTarget));
        const BOOL bExists = FileExists(csTarget);
        // A pipe or a device is not replaced by a file (and opening a pipe could wait for ever).
        if (bExists && !IsRegularFile(csTarget))
            throw SFailure{ERROR_ACCESS_DENIED};
        CFile lock;
        if (bExists)
        {
            // A writer that holds the file for itself refuses the save; the shared lock held until
            // the end keeps such a writer from starting halfway.
            CFileException error;
            if (!lock.Open(csTarget, CFile::modeRead | CFile::shareDenyWrite, &error) &&
                error.m_cause == CFileException::sharingViolation)
                throw SFailure{ERROR_SHARING_VIOLATION};
            // A read-only file is not replaced behind its owner's back.
            if (!IsWritable(csTarget))
                throw SFailure{ERROR_ACCESS_DENIED};
        }

        CString csDrive, csDir, csName, csExt;
        SplitPath(csTarget, csDrive, csDir, csName, csExt);
        Check(GetTempFileName(csDrive + csDir, SZ_TEMP_PREFIX, 0, csTemp) != 0);

        // The backup is a copy made complete under a temporary name: the old file keeps its name until
        // the new one replaces it, and an older backup stays until a complete one takes its place.
        if (bBackup && bExists)
        {
            // Beside the backup's name, which is the link's when csFile is one.
            SplitPath(csFile, csDrive, csDir, csName, csExt);
            Check(GetTempFileName(csDrive + csDir, SZ_TEMP_PREFIX, 0, csBackupTemp) != 0);
            Check(CopyFile(csTarget, csBackupTemp, FALSE));
            Check(MoveFileEx(csBackupTemp, csFile + SZ_BACKUP_EXT, MOVEFILE_REPLACE_EXISTING));
            csBackupTemp.Empty();
        }

        WriteLines(csTemp, nEncoding, nEol);
        SplitPath(csTarget, csDrive, csDir, csName, csExt);
        if (bExists)
            Check(CopyFileMode(csTarget, csTemp));
        Check(MoveFileEx(csTemp, csTarget, MOVEFILE_REPLACE_EXISTING));
        csTemp.Empty();
        Check(FlushFolder(csDrive + csDir));
        SetLastError(ERROR_SUCCESS);
        return TRUE;
    }
    catch (const SFailure& failure)
    {
        dwError = failure.dwError;
    }
    catch (const CFileException& e)
    {
        dwError = e.m_lOsError != 0 ? ErrnoToLastError(e.m_lOsError) : ERROR_GEN_FAILURE;
    }
    catch (...)
    {
    }
    // A failed save leaves no temporary file behind.
    for (const CString& cs : {csTemp, csBackupTemp})
        if (!cs.IsEmpty())
            DeleteFile(cs);
    SetLastError(dwError);
    return FALSE;
}
