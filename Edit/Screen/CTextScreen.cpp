#include "Edit/Screen/CTextScreen.h"

#include "Edit/Model/ITextBuffer.h"

#include <algorithm>
#include <stdexcept>
#include <string>

CTextScreen::CTextScreen() = default;

CTextScreen::~CTextScreen()
{
    if (IsInit())
        Uninit();
}

void CTextScreen::Init(ITextBuffer* pBuffer, ITextViewBuffer* pView, ITextScreenSettings* pScreenSettings,
                       ITextDrawSettings* pDrawSettings, ICWnd* pWnd, CTextProcessor* pProcessor)
{
    m_ptLastPress = CPoint(-1, -1);
    m_pBuffer = pBuffer;
    m_pView = pView;
    m_pScreenSettings = pScreenSettings;
    m_pDrawSettings = pDrawSettings;
    m_pWnd = pWnd;
    m_pProcessor = pProcessor;
    CScreenItemBase::Init(0, nullptr);

    CRect rtClient(0, 0, 0, 0);
    m_pCWnd = pWnd != nullptr ? pWnd->GetCWnd() : nullptr;
    if (pWnd != nullptr)
        pWnd->AddEventsHandler(static_cast<ICWndEvents*>(this));
    if (m_pCWnd != nullptr)
        m_pCWnd->GetClientRect(rtClient);
    if (pBuffer != nullptr)
        pBuffer->AddEventsHandler(static_cast<ITextBufferEvents*>(this));
    if (pScreenSettings != nullptr)
        pScreenSettings->AddEventsHandler(static_cast<ITextScreenSettingsEvents*>(this));
    if (pDrawSettings != nullptr)
        pDrawSettings->AddEventsHandler(static_cast<ITextDrawSettingsEvents*>(this));

    m_DrawerHelper.Init(pDrawSettings, this, pScreenSettings, pProcessor,
                        pBuffer != nullptr ? pBuffer->GetLineMarkerSupport() : nullptr);
    m_TopMargin.Init(pProcessor, pView, &m_LeftMargin, &m_DrawerHelper, pScreenSettings, 0);
    m_LeftMargin.Init(this, pDrawSettings, pView, pProcessor, pScreenSettings, &m_DrawerHelper, 0);
    m_TextDrawer.Init(pView, &m_TextArea, &m_DrawerHelper, pProcessor);
    m_TextArea.Init(this, static_cast<ITextScreenEvents*>(this), &m_TextDrawer);
    AddItem(&m_TopMargin);
    AddItem(&m_LeftMargin);
    AddItem(&m_TextArea);

    m_szChar = MeasureCharDim();
    SetRect(rtClient);
}

void CTextScreen::Uninit()
{
    CTextScreenItemBase::Uninit();
    m_rect = CRect(-1, -1, -1, -1);
    m_szChar = CSize(-1, -1);
    if (m_pBuffer != nullptr)
        m_pBuffer->RemoveEventsHandler(static_cast<ITextBufferEvents*>(this));
    if (m_pWnd != nullptr)
        m_pWnd->RemoveEventsHandler(static_cast<ICWndEvents*>(this));
    if (m_pScreenSettings != nullptr)
        m_pScreenSettings->RemoveEventsHandler(static_cast<ITextScreenSettingsEvents*>(this));
    if (m_pDrawSettings != nullptr)
        m_pDrawSettings->RemoveEventsHandler(static_cast<ITextDrawSettingsEvents*>(this));
    m_pWnd = nullptr;
    m_pCWnd = nullptr;
    m_pBuffer = nullptr;
    m_pView = nullptr;
    m_pScreenSettings = nullptr;
    m_pDrawSettings = nullptr;
    m_pProcessor = nullptr;
    m_TextDrawer.Uninit();
}

CRect CTextScreen::CalculateRect(CRect& rtRemain)
{
    return rtRemain;
}

void CTextScreen::Draw(CDC* pDC)
{
    if (pDC == nullptr || !IsInit())
        return;
    CTextScreenItemBase::Draw(pDC);
}

int CTextScreen::AddEventsHandler(ITextScreenEvents* pHandler)
{
    return m_Handlers.AddHandler(pHandler);
}

int CTextScreen::RemoveEventsHandler(ITextScreenEvents* pHandler)
{
    return m_Handlers.RemoveHandler(pHandler);
}

CPoint CTextScreen::ClientToScreen(CPoint ptPixel)
{
    if (m_szChar.cx <= 0 || m_szChar.cy <= 0)
        return CPoint(0, 0);
    const CSize szMargin = GetMarginSize();
    const CSize szText = GetScreenSize();
    // Columns round to the nearer cell border; rows are the row under the pixel.
    int x = (ptPixel.x - szMargin.cx + m_szChar.cx / 2) / m_szChar.cx;
    int y = (ptPixel.y - szMargin.cy) / m_szChar.cy;
    x = std::max(0, std::min(x, szText.cx));
    y = std::max(0, std::min(y, szText.cy));
    return CPoint(x, y);
}

