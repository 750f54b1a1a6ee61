// CClipboard: Unicode text in and out of the clipboard, and whether the text last put by this
// process was a column. The mark belongs to the process, not to the content: text that another
// program placed since is read as a column too while the mark is set.
#pragma once

#include "Platform/CString.h"
#include "Platform/Types.h"

#include <cstdint>

class CClipboard
{
public:
    // FALSE for empty text or when the clipboard can't be had; on success the column mark becomes
    // bColumn and a column text's checksum is kept.
    static BOOL PutToClipboard(const CString& csText, BOOL bColumn);
    // The text and the column mark; FALSE when there is no Unicode text.
    static BOOL GetFromClipboard(CString& csText, BOOL& bColumn);
    // Adds csText behind the current stream text, or replaces a column text; never a column.
    static BOOL AppendToClipboard(const CString& csText);
    static BOOL IsTextInClipboard();

    // CRC-32 (IEEE 802.3) of the low bytes of the text's code units.
    static std::uint32_t Checksum(const CString& csText);
    // The checksum of the last column text put, or of the last text read while the mark was set.
    static std::uint32_t GetLastChecksum() noexcept { return m_dwChecksum; }

private:
    static BOOL m_bColumn;             // whether the last put was a column
    static std::uint32_t m_dwChecksum; // see GetLastChecksum
};
