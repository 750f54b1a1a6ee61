// CMacrosTextProcessor: the processor of a pane. Every command of ITextEditorCommands runs as the
// processor below defines it and, while a macro is under recording, adds an item that plays the
// same call again. While recording the mouse is off, so that a macro holds the keyboard's work only.
#pragma once

#include "Edit/Commands/CAITextProcessor.h"
#include "Edit/Commands/CMacrosItemBase.h"
#include "Edit/Commands/ITPMacrosSupport.h"

#include "Platform/COwningPtrArray.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>

// The name of an item class as a template argument.
template <std::size_t N> struct SMacrosItemName
{
    constexpr SMacrosItemName(const char16_t (&sz)[N]) { std::copy_n(sz, N, m_sz); }
    char16_t m_sz[N];
};

class CMacrosTextProcessor : public CAITextProcessor
{
public:
    // An item of a move command; the parameter is the select mode in decimal.
    template <SMacrosItemName Name, void (ITextEditorCommands::*pfnDo)(int)>
    class CMoveItem : public CMacrosItemBase
    {
    public:
        explicit CMoveItem(int nSelectMode) noexcept : m_nSelectMode(nSelectMode) {}
        void Play(ITextEditorCommands* pCommands) override
        {
            if (pCommands)
                (pCommands->*pfnDo)(m_nSelectMode);
        }
        [[nodiscard]] CString GetName() const override { return Name.m_sz; }
        [[nodiscard]] CString GetParam() const override
        {
            CString cs;
            cs.Format(u"%d", m_nSelectMode);
            return cs;
        }

        class CCreator : public CCreatorBase
        {
        public:
            std::unique_ptr<CMacrosItemBase> Create(const CString& csName, const CString& csParam) override
            {
                if (csName != Name.m_sz)
                    return nullptr;
                return std::make_unique<CMoveItem>(ParseInt(csParam));
            }
        };

    private:
        int m_nSelectMode; // 0 plain, 1 stream selection, 2 column selection
    };

    // An item of a command without an argument.
    template <SMacrosItemName Name, void (ITextEditorCommands::*pfnDo)()>
    class CPlainItem : public CMacrosItemBase
    {
    public:
        void Play(ITextEditorCommands* pCommands) override
        {
            if (pCommands)
                (pCommands->*pfnDo)();
        }
        [[nodiscard]] CString GetName() const override { return Name.m_sz; }
        [[nodiscard]] CString GetParam() const override { return CString(); }

        class CCreator : public CCreatorBase
        {
        public:
            std::unique_ptr<CMacrosItemBase> Create(const CString& csName, const CString&) override
            {
                if (csName != Name.m_sz)
                    return nullptr;
                return std::make_unique<CPlainItem>();
            }
        };
    };

    // An item of a command that runs only when its query allows it (undo, redo, the clipboard).
    template <SMacrosItemName Name, BOOL (ITextEditorCommands::*pfnCan)(),
              void (ITextEditorCommands::*pfnDo)()>
    class CAskingItem : public CMacrosItemBase
    {
    public:
        void Play(ITextEditorCommands* pCommands) override
        {
            if (pCommands && (pCommands->*pfnCan)())
                (pCommands->*pfnDo)();
        }
        [[nodiscard]] CString GetName() const override { return Name.m_sz; }
        [[nodiscard]] CString GetParam() const override { return CString(); }

        class CCreator : public CCreatorBase
        {
        public:
            std::unique_ptr<CMacrosItemBase> Create(const CString& csName, const CString&) override
            {
                if (csName != Name.m_sz)
                    return nullptr;
                return std::make_unique<CAskingItem>();
            }
        };
    };

    // A typed character; the parameter is the character (a surrogate pair outside the basic plane).
    class CMacrosItemDoChar : public CMacrosItemBase
    {
    public:
        explicit CMacrosItemDoChar(wchar_t ch) noexcept : m_ch(ch) {}
        void Play(ITextEditorCommands* pCommands) override
        {
            if (pCommands)
                pCommands->DoChar(m_ch);
        }
        [[nodiscard]] CString GetName() const override { return u"DoChar"; }
        [[nodiscard]] CString GetParam() const override;

