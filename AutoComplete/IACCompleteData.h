// IACCompleteData: the words of one completion request and the image strip of their icons.
#pragma once

#include "Platform/CArray.h"
#include "Platform/CBitmap.h"
#include "Platform/CString.h"
#include "Platform/Types.h"

struct IACCompleteData
{
    // One word of the list.
    struct SACWord
    {
        CString m_csWordName;    // the word
        CString m_csDescription; // the text shown beside it
        CString m_csWordType;    // such as "tag" or "function"
        CString m_csInfo;        // information for the tip
        int m_nIconIndex = 0;    // cell of the image strip
    };
    using CWords = CArray<SACWord, const SACWord&>;

    // The image strip, null without one; crMask receives the colour that is transparent.
    virtual const CBitmap* GetBitmap(COLORREF& crMask) = 0;
    // The words, sorted by name without regard to case.
    virtual const CWords& GetWords() = 0;
    // The index of the word for the typed prefix csText, -1 for an empty one; bAmbDef tells
    // whether the prefix settles the word.
    virtual int GetWordIndex(const CString& csText, BOOL& bAmbDef) = 0;
    // Deletes the data.
    virtual void Release() = 0;

protected:
    virtual ~IACCompleteData() = default;
};
