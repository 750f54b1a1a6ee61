#include "Edit/View/CClipboard.h"

#include "Platform/ClipboardService.h"
#include "Platform/Crc32.h"

#include <vector>

BOOL CClipboard::m_bColumn = FALSE;
std::uint32_t CClipboard::m_dwChecksum = 0;

namespace
{
// Holds the clipboard for one use and gives it back on every path.
class COpenClipboard
{
public:
    explicit COpenClipboard(IClipboardService& service) : m_service(service), m_bOpen(service.OpenClipboard())
    {
    }
    ~COpenClipboard()
    {
        if (m_bOpen)
            m_service.CloseClipboard();
    }
    COpenClipboard(const COpenClipboard&) = delete;
    COpenClipboard& operator=(const COpenClipboard&) = delete;

    [[nodiscard]] bool IsOpen() const noexcept { return m_bOpen; }

private:
    IClipboardService& m_service;
    bool m_bOpen;
};
} // namespace

std::uint32_t CClipboard::Checksum(const CString& csText)
{
    std::vector<unsigned char> aBytes(static_cast<size_t>(csText.GetLength()));
    for (int i = 0; i < csText.GetLength(); ++i)
        aBytes[static_cast<size_t>(i)] = static_cast<unsigned char>(csText[i] & 0xFF);
    return Crc32(aBytes.data(), aBytes.size());
}

BOOL CClipboard::PutToClipboard(const CString& csText, BOOL bColumn)
{
    if (csText.IsEmpty())
        return FALSE;
    IClipboardService& service = ClipboardService();
    {
        COpenClipboard open(service);
        if (!open.IsOpen() || !service.EmptyClipboard() || !service.SetClipboardText(csText))
            return FALSE;
    }
    m_bColumn = bColumn;
    if (bColumn)
        m_dwChecksum = Checksum(csText);
    return TRUE;
}

BOOL CClipboard::GetFromClipboard(CString& csText, BOOL& bColumn)
{
    IClipboardService& service = ClipboardService();
    CString csRead;
    {
        COpenClipboard open(service);
        if (!open.IsOpen() || !service.IsClipboardTextAvailable() || !service.GetClipboardText(csRead))
            return FALSE;
    }
    csText = csRead;
    bColumn = m_bColumn ? TRUE : FALSE;
    // Taken, not compared: the mark alone decides.
    if (m_bColumn)
        m_dwChecksum = Checksum(csRead);
    return TRUE;
}

BOOL CClipboard::AppendToClipboard(const CString& csText)
{
    CString csCurrent;
    BOOL bColumn = FALSE;
    if (GetFromClipboard(csCurrent, bColumn) && !bColumn)
        return PutToClipboard(csCurrent + csText, FALSE);
    return PutToClipboard(csText, FALSE);
}

BOOL CClipboard::IsTextInClipboard()
{
    return ClipboardService().IsClipboardTextAvailable();
}
