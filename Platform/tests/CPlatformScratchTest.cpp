// Scratch folders of the suites and the CRC-32 of bytes.
#include "Platform/CTempFolder.h"
#include "Platform/Crc32.h"

#include <cppunit/extensions/HelperMacros.h>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace fs = std::filesystem;

class CPlatformScratchTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CPlatformScratchTest);
    CPPUNIT_TEST(TempFolderTest);
    CPPUNIT_TEST(TempFolderRemovesLockedTreesTest);
    CPPUNIT_TEST(Crc32Test);
    CPPUNIT_TEST_SUITE_END();

public:
    void TempFolderTest()
    {
        // Folders of one name are kept apart, lie in the run folder, and go with their objects.
        fs::path first;
        fs::path second;
        {
            const CTempFolder a("same");
            const CTempFolder b("same");
            first = a.GetPath();
            second = b.GetPath();
            CPPUNIT_ASSERT(first != second);
            CPPUNIT_ASSERT(fs::is_directory(first));
            CPPUNIT_ASSERT(fs::is_empty(first));
            CPPUNIT_ASSERT(first.parent_path() == CTempFolder::GetRunFolder());
            CPPUNIT_ASSERT(first.filename().string().starts_with("same-"));
            CPPUNIT_ASSERT(a.GetFolder() == CString::FromUtf8(first.string() + "/"));
            CPPUNIT_ASSERT(a / "x.txt" == first / "x.txt");
            std::ofstream(b / "x.txt") << "x";
        }
        CPPUNIT_ASSERT(!fs::exists(first));
        CPPUNIT_ASSERT(!fs::exists(second));
        // The run folder is the process's own: made fresh under the system's temporary folder.
        const fs::path& run = CTempFolder::GetRunFolder();
        CPPUNIT_ASSERT(run.parent_path() == fs::temp_directory_path());
        CPPUNIT_ASSERT(run.filename().string().starts_with("tessaroline-run."));
        CPPUNIT_ASSERT(fs::is_directory(run));
    }

    void TempFolderRemovesLockedTreesTest()
    {
        // Folders a case left without write, read or search permission go with the rest.
        fs::path path;
        {
            const CTempFolder temp("locked");
            path = temp.GetPath();
            for (const auto& [szName, perms] :
                 {std::pair{"readonly", fs::perms::owner_read | fs::perms::owner_exec},
                  std::pair{"nosearch", fs::perms::owner_read | fs::perms::owner_write},
                  std::pair{"none", fs::perms::none}})
            {
                fs::create_directories(path / szName / "inner");
                std::ofstream(path / szName / "inner" / "f") << "f";
                fs::permissions(path / szName / "inner", perms);
                fs::permissions(path / szName, perms);
            }
        }
        CPPUNIT_ASSERT(!fs::exists(path));
        CTempFolder::RemoveTree(path); // gone already: nothing happens
        CTempFolder::RemoveTree(fs::path());
    }

    void Crc32Test()
    {
        const struct
        {
            const char* szBytes;
            std::uint32_t dwCrc;
        } aCases[] = {{"", 0},
                      {"123456789", 0xCBF43926}, // the standard check value
                      {"a", 0xE8B7BE43},
                      {"The quick brown fox jumps over the lazy dog", 0x414FA339}};
        for (const auto& c : aCases)
            CPPUNIT_ASSERT_EQUAL_MESSAGE(c.szBytes, c.dwCrc, Crc32(c.szBytes, std::strlen(c.szBytes)));

        // Fed in parts, the checksum is that of the whole.
        const std::string szText = "The quick brown fox jumps over the lazy dog";
        const std::uint32_t dwHead = Crc32(szText.data(), 10);
        CPPUNIT_ASSERT_EQUAL(0x414FA339u, Crc32(szText.data() + 10, szText.size() - 10, dwHead));
        CPPUNIT_ASSERT_EQUAL(dwHead, Crc32(nullptr, 0, dwHead));
        // Bytes above 0x7F count as unsigned.
        const std::vector<unsigned char> aHigh = {0xFF, 0x80};
        CPPUNIT_ASSERT_EQUAL(0x3F456CADu, Crc32(aHigh.data(), aHigh.size()));
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CPlatformScratchTest, "All Tests");
