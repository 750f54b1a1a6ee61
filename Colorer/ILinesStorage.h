// ILinesStorage: the text the parser reads, line by line, and tells the parser of its changes.
#pragma once

#include "Common_h/IEventsSender.h"
#include "Platform/CString.h"

// What a lines storage tells the parsers that read it.
struct IEditorEvents
{
    // Lines [nFirstLine, nFirstLine + nOldCount) were replaced by nNewCount lines.
    virtual void OnLinesChanged(int nFirstLine, int nOldCount, int nNewCount) = 0;

protected:
    ~IEditorEvents() = default;
};

struct ILinesStorage : public IEventsSender<IEditorEvents>
{
    // The line without its line end; nLine from 0 to GetLinesCount() - 1.
    virtual const CString& GetLine(int nLine) = 0;
    virtual int GetLinesCount() = 0;

protected:
    ~ILinesStorage() = default;
};
