// IACManager: what an editor asks of the completion services for one request.
#pragma once

#include "AutoComplete/IACCompleteData.h"
#include "AutoComplete/SACInputData.h"

struct IACManager
{
    // The words for the request; the data belongs to the manager and changes with the next request.
    virtual IACCompleteData* GetCompleteData(const SACInputData& inputData) = 0;
    // The characters that open the tip.
    virtual CString GetTTTriggerChars(const SACInputData& inputData) = 0;
    // The information text of the word that the keys lead to, with parameter nParam marked.
    virtual CString GetInfo(const SACInputData& inputData, int nParam) = 0;
    // Whether csChar starts a word of the request's kind.
    virtual BOOL IsCompleteFirstChar(const SACInputData& inputData, const CString& csChar) = 0;
    // Whether csChar ends a word of the request's kind.
    virtual BOOL IsCompleteChar(const SACInputData& inputData, const CString& csChar) = 0;
    // Whether csChar ends a word of any kind in the scheme csType.
    virtual BOOL IsAnyCompleteChar(const CString& csType, const CString& csChar) = 0;
    // Deletes the manager.
    virtual void Release() = 0;

protected:
    virtual ~IACManager() = default;
};
