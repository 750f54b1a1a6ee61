// CMacrosItemBase: one recorded command of a macro. An item plays its command on a processor and
// describes itself as a name and a parameter, from which a creator builds the same item again.
#pragma once

#include "Edit/Commands/ITextEditorCommands.h"

#include "Platform/CString.h"

#include <memory>

class CMacrosItemBase
{
public:
    // Builds an item from its name and parameter; null when the name is another item's.
    class CCreatorBase
    {
    public:
        CCreatorBase() = default;
        CCreatorBase(const CCreatorBase&) = delete;
        CCreatorBase& operator=(const CCreatorBase&) = delete;
        virtual std::unique_ptr<CMacrosItemBase> Create(const CString& csName, const CString& csParam) = 0;
        virtual ~CCreatorBase() = default;
    };

    CMacrosItemBase() = default;
    CMacrosItemBase(const CMacrosItemBase&) = delete;
    CMacrosItemBase& operator=(const CMacrosItemBase&) = delete;

    virtual void Play(ITextEditorCommands* pCommands) = 0;
    virtual ~CMacrosItemBase() = default;
    [[nodiscard]] virtual CString GetName() const = 0;
    // Empty for a command without a parameter.
    [[nodiscard]] virtual CString GetParam() const = 0;
};
