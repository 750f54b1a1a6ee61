// The table of file types: the shipped tables, lookups by name, extension and menu text, the lists
// for dialogs, and tables that are missing or malformed.
#include "Utils/CFileTypes.h"
#include "Platform/AppFolders.h"
#include "Platform/CTempFolder.h"
#include "Platform/ExplodeString.h"

#include <cppunit/extensions/HelperMacros.h>
#include <filesystem>
#include <fstream>

class CFileTypesTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CFileTypesTest);
    CPPUNIT_TEST(GetExtArrayTest);
    CPPUNIT_TEST(GetFilterTest);
    CPPUNIT_TEST(GetTypeNameTest);
    CPPUNIT_TEST(GetTypeDescriptionTest);
    CPPUNIT_TEST(GetImagePathTest);
    CPPUNIT_TEST(GetSetIconIndexTest);
    CPPUNIT_TEST(GetTypesCountTest);
    CPPUNIT_TEST(LoadTest);
    CPPUNIT_TEST(GetFileTypeTest);
    CPPUNIT_TEST(GetFileTypeByTypeNameTest);
    CPPUNIT_TEST(GetFileTypeByExt);
    CPPUNIT_TEST(GetFilterComboListTest);
    CPPUNIT_TEST(GetTypeNamesComboListTest);
    CPPUNIT_TEST_SUITE_END();

    CFileTypes m_types;

    // The pieces of csList between "|" that aren't empty.
    static int CountTokens(const CString& csList)
    {
        CStringArray aParts;
        ExplodeString(csList, u"|", aParts);
        int nTokens = 0;
        for (int i = 0; i < aParts.GetSize(); ++i)
            nTokens += aParts[i].IsEmpty() ? 0 : 1;
        return nTokens;
    }

