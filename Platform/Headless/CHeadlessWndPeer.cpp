#include "CHeadlessWndPeer.h"

#include "CRecordingDC.h"

namespace
{
CString RectText(const CRect& rt)
{
    CString cs;
    cs.Format(u"%d,%d,%d,%d", rt.left, rt.top, rt.right, rt.bottom);
    return cs;
}
} // namespace

BOOL CHeadlessWndPeer::Create(CWnd*, DWORD dwStyle, DWORD dwExStyle, const CRect& rtWindow, CWnd* pParent)
{
    CString cs;
    cs.Format(u"Create %x %x ", dwStyle, dwExStyle);
    cs += RectText(rtWindow);
    cs += pParent ? u" child" : u" top";
    Record(cs);
    return TRUE;
}

void CHeadlessWndPeer::Destroy()
{
    Record(u"Destroy");
}

void CHeadlessWndPeer::Move(const CRect& rtWindow)
{
    Record(CString(u"Move ") + RectText(rtWindow));
}

void CHeadlessWndPeer::Show(BOOL bVisible)
{
    Record(bVisible ? u"Show 1" : u"Show 0");
}

void CHeadlessWndPeer::Invalidate(const CRect* pRect)
{
    Record(pRect ? CString(u"Invalidate ") + RectText(*pRect) : CString(u"Invalidate all"));
}

void CHeadlessWndPeer::Update()
{
    Record(u"Update");
}

void CHeadlessWndPeer::SetScrollBar(int nBar, int nMin, int nMax, int nPage, int nPos)
{
    CString cs;
    cs.Format(u"Scroll %d %d %d %d %d", nBar, nMin, nMax, nPage, nPos);
    Record(cs);
}

void CHeadlessWndPeer::SetCaret(const CSize& szCaret, const CPoint& ptCaret, BOOL bVisible)
{
    CString cs;
    cs.Format(u"Caret %d %d %d %d %d", szCaret.cx, szCaret.cy, ptCaret.x, ptCaret.y, bVisible ? 1 : 0);
    Record(cs);
}

void CHeadlessWndPeer::SetTimer(UINT nID, UINT nElapse)
{
    CString cs;
    cs.Format(u"Timer %u %u", nID, nElapse);
    Record(cs);
}

void CHeadlessWndPeer::KillTimer(UINT nID)
{
    CString cs;
    cs.Format(u"KillTimer %u", nID);
    Record(cs);
}

void CHeadlessWndPeer::SetCapture(BOOL bCapture)
{
    Record(bCapture ? u"Capture 1" : u"Capture 0");
}

void CHeadlessWndPeer::SetFocus()
{
    Record(u"Focus");
}

std::unique_ptr<CDC> CHeadlessWndPeer::CreateDC()
{
    return std::make_unique<CRecordingDC>();
}
