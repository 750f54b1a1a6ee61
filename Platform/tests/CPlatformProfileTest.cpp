// The profile store: values read back by a fresh store, broken files, the folder of a root, and
// the application object's operations, in a fresh temporary folder.
#include "Platform/CProfileStore.h"
#include "Platform/CTempFolder.h"
#include "Platform/CWinApp.h"

#include <cppunit/extensions/HelperMacros.h>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace
{
CString ToCString(const fs::path& path)
{
    return CString::FromUtf8(path.string());
}

// Sets an environment variable for the life of the object and puts the old value back.
class CScopedEnv
{
public:
    CScopedEnv(const char* szName, const std::string& strValue) : m_strName(szName)
    {
        if (const char* szOld = std::getenv(szName))
            m_strOld = szOld;
        setenv(szName, strValue.c_str(), 1);
    }
    CScopedEnv(const CScopedEnv&) = delete;
    CScopedEnv& operator=(const CScopedEnv&) = delete;
    ~CScopedEnv()
    {
        m_strOld ? setenv(m_strName.c_str(), m_strOld->c_str(), 1) : unsetenv(m_strName.c_str());
    }

private:
    std::string m_strName;
    std::optional<std::string> m_strOld;
};
} // namespace

class CPlatformProfileTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CPlatformProfileTest);
    CPPUNIT_TEST(WriteReadBackTest);
    CPPUNIT_TEST(CorruptFileTest);
    CPPUNIT_TEST(RootFolderTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void WriteReadBackTest()
    {
        // The folders of the file don't exist yet.
        const fs::path path = m_dir / "a" / "b" / "profile.ini";
        const CString csText = u"Grüße, мир \U0001D11E\n  leading blanks, a \\ and a [bracket]";
        const std::vector<BYTE> aBinary = {0x00, 0xFF, 0x00, 0x7F, 0x80, 0x0A, 0xFF, 0x00};
        {
            auto pStore = CProfileStore::FromFile(ToCString(path));
            CPPUNIT_ASSERT(pStore->WriteProfileInt(u"TextSettings", u"TabSize", -7));
            CPPUNIT_ASSERT(pStore->WriteProfileInt(u"TextSettings", u"Settings", 37000));
            CPPUNIT_ASSERT(pStore->WriteProfileString(u"TextSettings", u"DateLongFormat", csText));
            CPPUNIT_ASSERT(pStore->WriteProfileBinary(u"TextSettings", u"Font", aBinary.data(), 8));
            CPPUNIT_ASSERT(pStore->WriteProfileBinary(u"TextSettings", u"Empty", nullptr, 0));
            CPPUNIT_ASSERT(pStore->WriteProfileString(u"Autocomplete", u"ACPath", u"/x"));
            CPPUNIT_ASSERT(pStore->WriteProfileString(u"Autocomplete", u"Other", u"y"));
            // Names the file can't hold, and a null block, are refused.
            for (const auto& [szSection, szEntry] : {std::pair(u"Bad]", u"x"), std::pair(u"S", u"a=b"),
                                                     std::pair(u"S", u"#x"), std::pair(u"S\n", u"x")})
                CPPUNIT_ASSERT(!pStore->WriteProfileInt(szSection, szEntry, 1));
            CPPUNIT_ASSERT(!pStore->WriteProfileString(nullptr, u"x", u"1"));
            CPPUNIT_ASSERT(!pStore->WriteProfileBinary(u"S", u"x", nullptr, 3));
        }
        const auto pStore = CProfileStore::FromFile(ToCString(path));
        CProfileStore& store = *pStore;
        CPPUNIT_ASSERT_EQUAL(UINT(-7), store.GetProfileInt(u"TextSettings", u"TabSize", 4));
        CPPUNIT_ASSERT_EQUAL(UINT(37000), store.GetProfileInt(u"TextSettings", u"Settings", 0));
        CPPUNIT_ASSERT(store.GetProfileString(u"TextSettings", u"DateLongFormat", u"") == csText);
        std::vector<BYTE> aRead = {1, 2, 3};
        CPPUNIT_ASSERT(store.GetProfileBinary(u"TextSettings", u"Font", aRead));
        CPPUNIT_ASSERT(aRead == aBinary);
        CPPUNIT_ASSERT(store.GetProfileBinary(u"TextSettings", u"Empty", aRead));
        CPPUNIT_ASSERT(aRead.empty());

        // Missing entries and values of another form give the defaults.
        CPPUNIT_ASSERT_EQUAL(UINT(4), store.GetProfileInt(u"TextSettings", u"Missing", 4));
        CPPUNIT_ASSERT_EQUAL(UINT(-1), store.GetProfileInt(u"TextSettings", u"DateLongFormat", -1));
        CPPUNIT_ASSERT(store.GetProfileString(u"Nowhere", u"ACPath", u"def") == u"def");
        CPPUNIT_ASSERT(store.GetProfileString(u"Nowhere", u"ACPath").IsEmpty());
        aRead = {1};
        CPPUNIT_ASSERT(!store.GetProfileBinary(u"TextSettings", u"DateLongFormat", aRead));
        CPPUNIT_ASSERT(aRead.empty());

        // A null value removes the entry, a null entry the section.
        CPPUNIT_ASSERT(store.WriteProfileString(u"Autocomplete", u"ACPath", nullptr));
        CPPUNIT_ASSERT(store.GetProfileString(u"Autocomplete", u"ACPath", u"gone") == u"gone");
        CPPUNIT_ASSERT(store.GetProfileString(u"Autocomplete", u"Other") == u"y");
        CPPUNIT_ASSERT(store.WriteProfileString(u"Autocomplete", nullptr, nullptr));
        CPPUNIT_ASSERT(store.GetProfileString(u"Autocomplete", u"Other", u"gone") == u"gone");
        CPPUNIT_ASSERT_EQUAL(UINT(37000), store.GetProfileInt(u"TextSettings", u"Settings", 0));

        // The write went through a temporary file that didn't stay behind.
        CPPUNIT_ASSERT_EQUAL(std::ptrdiff_t(1),
                             std::distance(fs::directory_iterator(path.parent_path()), {}));
    }

    void CorruptFileTest()
    {
        const fs::path path = m_dir / "profile.ini";
        auto pStore = CProfileStore::FromFile(ToCString(path));
        std::vector<BYTE> aData;

        std::string strGarbage;
        std::mt19937 random(42);
        for (int i = 0; i < 4096; ++i)
            strGarbage.push_back(static_cast<char>(random()));
        for (const std::string& strBroken :
             {strGarbage, std::string("[TextSet"), std::string("[TextSettings]\nTabSize=5\n[Auto"),
              std::string("[A]\nx=1\0\xFF", 9), std::string("TabSize=5\n")})
        {
            std::ofstream(path, std::ios::binary) << strBroken;
            CPPUNIT_ASSERT_EQUAL(UINT(3), pStore->GetProfileInt(u"TextSettings", u"TabSize", 3));
            CPPUNIT_ASSERT(pStore->GetProfileString(u"A", u"x", u"d") == u"d");
            CPPUNIT_ASSERT(!pStore->GetProfileBinary(u"A", u"x", aData));
        }

        // A write replaces the broken file with one that reads back.
        CPPUNIT_ASSERT(pStore->WriteProfileInt(u"TextSettings", u"TabSize", 8));
        CPPUNIT_ASSERT_EQUAL(
            UINT(8), CProfileStore::FromFile(ToCString(path))->GetProfileInt(u"TextSettings", u"TabSize", 3));

        // Values of the wrong form.
        std::ofstream(path, std::ios::binary)
            << "[S]\nOdd=abc\nNotHex=0g\nSpaced=00 ff\nGood=00FFa0\nBig=4294967296\nMax=4294967295\n"
               "Neg=-2147483648\nNum=12x\nEscape=a\\qb\n";
        for (const char16_t* szEntry : {u"Odd", u"NotHex", u"Spaced"})
            CPPUNIT_ASSERT(!pStore->GetProfileBinary(u"S", szEntry, aData));
        CPPUNIT_ASSERT(aData.empty());
        CPPUNIT_ASSERT(pStore->GetProfileBinary(u"S", u"Good", aData));
        CPPUNIT_ASSERT((aData == std::vector<BYTE>{0x00, 0xFF, 0xA0}));
        for (const auto& [szEntry, nValue] :
             {std::pair(u"Big", UINT(5)), std::pair(u"Max", UINT(0xFFFFFFFF)),
              std::pair(u"Neg", UINT(0x80000000)), std::pair(u"Num", UINT(5))})
            CPPUNIT_ASSERT_EQUAL_MESSAGE(CString(szEntry).ToUtf8(), nValue,
                                         pStore->GetProfileInt(u"S", szEntry, 5));
        CPPUNIT_ASSERT(pStore->GetProfileString(u"S", u"Escape", u"d") == u"d");

        // A file that can't be read is not replaced: here the path is a folder.
        const fs::path folder = m_dir / "folder.ini";
        fs::create_directories(folder / "inside");
        auto pFolderStore = CProfileStore::FromFile(ToCString(folder));
        CPPUNIT_ASSERT_EQUAL(UINT(1), pFolderStore->GetProfileInt(u"S", u"x", 1));
        CPPUNIT_ASSERT(!pFolderStore->WriteProfileInt(u"S", u"x", 2));
        CPPUNIT_ASSERT(fs::is_directory(folder / "inside"));
    }

    // Where a root's file lies, and the application object's operations on its root.
    void RootFolderTest()
    {
        {
            CScopedEnv config("XDG_CONFIG_HOME", m_dir.string());
            const std::pair<const char16_t*, fs::path> aRoots[] = {
                {u"Root", "Root"}, {u"../a/b", ".._a_b"}, {u"..", "Tessaroline"}};
            for (const auto& [szRoot, folder] : aRoots)
                CPPUNIT_ASSERT(CProfileStore::GetRootFilePath(szRoot) ==
                               ToCString(m_dir / folder / "profile.ini"));
            CProfileStore store(u"Root");
            CPPUNIT_ASSERT(store.WriteProfileString(u"S", u"x", u"v"));
            CPPUNIT_ASSERT(fs::is_regular_file(m_dir / "Root" / "profile.ini"));

            CWinApp* pApp = AfxGetApp();
            CPPUNIT_ASSERT(pApp);
            // Puts the application's root back, also when a check fails.
            struct CRestoreRoot
            {
                CWinApp* pApp;
                CString csRoot;
                ~CRestoreRoot() { pApp->SetRegistryKey(csRoot); }
            } const restore{pApp, pApp->GetRegistryKey()};
            pApp->SetRegistryKey(u"AppRoot");
            const fs::path appPath = m_dir / "AppRoot" / "profile.ini";
            CPPUNIT_ASSERT(pApp->GetProfileStore().GetFilePath() == ToCString(appPath));
            const BYTE aBytes[] = {0x00, 0x10, 0xFF};
            CPPUNIT_ASSERT(pApp->WriteProfileInt(u"TextSettings", u"TabSize", 6));
            CPPUNIT_ASSERT(pApp->WriteProfileString(u"TextSettings", u"TimeFormat", u"%H:%M"));
            CPPUNIT_ASSERT(pApp->WriteProfileBinary(u"TextSettings", u"Colors", aBytes, 3));
            CPPUNIT_ASSERT_EQUAL(
                UINT(6),
                CProfileStore::FromFile(ToCString(appPath))->GetProfileInt(u"TextSettings", u"TabSize", 4));
            CPPUNIT_ASSERT_EQUAL(UINT(6), pApp->GetProfileInt(u"TextSettings", u"TabSize", 4));
            CPPUNIT_ASSERT(pApp->GetProfileString(u"TextSettings", u"TimeFormat", u"") == u"%H:%M");
            BYTE* pData = nullptr;
            UINT nBytes = 0;
            CPPUNIT_ASSERT(pApp->GetProfileBinary(u"TextSettings", u"Colors", &pData, &nBytes));
            const std::vector<BYTE> aRead(pData, pData + nBytes);
            delete[] pData;
            CPPUNIT_ASSERT((aRead == std::vector<BYTE>{0x00, 0x10, 0xFF}));
            CPPUNIT_ASSERT(!pApp->GetProfileBinary(u"TextSettings", u"Missing", &pData, &nBytes));
            CPPUNIT_ASSERT(pData == nullptr);
            CPPUNIT_ASSERT(nBytes == 0);
        }
        // A relative XDG_CONFIG_HOME is not used.
        CScopedEnv home("HOME", m_dir.string());
        CScopedEnv config("XDG_CONFIG_HOME", "relative");
        CPPUNIT_ASSERT(CProfileStore::GetRootFilePath(u"Root") ==
                       ToCString(m_dir / ".config" / "Root" / "profile.ini"));
    }

private:
    const CTempFolder m_temp{"profile"};
    const fs::path& m_dir = m_temp.GetPath();
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CPlatformProfileTest, "All Tests");
