// CEmptyTextProcessorEvents: ignores every event of the command processor.
#pragma once

#include "Edit/Commands/ITextProcessorEvents.h"

class CEmptyTextProcessorEvents : public ITextProcessorEvents
{
public:
    void OnChangeSelection(ITextProcessor*, CPoint, CPoint, BOOL) override {}
    void OnChangeCursorPos(ITextProcessor*, CPoint) override {}
    void OnScroll(ITextProcessor*, CPoint) override {}
    void OnEventsGroup(ITextProcessor*, DWORD, int) override {}

protected:
    ~CEmptyTextProcessorEvents() = default;
};
