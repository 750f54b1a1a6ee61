// CNullPointerException: a null pointer where a source or a target is required.
#pragma once

#include "Common_h/BCTL/CExceptionBase.h"

namespace BCTL::Exceptions
{
class CNullPointerException : public CExceptionBase
{
public:
    using CExceptionBase::CExceptionBase;

    const char* what() const noexcept override { return "BCTL::Exceptions::CNullPointerException"; }
};
} // namespace BCTL::Exceptions
