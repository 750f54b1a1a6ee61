// CErrorBoundsException: an index outside the array.
#pragma once

#include "Common_h/BCTL/CExceptionBase.h"

namespace BCTL::Exceptions
{
class CErrorBoundsException : public CExceptionBase
{
public:
    using CExceptionBase::CExceptionBase;

    const char* what() const noexcept override { return "BCTL::Exceptions::CErrorBoundsException"; }
};
} // namespace BCTL::Exceptions
