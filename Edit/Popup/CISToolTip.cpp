#include "CISToolTip.h"

#include "Platform/CDisplay.h"

#include <algorithm>

namespace
{
// Selects a font on a surface for the life of the object.
class CFontScope
{
public:
    CFontScope(CDC* pDC, CFont* pFont) : m_pDC(pDC), m_pOld(pFont ? pDC->SelectObject(pFont) : nullptr) {}
    ~CFontScope()
    {
        if (m_pOld != nullptr)
            m_pDC->SelectObject(m_pOld);
    }
    CFontScope(const CFontScope&) = delete;
    CFontScope& operator=(const CFontScope&) = delete;

private:
    CDC* m_pDC;
    CFont* m_pOld;
};

// The rows of a text, split at "\r\n", "\r" or "\n".
std::vector<CString> SplitRows(const CString& cs)
{
    std::vector<CString> aRows(1);
    for (int i = 0; i < cs.GetLength(); ++i)
    {
        const char16_t ch = cs[i];
        if (ch == u'\r' || ch == u'\n')
        {
            if (ch == u'\r' && i + 1 < cs.GetLength() && cs[i + 1] == u'\n')
                ++i;
            aRows.emplace_back();
        }
        else
            aRows.back().AppendChar(ch == u'\t' ? u' ' : ch);
    }
    return aRows;
}
} // namespace

CISToolTip::CISToolTip() : m_csFace(u"Tahoma") {}

CISToolTip::~CISToolTip()
{
    DestroyWindow();
}

void CISToolTip::SetFaceName(const CString& csFace)
{
    m_csFace = csFace;
    m_pNormalFont.reset();
    m_pBoldFont.reset();
}

void CISToolTip::CreateFonts()
{
    if (m_pNormalFont && m_pBoldFont)
        return;
    const auto make = [this](LONG nWeight)
    {
        LOGFONTW lf{};
        lf.lfHeight = 13;
        lf.lfWeight = nWeight;
        lf.lfCharSet = DEFAULT_CHARSET;
        const CString csFace = m_csFace.Left(LF_FACESIZE - 1);
        std::copy_n(csFace.GetString(), csFace.GetLength(), lf.lfFaceName);
        auto pFont = std::make_unique<CFont>();
        pFont->CreateFontIndirect(lf);
        if (pFont->GetResolvedFaceName().IsEmpty())
            pFont->CreateFont(13, nWeight, FALSE, FALSE, u"Sans");
        return pFont;
    };
    m_pNormalFont = make(FW_NORMAL);
    m_pBoldFont = make(FW_BOLD);
}

BOOL CISToolTip::Create(CWnd* pParent)
{
    return CreateEx(0x88, 0x80800000u, CRect(), pParent);
}

CSize CISToolTip::MeasureText(CDC* pDC, const CString& csText)
{
    const auto aRows = SplitRows(csText);
    int cx = 0;
    const int cy = pDC->GetTextExtent(u" ").cy;
    for (const auto& row : aRows)
        cx = std::max(cx, static_cast<int>(pDC->GetTextExtent(row).cx));
    return {cx, cy * static_cast<int>(aRows.size())};
}

void CISToolTip::CalcOffsets(CRect& rc, int& x, int& y, int nMaxWidth, int nLineHeight)
{
    const int nWidth = rc.Width();
    if (x + nWidth <= nMaxWidth)
    {
        rc.MoveToXY(x, y);
        x += nWidth;
    }
    else
    {
        y += nLineHeight;
        rc.MoveToXY(WRAP_INDENT, y);
        x = nWidth + WRAP_INDENT;
    }
}

CRect CISToolTip::AddTextElement(CDC* pDC, const CString& csText, int& x, int& y, int nMaxWidth,
                                 int nLineHeight, COLORREF crColor, CFont* pFont, const CRect& rcPreset)
{
    CRect rc = rcPreset;
    if (rc.IsRectEmpty())
    {
        const CFontScope scope(pDC, pFont);
        const CSize sz = MeasureText(pDC, csText);
        rc = CRect(0, 0, sz.cx, sz.cy);
    }
    CalcOffsets(rc, x, y, nMaxWidth, nLineHeight);
    m_aElements.push_back({csText, crColor, pFont, rc});
    return rc;
}

