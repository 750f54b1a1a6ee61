#include "CTextEditControl.h"

#include "Edit/Commands/CMacrosSupport.h"
#include "Edit/Screen/CCWndHost.h"
#include "Edit/Screen/CTextSettings.h"

#include "Platform/CDisplay.h"
#include "Platform/CListBox.h"

#include <algorithm>

CTextEditControl::CTextEditControl() : m_ACList(nullptr, &m_Processor) {}

CTextEditControl::~CTextEditControl()
{
    Close();
}

BOOL CTextEditControl::Create(CWnd* pHost, ITextBuffer* pTextBuffer, CTextSettings* pSettings)
{
    if (pTextBuffer == nullptr || pSettings == nullptr)
        return FALSE;
    Close();
    m_pHost = pHost;
    m_pSettings = pSettings;
    // A window that has the focus already gets no focus message for the pane.
    m_bFocus = pHost != nullptr && CWnd::GetFocus() == pHost;
    m_ACList.SetOwner(pHost);
    if (auto* pCWndHost = dynamic_cast<CCWndHost*>(pHost))
        pCWndHost->SetPane(this);

    // The buffer is filled and the settings are loaded: the screen first, so that its layout is
    // done before any later listener of the window hears of a size.
    ICWnd* pWnd = pHost != nullptr ? this : nullptr;
    // The line number margin takes the buffer from the view when the screen builds it, so the view
    // is given its buffer beforehand; it is wired in full, after the screen, in its own step.
    m_ViewBuffer.Create(pTextBuffer, pSettings, nullptr);
    m_Screen.Init(pTextBuffer, &m_ViewBuffer, pSettings, pSettings, pWnd, &m_Processor);
    m_ViewBuffer.Create(pTextBuffer, pSettings, &m_Screen);
    m_Processor.Create(&m_ViewBuffer, pSettings, &m_Screen, pWnd, &CMacrosSupport::GetGlobal());
    AddEventsHandler(static_cast<ICWndEvents*>(&m_Processor));

    // The control listens to the parts; the completion list to the window and the processor.
    m_Processor.AddEventsHandler(static_cast<ITextProcessorEvents*>(this));
    m_Screen.AddEventsHandler(static_cast<ITextScreenEvents*>(this));
    m_ViewBuffer.AddEventsHandler(static_cast<ITextViewBufferEvents*>(this));
    pSettings->AddEventsHandler(static_cast<ITextScreenSettingsEvents*>(this));
    pSettings->AddEventsHandler(static_cast<ITextEditSettingsEvents*>(this));
    AddEventsHandler(static_cast<ICWndEvents*>(&m_ACList));
    m_Processor.AddEventsHandler(static_cast<ITextProcessorEvents*>(&m_ACList));

    m_ptLastCursor = m_Processor.GetCursorPosInView(FALSE);
    m_ptLastFirstVisible = m_Processor.GetFirstVisblePoint();
    CRect rtClient;
    if (pHost != nullptr)
        pHost->GetClientRect(rtClient);
    OnSize(0, rtClient.Width(), rtClient.Height());
    // The screen laid itself out in Init already, before the view, the processor and the control
    // listened, and a size equal to the one it has changes nothing: so its size in cells is relayed
    // to them once more, in their order.
    const CSize szText = m_Screen.GetScreenSize();
    if (szText.cx >= 0 && szText.cy >= 0)
        m_Screen.OnScreenSizeChange(nullptr, szText);
    return TRUE;
}

void CTextEditControl::Close()
{
    if (!IsCreated())
        return;
    m_ACList.Hide();
    m_Processor.RemoveEventsHandler(static_cast<ITextProcessorEvents*>(&m_ACList));
    RemoveEventsHandler(static_cast<ICWndEvents*>(&m_ACList));
    m_pSettings->RemoveEventsHandler(static_cast<ITextEditSettingsEvents*>(this));
    m_pSettings->RemoveEventsHandler(static_cast<ITextScreenSettingsEvents*>(this));
    m_ViewBuffer.RemoveEventsHandler(static_cast<ITextViewBufferEvents*>(this));
    m_Screen.RemoveEventsHandler(static_cast<ITextScreenEvents*>(this));
    m_Processor.RemoveEventsHandler(static_cast<ITextProcessorEvents*>(this));
    RemoveEventsHandler(static_cast<ICWndEvents*>(&m_Processor));
    m_Processor.Close();
    m_ViewBuffer.Close();
    m_Screen.Uninit();
    if (m_pHost != nullptr)
    {
        // The caret was the pane's.
        m_pHost->DestroyCaret();
        if (auto* pCWndHost = dynamic_cast<CCWndHost*>(m_pHost); pCWndHost && pCWndHost->GetPane() == this)
            pCWndHost->SetPane(nullptr);
    }
    m_ACList.SetOwner(nullptr);
    m_pHost = nullptr;
    m_pSettings = nullptr;
    m_ptLastCursor = m_ptLastFirstVisible = CPoint();
    m_bFocus = FALSE;
}

