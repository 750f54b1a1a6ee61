#include "Edit/Commands/CMacrosTextProcessor.h"

#include <climits>

CString CMacrosTextProcessor::CMacrosItemDoChar::GetParam() const
{
    const auto nCode = static_cast<std::uint32_t>(m_ch);
    if (nCode > 0xFFFF && nCode <= 0x10FFFF)
    {
        CString cs(static_cast<char16_t>(0xD800 + ((nCode - 0x10000) >> 10)));
        cs += static_cast<char16_t>(0xDC00 + ((nCode - 0x10000) & 0x3FF));
        return cs;
    }
    return CString(static_cast<char16_t>(nCode & 0xFFFF));
}

std::unique_ptr<CMacrosItemBase>
CMacrosTextProcessor::CMacrosItemDoChar::CCreatorDoChar::Create(const CString& csName, const CString& csParam)
{
    if (csName != u"DoChar")
        return nullptr;
    wchar_t ch = 0;
    if (!csParam.IsEmpty())
    {
        ch = csParam[0];
        // A surrogate pair is one character.
        if (ch >= 0xD800 && ch <= 0xDBFF && csParam.GetLength() > 1 && csParam[1] >= 0xDC00 &&
            csParam[1] <= 0xDFFF)
            ch = static_cast<wchar_t>(0x10000 + ((ch - 0xD800) << 10) + (csParam[1] - 0xDC00));
    }
    return std::make_unique<CMacrosItemDoChar>(ch);
}