bool CISToolTip::WrapLine(CString& s, CDC* pDC, int nMaxWidth, int& nLines)
{
    int nStart = 0;
    int i = 0;
    while (i < s.GetLength())
    {
        const int nWidth = pDC->GetTextExtent(s.Mid(nStart, i + 1 - nStart)).cx;
        if (nWidth > nMaxWidth && i > nStart)
        {
            s.Insert(i, u"\r\n");
            nStart = i + 2;
            if (--nLines <= 0)
            {
                s = s.Left(i);
                return true;
            }
            i = nStart;
            continue;
        }
        ++i;
    }
    if (s.GetLength() >= 2 && s.Mid(s.GetLength() - 2) == CString(u"\r\n"))
        s = s.Left(s.GetLength() - 2);
    if (nLines > 0)
        --nLines;
    return false;
}

void CISToolTip::WrapText(CString& s, CDC* pDC, int nMaxWidth, int nLines)
{
    std::vector<CString> aPieces(1);
    for (int i = 0; i < s.GetLength(); ++i)
    {
        if (s[i] == u'\r')
        {
            if (i + 1 < s.GetLength() && s[i + 1] == u'\n')
                ++i;
            aPieces.emplace_back();
        }
        else
            aPieces.back().AppendChar(s[i]);
    }
    CString csResult;
    for (size_t n = 0; n < aPieces.size(); ++n)
    {
        if (nLines <= 0)
        {
            csResult += u"...";
            break;
        }
        CString csPiece = aPieces[n];
        const bool bCut = WrapLine(csPiece, pDC, nMaxWidth, nLines);
        if (n > 0)
            csResult += u"\r\n";
        csResult += csPiece;
        if (bCut)
        {
            csResult += u"...";
            break;
        }
    }
    s = csResult;
}

