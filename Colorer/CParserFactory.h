// CParserFactory: the process-wide factory of parsers; it also finds a document's type.
#pragma once

#include "Colorer/CParserSettings.h"
#include "Colorer/IParserFactory.h"

class CParserFactory : public IParserFactory
{
public:
    static IParserFactory* Instance();

    std::unique_ptr<IParser> CreateParser(ILinesStorage* pStorage, const CString& csType,
                                          const CString& csFileName = CString()) override;
    IParserSettings* GetParserSettings() override { return &m_settings; }

    // The type of a document from its file name's extension, then from its first line; "text"
    // where neither tells.
    static CString DetectType(ILinesStorage* pStorage, const CString& csFileName);
    // The type that a first line announces, or "".
    static CString TypeOfFirstLine(const CString& csLine);

private:
    CParserSettings m_settings; // colours shared by all parsers
};
