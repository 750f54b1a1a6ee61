#include "ClipboardService.h"

BOOL CInProcessClipboard::OpenClipboard()
{
    if (m_bOpen)
        return FALSE;
    m_bOpen = true;
    return TRUE;
}

BOOL CInProcessClipboard::CloseClipboard()
{
    const bool bWasOpen = m_bOpen;
    m_bOpen = false;
    return bWasOpen ? TRUE : FALSE;
}

BOOL CInProcessClipboard::EmptyClipboard()
{
    if (!m_bOpen)
        return FALSE;
    m_csText.Empty();
    m_bText = false;
    return TRUE;
}

BOOL CInProcessClipboard::SetClipboardText(const CString& csText)
{
    if (!m_bOpen)
        return FALSE;
    m_csText = csText;
    m_bText = true;
    return TRUE;
}

BOOL CInProcessClipboard::GetClipboardText(CString& csText)
{
    if (!m_bOpen || !m_bText)
        return FALSE;
    csText = m_csText;
    return TRUE;
}

BOOL CInProcessClipboard::IsClipboardTextAvailable()
{
    return m_bText ? TRUE : FALSE;
}

namespace
{
CInProcessClipboard& ProcessClipboard()
{
    static CInProcessClipboard clipboard;
    return clipboard;
}

IClipboardService*& CurrentService()
{
    static IClipboardService* pService = nullptr;
    return pService;
}
} // namespace

IClipboardService& ClipboardService()
{
    IClipboardService* pService = CurrentService();
    return pService ? *pService : ProcessClipboard();
}

IClipboardService* SetClipboardService(IClipboardService* pService)
{
    IClipboardService* pOld = &ClipboardService();
    CurrentService() = pService;
    return pOld;
}
