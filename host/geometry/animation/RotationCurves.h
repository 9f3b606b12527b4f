// Three curves of angles that are interpolated as one rotation.
#pragma once

#include "host/geometry/animation/AnimationCurve.h"
#include "host/math/quaternion.h"

#include <array>
#include <cstddef>
#include <memory>
#include <vector>

namespace host::geometry {

/// How the three curves of an object's rotation run between keys; the numbers are those of the
/// attribute rotationInterpolation. With any other number each axis runs by itself.
enum class RotationBlend : std::uint8_t {
    Slerp = 3,    ///< at even speed on the shortest arc
    Tangents = 4, ///< on the shortest arc, its speed by tangents: taken as Slerp
    Squad = 5,    ///< smoothly through the neighbouring keys
};

/// Rotations at keys that all three curves have. The angles of a key are those of the keys; in
/// between they come from the blended rotation, of all triples of angles that mean it the one that
/// is nearest to a straight line between the keys. Squad is the usual cubic of quaternions (two
/// spherical blends blended, inner points from the neighbours on both sides), as if keys were at
/// even distances. Steps hold as the curve of the first axis says; infinities are its too, a
/// straight one holds.
class RotationCurves {
public:
    /// Null when the curves do not have the same key times, or no keys. Angles in radians.
    static std::shared_ptr<const RotationCurves> join(const std::array<CurveKeys, 3>& axes,
                                                      RotationOrder order, RotationBlend blend);
    /// The angle of an axis (0 x, 1 y, 2 z).
    double at(double time, std::size_t axis) const;

private:
    struct Key {
        std::array<double, 3> angles{};
        Quaternion rotation; ///< on the side of its neighbour before it
        Quaternion inner;    ///< of squads
        TangentType leaving = TangentType::Auto;
    };
    Vec3d between(std::size_t key, double part) const;
    void setInnerPoints();

    AnimationCurve m_first; ///< the curve of the x axis: for times, steps and infinities
    std::vector<double> m_times;
    std::vector<Key> m_keys;
    std::array<double, 3> m_rise{}; ///< from the first key's angles to the last one's
    RotationOrder m_order = RotationOrder::Xyz;
    RotationBlend m_blend = RotationBlend::Slerp;
};

} // namespace host::geometry
