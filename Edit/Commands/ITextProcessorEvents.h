// ITextProcessorEvents: what the command processor tells its listeners after a command.
#pragma once

#include "Platform/CPoint.h"
#include "Platform/Types.h"

struct ITextProcessor;

struct ITextProcessorEvents
{
    virtual void OnChangeSelection(ITextProcessor* pProcessor, CPoint ptStart, CPoint ptEnd,
                                   BOOL bColumn) = 0;
    virtual void OnChangeCursorPos(ITextProcessor* pProcessor, CPoint ptCursor) = 0;
    virtual void OnScroll(ITextProcessor* pProcessor, CPoint ptFirstVisible) = 0;
    // Closes the events of one command: dwEvents tells which were sent, nCommand the command.
    virtual void OnEventsGroup(ITextProcessor* pProcessor, DWORD dwEvents, int nCommand) = 0;

protected:
    ~ITextProcessorEvents() = default;
};
