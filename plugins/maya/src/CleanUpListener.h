// An extension point: who wants to know of every shape that is about to be extracted.
#pragma once

class MDagPath;

class ICleanUpListener {
public:
    virtual void cleanUp(const MDagPath& path) = 0;

protected:
    ~ICleanUpListener() = default; // never deleted through the interface
};

/// The listener of the whole process, not owned. Null, and left so by the importer: nobody is told.
inline ICleanUpListener*& cleanUpListener()
{
    static constinit ICleanUpListener* listener = nullptr;
    return listener;
}
