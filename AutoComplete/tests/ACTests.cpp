// The completion service: sorted words of a request, a typed prefix's word, the characters that
// open and close the list, the image strip, the information tip, and the shipped data.
#include "AutoComplete/CACXMLParser.h"
#include "AutoComplete/tests/ACTestData.h"

#include <vector>

using namespace ACTestData;

class ACTests : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(ACTests);
    CPPUNIT_TEST(GetCompleteDataTest1);
    CPPUNIT_TEST(GetWordIndex1);
    CPPUNIT_TEST(GetKeysDataTest);
    CPPUNIT_TEST(GetKeysDataTest1);
    CPPUNIT_TEST(ParseRootTest);
    CPPUNIT_TEST(GetInfoTest1);
    // The registered cases keep their order above this line; further cases go below.
    CPPUNIT_TEST(ShippedDataTest);
    CPPUNIT_TEST_SUITE_END();

    // The names of the words, in order, joined by " ".
    static CString Names(IACCompleteData* pData)
    {
        CString csNames;
        const IACCompleteData::CWords& aWords = pData->GetWords();
        for (int i = 0; i < aWords.GetSize(); ++i)
            csNames += (i ? u" " : u"") + aWords[i].m_csWordName;
        return csNames;
    }

    // Whether the words hold csName with the type csType.
    static bool HasWord(IACCompleteData* pData, const char16_t* szName, const char16_t* szType)
    {
        const IACCompleteData::CWords& aWords = pData->GetWords();
        for (int i = 0; i < aWords.GetSize(); ++i)
        {
            if (aWords[i].m_csWordName == szName && aWords[i].m_csWordType == szType)
                return true;
        }
        return false;
    }

    static bool IsSorted(IACCompleteData* pData)
    {
        const IACCompleteData::CWords& aWords = pData->GetWords();
        for (int i = 0; i + 1 < aWords.GetSize(); ++i)
        {
            if (aWords[i].m_csWordName.CompareNoCase(aWords[i + 1].m_csWordName.Str()) > 0)
                return false;
        }
        return true;
    }