// ---------------------------------------------------------------------------------------------
// Window events.

void CTextEditControl::OnPaint(CDC* pDC)
{
    if (IsCreated() && pDC != nullptr)
        m_Screen.Draw(pDC);
}

void CTextEditControl::OnSize(UINT, int cx, int cy)
{
    Fire([&](ICWndEvents* p) { p->OnSize(m_pHost, cx, cy); });
}

void CTextEditControl::OnSetFocus(CWnd* pOld)
{
    m_bFocus = TRUE;
    UpdateScrollBars(BARS_BOTH);
    Fire([&](ICWndEvents* p) { p->OnFocus(m_pHost, TRUE, pOld); });
    UpdateCaret();
}

void CTextEditControl::OnKillFocus(CWnd* pNew)
{
    m_bFocus = FALSE;
    Fire([&](ICWndEvents* p) { p->OnFocus(m_pHost, FALSE, pNew); });
    UpdateCaret();
}

void CTextEditControl::OnScroll(UINT nCode, int nBar)
{
    if (m_pHost == nullptr)
        return;
    SCROLLINFO info;
    info.fMask = SIF_ALL;
    if (!m_pHost->GetScrollInfo(nBar, info))
        return;
    const int nPage = static_cast<int>(info.nPage);
    const int nLast = info.nMax - nPage + 1;
    int nPos = info.nPos;
    switch (nCode)
    {
    case SCROLL_LINE_UP:
        nPos = info.nPos - 1;
        break;
    case SCROLL_LINE_DOWN:
        nPos = info.nPos + 1;
        break;
    case SCROLL_PAGE_UP:
        nPos = info.nPos - nPage + 1;
        break;
    case SCROLL_PAGE_DOWN:
        nPos = info.nPos - 1 + nPage;
        break;
    case SCROLL_THUMB_POSITION:
    case SCROLL_THUMB_TRACK:
        // The window keeps the thumb's place as the bar's position while it is dragged.
        nPos = info.nPos;
        break;
    case SCROLL_TOP:
        nPos = 0;
        break;
    case SCROLL_BOTTOM:
        nPos = nLast;
        break;
    default:
        break;
    }
    if (nCode <= SCROLL_BOTTOM)
        nPos = std::max(0, std::min(nPos, nLast));
    Fire([&](ICWndEvents* p) { p->OnScroll(m_pHost, nPos, nBar); });
}

BOOL CTextEditControl::PreTranslateMessage(MSG* pMsg)
{
    for (int i = 0; i < m_Handlers.GetSize(); ++i)
        if (static_cast<ICWndEvents*>(m_Handlers.GetAt(i))->OnPreTranslateMessage(m_pHost, pMsg))
            return TRUE;
    return FALSE;
}

UINT CTextEditControl::WithAltKey(UINT nFlags) noexcept
{
    return GetKeyState(VK_MENU) < 0 ? nFlags | MK_ALT : nFlags;
}

void CTextEditControl::OnMouseMove(UINT nFlags, CPoint pt)
{
    nFlags = WithAltKey(nFlags);
    Fire([&](ICWndEvents* p) { p->OnMouseMove(m_pHost, nFlags, pt); });
}

void CTextEditControl::OnLButtonDown(UINT nFlags, CPoint pt)
{
    nFlags = WithAltKey(nFlags);
    Fire([&](ICWndEvents* p) { p->OnLButtonDown(m_pHost, nFlags, pt); });
}

