// AfxMessageBox: a message to the user, shown by a replaceable service. Without a window system
// the default service writes the text to standard error and takes the first answer.
#pragma once

#include "CString.h"
#include "Types.h"

// Buttons, in the low four bits of the type.
constexpr UINT MB_OK = 0x00;
constexpr UINT MB_OKCANCEL = 0x01;
constexpr UINT MB_YESNO = 0x04;
constexpr UINT MB_TYPEMASK = 0x0F;
// Icons, in the next four bits.
constexpr UINT MB_ICONERROR = 0x10;
constexpr UINT MB_ICONWARNING = 0x30;
constexpr UINT MB_ICONINFORMATION = 0x40;
constexpr UINT MB_ICONMASK = 0xF0;

// Answers.
constexpr int IDOK = 1;
constexpr int IDCANCEL = 2;
constexpr int IDYES = 6;
constexpr int IDNO = 7;

// Shows one message and returns the answer; may be called from any thread.
struct IMessageBoxService
{
    virtual ~IMessageBoxService() = default;
    virtual int Show(const CString& csText, UINT nType) = 0;
};

// Installs the service that AfxMessageBox uses, null for the default one; returns the one installed
// before, null for the default. The service is not owned and must outlive its installation.
IMessageBoxService* SetMessageBoxService(IMessageBoxService* pService) noexcept;

int AfxMessageBox(const CString& csText, UINT nType = MB_OK);
