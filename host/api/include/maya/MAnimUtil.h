// Whether something moves.
#pragma once

#include <maya/MDagPath.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>

class MAnimUtil {
public:
    /// True when any plug of the node is fed by an animation curve, directly or through unit
    /// conversions, blends, mutes or a character; driven keys count, constraints and expressions do
    /// not. `checkParent`: the same of the path's ancestors, or for an object of those of all its
    /// paths.
    static bool isAnimated(const MObject& node, bool checkParent = false,
                           MStatus* ReturnStatus = nullptr);
    static bool isAnimated(const MDagPath& path, bool checkParent = false,
                           MStatus* ReturnStatus = nullptr);
};
