#include "Common_h/CSendEventsGroup.h"

#include "Platform/CException.h"

#include <exception>

CSendEventsGroup::CSendEventsGroup(DWORD& dwPendingEvents, CEventsGroupSender* pSender)
    : m_bOpener(false), m_pdwPendingEvents(&dwPendingEvents), m_pSender(pSender),
      m_nUncaughtExceptions(std::uncaught_exceptions())
{
    if (!pSender)
        AfxThrowInvalidArgException();
    if (dwPendingEvents == NO_EVENTS_GROUP)
    {
        dwPendingEvents = 0;
        m_bOpener = true;
    }
}

CSendEventsGroup::~CSendEventsGroup() noexcept(false)
{
    if (!m_bOpener)
        return;
    if (std::uncaught_exceptions() > m_nUncaughtExceptions)
    {
        // The scope is left by an exception: a second one from SendEvents would end the process,
        // so it is dropped, and the flags stay as they are just as when it passes on.
        try
        {
            m_pSender->SendEvents(*m_pdwPendingEvents);
        }
        catch (...)
        {
            return;
        }
    }
    else
        m_pSender->SendEvents(*m_pdwPendingEvents);
    *m_pdwPendingEvents = NO_EVENTS_GROUP;
}
