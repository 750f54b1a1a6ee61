// CISToolTip: a tip beside the text: a function's signature with the current parameter in bold and
// its description, or a plain text wrapped to the screen. The tip measures and places its pieces
// once, when shown, and paints them as laid out.
#pragma once

#include "Platform/CStringArray.h"
#include "Platform/CWnd.h"
#include "Platform/Headless/CRecordingDC.h"

#include <memory>
#include <vector>

class CISToolTip : public CWnd
{
public:
    // Flags of Show.
    static constexpr UINT TTF_PASSIVE = 0x1;   // takes no part in message handling
    static constexpr UINT TTF_KEEPMOUSE = 0x2; // pointer moves leave it up
    static constexpr UINT TTF_KEEPKEYS = 0x8;  // keys other than Esc leave it up

    // Colours of the pieces of a signature.
    static constexpr COLORREF CR_BEFORE_NAME = 0x00007F;
    static constexpr COLORREF CR_NAME = 0x000000;
    static constexpr COLORREF CR_PARAM = 0xFF0000;
    static constexpr COLORREF CR_CURRENT_PARAM = 0x7F0000;
    static constexpr COLORREF CR_DESCRIPTION = 0x007F00;
    // Where every wrapped row of a signature starts.
    static constexpr int WRAP_INDENT = 10;
    static constexpr int MAX_TEXT_LINES = 25;

    struct SToolTipInfo
    {
        CString csBeforeName;
        CString csName;
        CStringArray aParams;
        int nCurParam = -1;
        CString csDescription;
    };

    struct STextElement
    {
        CString csText;
        COLORREF crColor = 0;
        CFont* pFont = nullptr;
        CRect rect;
    };

    CISToolTip();
    ~CISToolTip() override;

    // rcAnchor is in pParent's client pixels (screen pixels without a parent). Nothing is shown
    // for a signature without a name, parameters or description, nor for an empty text.
    virtual void Show(const SToolTipInfo& info, const CRect& rcAnchor, CWnd* pParent, UINT nFlags);
    // nColumn, when not negative, is the x in pParent's client pixels where the tip starts.
    virtual void Show(const CString& csText, const CRect& rcAnchor, CWnd* pParent, int nColumn, UINT nFlags);
    virtual void Hide();
    // For messages on their way to the parent: whether the tip used the message up.
    virtual bool RelayEvent(MSG* pMsg);
    BOOL PreTranslateMessage(MSG* pMsg) override;

    // The surface that text is measured with; null: cells of 8 by 16 pixels.
    void SetMeasureDC(CDC* pDC) noexcept { m_pMeasureDC = pDC; }
    // The face of the tip's fonts, "Tahoma" unless set; a face that fontconfig does not resolve
    // falls back to the system's sans-serif face.
    void SetFaceName(const CString& csFace);

    [[nodiscard]] int GetMode() const noexcept { return m_nMode; }
    [[nodiscard]] const std::vector<STextElement>& GetElements() const noexcept { return m_aElements; }
    [[nodiscard]] const CFont* GetNormalFont() const noexcept { return m_pNormalFont.get(); }
    [[nodiscard]] const CFont* GetBoldFont() const noexcept { return m_pBoldFont.get(); }

    // The layout helpers, open for their own checks.
    static void CalcOffsets(CRect& rc, int& x, int& y, int nMaxWidth, int nLineHeight);
    static bool WrapLine(CString& s, CDC* pDC, int nMaxWidth, int& nLines);
    static void WrapText(CString& s, CDC* pDC, int nMaxWidth, int nLines);
    // The size of text of one or more rows ("\r\n" or "\n"), as the system measures it.
    static CSize MeasureText(CDC* pDC, const CString& csText);

protected:
    BOOL Create(CWnd* pParent);
    void CreateFonts();
    CRect AddTextElement(CDC* pDC, const CString& csText, int& x, int& y, int nMaxWidth, int nLineHeight,
                         COLORREF crColor, CFont* pFont, const CRect& rcPreset);
    void RecalcLayout();
    void OnPaint(CDC* pDC) override;

private:
    void ShowLaidOut();
    // Whether the message is one that hides the tip, under the flags; bSwallow tells whether the
    // tip uses it up.
    bool Hides(const MSG* pMsg, bool& bSwallow) const;
    CDC* GetMeasureDC() noexcept { return m_pMeasureDC != nullptr ? m_pMeasureDC : &m_cellDC; }

    int m_nMode = 0;
    std::unique_ptr<CFont> m_pNormalFont;
    std::unique_ptr<CFont> m_pBoldFont;
    std::vector<STextElement> m_aElements;
    UINT m_nFlags = 0;
    SToolTipInfo m_info;
    CString m_csText;
    CRect m_rcAnchor;
    CRect m_rcWindow;
    CWnd* m_pParent = nullptr;
    int m_nColumn = -1;
    CString m_csFace;
    CDC* m_pMeasureDC = nullptr;
    CRecordingDC m_cellDC;
};
