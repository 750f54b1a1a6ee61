// The profile store: values read back by a fresh store, broken files, the folder of a root, and
// the application object's operations, in a fresh temporary folder.
#include "Platform/CProfileStore.h"
#include "Platform/CWinApp.h"

#include <cppunit/extensions/HelperMacros.h>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace
{
std::string ReadAll(const fs::path& path)
{
    std::ifstream in(path, std::ios::binary);
    std::ostringstream out;
    out << in.rdbuf();
    return out.str();
}

void WriteAll(const fs::path& path, const std::string& sz)
{
    std::ofstream(path, std::ios::binary) << sz;
}

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
        if (m_strOld)
            setenv(m_strName.c_str(), m_strOld->c_str(), 1);
        else
            unsetenv(m_strName.c_str());
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
    CPPUNIT_TEST(ApplicationProfileTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void setUp() override
    {
        std::random_device random;
        m_dir = fs::temp_directory_path() / ("tessaroline-pserv-" + std::to_string(random()));
        fs::create_directories(m_dir);
    }

    void tearDown() override
    {
        std::error_code error;
        fs::remove_all(m_dir, error);
    }

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
            CPPUNIT_ASSERT(!pStore->WriteProfileInt(u"Bad]", u"x", 1));
            CPPUNIT_ASSERT(!pStore->WriteProfileInt(u"S", u"a=b", 1));
            CPPUNIT_ASSERT(!pStore->WriteProfileInt(u"S", u"#x", 1));
            CPPUNIT_ASSERT(!pStore->WriteProfileInt(u"S\n", u"x", 1));
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
        int nFiles = 0;
        for ([[maybe_unused]] const auto& entry : fs::directory_iterator(path.parent_path()))
            ++nFiles;
        CPPUNIT_ASSERT_EQUAL(1, nFiles);
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
        const std::string aBroken[] = {strGarbage, "[TextSet", "[TextSettings]\nTabSize=5\n[Auto",
                                       std::string("[A]\nx=1\0\xFF", 9), "TabSize=5\n"};
        for (const std::string& strBroken : aBroken)
        {
            WriteAll(path, strBroken);
            CPPUNIT_ASSERT_EQUAL(UINT(3), pStore->GetProfileInt(u"TextSettings", u"TabSize", 3));
            CPPUNIT_ASSERT(pStore->GetProfileString(u"A", u"x", u"d") == u"d");
            CPPUNIT_ASSERT(!pStore->GetProfileBinary(u"A", u"x", aData));
        }

        // A write replaces the broken file with one that reads back.
        CPPUNIT_ASSERT(pStore->WriteProfileInt(u"TextSettings", u"TabSize", 8));
        CPPUNIT_ASSERT_EQUAL(
            UINT(8), CProfileStore::FromFile(ToCString(path))->GetProfileInt(u"TextSettings", u"TabSize", 3));
        CPPUNIT_ASSERT(ReadAll(path).find("[TextSettings]") != std::string::npos);

        // Values of the wrong form.
        WriteAll(path, "[S]\nOdd=abc\nNotHex=0g\nSpaced=00 ff\nGood=00FFa0\nBig=4294967296\nMax=4294967295\n"
                       "Neg=-2147483648\nNum=12x\nEscape=a\\qb\n");
        CPPUNIT_ASSERT(!pStore->GetProfileBinary(u"S", u"Odd", aData));
        CPPUNIT_ASSERT(!pStore->GetProfileBinary(u"S", u"NotHex", aData));
        CPPUNIT_ASSERT(!pStore->GetProfileBinary(u"S", u"Spaced", aData));
        CPPUNIT_ASSERT(aData.empty());
        CPPUNIT_ASSERT(pStore->GetProfileBinary(u"S", u"Good", aData));
        CPPUNIT_ASSERT((aData == std::vector<BYTE>{0x00, 0xFF, 0xA0}));
        CPPUNIT_ASSERT_EQUAL(UINT(5), pStore->GetProfileInt(u"S", u"Big", 5));
        CPPUNIT_ASSERT_EQUAL(UINT(0xFFFFFFFF), pStore->GetProfileInt(u"S", u"Max", 5));
        CPPUNIT_ASSERT_EQUAL(UINT(0x80000000), pStore->GetProfileInt(u"S", u"Neg", 5));
        CPPUNIT_ASSERT_EQUAL(UINT(5), pStore->GetProfileInt(u"S", u"Num", 5));
        CPPUNIT_ASSERT(pStore->GetProfileString(u"S", u"Escape", u"d") == u"d");

        // A file that can't be read is not replaced: here the path is a folder.
        const fs::path folder = m_dir / "folder.ini";
        fs::create_directories(folder / "inside");
        auto pFolderStore = CProfileStore::FromFile(ToCString(folder));
        CPPUNIT_ASSERT_EQUAL(UINT(1), pFolderStore->GetProfileInt(u"S", u"x", 1));
        CPPUNIT_ASSERT(!pFolderStore->WriteProfileInt(u"S", u"x", 2));
        CPPUNIT_ASSERT(fs::is_directory(folder / "inside"));
    }

    void RootFolderTest()
    {
        {
            CScopedEnv config("XDG_CONFIG_HOME", m_dir.string());
            CPPUNIT_ASSERT(CProfileStore::GetRootFilePath(u"Root") ==
                           ToCString(m_dir / "Root" / "profile.ini"));
            CPPUNIT_ASSERT(CProfileStore::GetRootFilePath(u"../a/b") ==
                           ToCString(m_dir / ".._a_b" / "profile.ini"));
            CPPUNIT_ASSERT(CProfileStore::GetRootFilePath(u"..") ==
                           ToCString(m_dir / "Tessaroline" / "profile.ini"));
            CProfileStore store(u"Root");
            CPPUNIT_ASSERT(store.WriteProfileString(u"S", u"x", u"v"));
            CPPUNIT_ASSERT(fs::is_regular_file(m_dir / "Root" / "profile.ini"));
        }
        // A relative XDG_CONFIG_HOME is not used.
        CScopedEnv home("HOME", m_dir.string());
        CScopedEnv config("XDG_CONFIG_HOME", "relative");
        CPPUNIT_ASSERT(CProfileStore::GetRootFilePath(u"Root") ==
                       ToCString(m_dir / ".config" / "Root" / "profile.ini"));
    }

    void ApplicationProfileTest()
    {
        CWinApp* pApp = AfxGetApp();
        CPPUNIT_ASSERT(pApp);
        const CString csRoot = pApp->GetRegistryKey();
        CScopedEnv config("XDG_CONFIG_HOME", m_dir.string());
        pApp->SetRegistryKey(u"CPlatformProfileTestRoot");
        try
        {
            const fs::path path = m_dir / "CPlatformProfileTestRoot" / "profile.ini";
            CPPUNIT_ASSERT(pApp->GetProfileStore().GetFilePath() == ToCString(path));
            const BYTE aBytes[] = {0x00, 0x10, 0xFF};
            CPPUNIT_ASSERT(pApp->WriteProfileInt(u"TextSettings", u"TabSize", 6));
            CPPUNIT_ASSERT(pApp->WriteProfileString(u"TextSettings", u"TimeFormat", u"%H:%M"));
            CPPUNIT_ASSERT(pApp->WriteProfileBinary(u"TextSettings", u"Colors", aBytes, 3));

            const auto pStore = CProfileStore::FromFile(ToCString(path));
            CPPUNIT_ASSERT_EQUAL(UINT(6), pStore->GetProfileInt(u"TextSettings", u"TabSize", 4));
            CPPUNIT_ASSERT_EQUAL(UINT(6), pApp->GetProfileInt(u"TextSettings", u"TabSize", 4));
            CPPUNIT_ASSERT(pApp->GetProfileString(u"TextSettings", u"TimeFormat", u"") == u"%H:%M");
            BYTE* pData = nullptr;
            UINT nBytes = 0;
            CPPUNIT_ASSERT(pApp->GetProfileBinary(u"TextSettings", u"Colors", &pData, &nBytes));
            CPPUNIT_ASSERT_EQUAL(UINT(3), nBytes);
            CPPUNIT_ASSERT(pData && pData[0] == 0x00 && pData[1] == 0x10 && pData[2] == 0xFF);
            delete[] pData;
            CPPUNIT_ASSERT(!pApp->GetProfileBinary(u"TextSettings", u"Missing", &pData, &nBytes));
            CPPUNIT_ASSERT(pData == nullptr && nBytes == 0);
        }
        catch (...)
        {
            pApp->SetRegistryKey(csRoot);
            throw;
        }
        pApp->SetRegistryKey(csRoot);
        CPPUNIT_ASSERT(pApp->GetRegistryKey() == csRoot);
    }

private:
    fs::path m_dir;
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CPlatformProfileTest, "All Tests");
