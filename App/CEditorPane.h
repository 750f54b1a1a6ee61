// CEditorPane: one document of the editor: its text buffer, the editing pane over it and the window
// that shows the pane. Keys the window gets run the commands bound to them, typed characters are
// inserted. Files are read into a pane that isn't shown yet, so a file that can't be read costs
// nothing; a save that fails leaves the file and the text as they were.
#pragma once

#include "CDocumentColorer.h"

#include "Edit/Control/CTextEditControl.h"
#include "Edit/Model/CTextBuffer.h"
#include "Edit/Screen/CCWndHost.h"

#include <functional>
#include <memory>

class CTextSettings;

class CEditorPane : public CCWndHost
{
public:
    // Panes share the settings, which must be loaded and outlive them.
    explicit CEditorPane(CTextSettings* pSettings);
    ~CEditorPane() override;

    // An empty document shown in a window of the given style; FALSE when the window can't be made.
    BOOL CreateEmpty(DWORD dwStyle, DWORD dwExStyle);
    // The file's text shown in a window of the given style; FALSE with the reason when it can't be
    // read (nothing is shown then).
    BOOL CreateFromFile(const CString& csFile, DWORD dwStyle, DWORD dwExStyle, CString& csError);
    // Writes the text to the file, in the encoding and with the line ends it was read with; FALSE
    // with the reason when it can't. A successful save names the document after the file, and a
    // new name may bring a new language.
    BOOL SaveAs(const CString& csFile, CString& csError);

    // The file of the document; empty for one never saved.
    [[nodiscard]] const CString& GetFileName() const noexcept { return m_csFile; }
    // The name shown for the document: its file's name, or "Untitled".
    [[nodiscard]] CString GetTitle() const;
    [[nodiscard]] BOOL IsModified() { return m_Buffer.IsModified(); }
    [[nodiscard]] CTextEditControl& GetControl() noexcept { return m_Control; }
    [[nodiscard]] CTextBuffer& GetBuffer() noexcept { return m_Buffer; }
    [[nodiscard]] ITextEditorCommands* GetCommands() { return m_Control.GetEditorCommands(); }

    // Called once each time lines come to wait for their colours, for the owner to have them
    // painted (PaintColors) when the program is idle.
    void SetColorsPendingHandler(std::function<void()> fnPending);
    // Colours the lines that wait for colours and repaints; FALSE when none waited.
    BOOL PaintColors();
    // The language of the document ("html", "css", ... "text"); empty before the pane is shown.
    [[nodiscard]] CString GetLanguage() const { return m_pColorer ? m_pColorer->GetType() : CString(); }

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    BOOL Show(DWORD dwStyle, DWORD dwExStyle);
    // A parser for the document as it is now named.
    void MakeColorer();

    CTextSettings* m_pSettings; // shared, not owned
    CTextBuffer m_Buffer;
    CTextEditControl m_Control;
    std::unique_ptr<CDocumentColorer> m_pColorer; // before the buffer it listens to goes
    std::function<void()> m_fnColorsPending;
    CString m_csFile;
    int m_nEncoding;
    int m_nEol;
};
