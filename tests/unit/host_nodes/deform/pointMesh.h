// Meshes of loose points for tests of deformers.
#pragma once

#include "host/geometry/mesh/MeshData.h"
#include "host/types/Value.h"

#include <memory>
#include <utility>
#include <vector>

namespace test {

/// A mesh of points alone.
inline host::Value pointMesh(std::vector<host::Vec3f> points)
{
    host::geometry::MeshTopology topology;
    topology.vertexCount = static_cast<std::uint32_t>(points.size());
    topology.loopStart = {0};
    host::geometry::MeshData mesh;
    mesh.topology = std::make_shared<const host::geometry::MeshTopology>(std::move(topology));
    mesh.points = std::make_shared<const std::vector<host::Vec3f>>(std::move(points));
    return host::Value::of(std::move(mesh));
}

inline std::vector<host::Vec3f> meshPoints(const host::Value& value)
{
    const auto mesh = value.data<host::geometry::MeshData>();
    return mesh != nullptr ? *mesh->points : std::vector<host::Vec3f>();
}

} // namespace test
