// Numbers of faces, edges, vertices and texture coordinates from component texts.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace host::geometry {

/// How component texts begin: "f[0:5]", "e[3]", "vtx[*]", "map[7]".
inline constexpr std::string_view kFaceComponents = "f";
inline constexpr std::string_view kEdgeComponents = "e";
inline constexpr std::string_view kVertexComponents = "vtx";
inline constexpr std::string_view kUvComponents = "map";

/// The components of one kind that texts such as "f[2]", "f[0:5]" and "f[*]" name, ascending, each
/// once.
///
/// Range    only numbers below `count`; the memory taken is bounded by it and by the number of
///          texts, however large a written range is. A range written backwards is turned round.
/// Failure  none; texts of other kinds and malformed ones are ignored.
std::vector<std::uint32_t> parseComponentList(std::span<const std::string> components,
                                              std::string_view kind, std::uint32_t count);
/// The same for faces.
std::vector<std::uint32_t> parseFaceList(std::span<const std::string> components,
                                         std::uint32_t faceCount);

/// True when every text names components of the kind, and all of them are below `count`.
bool doComponentsExist(std::span<const std::string> components, std::string_view kind,
                       std::uint32_t count);

} // namespace host::geometry