void CTextEditControl::OnLButtonUp(UINT nFlags, CPoint pt)
{
    nFlags = WithAltKey(nFlags);
    Fire([&](ICWndEvents* p) { p->OnLButtonUp(m_pHost, nFlags, pt); });
}

void CTextEditControl::OnLButtonDblClk(UINT nFlags, CPoint pt)
{
    Fire([&](ICWndEvents* p) { p->OnLButtonDblClk(m_pHost, nFlags, pt); });
}

void CTextEditControl::OnRButtonDown(UINT nFlags, CPoint pt)
{
    Fire([&](ICWndEvents* p) { p->OnRButtonDown(m_pHost, nFlags, pt); });
}

void CTextEditControl::OnTimer(UINT nID)
{
    Fire([&](ICWndEvents* p) { p->OnTimer(m_pHost, nID); });
}

void CTextEditControl::OnSetCursor(CPoint pt)
{
    Fire([&](ICWndEvents* p) { p->OnSetCursor(m_pHost, pt); });
}

// ---------------------------------------------------------------------------------------------
// Scroll bars and caret.

void CTextEditControl::UpdateScrollBars(int nWhich)
{
    if (m_pHost == nullptr || !IsCreated())
        return;
    const CSize szScreen = m_Screen.GetScreenSize();
    SCROLLINFO info;
    info.fMask = SCROLL_INFO_MASK;
    info.nMin = 0;
    if (nWhich == BARS_VERT || nWhich == BARS_BOTH)
    {
        info.nPos = m_ptLastFirstVisible.y;
        info.nPage = static_cast<UINT>(std::max(0, static_cast<int>(szScreen.cy)));
        info.nMax = m_ViewBuffer.GetLinesCount() - 1;
        m_pHost->SetScrollInfo(SB_VERT, info, TRUE);
    }
    if (nWhich == BARS_HORZ || nWhich == BARS_BOTH)
    {
        info.nPos = m_ptLastFirstVisible.x;
        info.nPage = static_cast<UINT>(std::max(0, static_cast<int>(szScreen.cx)));
        info.nMax = m_ViewBuffer.GetMaxLineLength() - 1;
        m_pHost->SetScrollInfo(SB_HORZ, info, TRUE);
    }
}

void CTextEditControl::UpdateCaret()
{
    if (m_pHost == nullptr || !IsCreated())
        return;
    if (!m_bFocus && !m_ACList.IsShown())
    {
        m_pHost->HideCaret();
        return;
    }
    const CSize szCell = m_Screen.GetCharDim();
    const CPoint ptCursor = m_Processor.GetCursorPosInView(FALSE);
    int nWidth = LINE_CARET_WIDTH;
    if (m_pSettings->GetBlockCursor())
    {
        // Beyond the line's text a position has no width of its own; the block is one cell there.
        const SCharInfo info = m_ViewBuffer.GetCharInfo(ptCursor);
        nWidth = std::max(1, info.m_nWidth) * szCell.cx;
    }
    m_pHost->CreateSolidCaret(nWidth, szCell.cy);
    const CPoint ptCaret = TextToClient(ptCursor);
    if (m_Screen.GetItem(TEXT_AREA_ITEM)->GetRect().PtInRect(ptCaret))
    {
        m_pHost->SetCaretPos(ptCaret);
        m_pHost->ShowCaret();
    }
    else
        m_pHost->HideCaret();
}

// ---------------------------------------------------------------------------------------------
// Events of the parts.

void CTextEditControl::OnChangeCursorPos(ITextProcessor*, CPoint ptCursor)
{
    m_ptLastCursor = ptCursor;
}

void CTextEditControl::OnEventsGroup(ITextProcessor*, DWORD, int)
{
    m_ptLastFirstVisible = m_Processor.GetFirstVisblePoint();
    if (m_pHost != nullptr)
        m_pHost->InvalidateRect(nullptr, FALSE);
    UpdateScrollBars(BARS_BOTH);
    UpdateCaret();
}

void CTextEditControl::OnScreenSettingsChange(ITextScreenSettings*)
{
    UpdateCaret();
    if (m_pHost != nullptr)
        m_pHost->InvalidateRect(nullptr, TRUE);
}

void CTextEditControl::OnScreenSizeChange(ITextScreen*, CSize)
{
    UpdateScrollBars(BARS_BOTH);
    UpdateCaret();
}

