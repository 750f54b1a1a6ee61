// The parser as a whole: type mapping, changing the type, lexing on demand, incremental lexing
// after edits against a fresh lex, hostile input, painting and folding.
#include "Colorer/CBaseParserExeption.h"
#include "Colorer/CParserFactory.h"
#include "Colorer/CParserSettings.h"
#include "Colorer/tests/ParserTestHelpers.h"

#include "Colorer/CTextBufferLinesStorage.h"

#include "Edit/Model/CTextBuffer.h"
#include "Edit/Model/IOutliningBuffer.h"
#include "Edit/Model/ITextColorBuffer.h"
#include "Edit/Model/IUndoRedoBuffer.h"
#include "Edit/Screen/CTextDrawer.h"

#include <cppunit/extensions/HelperMacros.h>
#include <random>
#include <vector>

using namespace ParserTest;

namespace
{
// A colour buffer that records what is painted.
class CRecordingColors : public ITextColorBuffer
{
public:
    struct SCall
    {
        CPoint ptStart, ptEnd;
        COLOR_INFO info;
    };
    std::vector<SCall> m_aCalls; // every range painted, in order

    void SetTextColor(const CPoint& pt, const COLOR_INFO& info) override
    {
        m_aCalls.push_back({pt, pt, info});
    }
    void SetTextColor(const CPoint& ptStart, const CPoint& ptEnd, const COLOR_INFO& info) override
    {
        m_aCalls.push_back({ptStart, ptEnd, info});
    }
    COLOR_INFO GetTextColor(const CPoint&) override { return {}; }
    void ClearTextColors() override { m_aCalls.clear(); }
};

// A listener that keeps the last of each notification.
class CParserListener : public IParserEvents
{
public:
    int m_nTypeChanges = 0;  // OnTypeChanged calls
    int m_nInvalidFrom = -1; // the line of the last OnLinesInvalidated
    int m_nParsedTo = -1;    // the line of the last OnParsed

    void OnTypeChanged(IParser*) override { ++m_nTypeChanges; }
    void OnLinesInvalidated(IParser*, int nFirstLine) override { m_nInvalidFrom = nFirstLine; }
    void OnParsed(IParser*, int nLastLine) override { m_nParsedTo = nLastLine; }
};

CString Repeat(const CString& csLine, int nCount)
{
    CString cs;
    for (int i = 0; i < nCount; ++i)
    {
        if (i > 0)
            cs += u"\r\n";
        cs += csLine;
    }
    return cs;
}
} // namespace

class CParserTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CParserTest);
    CPPUNIT_TEST(TypeMappingTest);
    CPPUNIT_TEST(TypeMappingTestByFirstLine);
    CPPUNIT_TEST(SetTypeTest);
    CPPUNIT_TEST(ParseTest);
    // The registered cases keep their order above this line; further cases go below.
    CPPUNIT_TEST(LazyLexTest);
    CPPUNIT_TEST(IncrementalTest);
    CPPUNIT_TEST(RealPagesTest);
    CPPUNIT_TEST(BadInputTest);
    CPPUNIT_TEST(PaintTest);
    CPPUNIT_TEST(FoldRegionsTest);
    CPPUNIT_TEST(TextBufferTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void TypeMappingTest()
    {
        const struct
        {
            const char16_t* szFile;
            const char* szType;
        } aCases[] = {{u"index.html", "html"},    {u"a/b.HTM", "html"},         {u"shop.php", "php"},
                      {u"x.php4", "php"},         {u"orders.asp", "asp"},       {u"users.jsp", "jsp"},
                      {u"site.css", "css"},       {u"app.js", "javascript"},    {u"run.pl", "perl"},
                      {u"setup.vbs", "vbscript"}, {u"clip.as", "actionscript"}, {u"data.xml", "xml"},
                      {u"notes.txt", "text"},     {u"c.dir/noext", "text"}};
        CMemLinesStorage storage(u"plain");
        for (const auto& test : aCases)
        {
            CPPUNIT_ASSERT_EQUAL_MESSAGE(Utf8(test.szFile), std::string(test.szType),
                                         Utf8(CParserFactory::DetectType(&storage, test.szFile)));
            auto pParser = CParserFactory::Instance()->CreateParser(&storage, CString(), test.szFile);
            CPPUNIT_ASSERT_EQUAL_MESSAGE(Utf8(test.szFile), std::string(test.szType),
                                         Utf8(pParser->GetParserType()));
        }
    }
    void TypeMappingTestByFirstLine()
    {
        const struct
        {
            const char16_t* szText;
            const char* szType;
        } aCases[] = {{u"<?xml version=\"1.0\"?>\r\n<a/>", "xml"},
                      {u"#!/usr/bin/perl -w\r\nprint 1;", "perl"},
                      {u"#!/bin/sh", "text"},
                      {u"<?php echo 1; ?>", "php"},
                      {u"  <!DOCTYPE HTML PUBLIC \"-//W3C//DTD HTML 4.01//EN\">", "html"},
                      {u"<html>", "html"},
                      {u"<%@ Language=VBScript %>", "asp"},
                      {u"<%@ page import=\"java.util.*\" %>", "jsp"},
                      {u"hello", "text"},
                      {u"", "text"}};
        for (const auto& test : aCases)
        {
            CMemLinesStorage storage(test.szText);
            CPPUNIT_ASSERT_EQUAL_MESSAGE(Utf8(test.szText), std::string(test.szType),
                                         Utf8(CParserFactory::DetectType(&storage, u"untitled")));
        }
        // The extension goes first.
        CMemLinesStorage storage(u"<?xml version=\"1.0\"?>");
        CPPUNIT_ASSERT_EQUAL(std::string("php"), Utf8(CParserFactory::DetectType(&storage, u"a.php")));
    }
    void SetTypeTest()
    {
        SDocument doc(u"<b><?php $x ?></b>", u"html");
        CPPUNIT_ASSERT_EQUAL(std::string("html"), Utf8(doc.pParser->GetParserType()));
        CPPUNIT_ASSERT_EQUAL(std::string("html:Directive"),
                             Utf8(doc.pParser->GetRegion(CPoint(10, 0)).m_pRegion->region->getName()));
        doc.pParser->SetType(u"php");
        CPPUNIT_ASSERT_EQUAL(std::string("php"), Utf8(doc.pParser->GetParserType()));
        CPPUNIT_ASSERT_EQUAL(std::string("php:Variable"),
                             Utf8(doc.pParser->GetRegion(CPoint(10, 0)).m_pRegion->region->getName()));
        CPPUNIT_ASSERT_THROW(doc.pParser->SetType(u"fortran"), CBaseParserExeption);
        CPPUNIT_ASSERT_EQUAL(std::string("php"), Utf8(doc.pParser->GetParserType()));
        doc.pParser->AssertValid();
    }
    void ParseTest()
    {
        SDocument doc(ReadTestFile(u"test3.html"), u"html");
        CPPUNIT_ASSERT_EQUAL(0, doc.pParser->GetValidLinesCount());
        CParserListener listener;
        doc.pParser->AddEventsHandler(&listener);
        const std::string szBefore = DescribeRegions(*doc.pParser, doc.storage.GetLinesCount());
        // Asking for the regions of every line has lexed all of them.
        CPPUNIT_ASSERT_EQUAL(doc.storage.GetLinesCount() - 1, listener.m_nParsedTo);
        doc.pParser->Parse();
        CPPUNIT_ASSERT_EQUAL(doc.storage.GetLinesCount(), doc.pParser->GetValidLinesCount());
        doc.pParser->AssertValid();
        CPPUNIT_ASSERT_EQUAL(szBefore, DescribeRegions(*doc.pParser, doc.storage.GetLinesCount()));
        // Parsing again lexes nothing.
        const long long nLexed = doc.pParser->GetLexedLinesCount();
        doc.pParser->Parse();
        CPPUNIT_ASSERT_EQUAL(nLexed, doc.pParser->GetLexedLinesCount());
        // An edit tells from which line the regions changed; a new type tells so too.
        doc.storage.InsertText(CPoint(2, 4), u"/*");
        CPPUNIT_ASSERT_EQUAL(4, listener.m_nInvalidFrom);
        doc.pParser->SetType(u"php");
        CPPUNIT_ASSERT_EQUAL(1, listener.m_nTypeChanges);
        CPPUNIT_ASSERT_EQUAL(1, doc.pParser->RemoveEventsHandler(&listener));
        CPPUNIT_ASSERT_EQUAL(0, doc.pParser->RemoveEventsHandler(&listener));
    }
    void LazyLexTest()
    {
        SDocument doc(Repeat(u"var a = b + c; // line", 100000), u"javascript");
        CPPUNIT_ASSERT(doc.pParser->GetLineRegion(30) != nullptr);
        CPPUNIT_ASSERT(doc.pParser->GetValidLinesCount() <= 31);
        // An opened comment at the top is lexed only as far as asked.
        doc.storage.InsertText(CPoint(0, 0), u"/*");
        doc.pParser->AssertValid();
        CPPUNIT_ASSERT_EQUAL(std::string("jvScript:Comment"),
                             Utf8(doc.pParser->GetRegion(CPoint(3, 20)).m_pRegion->region->getName()));
        CPPUNIT_ASSERT(doc.pParser->GetValidLinesCount() <= 21);
        // A typed character in the middle of a lexed file converges at once.
        doc.storage.DeleteText(CPoint(0, 0), CPoint(2, 0));
        doc.pParser->Parse();
        const long long nLexed = doc.pParser->GetLexedLinesCount();
        doc.storage.InsertText(CPoint(5, 50000), u"x");
        doc.pParser->Parse();
        CPPUNIT_ASSERT(doc.pParser->GetLexedLinesCount() - nLexed <= 2);
        CPPUNIT_ASSERT_EQUAL(100000, doc.pParser->GetValidLinesCount());
        doc.pParser->AssertValid();
    }
    void IncrementalTest()
    {
        // Random edits, with lines asked for in between; the regions then equal a fresh lex's.
        const CString aSnippets[] = {u"/*",  u"*/",       u"<",         u">",       u"\"", u"'",  u"<?php ",
                                     u"?>",  u"<script>", u"</script>", u"\r\n",    u"{",  u"}",  u"<!--",
                                     u"-->", u"x",        u" ",         u"<style>", u"=",  u"//", u"<%"};
        for (const char16_t* szType : {u"php", u"asp", u"html", u"javascript"})
        {
            std::mt19937 random(42);
            SDocument doc(ReadTestFile(u"shop.php"), szType);
            for (int nStep = 0; nStep < 150; ++nStep)
            {
                const int nLines = doc.storage.GetLinesCount();
                const int y = static_cast<int>(random() % static_cast<unsigned>(nLines));
                const int x = static_cast<int>(random() %
                                               static_cast<unsigned>(doc.storage.GetLine(y).GetLength() + 1));
                if (random() % 3 == 0)
                {
                    const int y2 = std::min(nLines - 1, y + static_cast<int>(random() % 3));
                    doc.storage.DeleteText(CPoint(x, y), CPoint(static_cast<int>(random() % 8), y2));
                }
                else
                    doc.storage.InsertText(CPoint(x, y), aSnippets[random() % std::size(aSnippets)]);
                doc.pParser->AssertValid();
                (void)doc.pParser->GetLineRegion(
                    static_cast<int>(random() % static_cast<unsigned>(doc.storage.GetLinesCount())));
                if (nStep % 10 != 9)
                    continue;
                CMemLinesStorage fresh(doc.storage.GetText());
                CParser parserFresh(&fresh, szType);
                const int nCount = doc.storage.GetLinesCount();
                CPPUNIT_ASSERT_EQUAL_MESSAGE(Utf8(szType) + " step " + std::to_string(nStep),
                                             DescribeRegions(parserFresh, nCount),
                                             DescribeRegions(*doc.pParser, nCount));
            }
        }
    }
    void RealPagesTest()
    {
        const struct
        {
            const char16_t* szFile;
            const char16_t* szType;
        } aPages[] = {{u"shop.php", u"php"},    {u"orders.asp", u"asp"}, {u"users.jsp", u"jsp"},
                      {u"test3.html", u"html"}, {u"test4.html", u"php"}, {u"styleTest.html", u"html"},
                      {u"test2.html", u"xml"}};
        for (const auto& page : aPages)
        {
            SDocument doc(ReadTestFile(page.szFile), page.szType);
            for (int nLine = 0; nLine < doc.storage.GetLinesCount(); ++nLine)
                CPPUNIT_ASSERT_EQUAL_MESSAGE(Utf8(page.szFile), std::string(),
                                             CheckLineRecords(*doc.pParser, doc.storage, nLine));
            // The page ends where it began: no construct is left open.
            doc.pParser->Parse();
            std::vector<CLexer::SToken> aTokens;
            doc.pParser->GetLineTokens(doc.storage.GetLinesCount() - 1, aTokens);
            CPPUNIT_ASSERT_EQUAL_MESSAGE(
                Utf8(page.szFile), std::string(),
                CheckLineRecords(*doc.pParser, doc.storage, doc.storage.GetLinesCount() - 1));
        }
        // Where the languages are in the pages.
        SDocument asp(ReadTestFile(u"orders.asp"), u"asp");
        CPPUNIT_ASSERT_EQUAL(std::string("vbScript:Comment"),
                             Utf8(asp.pParser->GetRegion(CPoint(3, 3)).m_pRegion->region->getName()));
        CPPUNIT_ASSERT_EQUAL(std::string("vbScript:String"),
                             Utf8(asp.pParser->GetRegion(CPoint(40, 6)).m_pRegion->region->getName()));
        CPPUNIT_ASSERT_EQUAL(std::string("html:TagName"),
                             Utf8(asp.pParser->GetRegion(CPoint(2, 9)).m_pRegion->region->getName()));
        CPPUNIT_ASSERT_EQUAL(std::string("vbScript:Keyword"),
                             Utf8(asp.pParser->GetRegion(CPoint(1, 13)).m_pRegion->region->getName()));
        SDocument jsp(ReadTestFile(u"users.jsp"), u"jsp");
        CPPUNIT_ASSERT_EQUAL(std::string("html:Comment"),
                             Utf8(jsp.pParser->GetRegion(CPoint(6, 3)).m_pRegion->region->getName()));
        CPPUNIT_ASSERT_EQUAL(std::string("java:Keyword"),
                             Utf8(jsp.pParser->GetRegion(CPoint(3, 10)).m_pRegion->region->getName()));
        CPPUNIT_ASSERT_EQUAL(std::string("java:Comment"),
                             Utf8(jsp.pParser->GetRegion(CPoint(35, 10)).m_pRegion->region->getName()));
        SDocument php(ReadTestFile(u"shop.php"), u"php");
        CPPUNIT_ASSERT_EQUAL(std::string("css:Property"),
                             Utf8(php.pParser->GetRegion(CPoint(18, 10)).m_pRegion->region->getName()));
        CPPUNIT_ASSERT_EQUAL(std::string("jvScript:Keyword"),
                             Utf8(php.pParser->GetRegion(CPoint(3, 15)).m_pRegion->region->getName()));
        CPPUNIT_ASSERT_EQUAL(std::string("php:Variable"),
                             Utf8(php.pParser->GetRegion(CPoint(42, 21)).m_pRegion->region->getName()));
        CPPUNIT_ASSERT_EQUAL(std::string("php:String"),
                             Utf8(php.pParser->GetRegion(CPoint(3, 35)).m_pRegion->region->getName()));
        CPPUNIT_ASSERT_EQUAL(std::string("html:TagName"),
                             Utf8(php.pParser->GetRegion(CPoint(3, 37)).m_pRegion->region->getName()));
    }
    void BadInputTest()
    {
        std::mt19937 random(7);
        CString csJunk;
        for (int i = 0; i < 20000; ++i)
            csJunk += static_cast<char16_t>(
                random() % 8 == 0 ? random() % 0x10000 : u" <>\"'/*!-?%&;{}()[]=\\\r\nab"[random() % 26]);
        CString csLong(u'x', 2000000);
        csLong.SetAt(1000, u'<');
        csLong.SetAt(1001, u'a');
        const CString aTexts[] = {csJunk,
                                  u"<!-- never closed\r\n<b>",
                                  u"<script>\r\n/* open\r\n\"str",
                                  u"<a href=\"x\r\ny",
                                  u"<?php \"open string\r\n<?php",
                                  u"<%= \"",
                                  csLong,
                                  CString(u'<', 5000),
                                  u"<" + CString(u'a', 3000) + u" " + CString(u'b', 3000) + u"='",
                                  CString(u'{', 3000)};
        for (const auto& csText : aTexts)
            for (const char16_t* szType : {u"html", u"php", u"asp", u"jsp", u"xml", u"perl", u"css"})
            {
                SDocument doc(csText, szType);
                const int nLines = doc.storage.GetLinesCount();
                for (int nLine = 0; nLine < nLines; ++nLine)
                    CPPUNIT_ASSERT_EQUAL(std::string(), CheckLineRecords(*doc.pParser, doc.storage, nLine));
                for (int k = 0; k < 20; ++k)
                {
                    const int y = static_cast<int>(random() % static_cast<unsigned>(nLines));
                    const CPoint pt(static_cast<int>(random() % static_cast<unsigned>(
                                                                    doc.storage.GetLine(y).GetLength() + 2)),
                                    y);
                    CPoint ptStart, ptEnd;
                    (void)doc.pParser->GetPath(pt);
                    (void)doc.pParser->GetHtmlSyntaxPath(pt);
                    (void)doc.pParser->FindAroundPair(pt);
                    (void)doc.pParser->FindAroundTagBracket(pt, ptStart, ptEnd);
                    (void)doc.pParser->GetFuncInfo(pt);
                }
                doc.pParser->AssertValid();
            }
    }
    void PaintTest()
    {
        SDocument doc(u"<p>\r\n<b class=\"x\">if</b>\r\n<script>if (a) {}</script>", u"html");
        CRecordingColors colors;
        doc.pParser->PaintLines(&colors, 1, 1);
        CPPUNIT_ASSERT(!colors.m_aCalls.empty());
        int nCovered = 0;
        for (const auto& call : colors.m_aCalls)
        {
            // Only the line asked for is painted, piece after piece, each record marked as painted.
            CPPUNIT_ASSERT_EQUAL(1, call.ptStart.y);
            CPPUNIT_ASSERT_EQUAL(nCovered, call.ptStart.x);
            nCovered = call.ptEnd.x;
            CPPUNIT_ASSERT(!(call.info == ITextColorBuffer::COLOR_INFO()));
            CPPUNIT_ASSERT_EQUAL(static_cast<int>(LANG_HTML), CParserSettings::LanguageOf(call.info));
            // Page text leaves the background to the selection and the current line.
            CPPUNIT_ASSERT_EQUAL(DWORD(0), call.info.dwWord[CTextDrawer::CW_USE_BK]);
        }
        CPPUNIT_ASSERT_EQUAL(doc.storage.GetLine(1).GetLength(), nCovered);
        colors.ClearTextColors();
        doc.pParser->PaintLines(&colors, 2, 10);
        const auto it = std::find_if(colors.m_aCalls.begin(), colors.m_aCalls.end(),
                                     [](const CRecordingColors::SCall& call) { return call.ptStart.x == 8; });
        CPPUNIT_ASSERT(it != colors.m_aCalls.end());
        CPPUNIT_ASSERT_EQUAL(static_cast<int>(RK_KEYWORD), CParserSettings::KindOf(it->info));
        CPPUNIT_ASSERT_EQUAL(DWORD(1), it->info.dwWord[CTextDrawer::CW_USE_TEXT]);
        CPPUNIT_ASSERT_EQUAL(static_cast<DWORD>(0xff0000), it->info.dwWord[CTextDrawer::CW_TEXT]);
        CPPUNIT_ASSERT(it->info.dwWord[CTextDrawer::CW_STYLE] & CTextDrawer::CS_BOLD);
        // Server code is tinted: its background overrules the table's; kind and language survive.
        const auto php = CParserSettings::MakeColorInfo(RK_COMMENT, LANG_PHP, 0x1234567);
        CPPUNIT_ASSERT_EQUAL(DWORD(1), php.dwWord[CTextDrawer::CW_USE_BK]);
        CPPUNIT_ASSERT_EQUAL(static_cast<DWORD>(CParserSettings::BackgroundOf(LANG_PHP)),
                             php.dwWord[CTextDrawer::CW_BK]);
        CPPUNIT_ASSERT_EQUAL(static_cast<DWORD>(0x234567), php.dwWord[CTextDrawer::CW_TEXT]);
        CPPUNIT_ASSERT_EQUAL(static_cast<DWORD>(CTextDrawer::CS_ITALIC),
                             php.dwWord[CTextDrawer::CW_STYLE] & 0xff);
        CPPUNIT_ASSERT_EQUAL(static_cast<int>(RK_COMMENT), CParserSettings::KindOf(php));
        CPPUNIT_ASSERT_EQUAL(static_cast<int>(LANG_PHP), CParserSettings::LanguageOf(php));
    }
    void FoldRegionsTest()
    {
        SDocument doc(
            u"<div>\r\n<script>\r\nfunction f() {\r\n}\r\n/* a\r\nb */\r\n</script>\r\n</div><p>\r\n</p>",
            u"html");
        std::vector<SFoldRegion> aRegions;
        doc.pParser->GetFoldRegions(aRegions);
        const struct
        {
            CPoint ptStart, ptEnd;
        } aExpected[] = {
            {{0, 0}, {6, 7}}, {{0, 1}, {9, 6}}, {{13, 2}, {1, 3}}, {{0, 4}, {4, 5}}, {{6, 7}, {4, 8}}};
        CPPUNIT_ASSERT_EQUAL(std::size(aExpected), aRegions.size());
        for (std::size_t k = 0; k < aRegions.size(); ++k)
        {
            CPPUNIT_ASSERT_MESSAGE(std::to_string(k), aExpected[k].ptStart == aRegions[k].m_ptStart);
            CPPUNIT_ASSERT_MESSAGE(std::to_string(k), aExpected[k].ptEnd == aRegions[k].m_ptEnd);
        }
        CPPUNIT_ASSERT_EQUAL(
            std::string("element block comment"),
            Utf8(aRegions[1].m_csType + u" " + aRegions[2].m_csType + u" " + aRegions[3].m_csType));
    }
    void TextBufferTest()
    {
        // Over a text buffer, edits and their undo reach the parser as changes of lines.
        CTextBuffer buffer;
        buffer.Create();
        CPoint ptEnd;
        buffer.InsertText(CPoint(0, 0), u"<p>\r\n<script>\r\nvar a;\r\n</script>", ptEnd);
        CTextBufferLinesStorage storage(&buffer);
        auto pParser = CParserFactory::Instance()->CreateParser(&storage, u"html");
        CPPUNIT_ASSERT_EQUAL(std::string("jvScript:Keyword"),
                             Utf8(pParser->GetRegion(CPoint(1, 2)).m_pRegion->region->getName()));
        buffer.InsertText(CPoint(0, 1), u"<!--", ptEnd);
        CPPUNIT_ASSERT_EQUAL(std::string("html:Comment"),
                             Utf8(pParser->GetRegion(CPoint(1, 2)).m_pRegion->region->getName()));
        buffer.GetUndoRedoBuffer()->Undo();
        CPPUNIT_ASSERT_EQUAL(std::string("jvScript:Keyword"),
                             Utf8(pParser->GetRegion(CPoint(1, 2)).m_pRegion->region->getName()));
        buffer.DeleteText(CPoint(3, 0), CPoint(0, 2));
        CPPUNIT_ASSERT_EQUAL(std::string("html:Text"),
                             Utf8(pParser->GetRegion(CPoint(5, 0)).m_pRegion->region->getName()));
        CPPUNIT_ASSERT_EQUAL(2, storage.GetLinesCount());
        // The elements over lines become blocks of the buffer's outlining.
        buffer.InsertText(CPoint(0, 1), u"<div>\r\n<i>\r\n</i>\r\n</div>\r\n", ptEnd);
        pParser->FillOutlining(buffer.GetOutliningBuffer());
        COutliningArray aBlocks;
        buffer.GetOutliningBuffer()->GetBlocksInRange(CPoint(0, 0), CPoint(0, 6), aBlocks);
        CPPUNIT_ASSERT_EQUAL(2, aBlocks.GetSize());
        CPPUNIT_ASSERT(aBlocks[0]->GetStart() == CPoint(0, 1));
        CPPUNIT_ASSERT(aBlocks[1]->GetStart() == CPoint(0, 2));
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CParserTest, "All Tests");
