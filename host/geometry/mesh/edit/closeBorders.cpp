#include "host/geometry/mesh/edit/closeBorders.h"

#include "host/geometry/mesh/edit/BorderWalker.h"

namespace host::geometry {
namespace {

constexpr std::size_t kLeastCorners = 3;

/// Against the direction of the border, so that the face looks where those around it look.
void writeFilling(MeshRewriter& rewriter, const BorderWalker& walker,
                  std::span<const std::uint32_t> border)
{
    const MeshTopology& topology = *rewriter.before().topology;
    rewriter.beginFace(walker.links().face(border.front()));
    for (std::size_t i = 0; i < border.size(); ++i) {
        const std::uint32_t corner = border[(border.size() - i) % border.size()];
        rewriter.addCorner(reversed(topology.corners[corner]), walker.links().next(corner));
    }
    rewriter.endFace();
}

} // namespace

std::shared_ptr<const MeshData> closeBorders(const MeshData& mesh,
                                             std::span<const std::uint32_t> edges)
{
    const MeshTopology& topology = *mesh.topology;
    const BorderWalker walker(topology);
    std::vector<bool> isFollowed(topology.corners.size());
    MeshRewriter rewriter(mesh);
    rewriter.copyFaces(0, topology.faceCount());
    for (const std::uint32_t edge : edges) {
        const std::uint32_t corner = edge < topology.edges.size() ? walker.cornerOf(edge) : kNone;
        if (corner == kNone) {
            continue;
        }
        const std::vector<std::uint32_t> border = walker.borderFrom(corner, isFollowed);
        if (border.size() >= kLeastCorners) {
            writeFilling(rewriter, walker, border);
        }
    }
    return rewriter.finish();
}

} // namespace host::geometry
