#include "host/geometry/mesh/edit/deleteFaces.h"

#include <algorithm>

namespace host::geometry {

std::shared_ptr<const MeshData> deleteFaces(const MeshData& mesh,
                                            std::span<const std::uint32_t> faces,
                                            const MeshRewriter::Cleaning& cleaning)
{
    const std::uint32_t count = mesh.topology->faceCount();
    MeshRewriter rewriter(mesh);
    rewriter.reserve(0, 0, count, mesh.topology->corners.size());
    std::uint32_t kept = 0;
    for (const std::uint32_t face : faces) {
        rewriter.copyFaces(kept, std::min(face, count));
        kept = std::max(kept, std::min(face, count - 1) + 1);
    }
    rewriter.copyFaces(kept, count);
    return rewriter.finish(cleaning);
}

std::shared_ptr<const MeshData> withoutLooseParts(const MeshData& mesh)
{
    return deleteFaces(mesh, {}, kCleanAll);
}

} // namespace host::geometry
