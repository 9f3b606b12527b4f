// Face numbers from component texts.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace host::geometry {

/// The faces that texts such as "f[2]", "f[0:5]" and "f[*]" name, ascending, each once.
///
/// Range    only numbers below `faceCount`; the memory taken is bounded by it and by the number of
///          texts, however large a written range is. A range written backwards is turned round.
/// Failure  none; texts of other components ("e[3]", "vtx[0:2]") and malformed ones are ignored.
std::vector<std::uint32_t> parseFaceList(std::span<const std::string> components,
                                         std::uint32_t faceCount);

} // namespace host::geometry
