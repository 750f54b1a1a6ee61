// ITextEditControl: one editing pane as its host reaches it: the conversions between window pixels
// ("client") and text positions, the parts of the pane, and the completion and format services.
// "Text" means view coordinates, "Doc" document coordinates.
#pragma once

#include "Platform/CPoint.h"
#include "Platform/CRect.h"

struct ITextProcessor;
struct ITextEditorCommands;
struct ITextEditSettings;
struct ITextDrawSettings;
struct ITextScreen;
struct ITextScreenSettings;
struct ITextViewBuffer;
struct ITextBuffer;
struct ITextFormatter;
struct ICharClassifier;
struct IACCompleteData;
struct IMacrosSupport;

struct ITextEditControl
{
    // The view position nearest to a pixel: a pixel in the right half of a cell lies behind it.
    virtual CPoint ClientToText(CPoint ptClient) = 0;
    // The view position of the character under a pixel.
    virtual CPoint ClientToTextFloor(CPoint ptClient) = 0;
    // The top left pixel of a view position's cell.
    virtual CPoint TextToClient(CPoint ptText) = 0;
    // From the start's cell to the end's, one cell high below the end.
    virtual CRect GetTextRect(CPoint ptStart, CPoint ptEnd) = 0;
    virtual CPoint ClientToDoc(CPoint ptClient) = 0;
    virtual CPoint DocToClient(CPoint ptDoc) = 0;
    virtual CRect GetDocRect(CPoint ptStart, CPoint ptEnd) = 0;

    virtual ITextProcessor* GetTextProcessor() = 0;
    virtual ITextEditorCommands* GetEditorCommands() = 0;
    // The process-wide settings, null before the pane is wired.
    virtual ITextEditSettings* GetEditSettings() = 0;
    virtual ITextDrawSettings* GetDrawSettings() = 0;
    virtual ITextScreen* GetTextScreen() = 0;
    virtual ITextScreenSettings* GetScreenSettings() = 0;
    virtual ITextViewBuffer* GetTextViewBuffer() = 0;
    // The buffer under the view, null before the pane is wired.
    virtual ITextBuffer* GetTextBuffer() = 0;
    // The macros of the process, which every pane records into.
    virtual IMacrosSupport* GetMacros() = 0;

    // Shows the words of pData (not owned; it must live while the list is up) below the cursor.
    virtual void ShowCompletion(IACCompleteData* pData) = 0;
    // The language's idea of words, which the word at the cursor and the completion follow.
    virtual void SetCompletionSource(ICharClassifier* pClassifier) = 0;
    // The language's formatting, tag case, indentation and comments.
    virtual void SetFormatSource(ITextFormatter* pFormatter) = 0;

protected:
    ~ITextEditControl() = default;
};
