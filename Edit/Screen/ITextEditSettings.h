// ITextEditSettings: what the commands and the view buffer read of the settings: tabs, indents,
// the switches of editing, tag case conventions and date formats.
#pragma once

#include "Edit/Screen/ITextEditSettingsEvents.h"

#include "Common_h/IEventsSender.h"
#include "Platform/CFont.h"
#include "Platform/CString.h"
#include "Platform/Types.h"

struct ITextEditSettings : public IEventsSender<ITextEditSettingsEvents>
{
    virtual int GetTabSize() = 0;
    virtual void SetTabSize(int nTabSize) = 0;
    virtual void ResetTabSize() = 0;
    virtual int GetDefaultTabSize() = 0;
    virtual void ResetIndentSize() = 0;
    virtual void SetIndentSize(int nIndentSize) = 0;
    virtual int GetIndentSize() = 0;
    virtual void SetCursorBeyondEol(BOOL bSet) = 0;
    virtual BOOL GetCursorBeyondEol() = 0;
    virtual void SetBlockCursor(BOOL bSet) = 0;
    virtual BOOL GetBlockCursor() = 0;
    virtual void SetKeepSelection(BOOL bSet) = 0;
    virtual BOOL GetKeepSelection() = 0;
    virtual void SetHostSwitchD(BOOL bSet) = 0;
    virtual BOOL GetHostSwitchD() = 0;
    virtual void SetWrapMode(BOOL bSet) = 0;
    virtual BOOL GetWrapMode() = 0;
    virtual void SetTagNameConv(const int& nConv) = 0;
    virtual int GetTagNameConv() = 0;
    virtual void SetTagAttribConv(const int& nConv) = 0;
    virtual int GetTagAttribConv() = 0;
    virtual void SetTagThirdConv(const int& nConv) = 0;
    virtual int GetTagThirdConv() = 0;
    virtual void SetDateShortFormat(CString csFormat) = 0;
    virtual CString GetDateShortFormat() = 0;
    virtual void SetDateLongFormat(CString csFormat) = 0;
    virtual CString GetDateLongFormat() = 0;
    virtual void SetTimeFormat(CString csFormat) = 0;
    virtual CString GetTimeFormat() = 0;
    virtual void SetHostSwitchA(BOOL bSet) = 0;
    virtual BOOL GetHostSwitchA() = 0;
    virtual void SetInsertSpaces(BOOL bSet) = 0;
    virtual BOOL GetInsertSpaces() = 0;
    virtual void SetAutoFormat(BOOL bSet) = 0;
    virtual BOOL GetAutoFormat() = 0;
    virtual void SetHostSwitchB(BOOL bSet) = 0;
    virtual BOOL GetHostSwitchB() = 0;
    virtual BOOL LoadSettings() = 0;
    virtual BOOL SaveSettings() = 0;
    virtual void GetLogFont(LOGFONTW* pLogFont) = 0;
    virtual BOOL GetHostSwitchC() = 0;

protected:
    ~ITextEditSettings() = default;
};
