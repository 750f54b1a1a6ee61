// IEventsSender: how a handler of the events interface T registers with the object that sends them.
#pragma once

template <typename T> struct IEventsSender
{
    // Adds the handler unless the very same pointer is registered already; always 0.
    virtual int AddEventsHandler(T* pHandler) = 0;
    // Removes the handler: 1 if it was registered, 0 otherwise.
    virtual int RemoveEventsHandler(T* pHandler) = 0;

protected:
    ~IEventsSender() = default;
};
