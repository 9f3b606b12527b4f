// How an operation moves the components that it makes: in the frame of each, and all together.
#pragma once

#include "host/geometry/mesh/edit/faceFrame.h"

namespace host::geometry {

struct ComponentMotion {
    Matrix4 toSpace; ///< from the object to the space in which all lengths and directions are

    // --- in the frame of each component, in this order
    Vec3d localScale{1, 1, 1};
    Vec3d localRotate; ///< radians, about x, then y, then z
    Vec3d localTranslate;
    double offset = 0;    ///< by which the outline is set inwards, once it is scaled
    double thickness = 0; ///< along the normals, so far that faces come to this distance

    // --- in the space, after that
    Vec3d pivot;
    Vec3d scale{1, 1, 1};
    Vec3d rotate; ///< radians, about x, then y, then z
    Vec3d translate;
};

/// The motion done by a fraction (0..1): every number goes that part of its way.
ComponentMotion atFraction(const ComponentMotion& motion, double fraction);

/// Applies the parts of a motion to points.
class ComponentMover {
public:
    explicit ComponentMover(const ComponentMotion& motion);

    /// Scaled in the frame, about its origin.
    Vec3d scaled(const LocalFrame& frame, const Vec3d& point) const;
    /// Rotated and translated in the frame.
    Vec3d placed(const LocalFrame& frame, const Vec3d& point) const;
    /// Scaled, rotated and translated in the space.
    Vec3d moved(const Vec3d& point) const;

private:
    ComponentMotion m_motion;
    Matrix4 m_local;
    Matrix4 m_global;
};

} // namespace host::geometry
