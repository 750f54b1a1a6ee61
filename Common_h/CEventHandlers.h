// CEventHandlers: a sender's list of handlers, in order of registration. It never owns them.
#pragma once

#include "Platform/CPtrArray.h"

class CEventHandlers : public CPtrArray
{
public:
    // Appends pHandler unless it is in the list already; always 0.
    int AddHandler(void* pHandler)
    {
        for (int i = 0; i < GetSize(); ++i)
            if (GetAt(i) == pHandler)
                return 0;
        Add(pHandler);
        return 0;
    }

    // Removes the first entry equal to pHandler: 1, or 0 if there is none.
    int RemoveHandler(void* pHandler)
    {
        for (int i = 0; i < GetSize(); ++i)
            if (GetAt(i) == pHandler)
            {
                RemoveAt(i);
                return 1;
            }
        return 0;
    }

    // Delivers one event: calls fn with each handler in order of registration. The length is read
    // anew after each call and no copy is taken, so a handler added during delivery gets the event
    // too and one that removes itself makes the next one miss it; both are meant.
    template <typename T, typename Fn> void Send(Fn&& fn)
    {
        for (int i = 0; i < GetSize(); ++i)
            fn(static_cast<T*>(GetAt(i)));
    }
};
