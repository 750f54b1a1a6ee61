// CIconListBox: the list of the completion popup: one row per word, an icon of 16 by 16 from an
// image strip before the text, drawn by the list itself in the system colours.
#pragma once

#include "Platform/CFont.h"
#include "Platform/CImageList.h"
#include "Platform/CListBox.h"

class CIconListBox : public CListBox
{
public:
    static constexpr int ICON_SIZE = 16;

    CIconListBox();
    ~CIconListBox() override;

    // The same bitmap again changes nothing; another one replaces the images.
    void SetImages(const CBitmap* pBitmap, COLORREF crMask);
    [[nodiscard]] const CImageList& GetImages() const noexcept { return m_images; }
    // Appends the text with the image number as its item data; the index of the row.
    int AddString(const CString& csText, int nImage);
    [[nodiscard]] const CFont& GetFont() const noexcept { return m_font; }

protected:
    void DrawItem(const SDrawItem& item) override;

private:
    CImageList m_images;
    const CBitmap* m_pBitmap = nullptr;
    CFont m_font;
};
