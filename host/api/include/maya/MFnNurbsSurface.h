// NURBS surfaces.
#pragma once

#include <maya/MDoubleArray.h>
#include <maya/MFnDagNode.h>
#include <maya/MPointArray.h>
#include <maya/MSpace.h>
#include <maya/MTrimBoundaryArray.h>

/// Knots lack the two outermost of each direction. A shape without geometry, or with one that does
/// not hold together, is not attached to: kFailure.
class MFnNurbsSurface : public MFnDagNode {
public:
    MFnNurbsSurface() = default;
    explicit MFnNurbsSurface(const MObject& object, MStatus* ReturnStatus = nullptr);
    explicit MFnNurbsSurface(const MDagPath& path, MStatus* ReturnStatus = nullptr);

    MFn::Type type() const override;
    using MFnDagNode::setObject;
    MStatus setObject(const MObject& object) override;

    MStatus getKnotDomain(double& startU, double& endU, double& startV, double& endV) const;
    int degreeU(MStatus* ReturnStatus = nullptr) const;
    int degreeV(MStatus* ReturnStatus = nullptr) const;
    int numSpansInU(MStatus* ReturnStatus = nullptr) const;
    int numSpansInV(MStatus* ReturnStatus = nullptr) const;
    /// Spans + 2 * degree - 1.
    int numKnotsInU(MStatus* ReturnStatus = nullptr) const;
    int numKnotsInV(MStatus* ReturnStatus = nullptr) const;
    MStatus getKnotsInU(MDoubleArray& array) const;
    MStatus getKnotsInV(MDoubleArray& array) const;
    /// Spans + degree: the overlapping points of a periodic surface are counted.
    int numCVsInU(MStatus* ReturnStatus = nullptr) const;
    int numCVsInV(MStatus* ReturnStatus = nullptr) const;
    /// The point (u, v) stands at u * numCVsInV + v; coordinates are not multiplied by the weight.
    /// World space needs a path.
    MStatus getCVs(MPointArray& array, MSpace::Space space = MSpace::kObject) const;

    bool isTrimmedSurface(MStatus* ReturnStatus = nullptr) const;
    /// Connected pieces that trimming left; 0 when untrimmed.
    unsigned int numRegions(MStatus* ReturnStatus = nullptr) const;
    /// The boundaries of one region, the outer one first, as curves in the parameter plane (or in
    /// space, with `paramEdge` false).
    MStatus getTrimBoundaries(MTrimBoundaryArray& result, unsigned int region,
                              bool paramEdge = true) const;

private:
    MStatus keepIfThere(MStatus attached);
};
