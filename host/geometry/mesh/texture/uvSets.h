// Whole sets of texture coordinates: made, copied, taken away.
#pragma once

#include "host/geometry/mesh/MeshData.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

namespace host::geometry {

/// The mesh with an empty set of the name behind the others; as it is where it has one.
std::shared_ptr<const MeshData> withUvSet(const MeshData& mesh, std::string_view name);
/// The mesh without one of its sets; the first is the current one then if that was it.
std::shared_ptr<const MeshData> withoutUvSet(const MeshData& mesh, std::size_t set);
/// The mesh with a copy of one of its sets under the name, in the place of one that has it.
std::shared_ptr<const MeshData> withCopiedUvSet(const MeshData& mesh, std::size_t set,
                                                std::string_view name);

/// The same for the corners of some faces (ascending): the set of the name, which is made where it
/// is missing, gets what those faces have in the other one. Ids come behind those that it has, in
/// the order in which the loops first come to them; what nothing uses then closes up.
std::shared_ptr<const MeshData> withCopiedUvs(const MeshData& mesh, std::size_t set,
                                              std::string_view name,
                                              std::span<const std::uint32_t> faces);

} // namespace host::geometry