void CMacrosTextProcessor::MakeCreators(COwningPtrArray<CMacrosItemBase::CCreatorBase>& aCreators)
{
    aCreators.RemoveAll();
    aCreators.Add(std::make_unique<CMacrosItemDoMoveUp::CCreator>());
    aCreators.Add(std::make_unique<CMacrosItemDoMoveUp::CCreator>());
    aCreators.Add(std::make_unique<CMacrosItemDoMoveDown::CCreator>());
    aCreators.Add(std::make_unique<CMacrosItemDoMoveLeft::CCreator>());
    aCreators.Add(std::make_unique<CMacrosItemDoMoveRight::CCreator>());
    aCreators.Add(std::make_unique<CMacrosItemDoMovePageUp::CCreator>());
    aCreators.Add(std::make_unique<CMacrosItemDoMovePageDown::CCreator>());
    aCreators.Add(std::make_unique<CMacrosItemDoMoveHome::CCreator>());
    aCreators.Add(std::make_unique<CMacrosItemDoMoveEnd::CCreator>());
    aCreators.Add(std::make_unique<CMacrosItemDoMoveWordLeft::CCreator>());
    aCreators.Add(std::make_unique<CMacrosItemDoMoveWordRight::CCreator>());
    aCreators.Add(std::make_unique<CMacrosItemDoMoveStartPage::CCreator>());
    aCreators.Add(std::make_unique<CMacrosItemDoMoveEndPage::CCreator>());
    aCreators.Add(std::make_unique<CMacrosItemDoMoveStartDoc::CCreator>());
    aCreators.Add(std::make_unique<CMacrosItemDoMoveEndDoc::CCreator>());
    aCreators.Add(std::make_unique<CMacrosItemDoMoveLineUp::CCreator>());
    aCreators.Add(std::make_unique<CMacrosItemDoMoveLineDown::CCreator>());
    aCreators.Add(std::make_unique<CMacrosItemDoChar::CCreatorDoChar>());
    aCreators.Add(std::make_unique<CMacrosItemDoBackspace::CCreator>());
    aCreators.Add(std::make_unique<CMacrosItemDoTab::CCreator>());
    aCreators.Add(std::make_unique<CMacrosItemDoUntab::CCreator>());
    aCreators.Add(std::make_unique<CMacrosItemDoDelete::CCreator>());
    aCreators.Add(std::make_unique<CMacrosItemDoDeleteLine::CCreator>());
    aCreators.Add(std::make_unique<CMacrosItemDoDeleteToEndOfLine::CCreator>());
    aCreators.Add(std::make_unique<CMacrosItemDoDeleteToStartOfLine::CCreator>());
    aCreators.Add(std::make_unique<CMacrosItemDoDeleteWord::CCreator>());
    aCreators.Add(std::make_unique<CMacrosItemDoDeleteToEndOfWord::CCreator>());
    aCreators.Add(std::make_unique<CMacrosItemDoDeleteToStartOfWord::CCreator>());
    aCreators.Add(std::make_unique<CMacrosItemDoIncreaseIndent::CCreator>());
    aCreators.Add(std::make_unique<CMacrosItemDoDecreaseIndent::CCreator>());
    aCreators.Add(std::make_unique<CMacrosItemDoCanUndo::CCreator>());
    aCreators.Add(std::make_unique<CMacrosItemDoCanRedo::CCreator>());
    aCreators.Add(std::make_unique<CMacrosItemDoSelectWord::CCreator>());
    aCreators.Add(std::make_unique<CMacrosItemDoSelectLine::CCreator>());
    aCreators.Add(std::make_unique<CMacrosItemDoSelectAll::CCreator>());
    aCreators.Add(std::make_unique<CMacrosItemDoCanCopy::CCreator>());
    aCreators.Add(std::make_unique<CMacrosItemDoCanPaste::CCreator>());
    aCreators.Add(std::make_unique<CMacrosItemDoCanCut::CCreator>());
    aCreators.Add(std::make_unique<CMacrosItemDoCanCutAppend::CCreator>());
    aCreators.Add(std::make_unique<CMacrosItemDoCanCopyAppend::CCreator>());
    aCreators.Add(std::make_unique<CMacrosItemDoUpperCase::CCreator>());
    aCreators.Add(std::make_unique<CMacrosItemDoLowerCase::CCreator>());
    aCreators.Add(std::make_unique<CMacrosItemDoInvertCase::CCreator>());
    aCreators.Add(std::make_unique<CMacrosItemDoCapitalizeCase::CCreator>());
    aCreators.Add(std::make_unique<CMacrosItemDoDuplicateLines::CCreator>());
    aCreators.Add(std::make_unique<CMacrosItemDoCommentText::CCreator>());
    aCreators.Add(std::make_unique<CMacrosItemDoUnCommentText::CCreator>());
    aCreators.Add(std::make_unique<CMacrosItemDoTagCaseConvert::CCreator>());
    aCreators.Add(std::make_unique<CMacrosItemDoInsertTextDateLong::CCreator>());
    aCreators.Add(std::make_unique<CMacrosItemDoInsertTextDateShort::CCreator>());
    aCreators.Add(std::make_unique<CMacrosItemDoInsertTextDateTime::CCreator>());
    aCreators.Add(std::make_unique<CMacrosItemDo1TextFormat::CCreator>());
}

int CMacrosTextProcessor::ParseInt(const CString& csParam) noexcept
{
    const std::u16string& str = csParam.Str();
    std::size_t i = 0;
    while (i < str.size() && (str[i] == u' ' || (str[i] >= u'\t' && str[i] <= u'\r')))
        ++i;
    bool bNegative = false;
    if (i < str.size() && (str[i] == u'+' || str[i] == u'-'))
        bNegative = str[i++] == u'-';
    long long nValue = 0;
    for (; i < str.size() && str[i] >= u'0' && str[i] <= u'9'; ++i)
        nValue = std::min<long long>(nValue * 10 + (str[i] - u'0'), static_cast<long long>(INT_MAX) + 1);
    if (bNegative)
        return static_cast<int>(-nValue);
    return static_cast<int>(std::min<long long>(nValue, INT_MAX));
}

void CMacrosTextProcessor::Create(ITextViewBuffer* pViewBuffer, ITextEditSettings* pSettings,
                                  ITextScreen* pScreen, ICWnd* pWnd, ITPMacrosSupport* pMacrosSupport)
{
    CAITextProcessor::Create(pViewBuffer, pSettings, pScreen, pWnd);
    m_pMacrosSupport = pMacrosSupport;
}

