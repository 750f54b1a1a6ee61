#include "CEditorPane.h"

#include "CKeyBindings.h"

#include "Edit/Screen/CTextSettings.h"
#include "Platform/MSG.h"
#include "Platform/NativePath.h"
#include "Utils/CTextFileBase.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>

namespace
{
// Why a file can't be opened the way it is asked for; empty when it can.
CString OpenError(const CString& csFile, const char* szMode)
{
    const std::string path = ToNativePath(csFile);
    std::error_code ec;
    if (std::filesystem::is_directory(path, ec))
        return u"It is a folder.";
    errno = 0;
    std::FILE* pFile = std::fopen(path.c_str(), szMode);
    if (pFile != nullptr)
    {
        std::fclose(pFile);
        return CString();
    }
    return CString::FromUtf8(std::strerror(errno != 0 ? errno : EIO)) + u".";
}

bool IsAscii(CTextBuffer& buffer)
{
    for (int nLine = 0; nLine < buffer.GetLinesCount(); ++nLine)
    {
        const CString& cs = buffer.GetLine(nLine);
        for (int i = 0; i < cs.GetLength(); ++i)
            if (cs[i] > 0x7F)
                return false;
    }
    return true;
}
} // namespace

CEditorPane::CEditorPane(CTextSettings* pSettings)
    : m_pSettings(pSettings), m_nEncoding(CTextFileBase::ENCODING_UTF8_NO_BOM), m_nEol(CTextFileBase::EOL_LF)
{
}

CEditorPane::~CEditorPane()
{
    m_pColorer.reset();
    m_Control.Close();
    DestroyWindow();
}

BOOL CEditorPane::Show(DWORD dwStyle, DWORD dwExStyle)
{
    if (!CreateEx(dwExStyle, dwStyle, CRect(0, 0, 640, 480), nullptr))
        return FALSE;
    if (!m_Control.Create(this, &m_Buffer, m_pSettings))
        return FALSE;
    MakeColorer();
    return TRUE;
}

void CEditorPane::MakeColorer()
{
    m_pColorer.reset();
    m_pColorer = std::make_unique<CDocumentColorer>(&m_Buffer, m_csFile);
    m_pColorer->SetPendingHandler(m_fnColorsPending);
}

void CEditorPane::SetColorsPendingHandler(std::function<void()> fnPending)
{
    m_fnColorsPending = std::move(fnPending);
    if (m_pColorer)
        m_pColorer->SetPendingHandler(m_fnColorsPending);
}

BOOL CEditorPane::PaintColors()
{
    if (!m_pColorer || !m_pColorer->PaintPending())
        return FALSE;
    Invalidate();
    return TRUE;
}

BOOL CEditorPane::CreateEmpty(DWORD dwStyle, DWORD dwExStyle)
{
    m_Buffer.Create();
    return Show(dwStyle, dwExStyle);
}

BOOL CEditorPane::CreateFromFile(const CString& csFile, DWORD dwStyle, DWORD dwExStyle, CString& csError)
{
    int nEncoding = 0;
    int nEol = CTextFileBase::EOL_UNKNOWN;
    if (!m_Buffer.LoadFromFile(csFile, nEncoding, nEol))
    {
        csError = OpenError(csFile, "rb");
        if (csError.IsEmpty())
            csError = u"The file could not be read.";
        return FALSE;
    }
    m_csFile = csFile;
    m_nEncoding = nEncoding;
    // Text that is all ASCII reads the same in every 8-bit page; what is typed into it is kept as
    // UTF-8, the encoding of the system's text files. A page that held other text stays.
    if (nEncoding == 0 && IsAscii(m_Buffer))
        m_nEncoding = CTextFileBase::ENCODING_UTF8_NO_BOM;
    if (nEol != CTextFileBase::EOL_UNKNOWN)
        m_nEol = nEol;
    if (!Show(dwStyle, dwExStyle))
    {
        csError = u"The window could not be made.";
        return FALSE;
    }
    return TRUE;
}

BOOL CEditorPane::SaveAs(const CString& csFile, CString& csError)
{
    if (!m_Buffer.SaveToFile(csFile, FALSE, m_nEncoding, m_nEol))
    {
        // "ab" tells why the file can't be written without touching what it holds.
        csError = OpenError(csFile, "ab");
        if (csError.IsEmpty())
            csError = u"The file could not be written.";
        return FALSE;
    }
    if (csFile != m_csFile)
    {
        m_csFile = csFile;
        if (m_pColorer)
        {
            // The old colours stay until the new parser paints over them.
            MakeColorer();
            if (m_fnColorsPending)
                m_fnColorsPending();
        }
    }
    return TRUE;
}

CString CEditorPane::GetTitle() const
{
    if (m_csFile.IsEmpty())
        return u"Untitled";
    const int n = std::max(m_csFile.ReverseFind(u'/'), m_csFile.ReverseFind(u'\\'));
    return m_csFile.Mid(n + 1);
}

LRESULT CEditorPane::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message)
    {
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
        return CKeyBindings::Run(GetCommands(), static_cast<int>(wParam), CKeyBindings::HeldModifiers());
    case WM_CHAR:
        if (wParam >= 0x20 && wParam <= 0x10FFFF && wParam != 0x7F)
        {
            GetCommands()->DoChar(static_cast<wchar_t>(wParam));
            return TRUE;
        }
        return FALSE;
    default:
        return CCWndHost::WindowProc(message, wParam, lParam);
    }
}
