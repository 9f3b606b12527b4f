// Which shapes an export has to extract.
#pragma once

class MDagPath;

class IDirtyChecker {
public:
    virtual bool isDirty(const MDagPath& path) = 0;

protected:
    ~IDirtyChecker() = default; // never deleted through the interface
};

/// Every shape is extracted: what a conversion from nothing needs.
class AlwaysDirty final : public IDirtyChecker {
public:
    bool isDirty(const MDagPath&) override { return true; }
};
