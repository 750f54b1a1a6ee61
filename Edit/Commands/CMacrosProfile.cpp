#include "Edit/Commands/CMacrosProfile.h"

#include <climits>

namespace
{
const char16_t FIELD_SEPARATOR = u'|';
const char16_t PARAM_SEPARATOR = u'=';
const char16_t ESCAPE = u'\\';

CString EntryName(int nIndex)
{
    CString cs;
    cs.Format(u"Macro%d", nIndex);
    return cs;
}

int HexDigit(char16_t ch) noexcept
{
    if (ch >= u'0' && ch <= u'9')
        return ch - u'0';
    if (ch >= u'a' && ch <= u'f')
        return ch - u'a' + 10;
    if (ch >= u'A' && ch <= u'F')
        return ch - u'A' + 10;
    return -1;
}

// A decimal number of digits only, within int; FALSE otherwise.
BOOL ParseDecimal(const CString& cs, int& nValue)
{
    if (cs.IsEmpty() || cs.GetLength() > 10)
        return FALSE;
    long long n = 0;
    for (int i = 0; i < cs.GetLength(); ++i)
    {
        if (cs[i] < u'0' || cs[i] > u'9')
            return FALSE;
        n = n * 10 + (cs[i] - u'0');
    }
    if (n > INT_MAX)
        return FALSE;
    nValue = static_cast<int>(n);
    return TRUE;
}

// Cuts the line at each separator; escapes never hold one, so no field is cut wrongly.
void SplitFields(const CString& cs, CStringArray& aFields)
{
    aFields.RemoveAll();
    int nStart = 0;
    for (;;)
    {
        const int nAt = cs.Find(FIELD_SEPARATOR, nStart);
        if (nAt < 0)
        {
            aFields.Add(cs.Mid(nStart));
            return;
        }
        aFields.Add(cs.Mid(nStart, nAt - nStart));
        nStart = nAt + 1;
    }
}
} // namespace

CString CMacrosProfile::Escape(const CString& cs)
{
    CString csResult;
    for (int i = 0; i < cs.GetLength(); ++i)
    {
        const char16_t ch = cs[i];
        if (ch <= 0x20 || ch > 0x7E || ch == ESCAPE || ch == FIELD_SEPARATOR)
            csResult.AppendFormat(u"\\%04X", static_cast<unsigned>(ch));
        else
            csResult += ch;
    }
    return csResult;
}

BOOL CMacrosProfile::Unescape(const CString& cs, CString& csResult)
{
    csResult.Empty();
    for (int i = 0; i < cs.GetLength(); ++i)
    {
        const char16_t ch = cs[i];
        if (ch != ESCAPE)
        {
            csResult += ch;
            continue;
        }
        if (i + 4 >= cs.GetLength())
            return FALSE;
        unsigned nCode = 0;
        for (int k = 1; k <= 4; ++k)
        {
            const int nDigit = HexDigit(cs[i + k]);
            if (nDigit < 0)
                return FALSE;
            nCode = nCode * 16 + static_cast<unsigned>(nDigit);
        }
        csResult += static_cast<char16_t>(nCode);
        i += 4;
    }
    return TRUE;
}

CString CMacrosProfile::FormatEntry(const CMacros& macros)
{
    const SMacrosInfo info = macros.GetInfo(FALSE);
    CString csEntry;
    csEntry.Format(u"%d", info.m_nId);
    csEntry += FIELD_SEPARATOR;
    csEntry += Escape(info.m_csName);
    for (CMacrosItemBase* pItem : macros)
    {
        csEntry += FIELD_SEPARATOR;
        csEntry += Escape(pItem->GetName());
        csEntry += PARAM_SEPARATOR;
        csEntry += Escape(pItem->GetParam());
    }
    return csEntry;
}

