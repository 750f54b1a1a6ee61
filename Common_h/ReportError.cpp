#include "Common_h/ReportError.h"

#include "Common_h/CCommonException.h"
#include "Platform/AppFolders.h"
#include "Platform/CFile.h"
#include "Platform/SystemMessages.h"

#include <ctime>
#include <mutex>

namespace
{
// The local time as the C library's fixed English text, without its line end. The library's
// result lives in static storage shared by the whole process, hence the lock.
CString GetLogTime()
{
    static std::mutex s_mutex;
    const std::lock_guard lock(s_mutex);
    const std::time_t tNow = std::time(nullptr);
    const std::tm* pTime = std::localtime(&tNow);
    const char* szTime = pTime ? std::asctime(pTime) : nullptr;
    if (!szTime)
        return CString();
    CString csTime = CString::FromUtf8(szTime);
    csTime.TrimRight(u"\n");
    return csTime;
}
} // namespace

void ReportError(HRESULT hr, const char16_t* csMessage, const char16_t* csPlace, int /*nFlag*/,
                 const char16_t* csFile, int nLine, BOOL bThrow)
{
    if (hr == 0)
        return;
    const CString csMsg(csMessage);
    const CString csPlc(csPlace);
    CString csText = csMsg + u" | " + csPlc + u" | ";
    HRESULT hrRaised = hr;
    if (hr < 0)
    {
        CString csSystem;
        try
        {
            csSystem = GetSystemMessageText(hr);
        }
        catch (...)
        {
            // no system text: the line goes without it
        }
        CString csHex;
        csHex.Format(u"%x", static_cast<DWORD>(hr));
        csText += csHex + u" | " + csSystem;
    }
    else
    {
        csText += u"Unexpected error";
        hrRaised = E_UNEXPECTED;
    }
    WriteLog(csText, csFile, nLine);
    if (bThrow)
        throw CCommonException(csMsg, csPlc, hrRaised, CString(csFile), nLine);
}

CString GetLogFilePath()
{
    return GetAppDataFolder() + u"Tessaroline.log";
}

void WriteLog(const char16_t* csText, const char16_t* csFile, int nLine)
{
    try
    {
        WriteLogToFile(GetLogFilePath(), csText, csFile, nLine);
    }
    catch (...)
    {
        // reporting never fails because of the log
    }
}

void WriteLogToFile(const CString& csLogPath, const char16_t* csText, const char16_t* csFile, int nLine)
{
    try
    {
        CFile file;
        CFileException error;
        if (!file.Open(csLogPath, CFile::modeWrite | CFile::shareDenyWrite, &error))
        {
            // Another writer holds the log: this line is lost. Only a missing log is created, as
            // creating truncates and the log is only ever appended to.
            if (error.m_cause == CFileException::sharingViolation ||
                error.m_cause == CFileException::lockViolation)
                return;
            if (!file.Open(csLogPath, CFile::modeCreate | CFile::modeWrite | CFile::shareDenyWrite))
                return;
        }
        file.SeekToEnd();
        CString csLine;
        csLine.Format(u"%s\t|\t%s\t|\t%s\t|\t%d\r\n", GetLogTime(), CString(csText), CString(csFile), nLine);
        // The system's 8-bit text is UTF-8 here, so the line keeps every character.
        const std::string szLine = csLine.ToUtf8();
        file.Write(szLine.data(), static_cast<UINT>(szLine.size()));
        file.Close();
    }
    catch (...)
    {
        // reporting never fails because of the log
    }
}