public:
    void setUp() override { CPPUNIT_ASSERT(m_types.Load()); }

    void GetExtArrayTest()
    {
        const struct
        {
            const char16_t* szFilter;
            const char16_t* szExts;
        } aCases[] = {{u"*.cpp; *.c; *.h; *.hpp; *.cxx; *.hxx", u"cpp|c|h|hpp|cxx|hxx"},
                      {u"*.css", u"css"},
                      {u"*.*", u""},
                      {u"", u""},
                      {u" ;; *.tar.gz;*.js", u"tar|js"}};
        for (const auto& test : aCases)
        {
            CStringArray aExt;
            aExt.Add(u"old");
            CFileType(u"t", u"&T", test.szFilter, u"", false, false).GetExtArray(aExt);
            CString csJoined;
            for (int i = 0; i < aExt.GetSize(); ++i)
                csJoined += (i ? u"|" : u"") + aExt[i];
            CPPUNIT_ASSERT(csJoined == test.szExts);
        }
    }

    void GetFilterTest()
    {
        CPPUNIT_ASSERT(m_types.GetFileType(2)->GetFilter() == u"*.css");
        CStringArray aFilters;
        m_types.GetFilterArray(aFilters, false);
        CPPUNIT_ASSERT_EQUAL(18, aFilters.GetSize());
        CPPUNIT_ASSERT(aFilters[1] == u"*.html; *.htm");
        m_types.GetFilterArray(aFilters, true);
        CPPUNIT_ASSERT_EQUAL(18 + m_types.GetTypesCount(true), aFilters.GetSize());
    }

    void GetTypeNameTest()
    {
        CPPUNIT_ASSERT(m_types.GetFileType(0)->GetTypeName() == u"text");
        CPPUNIT_ASSERT(m_types.GetFileType(17)->GetTypeName() == u"none");
        CPPUNIT_ASSERT(m_types.GetFileType(0)->IsDefault());
        CPPUNIT_ASSERT(!m_types.GetFileType(1)->IsDefault());
    }

    void GetTypeDescriptionTest()
    {
        CPPUNIT_ASSERT(m_types.GetFileType(1)->GetTypeDescription(false) == u"&HTML");
        CPPUNIT_ASSERT(m_types.GetFileType(1)->GetTypeDescription(true) == u"HTML");
        CPPUNIT_ASSERT(m_types.GetFileTypeByDescription(u"&HTML", false) == m_types.GetFileType(1));
        CPPUNIT_ASSERT(m_types.GetFileTypeByDescription(u"H&TML", true) == m_types.GetFileType(1));
        CPPUNIT_ASSERT(m_types.GetFileTypeByDescription(u"HTML", false)->GetTypeName() == u"none");
    }

    void GetImagePathTest()
    {
        CPPUNIT_ASSERT(m_types.GetFileType(3)->GetImagePath() == u"Images/jscript.bmp");
        // Every image the table names is shipped beside it.
        for (int i = 0; i < m_types.GetTypesCount(false) + m_types.GetTypesCount(true); ++i)
            CPPUNIT_ASSERT(std::filesystem::is_regular_file(
                (GetModuleFolder() + u"FileTypes/" + m_types.GetFileType(i)->GetImagePath()).ToUtf8()));
    }

    void GetSetIconIndexTest()
    {
        CFileType type;
        CPPUNIT_ASSERT_EQUAL(-1, type.GetIconIndex());
        type.SetIconIndex(2);
        CPPUNIT_ASSERT_EQUAL(2, type.GetIconIndex());
    }

    void GetTypesCountTest()
    {
        CFileTypes types;
        CPPUNIT_ASSERT_EQUAL(0, types.GetTypesCount(false));
        CPPUNIT_ASSERT(types.Load());
        CPPUNIT_ASSERT_EQUAL(18, types.GetTypesCount(false));
        CPPUNIT_ASSERT(types.GetTypesCount(true) > 0);
        CPPUNIT_ASSERT(types.GetFileType(18)->IsExtended());
        // Loading again replaces the entries.
        CPPUNIT_ASSERT(types.Load());
        CPPUNIT_ASSERT_EQUAL(18, types.GetTypesCount(false));
    }

    void LoadTest()
    {
        namespace fs = std::filesystem;
        const CTempFolder temp("CFileTypesTest");
        const fs::path& dir = temp.GetPath();
        const CString csDir = CString::FromUtf8(dir.string() + "/");
        const auto write = [&dir](const char* szName, const char* szText) { std::ofstream(dir / szName) << szText; };

        CFileTypes types;
        CPPUNIT_ASSERT(!types.LoadFrom(csDir));
        CPPUNIT_ASSERT_EQUAL(0, types.GetTypesCount(false));
        CPPUNIT_ASSERT(types.GetFileTypeByExt(u"cpp")->GetTypeName() == u"none");

        // The extended table is optional, and may be broken.
        write("filetypes.xml", "<filetypes><filetype a='x' b='&amp;X' c='*.x' d='' e='1'/></filetypes>");
        write("extendedtypes.xml", "<filetypes><filetype");
        CPPUNIT_ASSERT(types.LoadFrom(csDir));
        CPPUNIT_ASSERT_EQUAL(1, types.GetTypesCount(false));
        CPPUNIT_ASSERT_EQUAL(0, types.GetTypesCount(true));
        CPPUNIT_ASSERT(types.GetFileType(0)->GetTypeDescription(false) == u"&X");
        CPPUNIT_ASSERT(types.GetFileType(0)->IsDefault());

        // Attributes count by position: a missing one is an error of the table.
        write("filetypes.xml", "<filetypes><filetype a='x' b='X' c='*.x' d=''/></filetypes>");
        CPPUNIT_ASSERT_THROW(types.LoadFrom(csDir), CInvalidArgException);
        write("filetypes.xml", "<filetypes><filetype a='x' b='X' c='*.x' d='' e='0'/></wrong>");
        CPPUNIT_ASSERT(!types.LoadFrom(csDir));
        CPPUNIT_ASSERT_EQUAL(0, types.GetTypesCount(false));
        fs::remove_all(dir);
    }

    void GetFileTypeTest()
    {
        CPPUNIT_ASSERT(m_types.GetFileType(4)->GetTypeName() == u"php");
        CPPUNIT_ASSERT_THROW(m_types.GetFileType(-1), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(m_types.GetFileType(m_types.GetTypesCount(false) + m_types.GetTypesCount(true)),
                             CInvalidArgException);
        CPPUNIT_ASSERT(GetFileTypes()->GetFileTypeByTypeName(u"html")->GetFilter() == u"*.html; *.htm");
    }

    void GetFileTypeByTypeNameTest()
    {
        CPPUNIT_ASSERT(m_types.GetFileTypeByTypeName(u"sql")->GetTypeDescription(false) == u"S&QL");
        CPPUNIT_ASSERT(m_types.GetFileTypeByTypeName(u"Sql")->GetTypeDescription(false) == u"N&one");
        CPPUNIT_ASSERT(m_types.GetFileTypeByTypeName(u"ini")->IsExtended());
    }

    void GetFileTypeByExt()
    {
        const struct
        {
            const char16_t* szExt;
            const char16_t* szDescription;
        } aCases[] = {{u"cpp", u"&C/C++"}, {u"*.cpp", u"&C/C++"}, {u".cpp", u"&C/C++"}, {u"Cpp", u"&C/C++"},
                      {u" \t*.HXX", u"&C/C++"}, {u"pp", u"N&one"}, {u"", u"N&one"}, {u" ", u"N&one"},
                      {u"htm", u"&HTML"}, {u"php3", u"&PHP"}, {u"php", u"&PHP"}, {u"cmd", u"&Batch"}};
        for (const auto& test : aCases)
            CPPUNIT_ASSERT(m_types.GetFileTypeByExt(test.szExt)->GetTypeDescription(false) == test.szDescription);
    }

    void GetFilterComboListTest()
    {
        const CString csList = m_types.GetFilterComboList(false);
        CPPUNIT_ASSERT_EQUAL(36, CountTokens(csList));
        CPPUNIT_ASSERT_EQUAL(0, csList.Find(u"All files (*.*)|*.*|"));
        CPPUNIT_ASSERT(csList.Find(u"|HTML files (*.html; *.htm)|*.html; *.htm|") > 0);
        CPPUNIT_ASSERT(csList.Find(u"None") < 0);
        CPPUNIT_ASSERT(csList.Right(2) == u"||");
        const CString csExtended = m_types.GetFilterComboList(true);
        CPPUNIT_ASSERT_EQUAL(2 + 2 * m_types.GetTypesCount(true), CountTokens(csExtended));
    }

    void GetTypeNamesComboListTest()
    {
        const CString csList = m_types.GetTypeNamesComboList(false);
        CPPUNIT_ASSERT_EQUAL(18, CountTokens(csList));
        CPPUNIT_ASSERT_EQUAL(0, csList.Find(u"text|html|css|"));
        CPPUNIT_ASSERT(csList.Right(5) == u"none|");
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CFileTypesTest, "All Tests");