std::unique_ptr<CMacros> CMacrosProfile::ParseEntry(const CString& csEntry, CMacrosSupport& support,
                                                    CString& csError)
{
    CStringArray aFields;
    SplitFields(csEntry, aFields);
    if (aFields.GetSize() < 2)
    {
        csError = u"no name";
        return nullptr;
    }
    SMacrosInfo info;
    if (!ParseDecimal(aFields[0], info.m_nId) || info.m_nId < MACROS_FIRST_ID)
    {
        csError = u"bad identifier \"" + aFields[0] + u"\"";
        return nullptr;
    }
    if (!Unescape(aFields[1], info.m_csName))
    {
        csError = u"bad escape in the name";
        return nullptr;
    }
    if (aFields.GetSize() < 3)
    {
        csError = u"no command";
        return nullptr;
    }
    auto pMacros = std::make_unique<CMacros>(&support, info);
    for (int i = 2; i < aFields.GetSize(); ++i)
    {
        const CString& csField = aFields[i];
        CString csItem, csParam;
        const int nAt = csField.Find(PARAM_SEPARATOR);
        if (nAt < 0 || !Unescape(csField.Left(nAt), csItem) || !Unescape(csField.Mid(nAt + 1), csParam))
        {
            csError.Format(u"command %d is damaged", i - 1);
            return nullptr;
        }
        std::unique_ptr<CMacrosItemBase> pItem = support.CreateItem(csItem, csParam);
        if (!pItem)
        {
            csError.Format(u"command %d: unknown \"%s\"", i - 1, Escape(csItem));
            return nullptr;
        }
        if (pItem->GetParam() != csParam)
        {
            csError.Format(u"command %d: bad parameter \"%s\" of %s", i - 1, Escape(csParam), csItem);
            return nullptr;
        }
        pMacros->Add(std::move(pItem));
    }
    return pMacros;
}

BOOL CMacrosProfile::Save(const CMacrosSupport& support, CProfileStore& store)
{
    // The new entries go over the old ones before the count changes, and only then are the old
    // entries beyond the new count removed, so a failed save leaves a readable section.
    const int nOldCount = std::min(static_cast<int>(store.GetProfileInt(SECTION, u"Count", 0)), MAX_ENTRIES);
    const int nCount = std::min(support.GetSize(), MAX_ENTRIES);
    for (int i = 0; i < nCount; ++i)
        if (!store.WriteProfileString(SECTION, EntryName(i + 1), FormatEntry(*support.GetAt(i))))
            return FALSE;
    if (!store.WriteProfileInt(SECTION, u"Count", nCount))
        return FALSE;
    for (int i = nCount + 1; i <= nOldCount; ++i)
        store.WriteProfileString(SECTION, EntryName(i), nullptr);
    return TRUE;
}

int CMacrosProfile::Load(CMacrosSupport& support, const CProfileStore& store, CStringArray& aDamaged)
{
    const CString csCount = store.GetProfileString(SECTION, u"Count", u"");
    int nCount = 0;
    if (csCount.IsEmpty())
        return 0;
    if (!ParseDecimal(csCount, nCount))
    {
        aDamaged.Add(u"Count: not a number");
        return 0;
    }
    if (nCount > MAX_ENTRIES)
    {
        aDamaged.Add(u"Count: too large");
        nCount = MAX_ENTRIES;
    }
    int nAdded = 0;
    for (int i = 1; i <= nCount; ++i)
    {
        const CString csName = EntryName(i);
        const CString csEntry = store.GetProfileString(SECTION, csName, u"");
        CString csError;
        std::unique_ptr<CMacros> pMacros =
            csEntry.IsEmpty() ? nullptr : ParseEntry(csEntry, support, csError);
        if (csEntry.IsEmpty())
            csError = u"missing";
        if (!pMacros)
        {
            aDamaged.Add(csName + u": " + csError);
            continue;
        }
        support.AddMacros(std::move(pMacros));
        ++nAdded;
    }
    return nAdded;
}
