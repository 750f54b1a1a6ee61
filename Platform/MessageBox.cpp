#include "MessageBox.h"

#include <atomic>
#include <cstdio>
#include <string>

namespace
{
// Headless: the text goes to standard error, and the answer is the one that goes on.
class CConsoleMessageBox : public IMessageBoxService
{
public:
    int Show(const CString& csText, UINT nType) override
    {
        const char* szKind = "";
        switch (nType & MB_ICONMASK)
        {
        case MB_ICONERROR:
            szKind = "Error: ";
            break;
        case MB_ICONWARNING:
            szKind = "Warning: ";
            break;
        default:
            break;
        }
        const std::string strLine = szKind + csText.ToUtf8() + "\n";
        std::fwrite(strLine.data(), 1, strLine.size(), stderr);
        std::fflush(stderr);
        return (nType & MB_TYPEMASK) == MB_YESNO ? IDYES : IDOK;
    }
};

CConsoleMessageBox g_consoleMessageBox;
std::atomic<IMessageBoxService*> g_pMessageBoxService{nullptr};
} // namespace

IMessageBoxService* SetMessageBoxService(IMessageBoxService* pService) noexcept
{
    return g_pMessageBoxService.exchange(pService);
}

int AfxMessageBox(const CString& csText, UINT nType)
{
    IMessageBoxService* pService = g_pMessageBoxService.load();
    return (pService ? pService : &g_consoleMessageBox)->Show(csText, nType);
}
