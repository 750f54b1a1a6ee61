// CACListBox: the completion popup. It shows the words of a completion request under the cursor,
// follows the typing by selecting the first word that begins with the word at the cursor, and hands
// the chosen word to its target. Keys reach it from the edit window before they move the cursor.
#pragma once

#include "AutoComplete/IACCompleteData.h"
#include "Edit/Commands/CEmptyTextProcessorEvents.h"
#include "Edit/Commands/IACCompletePocessor.h"
#include "Edit/Popup/CIconListBox.h"
#include "Edit/Screen/CEmptyCWndEvents.h"

#include <map>
#include <memory>

class CACListBox : public CWnd, public CEmptyCWndEvents, public CEmptyTextProcessorEvents
{
public:
    static constexpr UINT ID_ACCEPT = 27000;
    static constexpr UINT ID_HIDE = 27001;
    // Sent with the index of a row (double press) to accept it.
    static constexpr UINT WM_ACCEPT_ITEM = 1124;
    static constexpr int LIST_WIDTH = 200;
    static constexpr int LIST_HEIGHT = 250;

    // pOwner is the text window, pTarget takes the accepted word; neither is owned.
    CACListBox(CWnd* pOwner, IACCompletePocessor* pTarget);
    ~CACListBox() override;

    // Shows the words of pData (not owned) below rcAt, in the owner's client pixels; nothing is
    // shown for no data or no words.
    void Show(IACCompleteData* pData, const CRect& rcAt);
    void Hide();
    // The text window from now on (not owned); a list that is up keeps its place.
    void SetOwner(CWnd* pOwner) noexcept { m_pOwner = pOwner; }
    [[nodiscard]] BOOL IsShown() const noexcept { return IsWindow() && IsWindowVisible(); }
    [[nodiscard]] CIconListBox* GetList() const noexcept { return m_pList.get(); }

    // Selects the first word that begins with the word at the cursor; without one, the list keeps
    // its place with nothing selected. An empty word hides the list when bHideIfEmpty.
    void UpdateSelection(BOOL bHideIfEmpty);
    // Hands the selected word to the target, if one is selected, and hides.
    void Accept();

    // The keys that become commands (Enter accepts, Esc hides until the host says otherwise).
    void SetAccelerator(int nKey, UINT nCommand) { m_mapAccelerators[nKey] = nCommand; }

    // From the edit window.
    void OnFocus(CWnd* pWnd, BOOL bFocus, CWnd* pOther) override;
    BOOL OnPreTranslateMessage(CWnd* pWnd, MSG* pMsg) override;
    // From the text processor: typing (command 1) moves the selection, any other command hides.
    void OnEventsGroup(ITextProcessor* pProcessor, DWORD dwEvents, int nCommand) override;

    BOOL PreTranslateMessage(MSG* pMsg) override;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    // TRUE when a key down became a command.
    BOOL TranslateAccelerator(const MSG* pMsg);
    static bool IsNavigationKey(WPARAM nKey) noexcept;

    std::unique_ptr<CIconListBox> m_pList;
    CWnd* m_pOwner;
    IACCompletePocessor* m_pTarget;
    IACCompleteData* m_pData = nullptr;
    std::map<int, UINT> m_mapAccelerators;
};
