// CViewTestHarness: a text buffer, settings and a view buffer over them, as a pane builds them, for
// the suites of the view; and the comparison of a view with one built from scratch.
#pragma once

#include "Edit/Model/CTextBuffer.h"
#include "Edit/Screen/CTextSettings.h"
#include "Edit/View/CTextViewBuffer.h"

#include "Platform/CSize.h"

#include <cppunit/TestAssert.h>
#include <span>
#include <string>
#include <utility>

// Points in assertion messages as "(x,y)".
template <> struct CppUnit::assertion_traits<CPoint>
{
    static bool equal(const CPoint& a, const CPoint& b) { return a == b; }
    static std::string toString(const CPoint& pt)
    {
        return "(" + std::to_string(pt.x) + "," + std::to_string(pt.y) + ")";
    }
};

class CViewTestHarness
{
public:
    static constexpr const char16_t* TEST_FILES = u"..\\Edit\\tests\\testfiles\\";

    // A point as "(x,y)", for messages.
    static std::string At(CPoint pt) { return CppUnit::assertion_traits<CPoint>::toString(pt); }

    // Settings as loaded from an empty store: tabs of 4 columns, no wrap.
    CViewTestHarness() { m_Settings.SetTabSize(CTextSettings::DEFAULT_TAB_SIZE); }
    CViewTestHarness(const CViewTestHarness&) = delete;
    CViewTestHarness& operator=(const CViewTestHarness&) = delete;

    // Loads a file of the test data folder and builds the view over it.
    bool Load(const char16_t* szFile);
    // A buffer holding the text ("\r\n" between lines) and the view over it.
    void Fill(const CString& csText);
    // Tells the view the width of the text area in columns.
    void SetColumns(int nColumns);
    CString Text();
    // Collapses a new region with the label, as the parser and the user would.
    IOutlining* Collapse(CPoint ptStart, CPoint ptEnd, const CString& csLabel);

    // The records of view lines nFirst to nLast (to the end when nLast is -1), each as
    // "line:start+length/columns", with "c" behind when built with collapsed regions, separated by spaces.
    std::string Records(int nFirst = 0, int nLast = -1);
    // Checks rows of a document point and its view point, one way or the other; a failing row names its
    // point.
    void CheckDocToView(std::span<const std::pair<CPoint, CPoint>> aRows);
    void CheckViewToDoc(std::span<const std::pair<CPoint, CPoint>> aRows);

    // Empty when the view matches one built from scratch over the same text and settings;
    // otherwise what differs first.
    std::string CompareWithScratch();
    // Empty when every visible document position survives DocToView and back; else the first
    // one that doesn't.
    std::string CheckRoundTrip();
    // Empty when reading the view lines from top to bottom meets every document character that
    // no collapsed region hides exactly once and in order, and each label where its region begins.
    std::string CheckCoverage();
    // The three checks above in one: empty when all pass, else what each found.
    std::string CheckConsistent() { return CompareWithScratch() + CheckRoundTrip() + CheckCoverage(); }

    CTextBuffer m_Buffer;     // the document
    CTextSettings m_Settings; // tab size and wrap mode
    CTextViewBuffer m_View;   // under test
    CSize m_szScreen{-1, -1}; // last size told
};
