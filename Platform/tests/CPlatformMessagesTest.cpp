// Texts of failure codes and the message box service.
#include "Platform/MessageBox.h"
#include "Platform/SystemMessages.h"

#include <cerrno>
#include <cppunit/extensions/HelperMacros.h>
#include <cstdio>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>

namespace
{
// Remembers each message and gives a fixed answer; puts the service installed before back, also
// when a check fails.
class CRecordingMessageBox : public IMessageBoxService
{
public:
    explicit CRecordingMessageBox(int nAnswer) : m_nAnswer(nAnswer), m_pBefore(SetMessageBoxService(this)) {}
    CRecordingMessageBox(const CRecordingMessageBox&) = delete;
    CRecordingMessageBox& operator=(const CRecordingMessageBox&) = delete;
    ~CRecordingMessageBox() override { SetMessageBoxService(m_pBefore); }

    int Show(const CString& csText, UINT nType) override
    {
        m_aMessages.emplace_back(csText, nType);
        return m_nAnswer;
    }

    int m_nAnswer;
    IMessageBoxService* m_pBefore;
    std::vector<std::pair<CString, UINT>> m_aMessages;
};

// What the default service writes to standard error for one message, and its answer.
std::string ConsoleMessage(const CString& csText, UINT nType, int& nAnswer)
{
    std::FILE* pFile = std::tmpfile();
    if (!pFile)
        return std::string();
    std::fflush(stderr);
    const int nSaved = dup(STDERR_FILENO);
    dup2(fileno(pFile), STDERR_FILENO);
    nAnswer = AfxMessageBox(csText, nType);
    std::fflush(stderr);
    dup2(nSaved, STDERR_FILENO);
    close(nSaved);
    std::string strOut;
    std::rewind(pFile);
    for (int ch; (ch = std::fgetc(pFile)) != EOF;)
        strOut += static_cast<char>(ch);
    std::fclose(pFile);
    return strOut;
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
        // errno values, bare and wrapped in the low 16 bits of 0x8007xxxx. The table goes first:
        // E_INVALIDARG has the wrapped form but doesn't mean errno 87.
        const std::pair<HRESULT, const char*> aTexts[] = {
            {static_cast<HRESULT>(0x80070000u | ENOENT), "No such file or directory"},
            {EACCES, "Permission denied"},
            {E_FAIL, "Unspecified error"},
            {E_UNEXPECTED, "Catastrophic failure"},
            {E_INVALIDARG, "The parameter is incorrect"}};
        for (const auto& [hr, szText] : aTexts)
            CPPUNIT_ASSERT_EQUAL(std::string(szText), GetSystemMessageText(hr).ToUtf8());
        for (HRESULT hr : {E_OUTOFMEMORY, E_POINTER, E_NOTIMPL})
            CPPUNIT_ASSERT(!GetSystemMessageText(hr).IsEmpty());
        // Unknown codes give nothing.
        for (UINT nCode : {0x80041234u, 0x8007FFFFu, 0x80070000u, 0x12345678u, 0u})
            CPPUNIT_ASSERT(GetSystemMessageText(static_cast<HRESULT>(nCode)).IsEmpty());
    }

    void MessageBoxServiceTest()
    {
        CRecordingMessageBox service(IDNO);
        CPPUNIT_ASSERT_EQUAL(
            IDNO, AfxMessageBox(u"Wait timeout. System Watcher thread", MB_YESNO | MB_ICONWARNING));
        CPPUNIT_ASSERT_EQUAL(IDNO, AfxMessageBox(u"second"));
        CPPUNIT_ASSERT_EQUAL(std::size_t(2), service.m_aMessages.size());
        CPPUNIT_ASSERT(service.m_aMessages[0].first == u"Wait timeout. System Watcher thread");
        CPPUNIT_ASSERT_EQUAL(MB_YESNO | MB_ICONWARNING, service.m_aMessages[0].second);
        CPPUNIT_ASSERT_EQUAL(MB_OK, service.m_aMessages[1].second);

        // The default service writes the text and takes the first answer.
        CPPUNIT_ASSERT(SetMessageBoxService(nullptr) == &service);
        int nAnswer = 0;
        const std::string strYesNo = ConsoleMessage(u"Überschreiben?", MB_YESNO, nAnswer);
        CPPUNIT_ASSERT(nAnswer == IDYES);
        CPPUNIT_ASSERT(strYesNo.find("Überschreiben?") != std::string::npos);
        const std::string strError = ConsoleMessage(u"broken", MB_OKCANCEL | MB_ICONERROR, nAnswer);
        CPPUNIT_ASSERT(nAnswer == IDOK);
        CPPUNIT_ASSERT(strError.find("broken") != std::string::npos);
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CPlatformMessagesTest, "All Tests");
