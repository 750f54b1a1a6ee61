// Registration with a sender and the delivery loop of CEventHandlers.
#include "Common_h/CEventHandlers.h"
#include "Common_h/IEventsSender.h"

#include <cppunit/extensions/HelperMacros.h>
#include <utility>
#include <vector>

namespace
{
struct ITickEvents
{
    virtual void OnTick(int nTick) = 0;

protected:
    ~ITickEvents() = default;
};

class CTickSender : public IEventsSender<ITickEvents>
{
public:
    int AddEventsHandler(ITickEvents* pHandler) override { return m_aHandlers.AddHandler(pHandler); }
    int RemoveEventsHandler(ITickEvents* pHandler) override { return m_aHandlers.RemoveHandler(pHandler); }

    void Tick(int nTick)
    {
        m_aHandlers.Send<ITickEvents>([&](ITickEvents* pHandler) { pHandler->OnTick(nTick); });
    }

    CEventHandlers m_aHandlers;
};

// Writes its name and the tick into a shared journal; may register or unregister on a tick.
class CTickHandler : public ITickEvents
{
public:
    CTickHandler(char chName, std::vector<int>& aJournal) : m_chName(chName), m_aJournal(aJournal) {}

    void OnTick(int nTick) override
    {
        m_aJournal.push_back(m_chName * 100 + nTick);
        if (m_pAddOnTick)
            m_pSender->AddEventsHandler(std::exchange(m_pAddOnTick, nullptr));
        if (m_bRemoveOnTick)
            m_pSender->RemoveEventsHandler(this);
    }

    char m_chName;
    std::vector<int>& m_aJournal;
    CTickSender* m_pSender = nullptr;
    ITickEvents* m_pAddOnTick = nullptr;
    bool m_bRemoveOnTick = false;
};
} // namespace

class CEventsTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CEventsTest);
    CPPUNIT_TEST(EventsTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void EventsTest()
    {
        std::vector<int> aJournal;
        CTickSender sender;
        CTickHandler a('a', aJournal), b('b', aJournal), c('c', aJournal), d('d', aJournal);
        a.m_pSender = b.m_pSender = c.m_pSender = &sender;

        // Twice registered is registered once; one removal takes it, a second finds nothing.
        CPPUNIT_ASSERT_EQUAL(0, sender.AddEventsHandler(&a));
        CPPUNIT_ASSERT_EQUAL(0, sender.AddEventsHandler(&a));
        CPPUNIT_ASSERT_EQUAL(1, sender.m_aHandlers.GetSize());
        CPPUNIT_ASSERT_EQUAL(1, sender.RemoveEventsHandler(&a));
        CPPUNIT_ASSERT_EQUAL(0, sender.RemoveEventsHandler(&a));
        sender.Tick(0);
        CPPUNIT_ASSERT(aJournal.empty());

        // Order of registration; a handler added during delivery gets the same event.
        sender.AddEventsHandler(&b);
        sender.AddEventsHandler(&a);
        sender.AddEventsHandler(&c);
        a.m_pAddOnTick = &d;
        sender.Tick(1);
        CPPUNIT_ASSERT(
            (aJournal == std::vector<int>{'b' * 100 + 1, 'a' * 100 + 1, 'c' * 100 + 1, 'd' * 100 + 1}));

        // A handler that removes itself makes the next one miss this event, but not the later ones.
        aJournal.clear();
        b.m_bRemoveOnTick = true;
        sender.Tick(2);
        CPPUNIT_ASSERT((aJournal == std::vector<int>{'b' * 100 + 2, 'c' * 100 + 2, 'd' * 100 + 2}));
        aJournal.clear();
        sender.Tick(3);
        CPPUNIT_ASSERT((aJournal == std::vector<int>{'a' * 100 + 3, 'c' * 100 + 3, 'd' * 100 + 3}));
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CEventsTest, "All Tests");
