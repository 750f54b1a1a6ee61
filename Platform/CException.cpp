#include "CException.h"

[[noreturn]] void AfxThrowInvalidArgException()
{
    throw CInvalidArgException();
}
