// SCharInfo: what stands at one view position, for drawing.
#pragma once

#include "Edit/Model/ITextColorBuffer.h"

#include "Platform/CString.h"

struct SCharInfo
{
    // Kinds of position.
    enum : int
    {
        CH_CHAR = 0,      // an ordinary character
        CH_COLLAPSED = 1, // a collapsed region; m_char is its label
        CH_WRAP = 2,      // behind the text of a view line that continues on the next one
        CH_EOL = 3,       // behind the last text of a document line
        CH_NONE = 4,      // beyond the line; the width is -1
        CH_TAB = 5,       // a tab
        CH_SPACE = 6      // a blank
    };

    int m_nType = CH_NONE;
    CString m_char;    // the character, or the label of a collapsed region
    int m_nWidth = -1; // screen columns
    // Colour of the character; only for CH_CHAR, CH_TAB and CH_SPACE.
    ITextColorBuffer::COLOR_INFO m_colorInfo;
};
