// Registration with a sender and the delivery loop of CEventHandlers.
#include "Common_h/CEventHandlers.h"
#include "Common_h/IEventsSender.h"

#include <cppunit/extensions/HelperMacros.h>
#include <string>
#include <utility>

namespace
{
struct ITickEvents
{
    virtual void OnTick() = 0;

protected:
    ~ITickEvents() = default;
};

class CTickSender : public IEventsSender<ITickEvents>
{
public:
    int AddEventsHandler(ITickEvents* pHandler) override { return m_aHandlers.AddHandler(pHandler); }
    int RemoveEventsHandler(ITickEvents* pHandler) override { return m_aHandlers.RemoveHandler(pHandler); }
    void Tick()
    {
        m_aHandlers.Send<ITickEvents>([](ITickEvents* p) { p->OnTick(); });
    }

    CEventHandlers m_aHandlers;
};

// Writes its name into a shared journal; may register another handler or remove itself on a tick.
class CTickHandler : public ITickEvents
{
public:
    CTickHandler(char ch, std::string& str, CTickSender& sender)
        : m_chName(ch), m_strJournal(str), m_sender(sender)
    {
    }

    void OnTick() override
    {
        m_strJournal += m_chName;
        if (m_pAddOnTick)
            m_sender.AddEventsHandler(std::exchange(m_pAddOnTick, nullptr));
        if (m_bRemoveOnTick)
            m_sender.RemoveEventsHandler(this);
    }

    char m_chName;
    std::string& m_strJournal;
    CTickSender& m_sender;
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
        std::string strJournal;
        CTickSender sender;
        CTickHandler a('a', strJournal, sender), b('b', strJournal, sender), c('c', strJournal, sender),
            d('d', strJournal, sender);

        // Twice registered is registered once; one removal takes it, a second finds nothing.
        CPPUNIT_ASSERT(sender.AddEventsHandler(&a) == 0);
        CPPUNIT_ASSERT(sender.AddEventsHandler(&a) == 0);
        CPPUNIT_ASSERT_EQUAL(1, sender.m_aHandlers.GetSize());
        CPPUNIT_ASSERT(sender.RemoveEventsHandler(&a) == 1);
        CPPUNIT_ASSERT(sender.RemoveEventsHandler(&a) == 0);

        // Order of registration; a handler added during delivery gets the same event; one that
        // removes itself makes the next one miss this event, but not the later ones.
        for (CTickHandler* p : {&b, &a, &c})
            sender.AddEventsHandler(p);
        a.m_pAddOnTick = &d;
        for (const char* szExpected : {"bacd", "bcd", "acd"})
        {
            strJournal.clear();
            b.m_bRemoveOnTick = szExpected == std::string("bcd");
            sender.Tick();
            CPPUNIT_ASSERT_EQUAL(std::string(szExpected), strJournal);
        }
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CEventsTest, "All Tests");
