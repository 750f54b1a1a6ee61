// CWinThread: a thread of its own with a queue of thread messages. The object is owned through a
// std::shared_ptr, and while its thread runs the thread keeps it alive: an owner that gave up waiting
// for the thread may let the object go at any time, and it is freed when the thread ends.
#pragma once

#include "CEvent.h"
#include "Types.h"

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>

class CWinThread : public std::enable_shared_from_this<CWinThread>
{
public:
    // One thread message: its number and two parameters.
    struct SMessage
    {
        UINT message = 0;
        std::uintptr_t wParam = 0;
        std::intptr_t lParam = 0;
    };

    CWinThread() = default;
    CWinThread(const CWinThread&) = delete;
    CWinThread& operator=(const CWinThread&) = delete;
    virtual ~CWinThread();

    // Starts the thread; FALSE if it was started before, the object is not owned by a shared_ptr or
    // the system refused a thread.
    BOOL CreateThread();

    // Appends a message to the thread's queue; FALSE once the thread has ended.
    BOOL PostThreadMessage(UINT nMessage, std::uintptr_t wParam, std::intptr_t lParam);

    // Waits until the thread has ended: WAIT_OBJECT_0, or WAIT_TIMEOUT. A thread that was never started
    // counts as ended. Called on the thread itself it can only time out.
    DWORD WaitForEnd(DWORD dwMilliseconds);

    // True when called on this object's thread.
    [[nodiscard]] bool IsCurrentThread() const;

    // Threads started through this class that have not ended yet, in the whole process.
    [[nodiscard]] static int GetRunningCount() noexcept;

protected:
    // The thread's work. The default is the message loop: it hands each message to OnThreadMessage and
    // ends when that returns FALSE.
    virtual int Run();
    virtual BOOL OnThreadMessage(const SMessage& msg);

    // Takes the next message, waiting up to dwMilliseconds for one: TRUE, or FALSE when none came.
    BOOL GetMessage(SMessage& msg, DWORD dwMilliseconds = INFINITE);

private:
    void ThreadMain() noexcept;

    std::thread m_thread;               // the system thread
    mutable std::mutex m_mutex;         // guards everything below
    std::condition_variable m_cvChange; // a message came or the thread ended
    std::deque<SMessage> m_aMessages;   // messages not yet taken
    std::thread::id m_idThread;         // id of the running thread
    bool m_bStarted = false;            // CreateThread succeeded
    bool m_bEnded = false;              // Run has returned
};
