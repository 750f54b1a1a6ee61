// The system watcher under load: 10,000 files made, renamed and deleted across 100 watched folders, some
// folders removed and made again while watched. Each folder is reported after its last change, nothing
// comes after the shutdown, and the queue of events stays within one event per folder whatever the
// handler's pace.
#include "LFSTool/Components/FileWatcher1/CEmptySystemWatcherEvents.h"
#include "LFSTool/Components/FileWatcher1/CSystemWatcher.h"
#include "LFSTool/Components/FileWatcher1/CWatcherHandlerThread.h"
#include "Platform/CTempFolder.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cppunit/extensions/HelperMacros.h>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

namespace
{
namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr int FOLDERS = 100;
constexpr int FILES = 10000;

CString ToCString(const fs::path& path)
{
    return CString::FromUtf8(path.string());
}

// The resident memory of the process in kilobytes.
long ResidentKilobytes()
{
    long nKilobytes = 0;
    if (FILE* pStatus = std::fopen("/proc/self/status", "re"))
    {
        char szLine[256];
        while (std::fgets(szLine, sizeof szLine, pStatus))
            if (std::sscanf(szLine, "VmRSS: %ld", &nKilobytes) == 1)
                break;
        std::fclose(pStatus);
    }
    return nKilobytes;
}

// Keeps, for each folder, when it was last reported; counts what comes once the watcher is shut down.
class CTimingHandler : public CEmptySystemWatcherEvents
{
public:
    void OnFolderChanged(const CString& csFolder) override
    {
        std::lock_guard lock(m_mutex);
        m_aLastEvent[csFolder.ToUtf8()] = Clock::now();
        ++m_nEvents;
        if (m_bShutDown)
            ++m_nLate;
    }

    // The time folder was last reported, or the epoch.
    Clock::time_point LastEvent(const fs::path& folder)
    {
        std::lock_guard lock(m_mutex);
        const auto it = m_aLastEvent.find(folder.string());
        return it == m_aLastEvent.end() ? Clock::time_point() : it->second;
    }

