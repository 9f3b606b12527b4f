// polySubdFace: faces divided, again and again into faces of four or triangles, or once into grids.
#include "host/nodes/polygon/topology/componentOperation.h"
#include "host/nodes/polygon/topology/polygonTopologyTypes.h"

#include "host/geometry/mesh/edit/subdivideFaces.h"

namespace host::nodes {
namespace {

constexpr auto kInputs = meshInputs("divisions", "divisionsU", "divisionsV", "mode", "subdMethod");
constexpr std::array<std::string_view, 1> kOutputs{"output"};
enum Input : std::size_t { kDivisions = kFirstOwnInput, kU, kV, kMode, kMethod };

/// The numbers of the attributes mode and subdMethod.
constexpr double kTriangles = 1;
constexpr double kLinear = 1;

constexpr std::int32_t kMostTimes = 16;
constexpr std::int32_t kMostCells = 1 << 20;

Expected<Value> compute(ComputeContext& context)
{
    const auto times =
        static_cast<std::uint32_t>(countInput(context, kDivisions, 1, kMostTimes, 0));
    const auto u = static_cast<std::uint32_t>(countInput(context, kU, 1, kMostCells));
    const auto v = static_cast<std::uint32_t>(countInput(context, kV, 1, kMostCells));
    const bool hasTriangles = context.number(kMode, 0) == kTriangles;
    const bool isLinear = context.number(kMethod, 0) == kLinear;
    return computeOn(context, geometry::kFaceComponents,
                     [&](const geometry::MeshData& mesh, const auto& faces) {
                         return isLinear       ? geometry::subdivideToGrids(mesh, faces, u, v)
                                : hasTriangles ? geometry::subdivideToTriangles(mesh, faces, times)
                                               : geometry::subdivideToQuads(mesh, faces, times);
                     });
}

} // namespace

constinit const NodeCompute kPolySubdFace{
    .type = "polySubdFace", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