void CTextEditControl::OnAfterChange(CArray<CPoint>*, int)
{
    UpdateScrollBars(BARS_BOTH);
}

void CTextEditControl::OnBlockCursorChange(ITextEditSettings*, BOOL)
{
    UpdateCaret();
}

// ---------------------------------------------------------------------------------------------
// Conversions.

CPoint CTextEditControl::ClientToScreenFloor(CPoint ptClient)
{
    const CSize szCell = m_Screen.GetCharDim();
    const CSize szText = m_Screen.GetScreenSize();
    const CPoint ptOrigin = m_Screen.ScreenToClient(CPoint(0, 0));
    if (szCell.cx <= 0 || szCell.cy <= 0)
        return CPoint(0, 0);
    const int x = (ptClient.x - ptOrigin.x) / szCell.cx;
    const int y = (ptClient.y - ptOrigin.y) / szCell.cy;
    return CPoint(std::clamp(x, 0, std::max(0, static_cast<int>(szText.cx))),
                  std::clamp(y, 0, std::max(0, static_cast<int>(szText.cy))));
}

CPoint CTextEditControl::ClientToText(CPoint ptClient)
{
    if (!IsCreated())
        return CPoint(0, 0);
    const CPoint ptActual = m_Processor.ScreenToActualText(m_Screen.ClientToScreen(ptClient));
    return m_ViewBuffer.ActualTextToText(ptActual);
}

CPoint CTextEditControl::ClientToTextFloor(CPoint ptClient)
{
    if (!IsCreated())
        return CPoint(0, 0);
    const CPoint ptActual = m_Processor.ScreenToActualText(ClientToScreenFloor(ptClient));
    return m_ViewBuffer.ActualTextToTextFloor(ptActual);
}

CPoint CTextEditControl::TextToClient(CPoint ptText)
{
    if (!IsCreated())
        return CPoint(0, 0);
    const CPoint ptActual = m_ViewBuffer.TextToActualText(ptText);
    return m_Screen.ScreenToClient(m_Processor.ActualTextToScreen(ptActual));
}

CRect CTextEditControl::GetTextRect(CPoint ptStart, CPoint ptEnd)
{
    const CPoint ptTopLeft = TextToClient(ptStart);
    const CPoint ptBottomRight = TextToClient(ptEnd);
    return CRect(ptTopLeft.x, ptTopLeft.y, ptBottomRight.x, ptBottomRight.y + m_Screen.GetCharDim().cy);
}

CPoint CTextEditControl::ClientToDoc(CPoint ptClient)
{
    if (!IsCreated())
        return CPoint(0, 0);
    return m_ViewBuffer.ViewToDoc(ClientToText(ptClient));
}

CPoint CTextEditControl::DocToClient(CPoint ptDoc)
{
    if (!IsCreated())
        return CPoint(0, 0);
    return TextToClient(m_ViewBuffer.DocToView(ptDoc));
}

CRect CTextEditControl::GetDocRect(CPoint ptStart, CPoint ptEnd)
{
    if (!IsCreated())
        return CRect();
    return GetTextRect(m_ViewBuffer.DocToView(ptStart), m_ViewBuffer.DocToView(ptEnd));
}

// ---------------------------------------------------------------------------------------------
// Parts and services.

ITextEditSettings* CTextEditControl::GetEditSettings()
{
    return m_pSettings;
}

ITextDrawSettings* CTextEditControl::GetDrawSettings()
{
    return m_pSettings;
}

ITextScreenSettings* CTextEditControl::GetScreenSettings()
{
    return m_pSettings;
}

IMacrosSupport* CTextEditControl::GetMacros()
{
    return &CMacrosSupport::GetGlobal();
}

void CTextEditControl::ShowCompletion(IACCompleteData* pData)
{
    if (!IsCreated())
        return;
    const CPoint ptCursor = m_Processor.GetCursorPosInView(FALSE);
    m_ACList.Show(pData, GetTextRect(ptCursor, ptCursor));
    UpdateCaret();
}

void CTextEditControl::SetCompletionSource(ICharClassifier* pClassifier)
{
    m_Processor.SetCharClassifier(pClassifier);
}

void CTextEditControl::SetFormatSource(ITextFormatter* pFormatter)
{
    m_Processor.SetFormatter(pFormatter);
}
