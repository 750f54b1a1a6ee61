// ReportError and WriteLog: how application code reports a failure: a line in the program's log,
// and a CCommonException when the caller asks for one.
#pragma once

#include "Platform/CString.h"
#include "Platform/Types.h"

// Reports hr: a negative code is a failure of the system, logged with its system text; a positive
// code is the caller's own failure, logged as "Unexpected error" and raised with 0x8000ffff; 0 is
// no failure and does nothing. With bThrow the report ends in a CCommonException. nFlag is unused.
void ReportError(HRESULT hr, const char16_t* csMessage, const char16_t* csPlace, int nFlag,
                 const char16_t* csFile, int nLine, BOOL bThrow);

// Appends one line (time, csText, csFile, nLine) to "Tessaroline.log" in the program's data folder.
// Never fails: a log that can't be written loses the line.
void WriteLog(const char16_t* csText, const char16_t* csFile, int nLine);

// The same line appended to the log file csLogPath.
void WriteLogToFile(const CString& csLogPath, const char16_t* csText, const char16_t* csFile, int nLine);

// The full name of the program's log.
CString GetLogFilePath();
