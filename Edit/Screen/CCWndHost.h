// CCWndHost: a window that shows one pane: every message it gets that the pane handles is passed on
// to the pane's ICWnd, with the pointer position unpacked from the message.
#pragma once

#include "Edit/Screen/ICWnd.h"

#include "Platform/CWnd.h"

// Messages the host passes on besides those of CWnd.h.
constexpr UINT WM_SETCURSOR = 0x0020;
constexpr UINT WM_HSCROLL = 0x0114;
constexpr UINT WM_VSCROLL = 0x0115;
constexpr UINT WM_LBUTTONDBLCLK = 0x0203;

class CCWndHost : public CWnd
{
public:
    CCWndHost() = default;
    ~CCWndHost() override;

    // The pane that hears this window from now on; null: none.
    void SetPane(ICWnd* pPane) noexcept { m_pPane = pPane; }
    [[nodiscard]] ICWnd* GetPane() const noexcept { return m_pPane; }

    BOOL PreTranslateMessage(MSG* pMsg) override;

    // The position packed in a pointer message's lParam, signed 16 bits each way.
    static CPoint PointFromParam(LPARAM lParam) noexcept;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnPaint(CDC* pDC) override;

private:
    ICWnd* m_pPane = nullptr;
};
