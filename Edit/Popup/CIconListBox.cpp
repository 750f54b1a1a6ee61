#include "CIconListBox.h"

#include "Platform/CDisplay.h"

CIconListBox::CIconListBox()
{
    m_font.CreateFont(13, FW_NORMAL, FALSE, FALSE, u"Tahoma");
    SetItemHeight(ICON_SIZE + 2);
}

CIconListBox::~CIconListBox()
{
    DestroyWindow();
}

void CIconListBox::SetImages(const CBitmap* pBitmap, COLORREF crMask)
{
    if (pBitmap == m_pBitmap)
        return;
    m_images.DeleteImageList();
    m_pBitmap = pBitmap;
    m_images.Create(ICON_SIZE, ICON_SIZE, 25, 0, 20);
    m_images.Add(pBitmap, crMask);
    Invalidate();
}

int CIconListBox::AddString(const CString& csText, int nImage)
{
    const int nIndex = static_cast<int>(SendMessage(LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(&csText)));
    if (nIndex >= 0)
        SendMessage(LB_SETITEMDATA, static_cast<WPARAM>(nIndex), nImage);
    return nIndex;
}

void CIconListBox::DrawItem(const SDrawItem& item)
{
    CDC* pDC = item.pDC;
    const bool bSelected = (item.nState & ODS_SELECTED) != 0;
    const bool bEnabled = IsWindow();
    pDC->FillSolidRect(item.rcItem, CDisplay::GetSysColor(bSelected ? COLOR_HIGHLIGHT : COLOR_WINDOW));
    const int nMargin = (item.rcItem.Height() - ICON_SIZE) / 2;
    m_images.Draw(pDC, static_cast<int>(item.nItemData),
                  CPoint(item.rcItem.left + 1, item.rcItem.top + nMargin));

    CFont* pOldFont = pDC->SelectObject(const_cast<CFont*>(&m_font));
    pDC->SetTextColor(CDisplay::GetSysColor(!bEnabled   ? COLOR_GRAYTEXT
                                            : bSelected ? COLOR_HIGHLIGHTTEXT
                                                        : COLOR_WINDOWTEXT));
    const int nOldMode = pDC->SetBkMode(TRANSPARENT);
    const CString csText = GetText(item.nItem);
    CRect rtText = item.rcItem;
    rtText.left += ICON_SIZE + 4;
    const int y = rtText.top + (rtText.Height() - pDC->GetTextExtent(csText).cy) / 2;
    pDC->ExtTextOut(rtText.left, y, ETO_CLIPPED, &rtText, csText, nullptr);
    pDC->SetBkMode(nOldMode);
    if (pOldFont != nullptr)
        pDC->SelectObject(pOldFont);

    if ((item.nState & ODS_FOCUS) != 0)
    {
        // The focus frame: a dotted outline just inside the row.
        const CRect& rt = item.rcItem;
        const COLORREF cr = CDisplay::GetSysColor(COLOR_WINDOWTEXT);
        for (int x = rt.left; x < rt.right; x += 2)
        {
            pDC->FillSolidRect(x, rt.top, 1, 1, cr);
            pDC->FillSolidRect(x, rt.bottom - 1, 1, 1, cr);
        }
        for (int yy = rt.top; yy < rt.bottom; yy += 2)
        {
            pDC->FillSolidRect(rt.left, yy, 1, 1, cr);
            pDC->FillSolidRect(rt.right - 1, yy, 1, 1, cr);
        }
    }
}