void CISToolTip::RecalcLayout()
{
    CRect rcAnchor = m_rcAnchor;
    rcAnchor.NormalizeRect();
    rcAnchor.right = std::max(rcAnchor.right, rcAnchor.left + 1);
    rcAnchor.bottom = std::max(rcAnchor.bottom, rcAnchor.top + 1);
    if (rcAnchor.left < 0)
        rcAnchor.OffsetRect(-rcAnchor.left, 0);
    if (rcAnchor.top < 0)
        rcAnchor.OffsetRect(0, -rcAnchor.top);
    CRect rcParent;
    if (m_pParent != nullptr)
    {
        m_pParent->ClientToScreen(rcAnchor);
        m_pParent->GetWindowRect(rcParent);
        if (!(m_nMode == 1 && m_nColumn >= 0))
        {
            CRect rcCut;
            if (rcCut.IntersectRect(rcAnchor, rcParent))
                rcAnchor = rcCut;
        }
    }

    const CRect rcWork = CDisplay::GetWorkArea();
    m_aElements.clear();
    const int cxBorder = CDisplay::GetSystemMetrics(SM_CXBORDER);
    const int cyBorder = CDisplay::GetSystemMetrics(SM_CYBORDER);
    const int nMaxWidth = std::max(1, rcWork.Width() - 2 * (cxBorder + 2));
    const int nMaxHeight = std::max(1, rcWork.Height() - 2 * (cyBorder + 2));

    CreateFonts();
    CDC* pDC = GetMeasureDC();
    CFont* pNormal = m_pNormalFont.get();
    CFont* pBold = m_pBoldFont.get();
    int nLineHeight = 0;
    {
        const CFontScope scope(pDC, pNormal);
        nLineHeight = std::max(1, static_cast<int>(pDC->GetTextExtent(u" ").cy));
    }

    int x = 0;
    int y = 0;
    if (m_nMode == 0)
    {
        CSize szBlank, szComma, szOpen, szClose;
        {
            const CFontScope scope(pDC, pNormal);
            szBlank = pDC->GetTextExtent(u" ");
            szComma = pDC->GetTextExtent(u",");
            szOpen = pDC->GetTextExtent(u"(");
            szClose = pDC->GetTextExtent(u")");
        }
        const auto gap = [&]
        {
            CRect rc(0, 0, szBlank.cx, szBlank.cy);
            CalcOffsets(rc, x, y, nMaxWidth, nLineHeight);
        };
        if (!m_info.csBeforeName.IsEmpty())
        {
            AddTextElement(pDC, m_info.csBeforeName, x, y, nMaxWidth, nLineHeight, CR_BEFORE_NAME, pNormal,
                           CRect());
            gap();
        }
        AddTextElement(pDC, m_info.csName, x, y, nMaxWidth, nLineHeight, CR_NAME, pNormal, CRect());
        AddTextElement(pDC, u"(", x, y, nMaxWidth, nLineHeight, CR_NAME, pNormal,
                       CRect(0, 0, szOpen.cx, szOpen.cy));
        const int nParams = m_info.aParams.GetSize();
        for (int i = 0; i < nParams; ++i)
        {
            const bool bCurrent = i == m_info.nCurParam;
            AddTextElement(pDC, m_info.aParams[i], x, y, nMaxWidth, nLineHeight,
                           bCurrent ? CR_CURRENT_PARAM : CR_PARAM, bCurrent ? pBold : pNormal, CRect());
            if (i + 1 < nParams)
            {
                AddTextElement(pDC, u",", x, y, nMaxWidth, nLineHeight, CR_PARAM, pNormal,
                               CRect(0, 0, szComma.cx, szComma.cy));
                gap();
            }
        }
        AddTextElement(pDC, u")", x, y, nMaxWidth, nLineHeight, CR_NAME, pNormal,
                       CRect(0, 0, szClose.cx, szClose.cy));
        if (!m_info.csDescription.IsEmpty())
        {
            CString csDescription = m_info.csDescription;
            {
                const CFontScope scope(pDC, pNormal);
                WrapText(csDescription, pDC, nMaxWidth, MAX_TEXT_LINES);
            }
            y += 2 * nLineHeight;
            x = 0;
            AddTextElement(pDC, csDescription, x, y, nMaxWidth, nLineHeight, CR_DESCRIPTION, pNormal,
                           CRect());
        }
    }
    else
    {
        const int nLines = std::clamp(nMaxHeight / nLineHeight - 1, 1, MAX_TEXT_LINES);
        CString csText = m_csText;
        const CFontScope scope(pDC, pNormal);
        WrapText(csText, pDC, nMaxWidth, nLines);
        AddTextElement(pDC, csText, x, y, nMaxWidth, nLineHeight, CR_NAME, pNormal, CRect());
    }

    CRect rc;
    for (const auto& element : m_aElements)
        rc.UnionRect(rc, element.rect);
    rc.right = std::max(rc.right, rc.left + 1);
    rc.bottom = std::max(rc.bottom, rc.top + 1);
    const int nWidth = rc.Width() + 2 * (cxBorder + 2);
    const int nHeight = rc.Height() + 2 * (cyBorder + 2);

    int nLeft = 0;
    int nTop = 0;
    if (m_nMode == 1 && m_nColumn >= 0)
    {
        CPoint pt(m_nColumn, 0);
        if (m_pParent != nullptr)
            m_pParent->ClientToScreen(pt);
        nLeft = std::min(pt.x, rcWork.right - nWidth);
        nTop = std::min(static_cast<int>(rcAnchor.bottom), rcWork.bottom - nHeight);
    }
    else
    {
        nLeft = std::min(static_cast<int>(rcAnchor.left), rcWork.right - nWidth);
        nTop = rcAnchor.bottom;
        if (nTop + nHeight > rcWork.bottom)
            nTop = rcAnchor.top - nHeight;
    }
    nLeft = std::max(nLeft, static_cast<int>(rcWork.left));
    nTop = std::max(nTop, static_cast<int>(rcWork.top));
    m_rcWindow = CRect(nLeft, nTop, nLeft + nWidth, nTop + nHeight);
}

void CISToolTip::ShowLaidOut()
{
    if (!IsWindow() && !Create(m_pParent))
        return;
    RecalcLayout();
    SetWindowPos(m_rcWindow, SWP_SHOWWINDOW | SWP_NOACTIVATE);
    Invalidate();
    UpdateWindow();
}

