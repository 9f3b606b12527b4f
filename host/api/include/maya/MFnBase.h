// What all function sets have in common: the object that they are attached to.
#pragma once

#include <maya/MFn.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>

class MFnBase {
public:
    virtual ~MFnBase();

    /// The kind of objects that the function set takes.
    virtual MFn::Type type() const = 0;
    bool hasObj(MFn::Type type) const;
    bool hasObj(const MObject& object) const;
    MObject object(MStatus* ReturnStatus = nullptr) const;
    /// Attaches to an object. A null object fails with kFailure, one of another kind with
    /// kInvalidParameter, and the function set stays as it was.
    virtual MStatus setObject(const MObject& object);

protected:
    MFnBase() = default;
    MFnBase(const MFnBase&) = default;
    MFnBase& operator=(const MFnBase&) = default;
    /// Whether an object would be taken.
    MStatus check(const MObject& object) const;

    MObject m_object;
};
