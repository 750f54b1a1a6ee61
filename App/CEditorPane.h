// CEditorPane: one document of the editor: its text buffer, the editing pane over it and the window
// that shows the pane. Keys the window gets run the commands bound to them, typed characters are
// inserted. Files are read into a pane that isn't shown yet, so a file that can't be read costs
// nothing; a save that fails leaves the file and the text as they were.
#pragma once

#include "Edit/Control/CTextEditControl.h"
#include "Edit/Model/CTextBuffer.h"
#include "Edit/Screen/CCWndHost.h"

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
    // with the reason when it can't. A successful save names the document after the file.
    BOOL SaveAs(const CString& csFile, CString& csError);

    // The file of the document; empty for one never saved.
    [[nodiscard]] const CString& GetFileName() const noexcept { return m_csFile; }
    // The name shown for the document: its file's name, or "Untitled".
    [[nodiscard]] CString GetTitle() const;
    [[nodiscard]] BOOL IsModified() { return m_Buffer.IsModified(); }
    [[nodiscard]] CTextEditControl& GetControl() noexcept { return m_Control; }
    [[nodiscard]] CTextBuffer& GetBuffer() noexcept { return m_Buffer; }
    [[nodiscard]] ITextEditorCommands* GetCommands() { return m_Control.GetEditorCommands(); }

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    BOOL Show(DWORD dwStyle, DWORD dwExStyle);

    CTextSettings* m_pSettings; // shared, not owned
    CTextBuffer m_Buffer;
    CTextEditControl m_Control;
    CString m_csFile;
    int m_nEncoding;
    int m_nEol;
};
