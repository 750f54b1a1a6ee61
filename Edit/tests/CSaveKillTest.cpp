// A save cut short by the end of its process: a child process saves a large document through the text
// buffer and is killed at a random moment of the save, again and again. Whenever it died, the target is
// the old file or the new one, byte for byte, and the backup is absent or the old file whole.
#include "Edit/Model/CTextBuffer.h"

#include "Platform/CTempFolder.h"

#include <algorithm>
#include <chrono>
#include <cppunit/extensions/HelperMacros.h>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace fs = std::filesystem;

namespace
{
using Clock = std::chrono::steady_clock;

CString ToCString(const fs::path& path)
{
    return CString::FromUtf8(path.string());
}

std::string ReadBytes(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

void WriteBytes(const fs::path& path, const std::string& szBytes)
{
    std::ofstream(path, std::ios::binary | std::ios::trunc) << szBytes;
}

// A document of nLines lines, each telling its number and szWord.
std::string Document(int nLines, const std::string& szWord)
{
    std::string szText;
    szText.reserve(static_cast<std::size_t>(nLines) * 64);
    for (int i = 0; i < nLines; ++i)
        szText += szWord + " line " + std::to_string(i) + " of a document large enough to take a while\n";
    return szText;
}

// Starts a process that saves buffer to target with a backup and ends; its id.
pid_t StartSave(CTextBuffer& buffer, const fs::path& target)
{
    const pid_t nPid = ::fork();
    if (nPid == 0)
    {
        const BOOL bSaved = buffer.SaveToFile(ToCString(target), TRUE, -3, 2);
        ::_exit(bSaved ? 0 : 1);
    }
    return nPid;
}
} // namespace

class CSaveKillTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CSaveKillTest);
    CPPUNIT_TEST(KilledSaveTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void KilledSaveTest()
    {
        constexpr int RUNS = 50;
        CTempFolder temp("savekill");
        const fs::path target = temp / "doc.txt";
        const fs::path backup = temp / "doc.txt.bak";
        const std::string szOld = Document(60000, "old");
        WriteBytes(temp / "new.txt", Document(70000, "new"));
        CTextBuffer buffer;
        CPPUNIT_ASSERT(buffer.LoadFromFile(ToCString(temp / "new.txt")));

        // Whole saves in a child process give the new bytes and how long a save takes there: the
        // middle of three, so that one slow moment of the machine doesn't set the pace.
        std::vector<long long> aDurations;
        std::string szNew;
        for (int i = 0; i < 3; ++i)
        {
            WriteBytes(target, szOld);
            const Clock::time_point tStart = Clock::now();
            const pid_t nPid = StartSave(buffer, target);
            CPPUNIT_ASSERT(nPid > 0);
            int nStatus = 0;
            CPPUNIT_ASSERT_EQUAL(nPid, ::waitpid(nPid, &nStatus, 0));
            aDurations.push_back(
                std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - tStart).count());
            CPPUNIT_ASSERT(WIFEXITED(nStatus) && WEXITSTATUS(nStatus) == 0);
            szNew = ReadBytes(target);
            CPPUNIT_ASSERT(szNew.size() > 4000000 && szNew.compare(0, 3, "\xEF\xBB\xBF") == 0);
            CPPUNIT_ASSERT(ReadBytes(backup) == szOld);
        }
        std::sort(aDurations.begin(), aDurations.end());

        // The kills fall anywhere from before the save begins to as long again after it would have ended.
        std::mt19937 random(20261123);
        std::uniform_int_distribution<long long> delay(0, aDurations[1] * 2);
        int nStatus = 0;
        int nOld = 0, nNew = 0, nLeftOver = 0;
        for (int nRun = 0; nRun < RUNS; ++nRun)
        {
            const std::string szRun = "run " + std::to_string(nRun);
            WriteBytes(target, szOld);
            fs::remove(backup);
            const pid_t nChild = StartSave(buffer, target);
            CPPUNIT_ASSERT_MESSAGE(szRun, nChild > 0);
            std::this_thread::sleep_for(std::chrono::microseconds(delay(random)));
            ::kill(nChild, SIGKILL);
            CPPUNIT_ASSERT_EQUAL_MESSAGE(szRun, nChild, ::waitpid(nChild, &nStatus, 0));

            const std::string szTarget = ReadBytes(target);
            CPPUNIT_ASSERT_MESSAGE(szRun + ": the old file or the new one",
                                   szTarget == szOld || szTarget == szNew);
            (szTarget == szOld ? nOld : nNew)++;
            // The backup is made whole under another name before it takes its own.
            CPPUNIT_ASSERT_MESSAGE(szRun, !fs::exists(backup) || ReadBytes(backup) == szOld);
            if (szTarget == szNew)
                CPPUNIT_ASSERT_MESSAGE(szRun + ": the new file came after the backup", fs::exists(backup));
            // A save cut short may leave its temporary files; only they.
            for (const auto& entry : fs::directory_iterator(temp.GetPath()))
            {
                const std::string szName = entry.path().filename().string();
                if (szName == "doc.txt" || szName == "doc.txt.bak" || szName == "new.txt")
                    continue;
                CPPUNIT_ASSERT_MESSAGE(szRun + ": " + szName, szName.rfind("TSTemp", 0) == 0);
                fs::remove(entry.path());
                ++nLeftOver;
            }
        }
        // Kills fell before the save's end and after it, and some in the middle of it.
        CPPUNIT_ASSERT(nOld > 0 && nNew > 0 && nLeftOver > 0);
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CSaveKillTest, "All Tests");
