// CUnknownException: a failure from below the container, passed on in this form.
#pragma once

#include "Common_h/BCTL/CExceptionBase.h"

namespace BCTL::Exceptions
{
class CUnknownException : public CExceptionBase
{
public:
    using CExceptionBase::CExceptionBase;

    const char* what() const noexcept override { return "BCTL::Exceptions::CUnknownException"; }
};
} // namespace BCTL::Exceptions
