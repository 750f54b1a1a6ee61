#include "CWatcherHandlerThread.h"

void CWatcherHandlerThread::SetSource(const std::weak_ptr<IEventSink>& pSource)
{
    std::lock_guard lock(m_mutex);
    m_pSource = pSource;
}

void CWatcherHandlerThread::QueueEvent(SEvent::KIND nKind, const CString& csPath)
{
    bool bWake = false;
    {
        std::lock_guard lock(m_mutex);
        if (nKind == SEvent::FOLDER_CHANGED && !m_aWaitingFolders.insert(csPath.Str()).second)
            return;
        bWake = m_aEvents.empty();
        m_aEvents.push_back(SEvent{nKind, csPath});
    }
    // One message wakes the loop for all events queued until it runs.
    if (bWake)
        PostThreadMessage(EVENTS_MESSAGE, 0, 0);
}

BOOL CWatcherHandlerThread::OnThreadMessage(const SMessage& msg)
{
    if (msg.message == QUIT_MESSAGE)
        return FALSE;
    if (msg.message != EVENTS_MESSAGE)
        return TRUE;
    for (;;)
    {
        SEvent event;
        std::shared_ptr<IEventSink> pSource;
        {
            std::lock_guard lock(m_mutex);
            if (m_aEvents.empty())
                break;
            event = std::move(m_aEvents.front());
            m_aEvents.pop_front();
            if (event.nKind == SEvent::FOLDER_CHANGED)
                m_aWaitingFolders.erase(event.csPath.Str());
            pSource = m_pSource.lock();
        }
        if (pSource)
            pSource->SendEvent(event);
    }
    return TRUE;
}
