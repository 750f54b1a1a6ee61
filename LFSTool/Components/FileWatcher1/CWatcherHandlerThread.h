// CWatcherHandlerThread: the thread that hands the watcher's findings to the handlers. Producers queue
// events; the thread's message loop delivers them to its sink (the file watcher, which holds the
// handler list), and ends on the message QUIT_MESSAGE.
#pragma once

#include "Platform/CString.h"
#include "Platform/CWinThread.h"

#include <deque>
#include <memory>
#include <mutex>
#include <string>
#include <unordered_set>

class CWatcherHandlerThread : public CWinThread
{
public:
    // Ends the message loop.
    static constexpr UINT QUIT_MESSAGE = 10000;
    // Events are waiting in the queue.
    static constexpr UINT EVENTS_MESSAGE = 10001;

    // One finding of the watcher.
    struct SEvent
    {
        enum KIND
        {
            FOLDER_CHANGED,
            DRIVE_ARRIVED,
            DRIVE_REMOVED,
        };
        KIND nKind = FOLDER_CHANGED;
        CString csPath;
    };

    // What delivers the events on the thread.
    struct IEventSink
    {
        // Called on the handler thread, one event at a time, in the order queued.
        virtual void SendEvent(const SEvent& event) = 0;

    protected:
        ~IEventSink() = default;
    };

    // The sink that gets the events; it is not kept alive by the thread.
    void SetSource(const std::weak_ptr<IEventSink>& pSource);

    // Queues an event from any thread. A folder change that is still waiting is not queued again, so
    // a burst of changes gives one event per folder.
    void QueueEvent(SEvent::KIND nKind, const CString& csPath);

protected:
    BOOL OnThreadMessage(const SMessage& msg) override;

private:
    std::mutex m_mutex;                                   // guards the members below
    std::weak_ptr<IEventSink> m_pSource;                  // where the events go
    std::deque<SEvent> m_aEvents;                         // events not yet delivered
    std::unordered_set<std::u16string> m_aWaitingFolders; // folders with a change among m_aEvents
};
