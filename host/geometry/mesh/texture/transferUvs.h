// Texture coordinates of another mesh, or given by number.
#pragma once

#include "host/geometry/mesh/MeshData.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

namespace host::geometry {

/// True for meshes whose faces have their corners at the same vertices in the same order: what
/// corners of one have, those of the other can take.
bool haveSameCorners(const MeshTopology& a, const MeshTopology& b);

/// The mesh with a set (a number below those of `source`) of another one, which must have the same
/// corners, under a name: in place of its own of that name, or behind the others. Turned over in u
/// or v about the middle of the unit square where asked for.
std::shared_ptr<const MeshData> withUvSetOf(const MeshData& mesh, const MeshData& source,
                                            std::size_t set, std::string_view name, bool flipsU,
                                            bool flipsV);

/// Coordinates and the id of each corner, face after face.
struct StoredUvs {
    std::span<const double> u;
    std::span<const double> v;
    std::span<const std::int32_t> corners;
};

/// The mesh with one of its sets replaced. Null where u and v are not as many, or the ids are not
/// those of the mesh's corners.
std::shared_ptr<const MeshData> withStoredUvs(const MeshData& mesh, std::size_t set,
                                              const StoredUvs& stored);

} // namespace host::geometry
