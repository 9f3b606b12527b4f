// NURBS curves: shapes, and the curves that edges of trims are.
#pragma once

#include <maya/MDoubleArray.h>
#include <maya/MFnDagNode.h>
#include <maya/MPointArray.h>
#include <maya/MSpace.h>

/// Knots lack the two outermost ones. A curve without geometry answers 0 and fails.
class MFnNurbsCurve : public MFnDagNode {
public:
    MFnNurbsCurve() = default;
    explicit MFnNurbsCurve(const MObject& object, MStatus* ReturnStatus = nullptr);
    explicit MFnNurbsCurve(const MDagPath& path, MStatus* ReturnStatus = nullptr);

    MFn::Type type() const override;

    MStatus getKnotDomain(double& start, double& end) const;
    int numCVs(MStatus* ReturnStatus = nullptr) const;
    int numKnots(MStatus* ReturnStatus = nullptr) const;
    int numSpans(MStatus* ReturnStatus = nullptr) const;
    int degree(MStatus* ReturnStatus = nullptr) const;
    /// Coordinates are not multiplied by the weight; curves in the parameter plane have u, v, 0.
    /// World space needs a path.
    MStatus getCVs(MPointArray& array, MSpace::Space space = MSpace::kObject) const;
    MStatus getKnots(MDoubleArray& array) const;
};
