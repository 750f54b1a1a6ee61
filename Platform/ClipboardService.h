// The clipboard for Unicode text. Components reach it through ClipboardService(); by default it is
// a store inside the process, and a windowing backend installs the system clipboard in its place.
#pragma once

#include "CString.h"
#include "Types.h"

struct IClipboardService
{
    // Takes the clipboard for this process until CloseClipboard; FALSE when it can't be had.
    virtual BOOL OpenClipboard() = 0;
    virtual BOOL CloseClipboard() = 0;
    // Removes every content; only while open.
    virtual BOOL EmptyClipboard() = 0;
    // Places text as the Unicode text content; only while open.
    virtual BOOL SetClipboardText(const CString& csText) = 0;
    // The Unicode text content; FALSE while not open or when there is none.
    virtual BOOL GetClipboardText(CString& csText) = 0;
    // Whether Unicode text is there; needs no opening.
    virtual BOOL IsClipboardTextAvailable() = 0;

protected:
    ~IClipboardService() = default;
};

// The clipboard of the process: text kept in memory, one owner at a time.
class CInProcessClipboard final : public IClipboardService
{
public:
    BOOL OpenClipboard() override;
    BOOL CloseClipboard() override;
    BOOL EmptyClipboard() override;
    BOOL SetClipboardText(const CString& csText) override;
    BOOL GetClipboardText(CString& csText) override;
    BOOL IsClipboardTextAvailable() override;

private:
    CString m_csText;     // the content
    bool m_bText = false; // whether there is text at all
    bool m_bOpen = false; // whether someone holds it
};

// The clipboard in use.
IClipboardService& ClipboardService();
// Puts pService in place (not owned) and returns the one it replaces; null restores the store of
// the process.
IClipboardService* SetClipboardService(IClipboardService* pService);