CPoint CTextScreen::ScreenToClient(CPoint ptCell)
{
    const CSize szMargin = GetMarginSize();
    return CPoint(ptCell.x * m_szChar.cx + szMargin.cx, ptCell.y * m_szChar.cy + szMargin.cy);
}

CFont* CTextScreen::GetTextFont()
{
    return m_pDrawSettings != nullptr ? m_pDrawSettings->GetFont(FALSE, FALSE, FALSE, FALSE) : nullptr;
}

std::unique_ptr<CDC> CTextScreen::GetDC()
{
    return m_pCWnd != nullptr ? m_pCWnd->GetDC() : nullptr;
}

CSize CTextScreen::MeasureCharDim()
{
    std::unique_ptr<CDC> pDC = GetDC();
    if (!pDC)
        return DEFAULT_CHAR_DIM;
    CFont* pOldFont = pDC->SelectObject(GetTextFont());
    CSize szMax(0, 0);
    for (char16_t ch = 0x20; ch <= 0xFE; ++ch)
    {
        // The controls between the two halves have no glyph of their own here: a surface draws
        // them as boxes of hex digits, far wider than any character a text shows.
        if (ch >= 0x7F && ch <= 0x9F)
            continue;
        const CSize sz = pDC->GetTextExtent(CString(ch));
        szMax.cx = std::max(szMax.cx, sz.cx);
        szMax.cy = std::max(szMax.cy, sz.cy);
    }
    szMax.cx = std::max(szMax.cx, 4);
    szMax.cy = std::max(szMax.cy, 6);
    pDC->SelectObject(pOldFont);
    // Room between the characters: a tenth across, a twentieth down.
    return CSize(static_cast<int>(szMax.cx * 1.1), static_cast<int>(szMax.cy * 1.05));
}

CSize CTextScreen::GetScreenSize()
{
    return m_TextArea.GetTextSize();
}

int CTextScreen::GetLeftItemSize(int nIndex)
{
    return m_LeftMargin.GetItemSize(nIndex);
}

CSize CTextScreen::GetMarginSize()
{
    return CSize(m_LeftMargin.GetRect().Width(), m_TopMargin.GetRect().Height());
}

int CTextScreen::GetMarginIndex(int x)
{
    int nOffset = 0;
    for (int i = 0; i < 3 && i < m_LeftMargin.GetItemsCount(); ++i)
    {
        const int nSize = GetLeftItemSize(i);
        if (x >= nOffset && x < nOffset + nSize)
            return i;
        nOffset += nSize;
    }
    return -1;
}

void CTextScreen::OnSize(CWnd* /*pWnd*/, int cx, int cy)
{
    CRect rtNew(0, 0, std::max(cx, 0), std::max(cy, 0));
    if (m_pCWnd != nullptr)
        m_pCWnd->GetClientRect(rtNew);
    if (rtNew == m_rect)
        return;
    m_rect = rtNew;
    Relayout();
    const CRect rtClient = m_rect;
    Send([&](ITextScreenEvents* pHandler) { pHandler->OnScreenRectChange(this, rtClient); });
}

void CTextScreen::Relayout()
{
    if (!IsInit())
        return;
    m_szChar = MeasureCharDim();
    CRect rt = m_rect;
    SetRect(rt);
}

void CTextScreen::OnMouseMove(CWnd* /*pWnd*/, UINT nFlags, CPoint pt)
{
    const CPoint pos = ClientToScreen(pt);
    if (m_TextArea.GetRect().PtInRect(pt) || m_LeftMargin.GetRect().PtInRect(pt))
        Send([&](ITextScreenEvents* pHandler) { pHandler->OnMouseMove(this, nFlags, pos); });
}

void CTextScreen::OnLButtonDown(CWnd* /*pWnd*/, UINT nFlags, CPoint pt)
{
    const CPoint pos = ClientToScreen(pt);
    m_ptLastPress = pt;
    if (m_TextArea.GetRect().PtInRect(pt))
        Send([&](ITextScreenEvents* pHandler) { pHandler->OnTextLButtonDown(this, nFlags, pos); });
    else if (m_LeftMargin.GetRect().PtInRect(pt))
    {
        const int nMargin = GetMarginIndex(pt.x);
        Send([&](ITextScreenEvents* pHandler) { pHandler->OnMarginLButtonDown(this, nFlags, pos, nMargin); });
    }
    // The timer scrolls while the button is held outside the text.
    if (m_pCWnd != nullptr)
    {
        m_pCWnd->SetTimer(DRAG_TIMER_ID, DRAG_TIMER_ELAPSE);
        m_pCWnd->SetCapture();
    }
}

