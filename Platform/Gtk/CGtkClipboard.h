// CGtkClipboard: the clipboard of the desktop, shared with other programs, as Unicode text. Opening
// it only marks the process as its user, as the in-process store does.
#pragma once

#include "Platform/ClipboardService.h"

class CGtkClipboard final : public IClipboardService
{
public:
    BOOL OpenClipboard() override;
    BOOL CloseClipboard() override;
    BOOL EmptyClipboard() override;
    BOOL SetClipboardText(const CString& csText) override;
    BOOL GetClipboardText(CString& csText) override;
    BOOL IsClipboardTextAvailable() override;

private:
    bool m_bOpen = false; // whether someone holds it
};
