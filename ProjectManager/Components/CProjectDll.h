// CProjectDll: the project module as a whole: its messages, read from the string table
// "ProjectManagerStrings.xml" beside the executable.
#pragma once

#include "Platform/CString.h"
#include "Platform/Types.h"

#include <map>

struct IProjectDll
{
    virtual ~IProjectDll() = default;
    // The text of message nId, "Project error <nId>" when the table has none.
    [[nodiscard]] virtual CString LoadString(UINT nId) = 0;
};

class CProjectDll
{
public:
    // Message numbers.
    static constexpr UINT IDS_CANT_OPEN = 13008;
    static constexpr UINT IDS_CANT_LOAD_ITEM = 13009;
    static constexpr UINT IDS_CANT_SAVE_ITEM = 13010;
    static constexpr UINT IDS_CANT_RENAME = 13011;
    static constexpr UINT IDS_NO_SERVICE = 13012;
    static constexpr UINT IDS_CANT_CREATE = 13013;
    static constexpr UINT IDS_NO_FILE = 13014;
    static constexpr UINT IDS_CANT_SAVE = 13015;
    static constexpr UINT IDS_CANT_IMPORT = 13016;
    static constexpr UINT IDS_IMPORT_EXISTS = 13017;

    // The module's one instance.
    static IProjectDll& Instance();

private:
    class CProjectDllImpl;
};

// The implementation: the string table, read on first use.
class CProjectDll::CProjectDllImpl : public IProjectDll
{
public:
    CString LoadString(UINT nId) override;

private:
    std::map<UINT, CString> m_mapStrings; // messages by number
    bool m_bLoaded = false;               // the table has been read
};