void CMacrosTextProcessor::Close()
{
    m_pMacrosSupport = nullptr;
    CAITextProcessor::Close();
}

// Each command runs first and is recorded afterwards, with the arguments of the call.
void CMacrosTextProcessor::DoMoveUp(int nSelectMode)
{
    CAITextProcessor::DoMoveUp(nSelectMode);
    Record<CMacrosItemDoMoveUp>(nSelectMode);
}

void CMacrosTextProcessor::DoMoveDown(int nSelectMode)
{
    CAITextProcessor::DoMoveDown(nSelectMode);
    Record<CMacrosItemDoMoveDown>(nSelectMode);
}

void CMacrosTextProcessor::DoMoveLeft(int nSelectMode)
{
    CAITextProcessor::DoMoveLeft(nSelectMode);
    Record<CMacrosItemDoMoveLeft>(nSelectMode);
}

void CMacrosTextProcessor::DoMoveRight(int nSelectMode)
{
    CAITextProcessor::DoMoveRight(nSelectMode);
    Record<CMacrosItemDoMoveRight>(nSelectMode);
}

void CMacrosTextProcessor::DoMovePageUp(int nSelectMode)
{
    CAITextProcessor::DoMovePageUp(nSelectMode);
    Record<CMacrosItemDoMovePageUp>(nSelectMode);
}

void CMacrosTextProcessor::DoMovePageDown(int nSelectMode)
{
    CAITextProcessor::DoMovePageDown(nSelectMode);
    Record<CMacrosItemDoMovePageDown>(nSelectMode);
}

void CMacrosTextProcessor::DoMoveHome(int nSelectMode)
{
    CAITextProcessor::DoMoveHome(nSelectMode);
    Record<CMacrosItemDoMoveHome>(nSelectMode);
}

void CMacrosTextProcessor::DoMoveEnd(int nSelectMode)
{
    CAITextProcessor::DoMoveEnd(nSelectMode);
    Record<CMacrosItemDoMoveEnd>(nSelectMode);
}

void CMacrosTextProcessor::DoMoveWordLeft(int nSelectMode)
{
    CAITextProcessor::DoMoveWordLeft(nSelectMode);
    Record<CMacrosItemDoMoveWordLeft>(nSelectMode);
}

void CMacrosTextProcessor::DoMoveWordRight(int nSelectMode)
{
    CAITextProcessor::DoMoveWordRight(nSelectMode);
    Record<CMacrosItemDoMoveWordRight>(nSelectMode);
}

void CMacrosTextProcessor::DoMoveStartPage(int nSelectMode)
{
    CAITextProcessor::DoMoveStartPage(nSelectMode);
    Record<CMacrosItemDoMoveStartPage>(nSelectMode);
}

void CMacrosTextProcessor::DoMoveEndPage(int nSelectMode)
{
    CAITextProcessor::DoMoveEndPage(nSelectMode);
    Record<CMacrosItemDoMoveEndPage>(nSelectMode);
}

void CMacrosTextProcessor::DoMoveStartDoc(int nSelectMode)
{
    CAITextProcessor::DoMoveStartDoc(nSelectMode);
    Record<CMacrosItemDoMoveStartDoc>(nSelectMode);
}

void CMacrosTextProcessor::DoMoveEndDoc(int nSelectMode)
{
    CAITextProcessor::DoMoveEndDoc(nSelectMode);
    Record<CMacrosItemDoMoveEndDoc>(nSelectMode);
}

void CMacrosTextProcessor::DoMoveLineUp(int nSelectMode)
{
    CAITextProcessor::DoMoveLineUp(nSelectMode);
    Record<CMacrosItemDoMoveLineUp>(nSelectMode);
}

void CMacrosTextProcessor::DoMoveLineDown(int nSelectMode)
{
    CAITextProcessor::DoMoveLineDown(nSelectMode);
    Record<CMacrosItemDoMoveLineDown>(nSelectMode);
}