    std::mutex m_mutex;
    std::map<std::string, Clock::time_point> m_aLastEvent;
    long m_nEvents = 0;
    long m_nLate = 0;
    bool m_bShutDown = false;
};

// Makes, renames and deletes one file; false if the system refused a step.
bool Churn(const fs::path& folder, int nFile)
{
    const std::string szMade = (folder / ("f" + std::to_string(nFile))).string();
    const std::string szRenamed = (folder / ("g" + std::to_string(nFile))).string();
    const int hFile = ::open(szMade.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600);
    if (hFile < 0)
        return false;
    ::close(hFile);
    return ::rename(szMade.c_str(), szRenamed.c_str()) == 0 && ::unlink(szRenamed.c_str()) == 0;
}

// A sink that holds the handler thread in its first delivery until released, and counts deliveries.
class CHeldSink final : public CWatcherHandlerThread::IEventSink
{
public:
    void SendEvent(const CWatcherHandlerThread::SEvent&) override
    {
        std::unique_lock lock(m_mutex);
        ++m_nDelivered;
        m_cvEntered.notify_all();
        m_cvRelease.wait(lock, [this] { return m_bReleased; });
    }
    void Release()
    {
        {
            std::lock_guard lock(m_mutex);
            m_bReleased = true;
        }
        m_cvRelease.notify_all();
    }
    void WaitEntered()
    {
        std::unique_lock lock(m_mutex);
        m_cvEntered.wait_for(lock, std::chrono::seconds(10), [this] { return m_nDelivered > 0; });
    }
    int Delivered()
    {
        std::lock_guard lock(m_mutex);
        return m_nDelivered;
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_cvEntered, m_cvRelease;
    int m_nDelivered = 0;
    bool m_bReleased = false;
};
} // namespace

class CWatcherLoadTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CWatcherLoadTest);
    CPPUNIT_TEST(BurstAcrossFoldersTest);
    CPPUNIT_TEST(QueueBoundTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void BurstAcrossFoldersTest()
    {
        CTempFolder temp("watchload");
        std::vector<fs::path> aFolders;
        for (int i = 0; i < FOLDERS; ++i)
        {
            aFolders.push_back(temp / ("d" + std::to_string(i)));
            fs::create_directory(aFolders.back());
        }
        CSystemWatcher watcher;
        CTimingHandler handler;
        CPPUNIT_ASSERT(watcher.Start());
        watcher.AddEventsHandler(&handler);
        for (const fs::path& folder : aFolders)
            watcher.AddWatch(ToCString(folder));

        // Every folder is watched once a change in it is reported.
        const Clock::time_point tReady = Clock::now() + std::chrono::seconds(10);
        int nPoke = 0;
        for (bool bAll = false; !bAll && Clock::now() < tReady; ++nPoke)
        {
            bAll = true;
            for (const fs::path& folder : aFolders)
                if (handler.LastEvent(folder) == Clock::time_point())
                {
                    bAll = false;
                    Churn(folder, -1 - nPoke);
                }
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
        for (const fs::path& folder : aFolders)
            CPPUNIT_ASSERT_MESSAGE(folder.string(), handler.LastEvent(folder) != Clock::time_point());

        // The burst: each file made, renamed and deleted, the folders in turn; every thousandth file
        // a folder is removed with what it holds and made again. The time before each folder's last
        // change is kept: a report after it covers that change.
        const long nRssBefore = ResidentKilobytes();
        long nEventsBefore;
        {
            std::lock_guard lock(handler.m_mutex);
            nEventsBefore = handler.m_nEvents;
        }
        std::vector<Clock::time_point> aLastChange(FOLDERS);
        const Clock::time_point tStart = Clock::now();
        int nRemoved = 0;
        for (int i = 0; i < FILES; ++i)
        {
            const int nFolder = i % FOLDERS;
            aLastChange[nFolder] = Clock::now();
            if (i % 1000 == 500)
            {
                fs::remove_all(aFolders[nFolder]);
                fs::create_directory(aFolders[nFolder]);
                ++nRemoved;
            }
            CPPUNIT_ASSERT(Churn(aFolders[nFolder], i));
        }
        const auto nBurstMs =
            std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - tStart).count();

        // Each folder is reported after its last change; a removed folder at the latest when the watcher
        // watches it again.
        const Clock::time_point tEnd = Clock::now() + std::chrono::seconds(10);
        int nBehind = FOLDERS;
        while (nBehind > 0 && Clock::now() < tEnd)
        {
            nBehind = 0;
            for (int i = 0; i < FOLDERS; ++i)
                nBehind += handler.LastEvent(aFolders[i]) > aLastChange[i] ? 0 : 1;
            if (nBehind > 0)
                std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        CPPUNIT_ASSERT_EQUAL(0, nBehind);
        CPPUNIT_ASSERT_EQUAL(10, nRemoved);
        CPPUNIT_ASSERT(nBurstMs < 20000);
        // The watcher's memory doesn't grow with the number of changes it was told of.
        CPPUNIT_ASSERT(ResidentKilobytes() - nRssBefore < 32 * 1024);
        long nEvents;
        {
            std::lock_guard lock(handler.m_mutex);
            nEvents = handler.m_nEvents - nEventsBefore;
        }
        CPPUNIT_ASSERT(nEvents >= FOLDERS);

        // Shut down with the handler still registered: nothing comes after, whatever changes.
        watcher.OnApplicationExit();
        {
            std::lock_guard lock(handler.m_mutex);
            handler.m_bShutDown = true;
        }
        CPPUNIT_ASSERT(!watcher.IsStarted());
        for (int i = 0; i < 300; ++i)
            Churn(aFolders[i % FOLDERS], FILES + i);
        std::this_thread::sleep_for(std::chrono::milliseconds(1500));
        std::lock_guard lock(handler.m_mutex);
        CPPUNIT_ASSERT_EQUAL(0L, handler.m_nLate);
    }

    void QueueBoundTest()
    {
        // While the handler is busy, 10,000 changes in 100 folders wait as one event per folder.
        auto pThread = std::make_shared<CWatcherHandlerThread>();
        auto pSink = std::make_shared<CHeldSink>();
        pThread->SetSource(pSink);
        CPPUNIT_ASSERT(pThread->CreateThread());
        pThread->QueueEvent(CWatcherHandlerThread::SEvent::FOLDER_CHANGED, u"/first");
        pSink->WaitEntered();
        CPPUNIT_ASSERT_EQUAL(1, pSink->Delivered());
        for (int i = 0; i < FILES; ++i)
            pThread->QueueEvent(CWatcherHandlerThread::SEvent::FOLDER_CHANGED,
                                CString::FromUtf8("/folder" + std::to_string(i % FOLDERS)));
        // Drive events are never merged.
        pThread->QueueEvent(CWatcherHandlerThread::SEvent::DRIVE_ARRIVED, u"/media/a");
        pThread->QueueEvent(CWatcherHandlerThread::SEvent::DRIVE_ARRIVED, u"/media/a");
        pSink->Release();
        // A folder reported again once its waiting event went out.
        const Clock::time_point tEnd = Clock::now() + std::chrono::seconds(10);
        while (pSink->Delivered() < 1 + FOLDERS + 2 && Clock::now() < tEnd)
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        CPPUNIT_ASSERT_EQUAL(1 + FOLDERS + 2, pSink->Delivered());
        pThread->QueueEvent(CWatcherHandlerThread::SEvent::FOLDER_CHANGED, u"/folder7");
        pThread->PostThreadMessage(CWatcherHandlerThread::QUIT_MESSAGE, 0, 0);
        CPPUNIT_ASSERT_EQUAL(static_cast<DWORD>(WAIT_OBJECT_0), pThread->WaitForEnd(10000));
        CPPUNIT_ASSERT_EQUAL(1 + FOLDERS + 2 + 1, pSink->Delivered());
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CWatcherLoadTest, "All Tests");
