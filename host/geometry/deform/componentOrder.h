// Points that component texts name, in the order in which they name them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace host::geometry {

/// The numbers that texts such as "vtx[4]", "vtx[0:2]", "cv[3][0:1]" or "pt[0][1][0:4]" name, one
/// after the other as written; with several brackets the last one runs fastest. Range at most
/// `most` numbers.
///
/// `sizes` has one entry per bracket that texts may have: how many numbers it ranges over. One
/// bracket alone counts through all of them. Numbers that are not there stand as `kNoPoint`, so
/// that lists in step with the texts stay in step. "*" is the whole range. Malformed texts are left
/// out.
inline constexpr std::uint32_t kNoPoint = 0xffffffff;
std::vector<std::uint32_t> namedPoints(std::span<const std::string> texts,
                                       std::span<const std::uint32_t> sizes, std::size_t most);

} // namespace host::geometry