void CMacrosTextProcessor::DoChar(wchar_t ch)
{
    CAITextProcessor::DoChar(ch);
    DoAutoIndent();
    Record<CMacrosItemDoChar>(ch);
}

void CMacrosTextProcessor::DoBackspace()
{
    CAITextProcessor::DoBackspace();
    Record<CMacrosItemDoBackspace>();
}

void CMacrosTextProcessor::DoTab()
{
    CAITextProcessor::DoTab();
    Record<CMacrosItemDoTab>();
}

void CMacrosTextProcessor::DoUntab()
{
    CAITextProcessor::DoUntab();
    Record<CMacrosItemDoUntab>();
}

void CMacrosTextProcessor::DoDelete()
{
    CAITextProcessor::DoDelete();
    Record<CMacrosItemDoDelete>();
}

void CMacrosTextProcessor::DoDeleteLine()
{
    CAITextProcessor::DoDeleteLine();
    Record<CMacrosItemDoDeleteLine>();
}

void CMacrosTextProcessor::DoDeleteToEndOfLine()
{
    CAITextProcessor::DoDeleteToEndOfLine();
    Record<CMacrosItemDoDeleteToEndOfLine>();
}

void CMacrosTextProcessor::DoDeleteToStartOfLine()
{
    CAITextProcessor::DoDeleteToStartOfLine();
    Record<CMacrosItemDoDeleteToStartOfLine>();
}

void CMacrosTextProcessor::DoDeleteWord()
{
    CAITextProcessor::DoDeleteWord();
    Record<CMacrosItemDoDeleteWord>();
}

void CMacrosTextProcessor::DoDeleteToEndOfWord()
{
    CAITextProcessor::DoDeleteToEndOfWord();
    Record<CMacrosItemDoDeleteToEndOfWord>();
}

void CMacrosTextProcessor::DoDeleteToStartOfWord()
{
    CAITextProcessor::DoDeleteToStartOfWord();
    Record<CMacrosItemDoDeleteToStartOfWord>();
}

void CMacrosTextProcessor::DoIncreaseIndent()
{
    CAITextProcessor::DoIncreaseIndent();
    Record<CMacrosItemDoIncreaseIndent>();
}

void CMacrosTextProcessor::DoDecreaseIndent()
{
    CAITextProcessor::DoDecreaseIndent();
    Record<CMacrosItemDoDecreaseIndent>();
}

void CMacrosTextProcessor::DoUndo()
{
    CAITextProcessor::DoUndo();
    Record<CMacrosItemDoCanUndo>();
}

void CMacrosTextProcessor::DoRedo()
{
    CAITextProcessor::DoRedo();
    Record<CMacrosItemDoCanRedo>();
}

void CMacrosTextProcessor::DoSelectWord()
{
    CAITextProcessor::DoSelectWord();
    Record<CMacrosItemDoSelectWord>();
}

void CMacrosTextProcessor::DoSelectLine()
{
    CAITextProcessor::DoSelectLine();
    Record<CMacrosItemDoSelectLine>();
}

void CMacrosTextProcessor::DoSelectAll()
{
    CAITextProcessor::DoSelectAll();
    Record<CMacrosItemDoSelectAll>();
}

void CMacrosTextProcessor::DoCopy()
{
    CAITextProcessor::DoCopy();
    Record<CMacrosItemDoCanCopy>();
}

void CMacrosTextProcessor::DoPaste()
{
    CAITextProcessor::DoPaste();
    Record<CMacrosItemDoCanPaste>();
}

void CMacrosTextProcessor::DoCut()
{
    CAITextProcessor::DoCut();
    Record<CMacrosItemDoCanCut>();
}

void CMacrosTextProcessor::DoCutAppend()
{
    CAITextProcessor::DoCutAppend();
    Record<CMacrosItemDoCanCutAppend>();
}

void CMacrosTextProcessor::DoCopyAppend()
{
    CAITextProcessor::DoCopyAppend();
    Record<CMacrosItemDoCanCopyAppend>();
}

void CMacrosTextProcessor::DoUpperCase()
{
    CAITextProcessor::DoUpperCase();
    Record<CMacrosItemDoUpperCase>();
}

