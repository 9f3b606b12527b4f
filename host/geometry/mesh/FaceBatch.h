// Faces of equally many corners side by side, so that a processor can work on several at once. Each
// number comes of the same operations in the same order as for a face alone (polygon.h), and is
// therefore the same to its last digit.
#pragma once

#include "host/geometry/mesh/polygon.h"
#include "host/support/wideProcessors.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace host::geometry {

inline constexpr std::size_t kBatchFaces = 64;

/// One number of each face. Plain arrays here and below: compilers see through them.
struct BatchNumbers {
    alignas(64) double values[kBatchFaces];
};

/// One vector of each face, coordinate by coordinate.
template<class Number>
struct BatchVectorsOf {
    alignas(64) Number x[kBatchFaces];
    alignas(64) Number y[kBatchFaces];
    alignas(64) Number z[kBatchFaces];

    Vec3d operator[](std::size_t i) const { return {x[i], y[i], z[i]}; }
};
using BatchVectors = BatchVectorsOf<double>;

/// Up to kBatchFaces faces of one loop of kCorners corners, and what kernels ask of all of them at
/// once. The loops have no branches; they are what vectorising compilers like.
template<std::size_t kCorners>
class FaceBatch {
    static_assert(kCorners == 3 || kCorners == 4);

public:
    std::size_t size() const { return m_size; }
    bool isFull() const { return m_size == kBatchFaces; }
    void clear() { m_size = 0; }

    /// A face by its first corner.
    void add(std::uint32_t firstCorner, std::span<const std::uint32_t> vertices,
             std::span<const Vec3f> points)
    {
        m_firstCorner[m_size] = firstCorner;
        for (std::size_t k = 0; k < kCorners; ++k) {
            const Vec3f& point = points[vertices[firstCorner + k]];
            m_points[k].x[m_size] = point.x;
            m_points[k].y[m_size] = point.y;
            m_points[k].z[m_size] = point.z;
        }
        ++m_size;
    }

    std::uint32_t firstCorner(std::size_t i) const { return m_firstCorner[i]; }
    Vec3d point(std::size_t corner, std::size_t i) const { return m_points[corner][i]; }

    /// As `areaVector`.
    [[gnu::always_inline]] Vec3d areaVectorOf(std::size_t i) const
    {
        const Vec3d origin = m_points[0][i];
        const Vec3d second = m_points[2][i] - origin;
        Vec3d sum = Vec3d() + cross(m_points[1][i] - origin, second);
        if constexpr (kCorners == 4) {
            sum = sum + cross(second, m_points[3][i] - origin);
        }
        return sum * 0.5;
    }

    /// As `polygonPlane`, but that the normal of a face means nothing where its area is not above
    /// zero or not finite.
    [[gnu::always_inline]] void findPlanes(BatchVectors& normals, BatchNumbers& areas) const
    {
        for (std::size_t i = 0; i < m_size; ++i) {
            const Vec3d vector = areaVectorOf(i);
            const double area = length(vector);
            const Vec3d normal = vector * (1 / area);
            normals.x[i] = normal.x;
            normals.y[i] = normal.y;
            normals.z[i] = normal.z;
            areas.values[i] = area;
        }
    }

    /// As `interiorAngle`, at one of the corners.
    [[gnu::always_inline]] void findAngles(std::size_t corner, const BatchVectors& normals,
                                           BatchNumbers& angles) const
    {
        const BatchPoints& previous = m_points[(corner + kCorners - 1) % kCorners];
        const BatchPoints& here = m_points[corner];
        const BatchPoints& next = m_points[(corner + 1) % kCorners];
        for (std::size_t i = 0; i < m_size; ++i) {
            angles.values[i] = interiorAngle(previous[i], here[i], next[i], normals[i]);
        }
    }

private:
    /// As meshes have them; they become doubles where several are worked on at once.
    using BatchPoints = BatchVectorsOf<float>;

    BatchPoints m_points[kCorners];
    std::uint32_t m_firstCorner[kBatchFaces];
    std::size_t m_size = 0;
};

} // namespace host::geometry
