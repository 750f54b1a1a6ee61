// CProcessorTestHarness: a command processor over a view of a text, and texts with marks: "|" is the
// cursor and "[" the anchor of a selection whose other end is the cursor, or "]" where the cursor
// left it. Commands are given as
// words ("<", "+>", "Home", "'abc", ...) and run one after the other.
#pragma once

#include "Edit/Commands/CAITextProcessor.h"
#include "Edit/Commands/CNoOpTextFormatter.h"
#include "Edit/tests/CViewTestHarness.h"

#include "Platform/ClipboardService.h"

#include <string>

class CProcessorTestHarness : public CViewTestHarness
{
public:
    // One case of a table: text and marks before, commands, text and marks after, and the
    // conditions: wrap width (0: no wrap) and a region to collapse (document points, or none).
    struct SRow
    {
        const char16_t* szBefore;
        const char* szCommands;
        const char16_t* szAfter;
        int nWrap = 0;
        CPoint ptCollapseStart{-1, -1};
        CPoint ptCollapseEnd{-1, -1};
    };

    CProcessorTestHarness();
    ~CProcessorTestHarness();

    // The text without marks into the buffer, a fresh view and processor, the marks as cursor and
    // selection. The screen is 80 by 25 cells, or nWrap columns wide when wrapping.
    void Setup(const CString& csMarked, int nWrap = 0, CPoint ptCollapseStart = CPoint(-1, -1),
               CPoint ptCollapseEnd = CPoint(-1, -1));
    // A file of the test data folder, with the screen nColumns by nRows cells; its undo list is empty.
    bool SetupFile(const char16_t* szFile, int nColumns = 80, int nRows = 25);
    // Runs the commands; an unknown word is reported as a failure.
    void Run(const std::string& sCommands);
    // The document with the marks of the present cursor and selection.
    CString Marked();
    // Runs a row and returns an empty string when the result matches, else what went wrong.
    std::string Check(const SRow& row);
    // Runs every row of a table and fails with the descriptions of those that don't match.
    template <std::size_t N> static void CheckTable(const SRow (&rows)[N])
    {
        std::string sFailures;
        for (const SRow& row : rows)
        {
            CProcessorTestHarness harness;
            sFailures += harness.Check(row);
        }
        CPPUNIT_ASSERT_MESSAGE(sFailures, sFailures.empty());
    }

    CInProcessClipboard m_Clipboard; // empty at the start of each harness
    IClipboardService* m_pOldClipboard = nullptr;
    CAITextProcessor m_Processor; // under test
};

std::string ToUtf8(const CString& cs);