public:
    void GetCompleteDataTest1()
    {
        CTestSettings settings;
        CACXMLParser parser(&settings);
        IACCompleteData* pData = parser.GetCompleteData(Request({u"php"}, {}, u"function"));
        CPPUNIT_ASSERT_EQUAL(CString(u"array_map bad_icon str_replace strlen"), Names(pData));
        const IACCompleteData::SACWord& word = pData->GetWords()[2];
        CPPUNIT_ASSERT(word.m_csWordType == u"function");
        CPPUNIT_ASSERT_EQUAL(4, word.m_nIconIndex);
        CPPUNIT_ASSERT(word.m_csDescription == u"Replaces all occurrences of the search string");
        CPPUNIT_ASSERT(word.m_csInfo == u"string functions");
        // An icon index that isn't a number is 0; the word stays.
        CPPUNIT_ASSERT_EQUAL(0, pData->GetWords()[1].m_nIconIndex);

        // All words, sorted without regard to case; the data is the parser's and follows it.
        CPPUNIT_ASSERT(parser.GetCompleteData(Request({u"php"}, {}, u"")) == pData);
        CPPUNIT_ASSERT_EQUAL(CString(u"array_map bad_icon echo Exception str_replace strlen"), Names(pData));

        // Each select type gives its own words, down the path of keys.
        pData = parser.GetCompleteData(Request({u"html"}, {}, u"tag"));
        CPPUNIT_ASSERT_EQUAL(CString(u"a body img input"), Names(pData));
        pData = parser.GetCompleteData(Request({u"html"}, {{u"input", u"tag"}}, u"attr"));
        CPPUNIT_ASSERT_EQUAL(CString(u"type Value"), Names(pData));
        pData =
            parser.GetCompleteData(Request({u"html"}, {{u"input", u"tag"}, {u"type", u"attr"}}, u"value"));
        CPPUNIT_ASSERT(Names(pData) == u"checkbox text");
        CPPUNIT_ASSERT(HasWord(pData, u"text", u"value"));
        pData = parser.GetCompleteData(Request({u"php", u"html"}, {}, u""));
        CPPUNIT_ASSERT_EQUAL(10, pData->GetWords().GetSize());
        CPPUNIT_ASSERT(IsSorted(pData));
        // Unknown schemes give no words.
        CPPUNIT_ASSERT_EQUAL(0, parser.GetCompleteData(Request({u"perl"}, {}, u""))->GetWords().GetSize());
    }

    void GetWordIndex1()
    {
        CACCompleteData data;
        for (const char16_t* szName :
             {u"a", u"b", u"c", u"v", u"va", u"vb", u"volume", u"window", u"xxx", u"xxxx"})
            data.Words().Add({szName, u"", u"", u"", 0});
        struct
        {
            const char16_t* szText;
            int nIndex;
            BOOL bAmbDef;
        } const aCases[] = {{u"", -1, FALSE},   {u"y", 9, FALSE},   {u"Y", 9, FALSE},  {u"w", 7, TRUE},
                            {u"wl", 8, FALSE},  {u"v", 3, FALSE},   {u"vol", 6, TRUE}, {u"x", 8, FALSE},
                            {u"xxx", 8, FALSE}, {u"xxxx", 9, TRUE}, {u"VOL", 6, TRUE}, {u"0", 0, FALSE}};
        for (const auto& test : aCases)
        {
            BOOL bAmbDef = !test.bAmbDef;
            CPPUNIT_ASSERT_EQUAL(test.nIndex, data.GetWordIndex(test.szText, bAmbDef));
            CPPUNIT_ASSERT_EQUAL(test.bAmbDef, bAmbDef);
        }
        // No words, no index.
        CACCompleteData empty;
        BOOL bAmbDef = TRUE;
        CPPUNIT_ASSERT_EQUAL(-1, empty.GetWordIndex(u"a", bAmbDef));
        CPPUNIT_ASSERT(!bAmbDef);
    }

    void GetKeysDataTest()
    {
        // The characters of the request's select type open and end the list.
        CTestSettings settings;
        CACXMLParser parser(&settings);
        const SACInputData tags = Request({u"html"}, {}, u"tag");
        const SACInputData attrs = Request({u"html"}, {{u"a", u"tag"}}, u"attr");
        struct
        {
            const SACInputData* pRequest;
            const char16_t* szChar;
            BOOL bFirst;
            BOOL bComplete;
        } const aCases[] = {{&tags, u"<", TRUE, FALSE},   {&tags, u">", FALSE, TRUE},
                            {&tags, u" ", FALSE, TRUE},   {&tags, u"a", FALSE, FALSE},
                            {&attrs, u"=", FALSE, TRUE},  {&attrs, u" ", TRUE, TRUE},
                            {&attrs, u"/", FALSE, FALSE}, {&tags, u"", FALSE, FALSE}};
        for (const auto& test : aCases)
        {
            CPPUNIT_ASSERT_EQUAL(test.bFirst, parser.IsCompleteFirstChar(*test.pRequest, test.szChar));
            CPPUNIT_ASSERT_EQUAL(test.bComplete, parser.IsCompleteChar(*test.pRequest, test.szChar));
        }
        // Without a select type, the first entry of each kind.
        const SACInputData any = Request({u"php"}, {}, u"");
        CPPUNIT_ASSERT(parser.IsCompleteChar(any, u"("));
        CPPUNIT_ASSERT(parser.IsCompleteFirstChar(any, u"_"));
        CPPUNIT_ASSERT_EQUAL(CString(u"[\\s(;]"), parser.GetCompleteChars());
    }

    void GetKeysDataTest1()
    {
        CTestSettings settings;
        CACXMLParser parser(&settings);
        // Any type's complete characters, as alternatives that end in an empty one.
        CPPUNIT_ASSERT(parser.IsAnyCompleteChar(u"php", u"("));
        CPPUNIT_ASSERT_EQUAL(CString(u"[\\s(;]|[\\s;]|"), parser.GetAllCompleteChars());
        CPPUNIT_ASSERT(parser.IsAnyCompleteChar(u"php", u";"));
        CPPUNIT_ASSERT(!parser.IsAnyCompleteChar(u"php", u"a"));
        CPPUNIT_ASSERT(parser.IsAnyCompleteChar(u"html", u"="));
        CPPUNIT_ASSERT(!parser.IsAnyCompleteChar(u"html", u"("));
        CPPUNIT_ASSERT(!parser.IsAnyCompleteChar(u"perl", u" "));
        // Tip triggers.
        CPPUNIT_ASSERT_EQUAL(CString(u"(,"), parser.GetTTTriggerChars(Request({u"php"}, {}, u"function")));
        CPPUNIT_ASSERT(parser.GetTTTriggerChars(Request({u"html"}, {}, u"tag")).IsEmpty());
    }

    void ParseRootTest()
    {
        CTestSettings settings;
        CACXMLParser parser(&settings);
        COLORREF crMask = 0;
        IACCompleteData* pData = parser.GetCompleteData(Request({u"php"}, {}, u"function"));
        const CBitmap* pBitmap = pData->GetBitmap(crMask);
        CPPUNIT_ASSERT(pBitmap);
        CPPUNIT_ASSERT_EQUAL(16, pBitmap->GetHeight());
        CPPUNIT_ASSERT_EQUAL(0, pBitmap->GetWidth() % 16);
        CPPUNIT_ASSERT_EQUAL(COLORREF(0xFF00FF), crMask);
        // The strip's background is the mask colour; the cells are drawn over it.
        CPPUNIT_ASSERT_EQUAL(COLORREF(0xFF00FF), pBitmap->GetPixel(0, 0));
        CPPUNIT_ASSERT(pBitmap->GetPixel(8, 8) != 0xFF00FF);
        // "255,0,255" is read as a number first, so the mask is 255.
        pData = parser.GetCompleteData(Request({u"html"}, {}, u"tag"));
        CPPUNIT_ASSERT(pData->GetBitmap(crMask));
        CPPUNIT_ASSERT_EQUAL(COLORREF(255), crMask);

        struct
        {
            const char16_t* szMask;
            COLORREF crMask;
        } const aMasks[] = {{u"0xFF00FF", 0xFF00FF},
                            {u"0x00ff00", 0x00FF00},
                            {u"255,0,255", 255},
                            {u"junk", 0},
                            {u"", 0},
                            {u"16", 16}};
        for (const auto& test : aMasks)
            CPPUNIT_ASSERT_EQUAL(test.crMask, CACXMLParser::ParseColorMask(test.szMask));

        // An image that doesn't load leaves the list without icons.
        CBitmap bitmap;
        CPPUNIT_ASSERT(!bitmap.LoadFromFile(File(u"php.xml")));
        CPPUNIT_ASSERT(bitmap.IsNull());
        CPPUNIT_ASSERT(!bitmap.LoadFromFile(File(u"nosuchimage.bmp")));
        CPPUNIT_ASSERT(bitmap.LoadFromFile(u"..\\AutoComplete\\AC\\acimages.bmp"));
        CPPUNIT_ASSERT_EQUAL(16, bitmap.GetHeight());
    }

    void GetInfoTest1()
    {
        CTestSettings settings;
        CACXMLParser parser(&settings);
        const SACInputData inputData = Request({u"php"}, {{u"str_replace", u"function"}}, u"");
        CString csInfo = parser.GetInfo(inputData, 2);
        CPPUNIT_ASSERT(csInfo.Find(u"str_replace(array|string $search, array|string $replace, "
                                   u"<b>array|string $subject</b>, &amp;$count = null)<br>&nbsp;Replaces") >
                       0);
        CPPUNIT_ASSERT(csInfo.Find(u"<br/>") < 0);
        CPPUNIT_ASSERT(csInfo.Find(u"<nbsp/>") < 0);
        // Another parameter is another text; the same one comes from the cache.
        CPPUNIT_ASSERT(parser.GetInfo(inputData, 0).Find(u"(<b>array|string $search</b>,") > 0);
        CPPUNIT_ASSERT(parser.GetInfo(inputData, 0).Find(u"(<b>array|string $search</b>,") > 0);
        // A word that isn't in the word file has no information.
        CPPUNIT_ASSERT(
            parser.GetInfo(Request({u"php"}, {{u"nosuchfunction", u"function"}}, u""), 0).IsEmpty());
        CPPUNIT_ASSERT(parser.GetInfo(Request({u"php"}, {{u"strlen", u"class"}}, u""), 0).IsEmpty());
        CPPUNIT_ASSERT(
            parser.GetInfo(Request({u"php"}, {{u"strlen", u""}}, u""), 0).Find(u"<b>string $string</b>") < 0);
        // The word lists are as before.
        CPPUNIT_ASSERT_EQUAL(CString(u"echo"),
                             Names(parser.GetCompleteData(Request({u"php"}, {}, u"keyword"))));
        CPPUNIT_ASSERT(parser.IsCompleteChar(Request({u"php"}, {}, u"keyword"), u";"));
    }

    void ShippedDataTest()
    {
        // The catalogue beside the program, as a user gets it.
        CACSettings settings;
        settings.Load(nullptr);
        CACXMLParser parser(&settings);
        const SACInputData tags = Request({u"html"}, {}, u"tag");
        IACCompleteData* pData = parser.GetCompleteData(tags);
        CPPUNIT_ASSERT(pData->GetWords().GetSize() > 100);
        CPPUNIT_ASSERT(IsSorted(pData));
        for (const char16_t* szTag : {u"a", u"div", u"input", u"section", u"template", u"video", u"dialog"})
            CPPUNIT_ASSERT(HasWord(pData, szTag, u"tag"));
        CPPUNIT_ASSERT(!HasWord(pData, u"*", u"tag"));
        COLORREF crMask = 0;
        CPPUNIT_ASSERT(pData->GetBitmap(crMask));
        CPPUNIT_ASSERT(crMask == 0xFF00FF);
        CPPUNIT_ASSERT(parser.IsCompleteFirstChar(tags, u"<"));

        // An element's own attributes, the global ones and the event handlers; enumerated values.
        pData = parser.GetCompleteData(Request({u"html"}, {{u"INPUT", u"tag"}}, u""));
        for (const char16_t* szAttr : {u"type", u"name", u"placeholder", u"class", u"id", u"style"})
            CPPUNIT_ASSERT(HasWord(pData, szAttr, u"attr"));
        CPPUNIT_ASSERT(HasWord(pData, u"onclick", u"event"));
        pData =
            parser.GetCompleteData(Request({u"html"}, {{u"input", u"tag"}, {u"type", u"attr"}}, u"value"));
        for (const char16_t* szValue : {u"checkbox", u"email", u"password", u"submit", u"date"})
            CPPUNIT_ASSERT(HasWord(pData, szValue, u"value"));
        pData = parser.GetCompleteData(Request({u"html"}, {{u"p", u"tag"}, {u"dir", u"attr"}}, u"value"));
        CPPUNIT_ASSERT_EQUAL(CString(u"auto ltr rtl"), Names(pData));

        // CSS properties with their keywords, colours from the shared set.
        pData = parser.GetCompleteData(Request({u"css"}, {{u"display", u"property"}}, u"value"));
        for (const char16_t* szValue : {u"flex", u"grid", u"block", u"none", u"inline-block", u"inherit"})
            CPPUNIT_ASSERT(HasWord(pData, szValue, u"value"));
        pData = parser.GetCompleteData(Request({u"css"}, {{u"color", u"property"}}, u"value"));
        CPPUNIT_ASSERT(HasWord(pData, u"rebeccapurple", u"value"));
        CPPUNIT_ASSERT(HasWord(pData, u"currentcolor", u"value"));
        pData = parser.GetCompleteData(Request({u"css"}, {}, u"property"));
        CPPUNIT_ASSERT(HasWord(pData, u"grid-template-columns", u"property"));
        CPPUNIT_ASSERT(pData->GetWords().GetSize() > 300);

        // JavaScript's standard objects with their members.
        pData = parser.GetCompleteData(Request({u"jvScript"}, {}, u""));
        for (const char16_t* szName : {u"Array", u"Promise", u"JSON", u"parseInt", u"document", u"console"})
            CPPUNIT_ASSERT(HasWord(pData, szName, u"class") || HasWord(pData, szName, u"object") ||
                           HasWord(pData, szName, u"function"));
        pData = parser.GetCompleteData(Request({u"jvScript"}, {{u"Math", u"object"}}, u"method"));
        CPPUNIT_ASSERT(HasWord(pData, u"floor", u"method"));
        CPPUNIT_ASSERT(!HasWord(pData, u"PI", u"property"));
        pData = parser.GetCompleteData(
            Request({u"jvScript"}, {{u"Array", u"class"}, {u"prototype", u"property"}}, u""));
        CPPUNIT_ASSERT(HasWord(pData, u"push", u"method"));
        CPPUNIT_ASSERT(HasWord(pData, u"map", u"method"));

        // PHP's functions with their signatures.
        pData = parser.GetCompleteData(Request({u"php"}, {}, u"function"));
        CPPUNIT_ASSERT(pData->GetWords().GetSize() > 1000);
        BOOL bAmbDef = FALSE;
        const int nIndex = pData->GetWordIndex(u"str_replace", bAmbDef);
        CPPUNIT_ASSERT(pData->GetWords()[nIndex].m_csWordName == u"str_replace");
        CPPUNIT_ASSERT(bAmbDef);
        CPPUNIT_ASSERT(pData->GetWords()[nIndex].m_csDescription.Find(u"str_replace(array|string $search") ==
                       0);
        CPPUNIT_ASSERT(parser.GetInfo(Request({u"php"}, {{u"str_replace", u"function"}}, u""), 1)
                           .Find(u"<b>array|string $replace</b>") > 0);
        // The settings read along with the information are those of the word lists.
        CPPUNIT_ASSERT(parser.IsAnyCompleteChar(u"php", u"("));
        CPPUNIT_ASSERT(parser.GetTTTriggerChars(Request({u"php"}, {}, u"function")).Find(u'(') >= 0);

        // The browser's objects with the members of their interfaces and the methods' signatures.
        const SACInputData document = Request({u"jvScript"}, {{u"document", u"object"}}, u"method");
        pData = parser.GetCompleteData(document);
        CPPUNIT_ASSERT(HasWord(pData, u"getElementById", u"method"));
        CPPUNIT_ASSERT(HasWord(pData, u"querySelectorAll", u"method"));
        CPPUNIT_ASSERT(
            parser
                .GetInfo(
                    Request({u"jvScript"}, {{u"document", u"object"}, {u"createElement", u"method"}}, u""), 0)
                .Find(u"createElement(<b>DOMString localName</b>") > 0);
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(ACTests, "All Tests");
