// Parts of a shape, such as some of its faces.
#pragma once

#include <maya/MFnBase.h>

class MFnComponent : public MFnBase {
public:
    MFnComponent() = default;
    explicit MFnComponent(const MObject& object, MStatus* ReturnStatus = nullptr);

    MFn::Type type() const override;

    MFn::Type componentType(MStatus* ReturnStatus = nullptr) const;
    int elementCount(MStatus* ReturnStatus = nullptr) const;
    bool isEmpty() const;
    /// Whether the component was set to all elements from 0 on.
    bool isComplete() const;
};
