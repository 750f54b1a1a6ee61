// IBase: the root of the BCTL interfaces: an object handed out through one of them is given back
// with Release.
#pragma once

namespace BCTL
{
struct IBase
{
    // Destroys the object through its most derived destructor; only for objects made with new.
    virtual void Release() = 0;

protected:
    virtual ~IBase() = default;
};
} // namespace BCTL
