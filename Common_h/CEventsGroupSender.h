// CEventsGroupSender: an object that gathers its notifications of one scope into one call.
#pragma once

#include "Platform/Types.h"

class CEventsGroupSender
{
public:
    virtual ~CEventsGroupSender() = default;

    // Turns the flags gathered during a group into the owner's notifications; the flags are the
    // owner's to define, and 0 is a group in which nothing was added.
    virtual void SendEvents(DWORD dwEvents) = 0;
};
