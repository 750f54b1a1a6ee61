// CScreenTestHarness: a screen over a text, with the view buffer and processor listening to it as a
// pane wires them, and the painting calls of a recording surface written as short lines of text.
#pragma once

#include "Edit/Screen/CTextScreen.h"
#include "Edit/tests/CProcessorTestHarness.h"

#include "Platform/Headless/CRecordingDC.h"

#include <string>
#include <vector>

class CScreenTestHarness : public CProcessorTestHarness
{
public:
    // Colours of the table, distinct so that a record tells which one it was painted with.
    static constexpr SColorPair COLORS[COLORS_COUNT] = {
        {0x000001, 0x000002}, {0x000011, 0x000012}, {0x000021, 0x000022}, {0x000031, 0x000032},
        {0x000041, 0x000042}, {0x000051, 0x000052}, {0x000061, 0x000062}, {0x000071, 0x000072},
        {0x000081, 0x000082}, {0x000091, 0x000092}};

    // Switches: the ruler and cursor marks off, line numbers on; the colours above.
    CScreenTestHarness();
    ~CScreenTestHarness();

    // The text (with the marks of CProcessorTestHarness) and a screen over it without a window,
    // sized cx by cy pixels.
    void SetupScreen(const CString& csMarked, int cx = 640, int cy = 480, int nWrap = 0);
    // The screen's margins and ruler.
    void Show(BOOL bRuler, BOOL bLineNumbers, BOOL bCursorIndicator);

    // One painting call as text, such as "fill 0,0,20,16 #61", "line 18,0 18,16 pen 1/1/#62",
    // "text 0,0 ' 12' #41/#42", "rect 0,3 9,12", "poly 0,4 0,12 4,8 brush #51".
    static std::string Describe(const CRecordingDC::SRecord& record);
    // All calls of the surface, one per element.
    static std::vector<std::string> Describe(const CRecordingDC& dc);
    // The calls as one string, separated by "; ", for messages.
    static std::string Join(const std::vector<std::string>& aLines);
    static std::string Hex(COLORREF cr);

    CTextScreen m_Screen; // under test
};
