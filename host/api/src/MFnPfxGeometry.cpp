#include <maya/MFnPfxGeometry.h>

#include "host/api/src/Inside.h"
#include "host/api/src/matrices.h"
#include "host/api/src/toStatus.h"

#include <utility>

using host::ErrorCode;
using host::api::answer;
using host::api::Inside;
using host::api::toStatus;
using host::geometry::RenderLine;
using host::geometry::RenderLines;
using host::session::currentSession;
using host::session::kNoNode;
using host::session::NodeId;

namespace {

/// What a caller of `getLineData` asks for.
struct Request {
    bool points = false, widths = false, colors = false;
    const host::Matrix4* world = nullptr; ///< null: object space
};

std::shared_ptr<const Inside::LineBatch> batchOf(const std::shared_ptr<const RenderLines>& source,
                                                 const std::vector<RenderLine> RenderLines::*kind,
                                                 const Request& request)
{
    auto batch = std::make_shared<Inside::LineBatch>();
    if (source == nullptr) {
        return batch;
    }
    batch->source = source;
    const host::Matrix4* world = nullptr;
    if (request.world != nullptr) {
        batch->world = *request.world;
        world = &batch->world;
    }
    const std::vector<RenderLine>& lines = (*source).*kind;
    batch->lines.reserve(lines.size());
    for (const RenderLine& line : lines) {
        batch->lines.push_back({&line, world, request.points, request.widths, request.colors});
    }
    return batch;
}

} // namespace

MFnPfxGeometry::MFnPfxGeometry(const MObject& object, MStatus* ReturnStatus)
{
    answer(ReturnStatus, MFnDagNode::setObject(object));
}

MFnPfxGeometry::MFnPfxGeometry(const MDagPath& path, MStatus* ReturnStatus)
{
    answer(ReturnStatus, setObject(path));
}

MFn::Type MFnPfxGeometry::type() const
{
    return MFn::kPfxGeometry;
}

MStatus MFnPfxGeometry::getLineData(MRenderLineArray& mainLines, MRenderLineArray& leafLines,
                                    MRenderLineArray& flowerLines, bool doLines, bool, bool doWidth,
                                    bool, bool, bool doColor, bool, bool, bool worldSpace) const
{
    const NodeId node = Inside::nodeOf(m_object);
    if (node == kNoNode) {
        return toStatus(ErrorCode::NotFound);
    }
    Request request{doLines, doWidth, doColor, nullptr};
    host::Matrix4 world;
    if (worldSpace) {
        MStatus status;
        world = host::api::toMatrix4(m_path.inclusiveMatrix(&status));
        if (!status) {
            return status;
        }
        request.world = &world;
    }
    const std::shared_ptr<const RenderLines> lines = currentSession()->renderLines(node);
    Inside::setLines(mainLines, batchOf(lines, &RenderLines::main, request));
    Inside::setLines(leafLines, batchOf(lines, &RenderLines::leaves, request));
    Inside::setLines(flowerLines, batchOf(lines, &RenderLines::flowers, request));
    return MStatus();
}
