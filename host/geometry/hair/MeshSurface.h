// A mesh as a surface over its texture coordinates.
#pragma once

#include "host/geometry/mesh/MeshData.h"
#include "host/geometry/nurbs/SurfaceEvaluator.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace host::geometry {

/// Finds places of a mesh by texture coordinates. Built once: its triangles are sorted into a grid
/// over their texture coordinates, so that a question looks at a few of them only.
class MeshSurface {
public:
    /// The set `uvSetName`, else the mesh's current one, else the first. Faces of which a corner
    /// has no coordinates take no part. Precondition: isConsistent(mesh).
    MeshSurface(const MeshData& mesh, std::string_view uvSetName);

    /// Position, derivatives by u and v and the blended normal of the corners, in object space, at
    /// the place in the first triangle (by face) that holds the coordinates; a place on the rim may
    /// be off by a hundred-thousandth of a triangle. Nothing where no triangle has it.
    std::optional<SurfacePoint> at(double u, double v) const;

private:
    struct Triangle {
        Vec3f points[3];
        Vec3f normals[3];
        Vec2f uvs[3];
        /// From the first corner to another one.
        struct Side {
            double u, v;
        };
        Side side(std::size_t corner) const
        {
            return {double{uvs[corner].x} - double{uvs[0].x},
                    double{uvs[corner].y} - double{uvs[0].y}};
        }
        /// Twice the signed area of the texture coordinates.
        double areaOfUvs() const { return side(1).u * side(2).v - side(2).u * side(1).v; }
    };
    /// The cells that a triangle touches.
    struct CellRange {
        std::size_t firstU = 0, lastU = 0, firstV = 0, lastV = 0;
        std::size_t count() const { return (lastU - firstU + 1) * (lastV - firstV + 1); }
    };
    /// A triangle, and the shares that its corners have in a place.
    struct Hit {
        const Triangle* triangle = nullptr;
        double shares[3] = {};
    };
    void gather(const MeshData& mesh, const UvSet& set);
    void measure();
    void sortIntoGrid();
    std::size_t cellOf(double distance, double extent) const;
    CellRange cellsOf(const Triangle& triangle) const;
    std::size_t cellsTaken() const;
    template<class Act>
    void forEachCell(const Triangle& triangle, Act act) const;
    Hit find(double u, double v) const;

    std::vector<Triangle> m_triangles;
    double m_lowU = 0, m_lowV = 0, m_extentU = 0, m_extentV = 0;
    std::size_t m_resolution = 1;               ///< cells along each side
    std::vector<std::uint32_t> m_cellStart;     ///< first entry of each cell, and the end
    std::vector<std::uint32_t> m_cellTriangles; ///< ascending in each cell
};

} // namespace host::geometry
