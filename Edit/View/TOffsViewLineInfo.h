// TOffsViewLineInfo: the record of one view line: where it starts in the document, its positions
// and their screen columns, and the collapsed regions it shows.
#pragma once

#include "Edit/Model/IOutlining.h"
#include "Edit/View/CFindArray.h"

#include "Platform/CArray.h"
#include "Platform/Types.h"

struct TOffsViewLineInfo
{
    // A collapsed region shown as one position of the view line.
    struct SCollapseInfo
    {
        int m_nPos = 0;                 // view position of the label in the line
        IOutlining* m_pBlock = nullptr; // the region, not owned
    };

    int m_nRealLine = 0;     // document line in which the view line begins
    int m_nStart = 0;        // view positions of the line's unwrapped run before this piece
    int m_nLength = 0;       // number of view positions
    int m_nActualLength = 0; // width in screen columns
    // m_nLength + 1 columns; a negative element i + 1 marks position i as a collapsed label.
    CFindArray m_aOffsets;
    CArray<SCollapseInfo> m_aCollapses; // the labels of this view line, in order
    BOOL m_bCollapsed = FALSE;          // built with collapsed regions of its document line present
};
