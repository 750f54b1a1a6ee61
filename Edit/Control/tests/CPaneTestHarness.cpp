#include "Edit/Control/tests/CPaneTestHarness.h"

#include "Platform/Headless/CHeadlessWndPeer.h"

#include <cppunit/TestAssert.h>
#include <cstdio>
#include <filesystem>
#include <sstream>

CPaneTestHarness::CWordsData::CWordsData(std::initializer_list<const char16_t*> words)
{
    for (const char16_t* sz : words)
    {
        SACWord word;
        word.m_csWordName = sz;
        m_words.Add(word);
    }
}

const CBitmap* CPaneTestHarness::CWordsData::GetBitmap(COLORREF& crMask)
{
    crMask = 0;
    return nullptr;
}

CPaneTestHarness::CPaneTestHarness(const CString& csText, const CRect& rtWindow, BOOL bWrap)
{
    // A store whose file does not exist gives the defaults and is never written here.
    const auto path = std::filesystem::temp_directory_path() / "tessaroline-pane-no-store" / "profile.ini";
    m_pStore = CProfileStore::FromFile(CString::FromUtf8(path.string()));
    m_Settings.SetProfileStore(m_pStore.get());
    m_Settings.LoadSettings();
    m_Settings.SetWrapMode(bWrap);
    m_Buffer.Create();
    CPoint ptEnd;
    if (!csText.IsEmpty())
        m_Buffer.InsertText(CPoint(0, 0), csText, ptEnd);
    m_Host.CreateEx(0, WS_POPUP | WS_VISIBLE, rtWindow, nullptr);
    CPPUNIT_ASSERT(m_Control.Create(&m_Host, &m_Buffer, &m_Settings));
}

CString CPaneTestHarness::Lines(int nCount, const char16_t* szLine)
{
    CString cs;
    for (int i = 0; i < nCount; ++i)
    {
        if (i > 0)
            cs += u"\r\n";
        cs += szLine;
    }
    return cs;
}

std::string CPaneTestHarness::Describe(const CRect& rt)
{
    return "(" + std::to_string(rt.left) + "," + std::to_string(rt.top) + "," + std::to_string(rt.right) +
           "," + std::to_string(rt.bottom) + ")";
}

std::string CPaneTestHarness::Hex(COLORREF cr)
{
    char sz[16];
    std::snprintf(sz, sizeof sz, "%06X", static_cast<unsigned>(cr));
    return sz;
}

CRect CPaneTestHarness::Cell(CPoint ptView)
{
    const CPoint pt = m_Control.TextToClient(ptView);
    const CSize sz = CellSize();
    return CRect(pt.x, pt.y, pt.x + sz.cx, pt.y + sz.cy);
}

SCROLLINFO CPaneTestHarness::Bar(int nBar) const
{
    SCROLLINFO info;
    m_Host.GetScrollInfo(nBar, info);
    return info;
}

std::string CPaneTestHarness::Caret() const
{
    const auto& calls = static_cast<CHeadlessWndPeer*>(m_Host.GetPeer())->GetCalls();
    for (auto it = calls.rbegin(); it != calls.rend(); ++it)
        if (it->Left(6) == u"Caret ")
            return it->Mid(6).ToUtf8();
    return std::string();
}

CSize CPaneTestHarness::CaretSize() const
{
    std::istringstream is(Caret());
    int cx = -1, cy = -1;
    is >> cx >> cy;
    return CSize(cx, cy);
}

std::unique_ptr<CCairoDC> CPaneTestHarness::Paint()
{
    CRect rt;
    m_Host.GetClientRect(rt);
    auto pDC = std::make_unique<CCairoDC>(rt.Width(), rt.Height());
    m_Host.Paint(pDC.get());
    return pDC;
}
