// The system watcher: the start and its errors, the watch list, real changes of folders and drives
// reaching a handler, and the shutdown within its bounds, also under a flood and with a stuck thread.
#include "LFSTool/Components/FileWatcher1/CSystemWatcher.h"
#include "Common_h/CCommonException.h"
#include "Common_h/CEventHandlers.h"
#include "LFSTool/Components/FileWatcher1/CEmptySystemWatcherEvents.h"
#include "Platform/CTempFolder.h"
#include "Platform/CWinThread.h"
#include "Platform/MessageBox.h"

#include <chrono>
#include <condition_variable>
#include <cppunit/extensions/HelperMacros.h>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <functional>
#include <mutex>
#include <string>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace
{
namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

CString ToCString(const fs::path& path)
{
    return CString::FromUtf8(path.string());
}

// Records the events with the thread they came on, and wakes a waiting check.
class CRecordingHandler : public CEmptySystemWatcherEvents
{
public:
    void OnFolderChanged(const CString& csFolder) override { Record(u"folder:", csFolder); }
    void OnDriveArrived(const CString& csDrive) override { Record(u"arrived:", csDrive); }
    void OnDriveRemoved(const CString& csDrive) override { Record(u"removed:", csDrive); }

    // Calls poke every 100 milliseconds until an event equal to csEvent has come, at most nSeconds.
    bool WaitFor(const CString& csEvent, int nSeconds, const std::function<void()>& poke = {})
    {
        const Clock::time_point tEnd = Clock::now() + std::chrono::seconds(nSeconds);
        std::unique_lock lock(m_mutex);
        while (Count(csEvent) == 0 && Clock::now() < tEnd)
        {
            if (poke)
            {
                lock.unlock();
                poke();
                lock.lock();
            }
            m_cvEvent.wait_for(lock, std::chrono::milliseconds(100));
        }
        return Count(csEvent) != 0;
    }

    int CountOf(const CString& csEvent)
    {
        std::lock_guard lock(m_mutex);
        return Count(csEvent);
    }

    void Clear()
    {
        std::lock_guard lock(m_mutex);
        m_aEvents.clear();
    }

    std::thread::id m_idThread; // the thread of the last event

private:
    void Record(const char16_t* szKind, const CString& csPath)
    {
        {
            std::lock_guard lock(m_mutex);
            m_aEvents.push_back(szKind + csPath);
            m_idThread = std::this_thread::get_id();
        }
        m_cvEvent.notify_all();
    }
    int Count(const CString& csEvent) const
    {
        int nCount = 0;
        for (const CString& cs : m_aEvents)
            nCount += cs == csEvent ? 1 : 0;
        return nCount;
    }

    std::mutex m_mutex;
    std::condition_variable m_cvEvent;
    std::vector<CString> m_aEvents;
};

// Keeps the messages to the user, and puts the service before back.
class CRecordingMessageBox : public IMessageBoxService
{
public:
    CRecordingMessageBox() : m_pBefore(SetMessageBoxService(this)) {}
    ~CRecordingMessageBox() override { SetMessageBoxService(m_pBefore); }
    int Show(const CString& csText, UINT) override
    {
        m_aTexts.push_back(csText);
        return IDOK;
    }
    IMessageBoxService* m_pBefore;
    std::vector<CString> m_aTexts;
};

// The application as a sender of its events.
class CApplication : public IEventsSender<IApplicationEvents>
{
public:
    int AddEventsHandler(IApplicationEvents* pHandler) override { return m_aHandlers.AddHandler(pHandler); }
    int RemoveEventsHandler(IApplicationEvents* pHandler) override
    {
        return m_aHandlers.RemoveHandler(pHandler);
    }
    void Exit()
    {
        m_aHandlers.Send<IApplicationEvents>([](IApplicationEvents* p) { p->OnApplicationExit(); });
    }
    CEventHandlers m_aHandlers;
};

// Makes an empty file, or a new one of a numbered series.
void Touch(const fs::path& path)
{
    std::ofstream(path).put('x');
}

// Runs the shutdown and gives its length in milliseconds.
long long TimeExit(CSystemWatcher& watcher)
{
    const Clock::time_point tStart = Clock::now();
    watcher.OnApplicationExit();
    return std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - tStart).count();
}
} // namespace

class CSystemWatcherTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CSystemWatcherTest);
    CPPUNIT_TEST(AddEventsHandlerTest);
    CPPUNIT_TEST(WatchListTest);
    CPPUNIT_TEST(FolderChangeTest);
    CPPUNIT_TEST(DeletedFolderTest);
    CPPUNIT_TEST(BurstTest);
    CPPUNIT_TEST(DriveTest);
    CPPUNIT_TEST(ShutdownTest);
    CPPUNIT_TEST(ShutdownTimeoutTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void AddEventsHandlerTest()
    {
        CSystemWatcher watcher;
        CRecordingHandler handler;
        CPPUNIT_ASSERT_EQUAL(0, watcher.RemoveEventsHandler(&handler));
        const auto CheckRaises = [&]
        {
            try
            {
                watcher.AddEventsHandler(&handler);
                CPPUNIT_FAIL("AddEventsHandler before the start must raise");
            }
            catch (const CCommonException& e)
            {
                CPPUNIT_ASSERT_EQUAL(static_cast<HRESULT>(0x80004005), e.GetCode());
                CPPUNIT_ASSERT(e.GetMessage() == u"Thread not initialized");
                CPPUNIT_ASSERT(e.GetPlace() == u"CFileWatcher::AddEventsHandler\r\n");
                CPPUNIT_ASSERT(e.GetFile() == u"LFSTool/Components/FileWatcher1/FileWatcher");
                CPPUNIT_ASSERT(e.GetLine() > 0);
            }
        };
        CheckRaises();

        CPPUNIT_ASSERT(watcher.Start());
        CPPUNIT_ASSERT(!watcher.Start());
        CPPUNIT_ASSERT_EQUAL(0, watcher.AddEventsHandler(&handler));
        CPPUNIT_ASSERT_EQUAL(0, watcher.RemoveEventsHandler(&handler));
        CPPUNIT_ASSERT_EQUAL(0, watcher.RemoveEventsHandler(&handler));
        watcher.OnApplicationExit();
        CheckRaises();
    }

    void WatchListTest()
    {
        CSystemWatcher watcher;
        watcher.AddWatch(u"C:\\Dir");
        CPPUNIT_ASSERT(!watcher.IsWatched(u"C:\\Dir"));
        CPPUNIT_ASSERT(watcher.Start());
        watcher.AddWatch(u"C:\\Dir");
        watcher.AddWatch(u"c:\\dir");
        watcher.AddWatch(u"");
        CPPUNIT_ASSERT(watcher.IsWatched(u"C:\\DIR"));
        CPPUNIT_ASSERT(!watcher.IsWatched(u"C:\\Dir2"));
        // One entry without a count: one removal takes it off.
        watcher.RemoveWatch(u"c:\\DIR");
        CPPUNIT_ASSERT(!watcher.IsWatched(u"C:\\Dir"));
        watcher.RemoveWatch(u"c:\\dir");
        watcher.Reserved();
        CPPUNIT_ASSERT(!watcher.IsWatched(u"C:\\Dir"));
    }

    void FolderChangeTest()
    {
        CTempFolder temp;
        fs::create_directory(temp / "Watched");
        fs::create_directory(temp / "Other");
        CSystemWatcher watcher;
        CRecordingHandler handler;
        CPPUNIT_ASSERT(watcher.Start());
        watcher.AddEventsHandler(&handler);
        // Another case of the path finds the folder on disk; the event names it as it is there.
        CString csUpper = ToCString(temp / "Watched");
        watcher.AddWatch(csUpper.MakeUpper());
        watcher.AddWatch(ToCString(temp / "Missing"));
        int nFile = 0;
        const auto Poke = [&]
        {
            const std::string szName = "f" + std::to_string(nFile++);
            Touch(temp.GetPath() / "Watched" / szName);
            Touch(temp.GetPath() / "Other" / szName);
        };
        const CString csEvent = u"folder:" + ToCString(temp / "Watched");
        CPPUNIT_ASSERT(handler.WaitFor(csEvent, 5, Poke));
        CPPUNIT_ASSERT(handler.m_idThread != std::this_thread::get_id());
        CPPUNIT_ASSERT_EQUAL(0, handler.CountOf(u"folder:" + ToCString(temp / "Other")));
        watcher.RemoveEventsHandler(&handler);
        CPPUNIT_ASSERT(TimeExit(watcher) < 5000);
    }

    void DeletedFolderTest()
    {
        CTempFolder temp;
        const fs::path pathGone = temp / "Gone";
        fs::create_directory(pathGone);
        CRecordingMessageBox messages;
        CSystemWatcher watcher;
        CRecordingHandler handler;
        CPPUNIT_ASSERT(watcher.Start());
        watcher.AddEventsHandler(&handler);
        watcher.AddWatch(ToCString(pathGone));
        int nFile = 0;
        const auto Poke = [&] { Touch(pathGone / ("f" + std::to_string(nFile++))); };
        const CString csEvent = u"folder:" + ToCString(pathGone);
        CPPUNIT_ASSERT(handler.WaitFor(csEvent, 5, Poke));

        // Deleted while watched: reported, and watched again once it is back.
        handler.Clear();
        fs::remove_all(pathGone);
        CPPUNIT_ASSERT(handler.WaitFor(csEvent, 5));
        handler.Clear();
        fs::create_directory(pathGone);
        CPPUNIT_ASSERT(handler.WaitFor(csEvent, 5, Poke));
        CPPUNIT_ASSERT(watcher.IsWatched(ToCString(pathGone)));
        watcher.RemoveEventsHandler(&handler);
        CPPUNIT_ASSERT(TimeExit(watcher) < 5000);
        CPPUNIT_ASSERT(messages.m_aTexts.empty());
    }

    void BurstTest()
    {
        CTempFolder temp;
        const fs::path pathBurst = temp / "Burst";
        fs::create_directory(pathBurst);
        CRecordingMessageBox messages;
        CSystemWatcher watcher;
        CRecordingHandler handler;
        CPPUNIT_ASSERT(watcher.Start());
        watcher.AddEventsHandler(&handler);
        watcher.AddWatch(ToCString(pathBurst));
        const CString csEvent = u"folder:" + ToCString(pathBurst);
        CPPUNIT_ASSERT(handler.WaitFor(csEvent, 5, [&] { Touch(pathBurst / "first"); }));

        // 10,000 files are made while the watcher reports them and is shut down in the midst of it.
        handler.Clear();
        std::thread burst(
            [&]
            {
                for (int i = 0; i < 10000; ++i)
                {
                    const std::string szPath = (pathBurst / ("b" + std::to_string(i))).string();
                    const int hFile = ::open(szPath.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600);
                    if (hFile >= 0)
                        ::close(hFile);
                }
            });
        const bool bReported = handler.WaitFor(csEvent, 5);
        const long long nMilliseconds = TimeExit(watcher);
        burst.join();
        CPPUNIT_ASSERT(bReported);
        CPPUNIT_ASSERT(nMilliseconds < 5000);
        CPPUNIT_ASSERT(messages.m_aTexts.empty());
        CPPUNIT_ASSERT(!watcher.IsStarted());
    }

    void DriveTest()
    {
        CTempFolder temp;
        const fs::path pathTable = temp / "mounts";
        // The table is replaced in one step, as the system's changes.
        const auto WriteTable = [&](bool bStick)
        {
            std::ofstream(temp / "mounts.new")
                << "proc /proc proc rw 0 0\n/dev/sda1 / ext4 rw 0 0\nserver:/home /home nfs4 rw 0 0\n"
                << (bStick ? "/dev/sdz1 /media/usb\\040stick vfat rw 0 0\n" : "");
            fs::rename(temp / "mounts.new", pathTable);
        };
        WriteTable(false);
        CSystemWatcher watcher;
        CRecordingHandler handler;
        CPPUNIT_ASSERT(watcher.Start(ToCString(pathTable)));
        watcher.AddEventsHandler(&handler);
        // The first reading is no news; a stick that comes after it is. Toggling the table until then
        // does not depend on when the first reading happens.
        bool bStick = false;
        int nPokes = 0;
        const auto Toggle = [&]
        {
            if (nPokes++ % 15 == 0)
                WriteTable(bStick = !bStick);
        };
        CPPUNIT_ASSERT(handler.WaitFor(u"arrived:/media/usb stick", 10, Toggle));
        WriteTable(false);
        CPPUNIT_ASSERT(handler.WaitFor(u"removed:/media/usb stick", 5));
        CPPUNIT_ASSERT_EQUAL(0, handler.CountOf(u"arrived:/") + handler.CountOf(u"removed:/") +
                                    handler.CountOf(u"arrived:/proc") + handler.CountOf(u"removed:/home"));
        watcher.RemoveEventsHandler(&handler);
    }

    void ShutdownTest()
    {
        CRecordingMessageBox messages;
        CApplication application;
        {
            CSystemWatcher watcher;
            watcher.Create(&application);
            CPPUNIT_ASSERT_EQUAL(1, application.m_aHandlers.GetSize());
            CPPUNIT_ASSERT(watcher.Start());
            application.Exit();
            CPPUNIT_ASSERT(!watcher.IsStarted());
            // A second exit does nothing; the watcher may be started again.
            CPPUNIT_ASSERT(TimeExit(watcher) < 100);
            CPPUNIT_ASSERT(watcher.Start());
        }
        // Destroyed, the watcher has stopped and left the application.
        CPPUNIT_ASSERT_EQUAL(0, application.m_aHandlers.GetSize());
        CPPUNIT_ASSERT(messages.m_aTexts.empty());
    }

    void ShutdownTimeoutTest()
    {
        // A drive thread stuck in opening its table (a pipe nobody writes) keeps the watcher thread
        // from ending: the shutdown says so and goes on.
        CTempFolder temp;
        const fs::path pathPipe = temp / "pipe";
        CPPUNIT_ASSERT_EQUAL(0, ::mkfifo(pathPipe.c_str(), 0600));
        const int nThreadsBefore = CWinThread::GetRunningCount();
        CRecordingMessageBox messages;
        {
            CSystemWatcher watcher(200);
            CPPUNIT_ASSERT(watcher.Start(ToCString(pathPipe)));
            const long long nMilliseconds = TimeExit(watcher);
            CPPUNIT_ASSERT(nMilliseconds >= 200);
            CPPUNIT_ASSERT(nMilliseconds < 3000);
            CPPUNIT_ASSERT(!watcher.IsStarted());
        }
        CPPUNIT_ASSERT_EQUAL(std::size_t(1), messages.m_aTexts.size());
        CPPUNIT_ASSERT(messages.m_aTexts[0] == u"Wait timeout. System Watcher thread");

        // Released, the stuck threads end by themselves and free what they kept.
        const Clock::time_point tEnd = Clock::now() + std::chrono::seconds(5);
        bool bReleased = false;
        while (Clock::now() < tEnd && (!bReleased || CWinThread::GetRunningCount() != nThreadsBefore))
        {
            const int hPipe = ::open(pathPipe.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
            if (hPipe >= 0)
            {
                bReleased = true;
                ::close(hPipe);
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
        CPPUNIT_ASSERT(bReleased);
        CPPUNIT_ASSERT_EQUAL(nThreadsBefore, CWinThread::GetRunningCount());
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CSystemWatcherTest, "All Tests");
