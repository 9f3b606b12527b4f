// What the nodes that extrude faces and edges have in common.
#pragma once

#include "host/geometry/mesh/edit/ComponentMotion.h"
#include "host/nodes/polygon/topology/componentOperation.h"

namespace host::nodes {

/// The inputs of a row: the common ones, then the row's own.
template<class... Names>
constexpr auto extrusionInputs(const Names&... names)
{
    return meshInputs("inputMatrix", "worldSpace", "localScaleX", "localScaleY", "localScaleZ",
                      "localRotateX", "localRotateY", "localRotateZ", "localTranslateX",
                      "localTranslateY", "localTranslateZ", "pivotX", "pivotY", "pivotZ", "scaleX",
                      "scaleY", "scaleZ", "rotateX", "rotateY", "rotateZ", "translateX",
                      "translateY", "translateZ", "random", "keepFacesTogether", "divisions",
                      "smoothingAngle", "inputProfile", "localDirectionX", "localDirectionY",
                      "localDirectionZ", "weight", "attraction", names...);
}
enum ExtrusionInput : std::size_t {
    kInputMatrix = kFirstOwnInput,
    kWorldSpace,
    kLocalScale,
    kLocalRotate = kLocalScale + 3,
    kLocalTranslate = kLocalRotate + 3,
    kPivot = kLocalTranslate + 3,
    kScale = kPivot + 3,
    kRotate = kScale + 3,
    kTranslate = kRotate + 3,
    kRandom = kTranslate + 3,
    kKeepFacesTogether,
    kDivisions,
    kSmoothingAngle,
    kInputProfile,
    kLocalDirection,
    kWeight = kLocalDirection + 3,
    kAttraction,
    kFirstExtrusionInput
};

/// Rings of faces that one extrusion may make.
inline constexpr std::int32_t kMostDivisions = 10000;

/// What an extrusion does to its components. Random places, gravity and magnets, a curve to follow
/// and an x axis that does not go along the first edge are left out.
struct ExtrusionMotion : geometry::ComponentMotion {
    bool isWhole = true; ///< false where something is left out
};

inline ExtrusionMotion readMotion(ComputeContext& context)
{
    ExtrusionMotion motion;
    const Matrix4 toWorld = matrixOf(context.input(kInputMatrix));
    if (flagInput(context, kWorldSpace, false)) {
        motion.toSpace = toWorld;
    }
    motion.localScale = vectorInput(context, kLocalScale, {1, 1, 1});
    motion.localRotate = vectorInput(context, kLocalRotate, {});
    motion.localTranslate = vectorInput(context, kLocalTranslate, {});
    motion.pivot = vectorInput(context, kPivot, {});
    motion.scale = vectorInput(context, kScale, {1, 1, 1});
    motion.rotate = vectorInput(context, kRotate, {});
    motion.translate = vectorInput(context, kTranslate, {});
    const bool isRandom = context.number(kRandom, 0) != 0;
    const bool isPulled = context.number(kWeight, 0) != 0 || context.number(kAttraction, 0) != 0;
    const Vec3d direction = vectorInput(context, kLocalDirection, {1, 0, 0});
    const bool isTurned = direction.x <= 0 || direction.y != 0 || direction.z != 0;
    motion.isWhole = !isRandom && !isPulled && !isTurned && !context.isConnected(kInputProfile);
    return motion;
}

} // namespace host::nodes
