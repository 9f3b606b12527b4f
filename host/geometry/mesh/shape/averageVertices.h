// Vertices drawn towards their neighbours, with the shrinking held back.
#pragma once

#include "host/geometry/mesh/MeshData.h"

#include <cstdint>
#include <memory>
#include <span>

namespace host::geometry {

/// Rounds the shape by moving the given vertices (ascending); the others stay.
///
/// Rule   J. Vollmer, R. Mencl, H. Mueller: "Improved Laplacian Smoothing of Noisy Surface Meshes"
///        (1999): each step moves a vertex to the mean q of its neighbours along edges, and back by
///        beta * b + (1 - beta) * mean of the neighbours' b, where b = q - (alpha * first point +
///        (1 - alpha) * last point).
/// Limit  kMostAveragings steps.
inline constexpr std::int32_t kMostAveragings = 1000;
std::shared_ptr<const MeshData> averageVertices(const MeshData& mesh,
                                                std::span<const std::uint32_t> vertices,
                                                std::int32_t steps, double alpha, double beta);

} // namespace host::geometry
