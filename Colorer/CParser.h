// CParser: the parser of one document. It keeps each line's end state of the lexer, lexes lines on
// demand up to the one asked for, and after an edit lexes again from the first changed line only
// until a line ends in the state it had before.
#pragma once

#include "Colorer/CLexer.h"
#include "Colorer/ILinesStorage.h"
#include "Colorer/IParser.h"

#include "Common_h/CEventHandlers.h"

#include <cstdint>
#include <list>
#include <memory>
#include <unordered_map>
#include <vector>

class CParser : public IParser, private IEditorEvents
{
public:
    // Whether csType names a type of parser.
    static bool IsKnownType(const CString& csType);

    // Raises CBaseParserExeption for an unknown type.
    CParser(ILinesStorage* pStorage, const CString& csType);
    ~CParser() override;
    CParser(const CParser&) = delete;
    CParser& operator=(const CParser&) = delete;

    int AddEventsHandler(IParserEvents* pHandler) override;
    int RemoveEventsHandler(IParserEvents* pHandler) override;

    [[nodiscard]] CString GetParserType() const override { return m_csType; }
    void SetType(const CString& csType) override;
    void Parse() override;

    const LineRegion* GetLineRegion(int nLine) override;
    const LineRegion* GetLineStyleRegion(int nLine) override;
    CParserRegion GetRegion(const CPoint& ptPosition) override;

    CSyntaxPath GetPath(const CPoint& ptPosition) override;
    CSyntaxPath GetHtmlSyntaxPath(const CPoint& ptPosition) override;
    CPairInfo FindAroundPair(const CPoint& ptPosition) override;
    BOOL FindAroundTagBracket(const CPoint& ptPosition, CPoint& ptStart, CPoint& ptEnd) override;
    CFuncInfo GetFuncInfo(const CPoint& ptPosition) override;

    SCommentData GetCommentData(const CPoint& ptStart, const CPoint& ptEnd, BOOL bComment) override;
    CString AutoFormat(const CString& csText) override;
    CString AttributeConvert(const CString& csText, BOOL bUpper) override;
    CString NameConvert(const CString& csText, BOOL bUpper) override;

    void PaintLines(ITextColorBuffer* pColors, int nFirstLine, int nLastLine) override;
    void GetFoldRegions(std::vector<SFoldRegion>& aRegions) override;
    void FillOutlining(IOutliningBuffer* pOutlining) override;

    // The tokens of a line, lexed from the end state of the line before.
    void GetLineTokens(int nLine, std::vector<CLexer::SToken>& aTokens);
    // How many lines hold an end state that is up to date; for checks of the lazy lexing.
    [[nodiscard]] int GetValidLinesCount() const noexcept { return m_nValid; }
    // The number of lines lexed since the parser was made; for checks of the incremental lexing.
    [[nodiscard]] long long GetLexedLinesCount() const noexcept { return m_nLexedLines; }
    // Checks the bookkeeping of line states: counts in order, every state id known.
    void AssertValid() const;

    // The scheme and region objects the records point to.
    static const Scheme* GetScheme(int nLang, int nPart);
    static const Region* GetRegionType(int nLang, int nKind);

    // An element of the document's markup, as the structure queries see it.
    struct SElement
    {
        std::u16string strName;
        CPoint ptOpenStart, ptOpenEnd, ptCloseStart, ptCloseEnd;
        CPoint ptSpanEnd;     // where the element's content ends, for unclosed ones where it was closed
        bool bClosed = false; // an explicit closing tag was found
        int nParent = -1;     // the index of the enclosing element
    };
    // A tag of the markup from '<' to behind '>'.
    struct STag
    {
        CPoint ptStart, ptEnd;
        bool bClose = false;
        std::u16string strName;
    };
    // The elements and tags of the whole document, built on first use after each change.
    const std::vector<SElement>& GetElements();
    const std::vector<STag>& GetTags();

private:
    void OnLinesChanged(int nFirstLine, int nOldCount, int nNewCount) override;

    void Reset();
    // Lexes states up to and including nLine.
    void EnsureLexed(int nLine);
    [[nodiscard]] CLexer::SState StartState(int nLine);
    std::uint32_t Intern(const CLexer::SState& st);
    const std::vector<LineRegion>& BuildRegions(int nLine, bool bStyle);
    void BuildStructure();
    [[nodiscard]] int LineLength(int nLine);

    struct SStateHash
    {
        std::size_t operator()(const CLexer::SState& st) const noexcept;
    };

    ILinesStorage* m_pStorage;             // the text; not owned
    CString m_csType;                      // the parser's type, such as "html"
    std::unique_ptr<CLexer> m_pLexer;      // the lexer of the type
    CEventHandlers m_handlers;             // listeners of IParserEvents; not owned
    std::vector<CLexer::SState> m_aStates; // the distinct end states
    std::unordered_map<CLexer::SState, std::uint32_t, SStateHash> m_mapStates; // state to its index
    std::vector<std::uint32_t> m_aEndState; // per line, the index of its end state
    int m_nValid = 0;                       // lines below this hold up-to-date end states
    int m_nDirtyEnd = 0;         // lines below this, from m_nValid on, changed and must be lexed again
    int m_nKnown = 0;            // lines below this hold a state, up to date or left from before a change
    long long m_nLexedLines = 0; // lines lexed in all
    // Regions handed out, by line and kind, until the next change.
    std::unordered_map<long long, std::vector<LineRegion>> m_mapRegions;
    bool m_bStructure = false;         // the elements and tags are up to date
    std::vector<SElement> m_aElements; // the elements in order of their opening tags
    std::vector<STag> m_aTags;         // the tags in order
};
