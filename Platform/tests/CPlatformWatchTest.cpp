// What the watchers stand on: the reading of the mount table and threads with their message queues.
#include "Platform/CEvent.h"
#include "Platform/CMountTable.h"
#include "Platform/CTempFolder.h"
#include "Platform/CWinThread.h"

#include <cppunit/extensions/HelperMacros.h>
#include <fstream>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace
{
// Keeps the messages it gets, and ends on number 0 after optionally throwing on number 1.
class CRecordingThread : public CWinThread
{
public:
    std::vector<UINT> m_aMessages;

protected:
    BOOL OnThreadMessage(const SMessage& msg) override
    {
        m_aMessages.push_back(msg.message + static_cast<UINT>(msg.wParam) + static_cast<UINT>(msg.lParam));
        if (msg.message == 1)
            throw std::runtime_error("a failing message");
        return msg.message != 0;
    }
};
} // namespace

class CPlatformWatchTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CPlatformWatchTest);
    CPPUNIT_TEST(MountTableTest);
    CPPUNIT_TEST(WinThreadTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void MountTableTest()
    {
        const CTempFolder temp("CPlatformWatchTest");
        std::ofstream(temp / "mounts") << "/dev/sdb1 /media/my\\040stick vfat rw 0 0\n"
                                          "short line\n\n# a comment\n"
                                          "  server:/x\t/mnt/a\\134b\\09 nfs4 rw 0 0\n"
                                          "/dev/loop3 /snap/core squashfs ro 0 0";
        CArray<CMountTable::SMount> aMounts;
        CPPUNIT_ASSERT(CMountTable(temp.GetFolder() + u"mounts").Read(aMounts));
        CString csRead;
        for (const CMountTable::SMount& mount : aMounts)
            csRead += mount.csSource + u"|" + mount.csMountPoint + u"|" + mount.csType + u"\n";
        // A broken escape stays as written.
        CPPUNIT_ASSERT_EQUAL(std::string("/dev/sdb1|/media/my stick|vfat\nserver:/x|/mnt/a\\b\\09|nfs4\n"
                                         "/dev/loop3|/snap/core|squashfs\n"),
                             csRead.ToUtf8());
        // What is no table reads as nothing.
        for (const CString& csNoTable :
             {CString(u"/no/such/mounts"), CString(u"/dev/zero"), temp.GetFolder()})
        {
            CPPUNIT_ASSERT_MESSAGE(csNoTable.ToUtf8(), !CMountTable(csNoTable).Read(aMounts));
            CPPUNIT_ASSERT_MESSAGE(csNoTable.ToUtf8(), aMounts.IsEmpty());
        }

        const struct
        {
            const char16_t* szSource;
            const char16_t* szType;
            BOOL bDrive;
        } aCases[] = {{u"/dev/sdb1", u"vfat", TRUE},  {u"/dev/loop3", u"squashfs", FALSE},
                      {u"server:/x", u"nfs4", TRUE},  {u"//srv/share", u"cifs", TRUE},
                      {u"proc", u"proc", FALSE},      {u"tmpfs", u"tmpfs", FALSE},
                      {u"overlay", u"overlay", FALSE}};
        for (const auto& c : aCases)
            CPPUNIT_ASSERT_EQUAL(c.bDrive, CMountTable::IsDrive({c.szSource, u"/m", c.szType}));

        CPPUNIT_ASSERT(CMountTable().Read(aMounts));
        CPPUNIT_ASSERT(!aMounts.IsEmpty());
        CEvent evStop(TRUE);
        CPPUNIT_ASSERT_EQUAL(WAIT_OBJECT_0, CMountTable().WaitForChange(INFINITE, &evStop));
    }

    void WinThreadTest()
    {
        // Messages come in order; an exception in the loop ends the thread, not the process.
        auto pThread = std::make_shared<CRecordingThread>();
        CPPUNIT_ASSERT_EQUAL(WAIT_OBJECT_0, pThread->WaitForEnd(0)); // never started
        CPPUNIT_ASSERT(pThread->PostThreadMessage(5, 1, 2));
        CPPUNIT_ASSERT(pThread->CreateThread());
        CPPUNIT_ASSERT(!pThread->CreateThread());
        CPPUNIT_ASSERT(!pThread->IsCurrentThread());
        pThread->PostThreadMessage(7, 0, 0);
        pThread->PostThreadMessage(1, 0, 0);
        CPPUNIT_ASSERT_EQUAL(WAIT_OBJECT_0, pThread->WaitForEnd(5000));
        CPPUNIT_ASSERT(!pThread->PostThreadMessage(9, 0, 0));
        CPPUNIT_ASSERT(std::vector<UINT>({8, 7, 1}) == pThread->m_aMessages);

        // A thread that is not ended by its owner times out the wait, and the owner may let it go.
        auto pBusy = std::make_shared<CRecordingThread>();
        CPPUNIT_ASSERT(pBusy->CreateThread());
        CPPUNIT_ASSERT_EQUAL(WAIT_TIMEOUT, pBusy->WaitForEnd(20));
        std::weak_ptr<CRecordingThread> pWeak = pBusy;
        pBusy->PostThreadMessage(0, 0, 0);
        pBusy.reset();
        CEvent evNever;
        CPPUNIT_ASSERT_EQUAL(WAIT_TIMEOUT, evNever.Wait(10));
        for (int i = 0; i < 500 && !pWeak.expired(); ++i)
            evNever.Wait(10);
        CPPUNIT_ASSERT(pWeak.expired());

        // A plain object is no thread owner.
        CRecordingThread plain;
        CPPUNIT_ASSERT(!plain.CreateThread());
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CPlatformWatchTest, "All Tests");