        // Takes the first character of the parameter; an empty one gives the character 0.
        class CCreatorDoChar : public CCreatorBase
        {
        public:
            std::unique_ptr<CMacrosItemBase> Create(const CString& csName, const CString& csParam) override;
        };

    private:
        wchar_t m_ch;
    };

    // clang-format off
    using CMacrosItemDoMoveUp = CMoveItem<u"DoMoveUp", &ITextEditorCommands::DoMoveUp>;
    using CMacrosItemDoMoveDown = CMoveItem<u"DoMoveDown", &ITextEditorCommands::DoMoveDown>;
    using CMacrosItemDoMoveLeft = CMoveItem<u"DoMoveLeft", &ITextEditorCommands::DoMoveLeft>;
    using CMacrosItemDoMoveRight = CMoveItem<u"DoMoveRight", &ITextEditorCommands::DoMoveRight>;
    using CMacrosItemDoMovePageUp = CMoveItem<u"DoMovePageUp", &ITextEditorCommands::DoMovePageUp>;
    using CMacrosItemDoMovePageDown = CMoveItem<u"DoMovePageDown", &ITextEditorCommands::DoMovePageDown>;
    using CMacrosItemDoMoveHome = CMoveItem<u"DoMoveHome", &ITextEditorCommands::DoMoveHome>;
    using CMacrosItemDoMoveEnd = CMoveItem<u"DoMoveEnd", &ITextEditorCommands::DoMoveEnd>;
    using CMacrosItemDoMoveWordLeft = CMoveItem<u"DoMoveWordLeft", &ITextEditorCommands::DoMoveWordLeft>;
    using CMacrosItemDoMoveWordRight = CMoveItem<u"DoMoveWordRight", &ITextEditorCommands::DoMoveWordRight>;
    using CMacrosItemDoMoveStartPage = CMoveItem<u"DoMoveStartPage", &ITextEditorCommands::DoMoveStartPage>;
    using CMacrosItemDoMoveEndPage = CMoveItem<u"DoMoveEndPage", &ITextEditorCommands::DoMoveEndPage>;
    using CMacrosItemDoMoveStartDoc = CMoveItem<u"DoMoveStartDoc", &ITextEditorCommands::DoMoveStartDoc>;
    using CMacrosItemDoMoveEndDoc = CMoveItem<u"DoMoveEndDoc", &ITextEditorCommands::DoMoveEndDoc>;
    using CMacrosItemDoMoveLineUp = CMoveItem<u"DoMoveLineUp", &ITextEditorCommands::DoMoveLineUp>;
    using CMacrosItemDoMoveLineDown = CMoveItem<u"DoMoveLineDown", &ITextEditorCommands::DoMoveLineDown>;
    using CMacrosItemDoBackspace = CPlainItem<u"DoBackspace", &ITextEditorCommands::DoBackspace>;
    using CMacrosItemDoTab = CPlainItem<u"DoTab", &ITextEditorCommands::DoTab>;
    using CMacrosItemDoUntab = CPlainItem<u"DoUntab", &ITextEditorCommands::DoUntab>;
    using CMacrosItemDoDelete = CPlainItem<u"DoDelete", &ITextEditorCommands::DoDelete>;
    using CMacrosItemDoDeleteLine = CPlainItem<u"DoDeleteLine", &ITextEditorCommands::DoDeleteLine>;
    using CMacrosItemDoDeleteToEndOfLine = CPlainItem<u"DoDeleteToEndOfLine", &ITextEditorCommands::DoDeleteToEndOfLine>;
    using CMacrosItemDoDeleteToStartOfLine = CPlainItem<u"DoDeleteToStartOfLine", &ITextEditorCommands::DoDeleteToStartOfLine>;
    using CMacrosItemDoDeleteWord = CPlainItem<u"DoDeleteWord", &ITextEditorCommands::DoDeleteWord>;
    using CMacrosItemDoDeleteToEndOfWord = CPlainItem<u"DoDeleteToEndOfWord", &ITextEditorCommands::DoDeleteToEndOfWord>;
    using CMacrosItemDoDeleteToStartOfWord = CPlainItem<u"DoDeleteToStartOfWord", &ITextEditorCommands::DoDeleteToStartOfWord>;
    using CMacrosItemDoIncreaseIndent = CPlainItem<u"DoIncreaseIndent", &ITextEditorCommands::DoIncreaseIndent>;
    using CMacrosItemDoDecreaseIndent = CPlainItem<u"DoDecreaseIndent", &ITextEditorCommands::DoDecreaseIndent>;
    using CMacrosItemDoCanUndo = CAskingItem<u"DoCanUndo", &ITextEditorCommands::CanUndo, &ITextEditorCommands::DoUndo>;
    using CMacrosItemDoCanRedo = CAskingItem<u"DoCanRedo", &ITextEditorCommands::CanRedo, &ITextEditorCommands::DoRedo>;
    using CMacrosItemDoSelectWord = CPlainItem<u"DoSelectWord", &ITextEditorCommands::DoSelectWord>;
    using CMacrosItemDoSelectLine = CPlainItem<u"DoSelectLine", &ITextEditorCommands::DoSelectLine>;
    using CMacrosItemDoSelectAll = CPlainItem<u"DoSelectAll", &ITextEditorCommands::DoSelectAll>;
    using CMacrosItemDoCanCopy = CAskingItem<u"DoCanCopy", &ITextEditorCommands::CanCopy, &ITextEditorCommands::DoCopy>;
    using CMacrosItemDoCanPaste = CAskingItem<u"DoCanPaste", &ITextEditorCommands::CanPaste, &ITextEditorCommands::DoPaste>;
    using CMacrosItemDoCanCut = CAskingItem<u"DoCanCut", &ITextEditorCommands::CanCut, &ITextEditorCommands::DoCut>;
    using CMacrosItemDoCanCutAppend = CAskingItem<u"DoCanCutAppend", &ITextEditorCommands::CanCutAppend, &ITextEditorCommands::DoCutAppend>;
    using CMacrosItemDoCanCopyAppend = CAskingItem<u"DoCanCopyAppend", &ITextEditorCommands::CanCopyAppend, &ITextEditorCommands::DoCopyAppend>;
    using CMacrosItemDoUpperCase = CPlainItem<u"DoUpperCase", &ITextEditorCommands::DoUpperCase>;
    using CMacrosItemDoLowerCase = CPlainItem<u"DoLowerCase", &ITextEditorCommands::DoLowerCase>;
    using CMacrosItemDoInvertCase = CPlainItem<u"DoInvertCase", &ITextEditorCommands::DoInvertCase>;
    using CMacrosItemDoCapitalizeCase = CPlainItem<u"DoCapitalizeCase", &ITextEditorCommands::DoCapitalizeCase>;
    using CMacrosItemDoDuplicateLines = CPlainItem<u"DoDuplicateLines", &ITextEditorCommands::DoDuplicateLines>;
    using CMacrosItemDoCommentText = CPlainItem<u"DoCommentText", &ITextEditorCommands::DoCommentText>;
    using CMacrosItemDoUnCommentText = CPlainItem<u"DoUnCommentText", &ITextEditorCommands::DoUnCommentText>;
    using CMacrosItemDoTagCaseConvert = CPlainItem<u"DoTagCaseConvert", &ITextEditorCommands::DoTagCaseConvert>;
    using CMacrosItemDoInsertTextDateLong = CPlainItem<u"DoInsertTextDateLong", &ITextEditorCommands::DoInsertTextDateLong>;
    using CMacrosItemDoInsertTextDateShort = CPlainItem<u"DoInsertTextDateShort", &ITextEditorCommands::DoInsertTextDateShort>;
    using CMacrosItemDoInsertTextDateTime = CPlainItem<u"DoInsertTextDateTime", &ITextEditorCommands::DoInsertTextDateTime>;
    using CMacrosItemDo1TextFormat = CPlainItem<u"Do1TextFormat", &ITextEditorCommands::Do1TextFormat>;
    // clang-format on

