#include "CACListBox.h"

CACListBox::CACListBox(CWnd* pOwner, IACCompletePocessor* pTarget)
    : m_pOwner(pOwner), m_pTarget(pTarget), m_mapAccelerators{{VK_RETURN, ID_ACCEPT}, {VK_ESCAPE, ID_HIDE}}
{
}

CACListBox::~CACListBox()
{
    DestroyWindow();
}

void CACListBox::Show(IACCompleteData* pData, const CRect& rcAt)
{
    m_pData = pData;
    if (pData == nullptr || pData->GetWords().IsEmpty())
        return;
    CRect rt(rcAt.left, rcAt.bottom, rcAt.left + LIST_WIDTH, rcAt.bottom + LIST_HEIGHT);
    if (m_pOwner != nullptr)
        m_pOwner->ClientToScreen(rt);
    if (!IsWindow() && !CreateEx(0x88, WS_POPUP | WS_BORDER, rt, m_pOwner))
        return;
    m_pList->ResetContent();
    COLORREF crMask = 0;
    const CBitmap* pBitmap = pData->GetBitmap(crMask);
    m_pList->SetImages(pBitmap, crMask);
    const auto& words = pData->GetWords();
    for (int i = 0; i < words.GetSize(); ++i)
        m_pList->AddString(words[i].m_csWordName, words[i].m_nIconIndex);
    SetWindowPos(rt, SWP_SHOWWINDOW | SWP_NOACTIVATE);
    UpdateSelection(FALSE);
    UpdateWindow();
}

void CACListBox::Hide()
{
    ShowWindow(SW_HIDE);
}

void CACListBox::UpdateSelection(BOOL bHideIfEmpty)
{
    if (!IsWindow() || m_pTarget == nullptr)
        return;
    const CString csWord = m_pTarget->GetWordToCursor();
    if (bHideIfEmpty && csWord.IsEmpty())
    {
        Hide();
        return;
    }
    const LRESULT nFound =
        m_pList->SendMessage(LB_FINDSTRING, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&csWord));
    if (nFound != LB_ERR)
    {
        m_pList->SendMessage(LB_SETCURSEL, static_cast<WPARAM>(nFound));
        return;
    }
    const LRESULT nSel = m_pList->SendMessage(LB_GETCURSEL);
    m_pList->SendMessage(LB_SETCURSEL, static_cast<WPARAM>(-1));
    if (nSel >= 0)
        m_pList->SendMessage(LB_SETCARETINDEX, static_cast<WPARAM>(nSel), TRUE);
}

void CACListBox::Accept()
{
    const LRESULT nSel = IsWindow() ? m_pList->SendMessage(LB_GETCURSEL) : LB_ERR;
    // Hidden first: the target's insertion raises events that would otherwise reach a shown list.
    Hide();
    if (nSel >= 0 && m_pTarget != nullptr)
        m_pTarget->InsertCompletion(m_pList->GetText(static_cast<int>(nSel)));
}

void CACListBox::OnFocus(CWnd*, BOOL, CWnd* pOther)
{
    if (pOther != this && pOther != m_pList.get())
        Hide();
}

bool CACListBox::IsNavigationKey(WPARAM nKey) noexcept
{
    return nKey == VK_PRIOR || nKey == VK_NEXT || nKey == VK_END || nKey == VK_HOME || nKey == VK_UP ||
           nKey == VK_DOWN;
}

BOOL CACListBox::TranslateAccelerator(const MSG* pMsg)
{
    if (pMsg->message != WM_KEYDOWN && pMsg->message != WM_SYSKEYDOWN)
        return FALSE;
    const auto it = m_mapAccelerators.find(static_cast<int>(pMsg->wParam));
    if (it == m_mapAccelerators.end())
        return FALSE;
    SendMessage(WM_COMMAND, it->second);
    return TRUE;
}

BOOL CACListBox::OnPreTranslateMessage(CWnd*, MSG* pMsg)
{
    if (pMsg == nullptr || !IsShown())
        return FALSE;
    if (pMsg->message == WM_LBUTTONDOWN || pMsg->message == WM_RBUTTONDOWN || pMsg->message == WM_MBUTTONDOWN)
    {
        CRect rt;
        GetWindowRect(rt);
        if (!rt.PtInRect(pMsg->pt))
            Hide();
        return FALSE;
    }
    if (pMsg->message == WM_KEYDOWN && IsNavigationKey(pMsg->wParam))
    {
        m_pList->SendMessage(WM_KEYDOWN, pMsg->wParam, pMsg->lParam);
        return TRUE;
    }
    if (pMsg->message >= WM_KEYDOWN && pMsg->message <= 264)
        return TranslateAccelerator(pMsg);
    return FALSE;
}

BOOL CACListBox::PreTranslateMessage(MSG* pMsg)
{
    if (pMsg != nullptr && pMsg->message >= WM_KEYDOWN && pMsg->message <= 264)
    {
        if (TranslateAccelerator(pMsg) || (m_pOwner != nullptr && m_pOwner->PreTranslateMessage(pMsg)))
            return TRUE;
        if (pMsg->message == WM_KEYDOWN && IsNavigationKey(pMsg->wParam))
            return FALSE;
        if (pMsg->message == WM_CHAR)
        {
            if (m_pOwner != nullptr)
                m_pOwner->SendMessage(WM_CHAR, pMsg->wParam, pMsg->lParam);
            return TRUE;
        }
    }
    return CWnd::PreTranslateMessage(pMsg);
}

void CACListBox::OnEventsGroup(ITextProcessor*, DWORD, int nCommand)
{
    if (!IsShown())
        return;
    if (nCommand == 1)
        UpdateSelection(TRUE);
    else
        Hide();
}

LRESULT CACListBox::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message)
    {
    case WM_CREATE:
    {
        m_pList = std::make_unique<CIconListBox>();
        CRect rt;
        GetClientRect(rt);
        return m_pList->CreateEx(0, WS_CHILD | WS_VISIBLE | WS_VSCROLL, rt, this) ? 0 : -1;
    }
    case WM_SIZE:
        if (m_pList && m_pList->IsWindow())
        {
            m_pList->MoveWindow(CRect(0, 0, LowWord(static_cast<std::uintptr_t>(lParam)),
                                      HighWord(static_cast<std::uintptr_t>(lParam))));
            m_pList->SetCurSel(m_pList->GetCurSel());
        }
        return 0;
    case WM_ERASEBKGND:
        return TRUE;
    case WM_DESTROY:
        if (m_pList)
            m_pList->DestroyWindow();
        return 0;
    case WM_KILLFOCUS:
        if (reinterpret_cast<CWnd*>(wParam) != m_pList.get())
            Hide();
        return 0;
    case WM_COMMAND:
        if (LowWord(wParam) == static_cast<int>(ID_ACCEPT))
            Accept();
        else if (LowWord(wParam) == static_cast<int>(ID_HIDE))
            Hide();
        return 0;
    case WM_ACCEPT_ITEM:
        if (static_cast<std::intptr_t>(wParam) >= 0)
        {
            m_pList->SetCurSel(static_cast<int>(wParam));
            Accept();
        }
        return 0;
    default:
        return CWnd::WindowProc(message, wParam, lParam);
    }
}
