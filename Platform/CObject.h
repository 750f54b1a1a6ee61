// CObject: the root of classes that live as objects of their own: not copied, destroyed through the base.
#pragma once

class CObject
{
public:
    CObject(const CObject&) = delete;
    CObject& operator=(const CObject&) = delete;
    virtual ~CObject() = default;

protected:
    CObject() = default;
};