    // The creators of all items, in the order a creator table lists them, the first twice.
    static void MakeCreators(COwningPtrArray<CMacrosItemBase::CCreatorBase>& aCreators);

    // The integer at the start of a parameter: optional blanks and sign, then digits, else 0;
    // saturated at the limits of int.
    static int ParseInt(const CString& csParam) noexcept;

    CMacrosTextProcessor() = default;

    // As the processor's Create; pMacrosSupport receives the items (null: nothing is recorded).
    void Create(ITextViewBuffer* pViewBuffer, ITextEditSettings* pSettings, ITextScreen* pScreen,
                ICWnd* pWnd = nullptr, ITPMacrosSupport* pMacrosSupport = nullptr);
    void Close();
    [[nodiscard]] ITPMacrosSupport* GetMacrosSupport() const noexcept { return m_pMacrosSupport; }
    [[nodiscard]] BOOL IsRecording() const { return m_pMacrosSupport && m_pMacrosSupport->IsRecording(); }

    // ITextEditorCommands, recorded.
    void DoMoveUp(int nSelectMode) override;
    void DoMoveDown(int nSelectMode) override;
    void DoMoveLeft(int nSelectMode) override;
    void DoMoveRight(int nSelectMode) override;
    void DoMovePageUp(int nSelectMode) override;
    void DoMovePageDown(int nSelectMode) override;
    void DoMoveHome(int nSelectMode) override;
    void DoMoveEnd(int nSelectMode) override;
    void DoMoveWordLeft(int nSelectMode) override;
    void DoMoveWordRight(int nSelectMode) override;
    void DoMoveStartPage(int nSelectMode) override;
    void DoMoveEndPage(int nSelectMode) override;
    void DoMoveStartDoc(int nSelectMode) override;
    void DoMoveEndDoc(int nSelectMode) override;
    void DoMoveLineUp(int nSelectMode) override;
    void DoMoveLineDown(int nSelectMode) override;
    void DoChar(wchar_t ch) override;
    void DoBackspace() override;
    void DoTab() override;
    void DoUntab() override;
    void DoDelete() override;
    void DoDeleteLine() override;
    void DoDeleteToEndOfLine() override;
    void DoDeleteToStartOfLine() override;
    void DoDeleteWord() override;
    void DoDeleteToEndOfWord() override;
    void DoDeleteToStartOfWord() override;
    void DoIncreaseIndent() override;
    void DoDecreaseIndent() override;
    void DoUndo() override;
    void DoRedo() override;
    void DoSelectWord() override;
    void DoSelectLine() override;
    void DoSelectAll() override;
    void DoCopy() override;
    void DoPaste() override;
    void DoCut() override;
    void DoCutAppend() override;
    void DoCopyAppend() override;
    void DoUpperCase() override;
    void DoLowerCase() override;
    void DoInvertCase() override;
    void DoCapitalizeCase() override;
    void DoDuplicateLines() override;
    void Do1TextFormat() override;
    void DoCommentText() override;
    void DoUnCommentText() override;
    void DoTagCaseConvert() override;
    void DoInsertTextDateLong() override;
    void DoInsertTextDateShort() override;
    void DoInsertTextDateTime() override;

