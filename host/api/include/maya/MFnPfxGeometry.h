// Paint Effects shapes: hair, strokes and toon lines.
#pragma once

#include <maya/MFnDagNode.h>
#include <maya/MRenderLineArray.h>

class MFnPfxGeometry : public MFnDagNode {
public:
    MFnPfxGeometry() = default;
    explicit MFnPfxGeometry(const MObject& object, MStatus* ReturnStatus = nullptr);
    explicit MFnPfxGeometry(const MDagPath& path, MStatus* ReturnStatus = nullptr);

    MFn::Type type() const override;

    /// The lines at the current time; the arrays get what the flags ask for and are empty where a
    /// shape has none. World space needs a path.
    MStatus getLineData(MRenderLineArray& mainLines, MRenderLineArray& leafLines,
                        MRenderLineArray& flowerLines, bool doLines, bool doTwist, bool doWidth,
                        bool doFlatness, bool doParameter, bool doColor, bool doIncandescence,
                        bool doTransparency, bool worldSpace) const;
};
