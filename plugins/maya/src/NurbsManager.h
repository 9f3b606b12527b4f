// NURBS surfaces: one surface node per shape, with a mesh of it where one is wanted.
#pragma once

#include "plugins/maya/src/GeometryManager.h"

class NurbsManager final : public GeometryManager {
public:
    void extractAll(IDirtyChecker& dirtyChecker) override;
    /// Exactly one surface; an empty one without material or definition when the path leads to no
    /// surface.
    GeometryList extractGeometry(const MDagPath& path) override;

    /// Whether surfaces get a mesh. They do not until this is set.
    void setTessellate(bool tessellate) { m_tessellate = tessellate; }

private:
    std::shared_ptr<orv::LightGeometry> tessellation(const MDagPath& path) const;

    bool m_tessellate = false;
};
