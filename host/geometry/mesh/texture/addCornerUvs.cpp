#include "host/geometry/mesh/texture/addCornerUvs.h"

#include "host/geometry/mesh/texture/UvEditor.h"

namespace host::geometry {

std::shared_ptr<const MeshData> addCornerUvs(const MeshData& mesh, std::size_t set,
                                             std::span<const CornerUv> uvs)
{
    const MeshTopology& topology = *mesh.topology;
    UvEditor editor(mesh, set);
    std::size_t searched = 0;
    for (const CornerUv& uv : uvs) {
        if (uv.face >= topology.faceCount()) {
            continue;
        }
        const std::uint32_t first = topology.firstCorner(uv.face);
        const std::uint32_t end = topology.endCorner(uv.face);
        searched += end - first;
        if (searched > kMaxCornersSearched) {
            break;
        }
        for (std::uint32_t corner = first; corner < end; ++corner) {
            if (topology.cornerVertex(corner) == uv.vertex) {
                editor.corners()[corner] = editor.add(uv.point);
                break;
            }
        }
    }
    return editor.finish();
}

} // namespace host::geometry
