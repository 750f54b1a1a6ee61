// CConverter: text transformations a web programmer runs on a selection: tabs and spaces, special
// characters and entities, non-ASCII text and numeric character references, and HTML wrapped into or
// taken out of the output statements of ASP, PHP, Perl and JSP. Each takes text and gives new text;
// none fails: what a pattern doesn't match passes through.
#pragma once

#include "Platform/CArray.h"
#include "Platform/CString.h"
#include "Platform/Types.h"

#include <utility>

class CConverter
{
public:
    // What to replace and what replaces it, in the direction the table is applied.
    using Symbol = std::pair<CString, CString>;
    using CSymbols = CArray<Symbol, const Symbol&>;

    // Every tab becomes nTabSize spaces, wherever it stands.
    static CString TabsToSpaces(CString csText, int nTabSize);
    // Every run of nTabSize spaces becomes one tab.
    static CString SpacesToTabs(CString csText, int nTabSize);
    // "&", "<", ">", "\"" and " " to their entities, and back in the same order, so that "&amp;lt;"
    // decodes to "<".
    static CString SpecChar2Entities(CString csText);
    static CString Entities2SpecChar(CString csText);
    // Characters from 127 up to "&#x...;" (bHex) or "&#...;"; a pair of surrogates gives one reference.
    static CString Str2Unicode(const CString& csText, BOOL bHex);
    // Decimal and hexadecimal references back to characters.
    static CString Unicode2Str(const CString& csText);

    static CString HTMLToAsp(const CString& csText);
    static CString AspToHTML(const CString& csText);
    // One statement a line, or with bOneStatement one statement of the whole text; "echo" with
    // bEcho, "print" otherwise.
    static CString HTMLtoPHP(const CString& csText, BOOL bEcho, BOOL bOneStatement);
    static CString PHPtoHTML(const CString& csText);
    static CString HTMLtoPerl(const CString& csText);
    static CString PerlToHTML(const CString& csText);
    static CString HTMLtoJSP(const CString& csText);
    static CString JSPtoHTML(const CString& csText);

private:
    // Replaces, row by row, all occurrences of each row's first member by its second.
    static CString ApplySymbols(CString csText, const CSymbols& aSymbols);
    // One statement in szFormat (its one %s the line) for each line of csText, the last one included
    // even when it is empty.
    static CString WrapLines(const CString& csText, const char16_t* szFormat, const CSymbols& aSymbols);
    // Each statement that szPattern matches gives its group 1, the rest of the text stays.
    static CString UnwrapStatements(const CString& csText, const char16_t* szPattern,
                                    const CSymbols& aSymbols);
    static CSymbols EntityTable();
    static CSymbols Table(std::initializer_list<Symbol> aRows);
};