void CISToolTip::Show(const SToolTipInfo& info, const CRect& rcAnchor, CWnd* pParent, UINT nFlags)
{
    m_nMode = 0;
    m_info = info;
    m_rcAnchor = rcAnchor;
    m_pParent = pParent;
    m_nFlags = nFlags;
    if (info.csName.IsEmpty() && info.aParams.IsEmpty() && info.csDescription.IsEmpty())
    {
        m_aElements.clear();
        Hide();
        return;
    }
    ShowLaidOut();
}

void CISToolTip::Show(const CString& csText, const CRect& rcAnchor, CWnd* pParent, int nColumn, UINT nFlags)
{
    m_nMode = 1;
    m_csText = csText;
    m_rcAnchor = rcAnchor;
    m_pParent = pParent;
    m_nColumn = nColumn;
    m_nFlags = nFlags;
    if (csText.IsEmpty())
    {
        m_aElements.clear();
        Hide();
        return;
    }
    ShowLaidOut();
}

void CISToolTip::Hide()
{
    ShowWindow(SW_HIDE);
}

void CISToolTip::OnPaint(CDC* pDC)
{
    CRect rtClient;
    GetClientRect(rtClient);
    pDC->FillSolidRect(rtClient, CDisplay::GetSysColor(COLOR_INFOBK));
    const int nOldMode = pDC->SetBkMode(TRANSPARENT);
    for (const auto& element : m_aElements)
    {
        const CFontScope scope(pDC, element.pFont);
        pDC->SetTextColor(element.crColor);
        CRect rt = element.rect;
        rt.OffsetRect(2, 2);
        CRect rtClip;
        if (!rtClip.IntersectRect(rt, rtClient))
            continue;
        const int nRowHeight = pDC->GetTextExtent(u" ").cy;
        int y = rt.top;
        for (const auto& row : SplitRows(element.csText))
        {
            if (y >= rtClip.bottom)
                break;
            if (!row.IsEmpty())
                pDC->ExtTextOut(rt.left, y, ETO_CLIPPED, &rtClip, row, nullptr);
            y += nRowHeight;
        }
    }
    pDC->SetBkMode(nOldMode);
}

bool CISToolTip::Hides(const MSG* pMsg, bool& bSwallow) const
{
    bSwallow = false;
    const UINT m = pMsg->message;
    if (m == WM_MOUSEMOVE || m == WM_MOUSEWHEEL || m == WM_NCMOUSEMOVE)
        return (m_nFlags & TTF_KEEPMOUSE) == 0;
    if ((m >= WM_LBUTTONDOWN && m <= 0x020D && m != WM_MOUSEWHEEL) || (m >= 0x00A1 && m <= 0x00AD))
        return true;
    if (m == WM_KEYDOWN)
    {
        if ((m_nFlags & TTF_KEEPKEYS) == 0)
            return true;
        if (pMsg->wParam == static_cast<std::uintptr_t>(27))
        {
            bSwallow = true;
            return true;
        }
    }
    return false;
}

bool CISToolTip::RelayEvent(MSG* pMsg)
{
    if (pMsg == nullptr || (m_nFlags & TTF_PASSIVE) != 0 || !IsWindowVisible())
        return false;
    CWnd* pFocus = GetFocus();
    if (pFocus != m_pParent && pFocus != this)
    {
        Hide();
        return false;
    }
    bool bSwallow = false;
    if (Hides(pMsg, bSwallow))
        Hide();
    return bSwallow;
}

BOOL CISToolTip::PreTranslateMessage(MSG* pMsg)
{
    if (pMsg == nullptr || (m_nFlags & TTF_PASSIVE) != 0)
        return FALSE;
    bool bSwallow = false;
    if (Hides(pMsg, bSwallow))
    {
        Hide();
        return TRUE;
    }
    if ((m_nFlags & TTF_KEEPKEYS) != 0 && pMsg->message >= WM_KEYDOWN && pMsg->message <= 264 &&
        m_pParent != nullptr)
    {
        m_pParent->PostMessage(pMsg->message, pMsg->wParam, pMsg->lParam);
        return TRUE;
    }
    return CWnd::PreTranslateMessage(pMsg);
}
