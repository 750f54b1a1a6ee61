// CACCompleteData: the words and the image strip that the completion list shows.
#pragma once

#include "AutoComplete/IACCompleteData.h"

#include <memory>

class CACCompleteData : public IACCompleteData
{
public:
    using CWordsArray = CArray<IACCompleteData::SACWord, const IACCompleteData::SACWord&>;

    CACCompleteData() = default;
    CACCompleteData(const CACCompleteData&) = delete;
    CACCompleteData& operator=(const CACCompleteData&) = delete;
    ~CACCompleteData() override = default;

    const CBitmap* GetBitmap(COLORREF& crMask) override;
    const CWords& GetWords() override { return m_aWords; }
    int GetWordIndex(const CString& csText, BOOL& bAmbDef) override;
    void Release() override { delete this; }

    // Takes the image strip, which may be null, and its mask colour.
    void SetBitmap(std::unique_ptr<CBitmap> pBitmap, COLORREF crMask) noexcept;
    // The words, for the parser to fill.
    CWordsArray& Words() noexcept { return m_aWords; }
    // Sorts the words by name without regard to case.
    void SortWords();

private:
    std::unique_ptr<CBitmap> m_pBitmap; // the image strip, null without one
    COLORREF m_crMask = 0;              // its transparent colour
    CWordsArray m_aWords;               // sorted by name
};
