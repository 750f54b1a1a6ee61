// The region records of a line as the parser hands them out: types of region, schemes and the list.
#pragma once

#include "Platform/CString.h"

// A scheme: the language or part of one in which a stretch of text stands ("html:htmlTags").
class Scheme
{
public:
    explicit Scheme(CString csName) : m_csName(std::move(csName)) {}
    [[nodiscard]] const CString& getName() const noexcept { return m_csName; }

private:
    CString m_csName; // "language:part"
};

// A type of region ("jvScript:Keyword"), with the general type it belongs to ("def:Keyword").
class Region
{
public:
    Region(CString csName, const Region* pParent) : m_csName(std::move(csName)), m_pParent(pParent) {}
    [[nodiscard]] const CString& getName() const noexcept { return m_csName; }
    [[nodiscard]] const Region* getParent() const noexcept { return m_pParent; }
    // Whether this type is pType or derives from it.
    [[nodiscard]] bool hasParent(const Region* pType) const noexcept
    {
        for (const Region* p = this; p; p = p->m_pParent)
            if (p == pType)
                return true;
        return false;
    }

private:
    CString m_csName;        // "language:Kind"
    const Region* m_pParent; // the general type, null for a general type itself
};

// One record of a line's regions. end -1 means that it goes on to the line's end. A record with a
// null region marks the stretch of a scheme; the others carry the type of their text.
struct LineRegion
{
    int start = 0;
    int end = 0;
    const Region* region = nullptr;
    const Scheme* scheme = nullptr;
    LineRegion* next = nullptr;
};
