// CHeadlessWndPeer: a window peer without a display. It accepts every window and records each call
// as a line of text ("Show 1", "Timer 2013 20"), so that suites can check what a window asked for.
#pragma once

#include "Platform/CWndPeer.h"

#include <vector>

class CHeadlessWndPeer : public CWndPeer
{
public:
    BOOL Create(CWnd* pWnd, DWORD dwStyle, DWORD dwExStyle, const CRect& rtWindow, CWnd* pParent) override;
    void Destroy() override;
    void Move(const CRect& rtWindow) override;
    void Show(BOOL bVisible) override;
    void Invalidate(const CRect* pRect) override;
    void Update() override;
    void SetScrollBar(int nBar, int nMin, int nMax, int nPage, int nPos) override;
    void SetCaret(const CSize& szCaret, const CPoint& ptCaret, BOOL bVisible) override;
    void SetTimer(UINT nID, UINT nElapse) override;
    void KillTimer(UINT nID) override;
    void SetCapture(BOOL bCapture) override;
    void SetFocus() override;
    // A recording surface, whose text is measured in cells of 8 by 16.
    std::unique_ptr<CDC> CreateDC() override;

    [[nodiscard]] const std::vector<CString>& GetCalls() const noexcept { return m_aCalls; }
    void ClearCalls() noexcept { m_aCalls.clear(); }

private:
    void Record(const CString& csCall) { m_aCalls.push_back(csCall); }

    std::vector<CString> m_aCalls;
};
