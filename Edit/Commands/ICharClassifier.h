// ICharClassifier: a language's idea of words, blanks and delimiters, asked at a document point.
#pragma once

#include "Platform/CPoint.h"
#include "Platform/Types.h"

struct ICharClassifier
{
    virtual BOOL IsWordChar(char16_t ch, CPoint pt) = 0;
    virtual BOOL IsSpaceChar(char16_t ch) = 0;
    virtual BOOL IsDelimiterChar(char16_t ch, CPoint pt) = 0;

protected:
    ~ICharClassifier() = default;
};
