#include "host/geometry/tessellation/tessellate.h"

#include "host/geometry/tessellation/creases.h"
#include "host/geometry/tessellation/trimLines.h"
#include "host/geometry/tessellation/trimTessellation.h"

#include <algorithm>
#include <utility>

namespace host::geometry {
namespace {

/// Adds one region, or the whole surface where its boundaries cannot be followed.
void addRegion(const TrimRegion& region, const SurfaceSheet& sheet, const GridLines& lines,
               const TessellationSettings& settings, SurfaceMeshBuilder& builder,
               std::size_t& pointsLeft, TessellationNotes& notes)
{
    const std::size_t triangles = builder.triangleCount();
    const std::vector<BoundaryLoop> loops =
        sampleTrimRegion(region, sheet, lines, settings, pointsLeft, notes);
    if (!addTrimRegion(loops, sheet, lines, settings, builder)) {
        notes.add(TessellationNote::EntangledBoundaries);
        builder.addGrid(lines, settings.swapsEdges);
    }
    if (builder.triangleCount() == triangles) {
        notes.add(TessellationNote::NothingLeft);
    }
}

/// Every region looks through the grid, which must therefore not be fine when there are very many.
TessellationSettings gridSettings(TessellationSettings settings, std::size_t regionCount)
{
    constexpr std::size_t kMaxLookups = std::size_t{1} << 27;
    if (regionCount > 0) {
        settings.maxTriangles = std::min(settings.maxTriangles, kMaxLookups / regionCount);
    }
    return settings;
}

} // namespace

Tessellation tessellate(const SurfaceData& surface, const TessellationSettings& settings)
{
    Tessellation result;
    const SurfaceSheet sheet(surface);
    if (!sheet.isValid()) {
        result.notes.add(TessellationNote::InvalidSurface);
        result.mesh.faceFirstTriangle = {0, 0};
        return result;
    }
    const TessellationSettings grid = gridSettings(settings, surface.trims.size());
    GridLines lines = chooseGridLines(sheet, grid);
    if (lines.isCoarsened) {
        result.notes.add(TessellationNote::Coarsened);
    }
    if (surface.isTrimmed()) {
        lines = squaredNearTrims(sheet, std::move(lines), surface.trims, grid.maxTriangles);
    }
    SurfaceMeshBuilder builder(sheet);
    if (!surface.isTrimmed()) {
        builder.addGrid(withCreases(sheet, lines, settings.maxTriangles), settings.swapsEdges);
        if (settings.isOpposite) {
            builder.flip(0, 0);
        }
    }
    std::size_t pointsLeft = kMaxTrimPoints;
    for (const auto& region : surface.trims) {
        if (region == nullptr) {
            continue;
        }
        // Whatever the regions are, all of them together keep the limit twice at most.
        if (builder.triangleCount() > settings.maxTriangles) {
            result.notes.add(TessellationNote::Coarsened);
            break;
        }
        const std::size_t triangle = builder.triangleCount();
        const std::size_t vertex = builder.vertexCount();
        addRegion(*region, sheet, lines, settings, builder, pointsLeft, result.notes);
        if (region->flipNormal != settings.isOpposite) {
            builder.flip(triangle, vertex);
        }
    }
    result.mesh = builder.finish();
    return result;
}

} // namespace host::geometry
