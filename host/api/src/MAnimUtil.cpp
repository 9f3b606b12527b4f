#include <maya/MAnimUtil.h>

#include "host/api/src/Inside.h"
#include "host/api/src/toStatus.h"

#include <algorithm>

using host::ErrorCode;
using host::api::answer;
using host::api::Inside;
using host::api::toStatus;
using host::session::currentSession;
using host::session::DagPath;
using host::session::kNoNode;
using host::session::NodeId;
using host::session::Session;

bool MAnimUtil::isAnimated(const MObject& node, bool checkParent, MStatus* ReturnStatus)
{
    const NodeId id = Inside::nodeOf(node);
    if (id == kNoNode) {
        return answer(ReturnStatus, toStatus(ErrorCode::NotFound), false);
    }
    const Session& session = *currentSession();
    bool isFound = session.isAnimated(id);
    if (!isFound && checkParent && session.graph().node(id).isDag()) {
        const std::vector<DagPath> paths = session.pathsTo(id);
        isFound = std::any_of(paths.begin(), paths.end(),
                              [&](const DagPath& path) { return session.isAnimated(path, true); });
    }
    return answer(ReturnStatus, MStatus(), isFound);
}

bool MAnimUtil::isAnimated(const MDagPath& path, bool checkParent, MStatus* ReturnStatus)
{
    const DagPath* held = Inside::pathOf(path);
    if (held == nullptr) {
        return answer(ReturnStatus, toStatus(ErrorCode::NotFound), false);
    }
    return answer(ReturnStatus, MStatus(), currentSession()->isAnimated(*held, checkParent));
}
