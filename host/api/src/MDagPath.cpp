#include <maya/MDagPath.h>

#include "host/api/src/Inside.h"
#include "host/api/src/matrices.h"
#include "host/api/src/toStatus.h"

#include <maya/MDagPathArray.h>

#include <algorithm>

using host::ErrorCode;
using host::api::answer;
using host::api::Inside;
using host::api::toStatus;
using host::session::currentSession;
using host::session::DagPath;
using host::session::kNoNode;
using host::session::kWorld;
using host::session::NodeId;
using host::session::Session;

namespace {

/// The answer to a question about a path, or `none` when there is no path.
template<class T, class Question>
T ask(const MDagPath& handle, MStatus* status, T none, Question question)
{
    const DagPath* path = Inside::pathOf(handle);
    if (path == nullptr) {
        return answer(status, toStatus(ErrorCode::NotFound), std::move(none));
    }
    return answer(status, MStatus(), T(question(*currentSession(), *path)));
}

const std::vector<NodeId>& childrenOf(const Session& session, const DagPath& path)
{
    return session.graph().node(path.end()).children;
}

/// The DAG node of an object, or why there is none.
host::Expected<NodeId> dagNode(const MObject& object)
{
    const NodeId node = Inside::nodeOf(object);
    if (node == kNoNode) {
        return host::Error{ErrorCode::NotFound, "no node of the open scene", {}};
    }
    if (!currentSession()->graph().node(node).isDag()) {
        return host::Error{ErrorCode::InvalidParameter, "a node outside the DAG", {}};
    }
    return node;
}

} // namespace

bool MDagPath::isValid(MStatus* ReturnStatus) const
{
    return answer(ReturnStatus, MStatus(), Inside::pathOf(*this) != nullptr);
}

MString MDagPath::fullPathName(MStatus* ReturnStatus) const
{
    return ask(*this, ReturnStatus, MString(), [](const Session& session, const DagPath& path) {
        return MString(session.fullPathName(path).c_str());
    });
}

bool MDagPath::isVisible(MStatus* ReturnStatus) const
{
    return ask(*this, ReturnStatus, false,
               [](Session& session, const DagPath& path) { return session.isVisible(path); });
}

bool MDagPath::isInstanced(MStatus* ReturnStatus) const
{
    return ask(*this, ReturnStatus, false, [](const Session& session, const DagPath& path) {
        return session.isInstanced(path);
    });
}

unsigned int MDagPath::instanceNumber(MStatus* ReturnStatus) const
{
    return ask(*this, ReturnStatus, 0u, [](const Session& session, const DagPath& path) {
        return session.instanceNumber(path);
    });
}

MObject MDagPath::node(MStatus* ReturnStatus) const
{
    return ask(*this, ReturnStatus, MObject(),
               [](const Session&, const DagPath& path) { return Inside::node(path.end()); });
}

MMatrix MDagPath::inclusiveMatrix(MStatus* ReturnStatus) const
{
    return ask(*this, ReturnStatus, MMatrix(), [](Session& session, const DagPath& path) {
        return host::api::toMatrix(session.inclusiveMatrix(path));
    });
}

bool MDagPath::hasFn(MFn::Type type, MStatus* ReturnStatus) const
{
    return node(ReturnStatus).hasFn(type);
}

MFn::Type MDagPath::apiType(MStatus* ReturnStatus) const
{
    return node(ReturnStatus).apiType();
}

unsigned int MDagPath::length(MStatus* ReturnStatus) const
{
    return ask(*this, ReturnStatus, 0u, [](const Session&, const DagPath& path) {
        return static_cast<unsigned int>(path.nodes.size());
    });
}

unsigned int MDagPath::childCount(MStatus* ReturnStatus) const
{
    return ask(*this, ReturnStatus, 0u, [](const Session& session, const DagPath& path) {
        return static_cast<unsigned int>(childrenOf(session, path).size());
    });
}

MObject MDagPath::child(unsigned int index, MStatus* ReturnStatus) const
{
    if (index >= childCount(ReturnStatus)) {
        answer(ReturnStatus, ErrorCode::InvalidParameter);
        return MObject();
    }
    return Inside::node(childrenOf(*currentSession(), *Inside::pathOf(*this))[index]);
}

MStatus MDagPath::push(const MObject& child)
{
    const DagPath* path = Inside::pathOf(*this);
    const NodeId node = Inside::nodeOf(child);
    if (path == nullptr || node == kNoNode) {
        return toStatus(ErrorCode::NotFound);
    }
    const std::vector<NodeId>& children = childrenOf(*currentSession(), *path);
    if (std::find(children.begin(), children.end(), node) == children.end()) {
        return toStatus(ErrorCode::InvalidParameter);
    }
    DagPath longer = *path;
    longer.nodes.push_back(node);
    *this = Inside::path(std::move(longer));
    return MStatus();
}

MStatus MDagPath::pop(unsigned int count)
{
    const DagPath* path = Inside::pathOf(*this);
    if (path == nullptr) {
        return toStatus(ErrorCode::NotFound);
    }
    if (count > path->nodes.size()) {
        return toStatus(ErrorCode::InvalidParameter);
    }
    DagPath shorter = *path;
    shorter.nodes.resize(shorter.nodes.size() - count);
    *this = Inside::path(std::move(shorter));
    return MStatus();
}

MStatus MDagPath::getAPathTo(const MObject& node, MDagPath& path)
{
    const auto id = dagNode(node);
    if (id) {
        path = Inside::path(*id == kWorld ? DagPath() : currentSession()->firstPathTo(*id));
    }
    return toStatus(id);
}

MStatus MDagPath::getAllPathsTo(const MObject& node, MDagPathArray& paths)
{
    paths.clear();
    const auto id = dagNode(node);
    if (!id) {
        return toStatus(id.error());
    }
    if (*id == kWorld) {
        return paths.append(Inside::path({}));
    }
    for (DagPath& path : currentSession()->pathsTo(*id)) {
        paths.append(Inside::path(std::move(path)));
    }
    return MStatus();
}

bool MDagPath::operator==(const MDagPath& other) const
{
    const DagPath* path = Inside::pathOf(*this);
    const DagPath* otherPath = Inside::pathOf(other);
    return path != nullptr && otherPath != nullptr ? *path == *otherPath : path == otherPath;
}