void CTextScreen::OnLButtonUp(CWnd* /*pWnd*/, UINT nFlags, CPoint pt)
{
    const CPoint pos = ClientToScreen(pt);
    if (m_TextArea.GetRect().PtInRect(m_ptLastPress))
        Send([&](ITextScreenEvents* pHandler) { pHandler->OnTextLButtonUp(this, nFlags, pos); });
    else if (m_LeftMargin.GetRect().PtInRect(m_ptLastPress))
    {
        const int nMargin = GetMarginIndex(m_ptLastPress.x);
        Send([&](ITextScreenEvents* pHandler) { pHandler->OnMarginLButtonUp(this, nFlags, pos, nMargin); });
    }
    if (m_pCWnd != nullptr)
    {
        m_pCWnd->KillTimer(DRAG_TIMER_ID);
        if (CWnd::GetCapture() == m_pCWnd)
            CWnd::ReleaseCapture();
    }
}

void CTextScreen::OnLButtonDblClk(CWnd* /*pWnd*/, UINT nFlags, CPoint pt)
{
    const CPoint pos = ClientToScreen(pt);
    if (m_TextArea.GetRect().PtInRect(pt))
        Send([&](ITextScreenEvents* pHandler) { pHandler->OnTextLButtonDblClk(this, nFlags, pos); });
}

void CTextScreen::OnRButtonDown(CWnd* /*pWnd*/, UINT nFlags, CPoint pt)
{
    const CPoint pos = ClientToScreen(pt);
    if (m_TextArea.GetRect().PtInRect(pt))
        Send([&](ITextScreenEvents* pHandler) { pHandler->OnTextRButtonDown(this, nFlags, pos); });
}

void CTextScreen::OnSetCursor(CWnd* /*pWnd*/, CPoint pt)
{
    const CPoint pos = ClientToScreen(pt);
    if (m_TextArea.GetRect().PtInRect(pt))
        Send([&](ITextScreenEvents* pHandler) { pHandler->OnTextSetCursor(this, pos); });
    else
    {
        const int nMargin = GetMarginIndex(pt.x);
        Send([&](ITextScreenEvents* pHandler) { pHandler->OnMarginSetCursor(this, pos, nMargin); });
    }
}

void CTextScreen::OnTimer(CWnd* /*pWnd*/, UINT nID)
{
    if (nID != DRAG_TIMER_ID || m_pCWnd == nullptr)
        return;
    CPoint pt = CWnd::GetCursorPos();
    m_pCWnd->ScreenToClient(pt);
    const CPoint pos = ClientToScreen(pt);
    const CRect rtText = m_TextArea.GetRect();
    if (!rtText.PtInRect(m_ptLastPress) && !m_LeftMargin.GetRect().PtInRect(m_ptLastPress))
        return;
    if (rtText.PtInRect(pt))
        return;
    int nEdges = 0;
    if (pt.y < rtText.top)
        nEdges |= AUTOSCROLL_TOP;
    if (pt.y >= rtText.bottom)
        nEdges |= AUTOSCROLL_BOTTOM;
    if (pt.x < rtText.left)
        nEdges |= AUTOSCROLL_LEFT;
    if (pt.x >= rtText.right)
        nEdges |= AUTOSCROLL_RIGHT;
    Send([&](ITextScreenEvents* pHandler) { pHandler->OnAutoScroll(this, nEdges, pos); });
}

void CTextScreen::OnEndChange(ITextBuffer* /*pBuffer*/, IChangeContext* /*pContext*/)
{
    Relayout();
}

void CTextScreen::OnScreenSettingsChange(ITextScreenSettings* /*pSettings*/)
{
    Relayout();
}

void CTextScreen::OnFontChange(ITextDrawSettings* /*pSettings*/)
{
    Relayout();
}

void CTextScreen::OnScreenSizeChange(ITextScreen* pScreen, CSize szText)
{
    Send([&](ITextScreenEvents* pHandler) { pHandler->OnScreenSizeChange(pScreen, szText); });
}

void CTextScreen::AssertValid()
{
    auto fail = [](const std::string& sWhat) { throw std::logic_error("CTextScreen: " + sWhat); };
    if (!IsInit())
        return;
    const CRect rtTop = m_TopMargin.GetRect();
    const CRect rtLeft = m_LeftMargin.GetRect();
    const CRect rtText = m_TextArea.GetRect();
    if (m_szChar.cx <= 0 || m_szChar.cy <= 0)
        fail("the cell is empty");
    if (rtTop.left != m_rect.left || rtTop.right != m_rect.right || rtTop.top != m_rect.top)
        fail("the top margin does not span the top of the client rectangle");
    if (rtLeft.top != rtTop.bottom || rtLeft.left != m_rect.left || rtLeft.bottom != m_rect.bottom)
        fail("the left margin does not start below the top margin at the left edge");
    if (rtText.left != rtLeft.right || rtText.top != rtTop.bottom || rtText.right != m_rect.right ||
        rtText.bottom != m_rect.bottom)
        fail("the text area does not fill the rest of the client rectangle");
    const CSize szText = m_TextArea.GetTextSize();
    if (szText.cx != std::max(0, rtText.Width() / m_szChar.cx) ||
        szText.cy != std::max(0, rtText.Height() / m_szChar.cy))
        fail("the text area's size in cells does not match its rectangle");
    if (m_LeftMargin.GetSize() != rtLeft.Width() && rtLeft.Width() != 0)
        fail("the left margin's width is neither its size nor 0");
}
