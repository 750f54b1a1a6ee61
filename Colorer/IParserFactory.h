// IParserFactory: where the editor gets its parsers, and their common settings.
#pragma once

#include "Platform/CString.h"

#include <memory>

struct IParser;
struct ILinesStorage;

// The settings shared by all parsers: the colours of the kinds of region.
struct IParserSettings
{
    // The colour (0x00BBGGRR) of a general kind of region, such as "Keyword".
    [[nodiscard]] virtual unsigned GetColor(const CString& csKind) const = 0;
    virtual void SetColor(const CString& csKind, unsigned nColor) = 0;

protected:
    ~IParserSettings() = default;
};

struct IParserFactory
{
    // A parser of the type over pStorage; an unknown type raises CBaseParserExeption. An empty type
    // is found from the extension of csFileName and the first line of the text.
    virtual std::unique_ptr<IParser> CreateParser(ILinesStorage* pStorage, const CString& csType,
                                                  const CString& csFileName = CString()) = 0;
    virtual IParserSettings* GetParserSettings() = 0;

protected:
    ~IParserFactory() = default;
};