    // IACCompletePocessor: the word goes in, then the line is indented as after typing.
    void InsertCompletion(const CString& csWord) override;

    // ITextScreenEvents: the mouse does nothing while recording.
    void OnTextLButtonDown(ITextScreen* pScreen, UINT nFlags, CPoint pos) override;
    void OnTextLButtonUp(ITextScreen* pScreen, UINT nFlags, CPoint pos) override;
    void OnMouseMove(ITextScreen* pScreen, UINT nFlags, CPoint pos) override;
    void OnTextLButtonDblClk(ITextScreen* pScreen, UINT nFlags, CPoint pos) override;
    void OnTextRButtonDown(ITextScreen* pScreen, UINT nFlags, CPoint pos) override;
    void OnTextSetCursor(ITextScreen* pScreen, CPoint pos) override;
    void OnMarginSetCursor(ITextScreen* pScreen, CPoint pos, int nMargin) override;

private:
    // Gives a new item to the macro under recording; an item that can't be allocated goes as null.
    template <typename TItem, typename... Args> void Record(Args... args)
    {
        if (IsRecording())
            m_pMacrosSupport->AddItem(std::unique_ptr<CMacrosItemBase>(new (std::nothrow) TItem(args...)));
    }

    ITPMacrosSupport* m_pMacrosSupport = nullptr; // receives the items while recording, not owned
};
