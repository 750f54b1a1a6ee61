// Root of the platform's exceptions and the invalid-argument exception of the shared containers.
#pragma once

#include <exception>

// Base of every exception that the platform and the components throw.
class CException : public std::exception
{
public:
    CException() = default;
    CException(const CException&) = default;
    CException& operator=(const CException&) = default;
    ~CException() override = default;

    const char* what() const noexcept override { return "CException"; }
};

// Raised by the shared arrays and strings for an index outside their bounds or a bad argument.
class CInvalidArgException : public CException
{
public:
    const char* what() const noexcept override { return "invalid argument"; }
};

// Raises the invalid-argument exception.
[[noreturn]] void AfxThrowInvalidArgException();
