// ITextEditorCommands: the commands of the keyboard, the menus and macros. A move's nSelectMode is
// 0 plain, 1 extending the selection, 2 extending a column selection.
#pragma once

#include "Platform/Types.h"

struct ITextEditorCommands
{
    virtual void DoMoveUp(int nSelectMode) = 0;
    virtual void DoMoveDown(int nSelectMode) = 0;
    virtual void DoMoveLeft(int nSelectMode) = 0;
    virtual void DoMoveRight(int nSelectMode) = 0;
    virtual void DoMovePageUp(int nSelectMode) = 0;
    virtual void DoMovePageDown(int nSelectMode) = 0;
    virtual void DoMoveHome(int nSelectMode) = 0;
    virtual void DoMoveEnd(int nSelectMode) = 0;
    virtual void DoMoveWordLeft(int nSelectMode) = 0;
    virtual void DoMoveWordRight(int nSelectMode) = 0;
    virtual void DoMoveStartPage(int nSelectMode) = 0;
    virtual void DoMoveEndPage(int nSelectMode) = 0;
    virtual void DoMoveStartDoc(int nSelectMode) = 0;
    virtual void DoMoveEndDoc(int nSelectMode) = 0;
    virtual void DoMoveLineUp(int nSelectMode) = 0;
    virtual void DoMoveLineDown(int nSelectMode) = 0;
    virtual void DoChar(wchar_t ch) = 0;
    virtual void DoBackspace() = 0;
    virtual void DoTab() = 0;
    virtual void DoUntab() = 0;
    virtual void DoDelete() = 0;
    virtual void DoDeleteLine() = 0;
    virtual void DoDeleteToEndOfLine() = 0;
    virtual void DoDeleteToStartOfLine() = 0;
    virtual void DoDeleteWord() = 0;
    virtual void DoDeleteToEndOfWord() = 0;
    virtual void DoDeleteToStartOfWord() = 0;
    virtual void DoIncreaseIndent() = 0;
    virtual void DoDecreaseIndent() = 0;
    virtual void DoUndo() = 0;
    virtual void DoRedo() = 0;
    virtual BOOL CanUndo() = 0;
    virtual BOOL CanRedo() = 0;
    virtual void DoSelectWord() = 0;
    virtual void DoSelectLine() = 0;
    virtual void DoSelectAll() = 0;
    virtual void DoCopy() = 0;
    virtual void DoPaste() = 0;
    virtual void DoCut() = 0;
    virtual void DoCutAppend() = 0;
    virtual void DoCopyAppend() = 0;
    virtual BOOL CanCopy() = 0;
    virtual BOOL CanPaste() = 0;
    virtual BOOL CanCut() = 0;
    virtual BOOL CanCutAppend() = 0;
    virtual BOOL CanCopyAppend() = 0;
    virtual void DoUpperCase() = 0;
    virtual void DoLowerCase() = 0;
    virtual void DoInvertCase() = 0;
    virtual void DoCapitalizeCase() = 0;
    virtual void DoDuplicateLines() = 0;
    virtual void Do1TextFormat() = 0;
    virtual void DoCommentText() = 0;
    virtual void DoUnCommentText() = 0;
    virtual void DoTagCaseConvert() = 0;
    virtual void DoInsertTextDateLong() = 0;
    virtual void DoInsertTextDateShort() = 0;
    virtual void DoInsertTextDateTime() = 0;

protected:
    ~ITextEditorCommands() = default;
};
