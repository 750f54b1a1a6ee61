// Fuzz entry point of the stored macros: each line of the input is read as a stored macro. A line
// that reads must store and read back to the same line, the macros read must keep their
// identifiers apart, and playing them, while recording, must leave processor, view and text sound.
#include "Edit/Commands/CMacrosProfile.h"
#include "Edit/Commands/CMacrosSupport.h"
#include "Edit/Commands/CMacrosTextProcessor.h"
#include "Edit/Model/CTextBuffer.h"
#include "Edit/Screen/CTextSettings.h"
#include "Edit/View/CTextViewBuffer.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <set>
#include <string_view>

namespace
{
void ReadLines(const CString& csInput, CMacrosSupport& support)
{
    int nStart = 0;
    while (nStart <= csInput.GetLength())
    {
        int nEnd = csInput.Find(u'\n', nStart);
        if (nEnd < 0)
            nEnd = csInput.GetLength();
        const CString csLine = csInput.Mid(nStart, nEnd - nStart);
        nStart = nEnd + 1;
        CString csError;
        std::unique_ptr<CMacros> pMacros = CMacrosProfile::ParseEntry(csLine, support, csError);
        if (!pMacros)
        {
            if (csError.IsEmpty())
                std::abort();
            continue;
        }
        const CString csStored = CMacrosProfile::FormatEntry(*pMacros);
        std::unique_ptr<CMacros> pAgain = CMacrosProfile::ParseEntry(csStored, support, csError);
        if (!pAgain || CMacrosProfile::FormatEntry(*pAgain) != csStored)
            std::abort();
        support.AddMacros(std::move(pMacros));
    }
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize)
{
    const CString csInput = CString::FromUtf8(std::string_view(reinterpret_cast<const char*>(pData), nSize));
    CMacrosSupport support;
    ReadLines(csInput, support);
    std::set<int> aIds;
    for (CMacros* pMacros : support)
        if (!aIds.insert(pMacros->GetId()).second)
            std::abort();

    CTextSettings settings;
    settings.SetTabSize(4);
    CTextBuffer buffer;
    buffer.Create();
    CPoint ptEnd;
    buffer.InsertText(CPoint(0, 0), u"<p>one two</p>\r\n\tthree, four\r\n\r\nfive", ptEnd);
    CTextViewBuffer view;
    view.Create(&buffer, &settings, nullptr);
    view.OnScreenSizeChange(nullptr, CSize(20, 4));
    {
        CMacrosTextProcessor processor;
        processor.Create(&view, &settings, nullptr, nullptr, &support);
        processor.OnScreenSizeChange(nullptr, CSize(20, 4));
        support.StartRecord(SMacrosInfo{u"fuzz", 0});
        const int nCount = support.GetMacrosCount();
        for (int i = 0; i < nCount; ++i)
        {
            support.GetAt(i)->Play(&processor);
            processor.AssertValid();
            view.AssertValid();
            buffer.AssertValid();
        }
        support.StopRecord();
        processor.Close();
    }
    return 0;
}
