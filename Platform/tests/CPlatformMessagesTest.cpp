// Texts of failure codes and the message box service.
#include "Platform/MessageBox.h"
#include "Platform/SystemMessages.h"

#include <cerrno>
#include <cppunit/extensions/HelperMacros.h>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <unistd.h>
#include <vector>

namespace
{
// Remembers each message and gives a fixed answer.
class CRecordingMessageBox : public IMessageBoxService
{
public:
    explicit CRecordingMessageBox(int nAnswer) : m_nAnswer(nAnswer) {}

    int Show(const CString& csText, UINT nType) override
    {
        m_aTexts.push_back(csText);
        m_aTypes.push_back(nType);
        return m_nAnswer;
    }

    int m_nAnswer;
    std::vector<CString> m_aTexts;
    std::vector<UINT> m_aTypes;
};

// Puts the service installed before back, also when a check fails.
class CServiceRestorer
{
public:
    explicit CServiceRestorer(IMessageBoxService* pService) : m_pBefore(SetMessageBoxService(pService)) {}
    CServiceRestorer(const CServiceRestorer&) = delete;
    CServiceRestorer& operator=(const CServiceRestorer&) = delete;
    ~CServiceRestorer() { SetMessageBoxService(m_pBefore); }

    IMessageBoxService* m_pBefore;
};

// What the default service writes to standard error for one message, and its answer.
std::string ConsoleMessage(const CString& csText, UINT nType, int& nAnswer)
{
    const std::filesystem::path path =
        std::filesystem::temp_directory_path() / ("tessaroline-pserv-stderr-" + std::to_string(getpid()));
    std::FILE* pFile = std::fopen(path.c_str(), "w+");
    if (!pFile)
        return std::string();
    std::fflush(stderr);
    const int nSaved = dup(STDERR_FILENO);
    dup2(fileno(pFile), STDERR_FILENO);
    nAnswer = AfxMessageBox(csText, nType);
    std::fflush(stderr);
    dup2(nSaved, STDERR_FILENO);
    close(nSaved);
    std::fclose(pFile);
    std::ifstream in(path);
    std::ostringstream out;
    out << in.rdbuf();
    std::filesystem::remove(path);
    return out.str();
}
} // namespace

class CPlatformMessagesTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CPlatformMessagesTest);
    CPPUNIT_TEST(SystemMessageTextTest);
    CPPUNIT_TEST(MessageBoxServiceTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void SystemMessageTextTest()
    {
        // errno values, bare and wrapped in the low 16 bits of 0x8007xxxx.
        const HRESULT hrNotFound = static_cast<HRESULT>(0x80070000u | ENOENT);
        CPPUNIT_ASSERT_EQUAL(std::string("No such file or directory"),
                             GetSystemMessageText(hrNotFound).ToUtf8());
        CPPUNIT_ASSERT_EQUAL(std::string("Permission denied"), GetSystemMessageText(EACCES).ToUtf8());
        // The table goes first: E_INVALIDARG has the wrapped form but doesn't mean errno 87.
        CPPUNIT_ASSERT_EQUAL(std::string("Unspecified error"), GetSystemMessageText(E_FAIL).ToUtf8());
        CPPUNIT_ASSERT_EQUAL(std::string("Catastrophic failure"),
                             GetSystemMessageText(E_UNEXPECTED).ToUtf8());
        CPPUNIT_ASSERT_EQUAL(std::string("The parameter is incorrect"),
                             GetSystemMessageText(E_INVALIDARG).ToUtf8());
        CPPUNIT_ASSERT(!GetSystemMessageText(E_OUTOFMEMORY).IsEmpty());
        CPPUNIT_ASSERT(!GetSystemMessageText(E_POINTER).IsEmpty());
        CPPUNIT_ASSERT(!GetSystemMessageText(E_NOTIMPL).IsEmpty());
        // Unknown codes give nothing.
        CPPUNIT_ASSERT(GetSystemMessageText(static_cast<HRESULT>(0x80041234u)).IsEmpty());
        CPPUNIT_ASSERT(GetSystemMessageText(static_cast<HRESULT>(0x8007FFFFu)).IsEmpty());
        CPPUNIT_ASSERT(GetSystemMessageText(static_cast<HRESULT>(0x80070000u)).IsEmpty());
        CPPUNIT_ASSERT(GetSystemMessageText(0x12345678).IsEmpty());
        CPPUNIT_ASSERT(GetSystemMessageText(S_OK).IsEmpty());
    }

    void MessageBoxServiceTest()
    {
        CRecordingMessageBox service(IDNO);
        const CServiceRestorer restorer(&service);
        CPPUNIT_ASSERT_EQUAL(
            IDNO, AfxMessageBox(u"Wait timeout. System Watcher thread", MB_YESNO | MB_ICONWARNING));
        CPPUNIT_ASSERT_EQUAL(IDNO, AfxMessageBox(u"second"));
        CPPUNIT_ASSERT(SetMessageBoxService(nullptr) == &service);
        CPPUNIT_ASSERT_EQUAL(std::size_t(2), service.m_aTexts.size());
        CPPUNIT_ASSERT(service.m_aTexts[0] == u"Wait timeout. System Watcher thread");
        CPPUNIT_ASSERT_EQUAL(MB_YESNO | MB_ICONWARNING, service.m_aTypes[0]);
        CPPUNIT_ASSERT_EQUAL(MB_OK, service.m_aTypes[1]);

        // The default service writes the text and takes the first answer.
        int nAnswer = 0;
        const std::string strYesNo = ConsoleMessage(u"Überschreiben?", MB_YESNO, nAnswer);
        CPPUNIT_ASSERT_EQUAL(IDYES, nAnswer);
        CPPUNIT_ASSERT(strYesNo.find("Überschreiben?") != std::string::npos);
        const std::string strError = ConsoleMessage(u"broken", MB_OKCANCEL | MB_ICONERROR, nAnswer);
        CPPUNIT_ASSERT_EQUAL(IDOK, nAnswer);
        CPPUNIT_ASSERT(strError.find("broken") != std::string::npos);
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CPlatformMessagesTest, "All Tests");