void CMacrosTextProcessor::DoLowerCase()
{
    CAITextProcessor::DoLowerCase();
    Record<CMacrosItemDoLowerCase>();
}

void CMacrosTextProcessor::DoInvertCase()
{
    CAITextProcessor::DoInvertCase();
    Record<CMacrosItemDoInvertCase>();
}

void CMacrosTextProcessor::DoCapitalizeCase()
{
    CAITextProcessor::DoCapitalizeCase();
    Record<CMacrosItemDoCapitalizeCase>();
}

void CMacrosTextProcessor::DoDuplicateLines()
{
    CAITextProcessor::DoDuplicateLines();
    Record<CMacrosItemDoDuplicateLines>();
}

void CMacrosTextProcessor::Do1TextFormat()
{
    CAITextProcessor::Do1TextFormat();
    Record<CMacrosItemDo1TextFormat>();
}

void CMacrosTextProcessor::DoCommentText()
{
    CAITextProcessor::DoCommentText();
    Record<CMacrosItemDoCommentText>();
}

void CMacrosTextProcessor::DoUnCommentText()
{
    CAITextProcessor::DoUnCommentText();
    Record<CMacrosItemDoUnCommentText>();
}

void CMacrosTextProcessor::DoTagCaseConvert()
{
    CAITextProcessor::DoTagCaseConvert();
    Record<CMacrosItemDoTagCaseConvert>();
}

void CMacrosTextProcessor::DoInsertTextDateLong()
{
    CAITextProcessor::DoInsertTextDateLong();
    Record<CMacrosItemDoInsertTextDateLong>();
}

void CMacrosTextProcessor::DoInsertTextDateShort()
{
    CAITextProcessor::DoInsertTextDateShort();
    Record<CMacrosItemDoInsertTextDateShort>();
}

void CMacrosTextProcessor::DoInsertTextDateTime()
{
    CAITextProcessor::DoInsertTextDateTime();
    Record<CMacrosItemDoInsertTextDateTime>();
}

void CMacrosTextProcessor::InsertCompletion(const CString& csWord)
{
    CAITextProcessor::InsertCompletion(csWord);
    DoAutoIndent();
}

void CMacrosTextProcessor::OnTextLButtonDown(ITextScreen* pScreen, UINT nFlags, CPoint pos)
{
    if (!IsRecording())
        CAITextProcessor::OnTextLButtonDown(pScreen, nFlags, pos);
}

// While recording the button state stays as it is, so a drag begun before goes on after.
void CMacrosTextProcessor::OnTextLButtonUp(ITextScreen* pScreen, UINT nFlags, CPoint pos)
{
    if (!IsRecording())
        CAITextProcessor::OnTextLButtonUp(pScreen, nFlags, pos);
}

void CMacrosTextProcessor::OnMouseMove(ITextScreen* pScreen, UINT nFlags, CPoint pos)
{
    if (!IsRecording())
        CAITextProcessor::OnMouseMove(pScreen, nFlags, pos);
}

void CMacrosTextProcessor::OnTextLButtonDblClk(ITextScreen* pScreen, UINT nFlags, CPoint pos)
{
    if (!IsRecording())
        CAITextProcessor::OnTextLButtonDblClk(pScreen, nFlags, pos);
}

void CMacrosTextProcessor::OnTextRButtonDown(ITextScreen* pScreen, UINT nFlags, CPoint pos)
{
    if (!IsRecording())
        CAITextProcessor::OnTextRButtonDown(pScreen, nFlags, pos);
}

void CMacrosTextProcessor::OnTextSetCursor(ITextScreen* pScreen, CPoint pos)
{
    if (!IsRecording())
        CAITextProcessor::OnTextSetCursor(pScreen, pos);
}

void CMacrosTextProcessor::OnMarginSetCursor(ITextScreen* pScreen, CPoint pos, int nMargin)
{
    if (!IsRecording())
        CAITextProcessor::OnMarginSetCursor(pScreen, pos, nMargin);
}
