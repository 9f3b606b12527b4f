#include "host/geometry/mesh/edit/ComponentMotion.h"

#include "host/math/rotation.h"

namespace host::geometry {
namespace {

constexpr Vec3d kOnes{1, 1, 1};

Vec3d times(const Vec3d& a, const Vec3d& b)
{
    return {a.x * b.x, a.y * b.y, a.z * b.z};
}

} // namespace

ComponentMotion atFraction(const ComponentMotion& motion, double fraction)
{
    ComponentMotion part = motion;
    part.localScale = kOnes + (motion.localScale - kOnes) * fraction;
    part.localRotate = motion.localRotate * fraction;
    part.localTranslate = motion.localTranslate * fraction;
    part.offset = motion.offset * fraction;
    part.thickness = motion.thickness * fraction;
    part.scale = kOnes + (motion.scale - kOnes) * fraction;
    part.rotate = motion.rotate * fraction;
    part.translate = motion.translate * fraction;
    return part;
}

ComponentMover::ComponentMover(const ComponentMotion& motion)
    : m_motion(motion)
    , m_local(eulerRotation(motion.localRotate, RotationOrder::Xyz) *
              translation(motion.localTranslate))
    , m_global(translation(motion.pivot * -1) * scaling(motion.scale) *
               eulerRotation(motion.rotate, RotationOrder::Xyz) *
               translation(motion.pivot + motion.translate))
{
}

Vec3d ComponentMover::scaled(const LocalFrame& frame, const Vec3d& point) const
{
    return frame.toSpace(times(frame.toLocal(point), m_motion.localScale));
}

Vec3d ComponentMover::placed(const LocalFrame& frame, const Vec3d& point) const
{
    return frame.toSpace(transformPoint(frame.toLocal(point), m_local));
}

Vec3d ComponentMover::moved(const Vec3d& point) const
{
    return transformPoint(point, m_global);
}

} // namespace host::geometry
