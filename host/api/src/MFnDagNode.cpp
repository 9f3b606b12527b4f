#include <maya/MFnDagNode.h>

#include "host/api/src/Inside.h"
#include "host/api/src/toStatus.h"

#include <maya/MObjectArray.h>

#include <utility>

using host::ErrorCode;
using host::api::answer;
using host::api::Component;
using host::api::Inside;
using host::api::toStatus;
using host::session::currentSession;
using host::session::kNoNode;
using host::session::NodeId;
using host::session::SetMembership;

namespace {

/// The node that a function set is attached to, or null.
const host::graph::Node* recordOf(const MObject& object)
{
    const NodeId node = Inside::nodeOf(object);
    return node != kNoNode ? &currentSession()->graph().node(node) : nullptr;
}

MObject memberOf(const std::vector<NodeId>& nodes, unsigned int index, MStatus* status)
{
    if (index >= nodes.size()) {
        return answer(status, toStatus(ErrorCode::InvalidParameter), MObject());
    }
    return answer(status, MStatus(), Inside::node(nodes[index]));
}

MObject componentOf(const SetMembership& membership)
{
    if (membership.faces == nullptr) {
        return MObject();
    }
    const MFn::Type type =
        membership.isOfOtherComponents ? MFn::kMeshComponent : MFn::kMeshPolygonComponent;
    return Inside::component(
        std::make_shared<Component>(Component{type, false, 0, membership.faces}));
}

} // namespace

MFnDagNode::MFnDagNode(const MObject& object, MStatus* ReturnStatus)
{
    answer(ReturnStatus, MFnDagNode::setObject(object));
}

MFnDagNode::MFnDagNode(const MDagPath& path, MStatus* ReturnStatus)
{
    answer(ReturnStatus, setObject(path));
}

MFn::Type MFnDagNode::type() const
{
    return MFn::kDagNode;
}

MStatus MFnDagNode::setObject(const MObject& object)
{
    const MStatus status = MFnBase::setObject(object);
    if (status) {
        m_path = MDagPath();
    }
    return status;
}

MStatus MFnDagNode::setObject(const MDagPath& path)
{
    const MStatus status = MFnBase::setObject(path.node());
    if (status) {
        m_path = path;
    }
    return status;
}

MStatus MFnDagNode::getPath(MDagPath& path) const
{
    if (!m_path.isValid()) {
        return MDagPath::getAPathTo(m_object, path);
    }
    path = m_path;
    return MStatus();
}

MDagPath MFnDagNode::dagPath(MStatus* ReturnStatus) const
{
    return answer(ReturnStatus, m_path.isValid() ? MStatus() : toStatus(ErrorCode::NotFound),
                  m_path);
}

MString MFnDagNode::fullPathName(MStatus* ReturnStatus) const
{
    MDagPath path;
    const MStatus status = getPath(path);
    return answer(ReturnStatus, status, status ? path.fullPathName() : MString());
}

bool MFnDagNode::isIntermediateObject(MStatus* ReturnStatus) const
{
    const MPlug plug = findPlug("intermediateObject", ReturnStatus);
    return !plug.isNull() && plug.asBool(ReturnStatus);
}

bool MFnDagNode::isInstanced(bool indirect, MStatus* ReturnStatus) const
{
    return instanceCount(indirect, ReturnStatus) > 1;
}

unsigned int MFnDagNode::instanceCount(bool total, MStatus* ReturnStatus) const
{
    const NodeId node = Inside::nodeOf(object(ReturnStatus));
    if (node == kNoNode) {
        return 0;
    }
    return total ? static_cast<unsigned int>(currentSession()->graph().pathCount(node))
                 : parentCount(ReturnStatus);
}

unsigned int MFnDagNode::parentCount(MStatus* ReturnStatus) const
{
    const host::graph::Node* node = recordOf(object(ReturnStatus));
    return node != nullptr ? static_cast<unsigned int>(node->parents.size()) : 0;
}

MObject MFnDagNode::parent(unsigned int index, MStatus* ReturnStatus) const
{
    const host::graph::Node* node = recordOf(object(ReturnStatus));
    return node != nullptr ? memberOf(node->parents, index, ReturnStatus) : MObject();
}

unsigned int MFnDagNode::childCount(MStatus* ReturnStatus) const
{
    const host::graph::Node* node = recordOf(object(ReturnStatus));
    return node != nullptr ? static_cast<unsigned int>(node->children.size()) : 0;
}

MObject MFnDagNode::child(unsigned int index, MStatus* ReturnStatus) const
{
    const host::graph::Node* node = recordOf(object(ReturnStatus));
    return node != nullptr ? memberOf(node->children, index, ReturnStatus) : MObject();
}

MStatus MFnDagNode::getConnectedSetsAndMembers(unsigned int instanceNumber, MObjectArray& sets,
                                               MObjectArray& components,
                                               bool renderableSetsOnly) const
{
    sets.clear();
    components.clear();
    const NodeId node = Inside::nodeOf(m_object);
    if (node == kNoNode) {
        return toStatus(ErrorCode::NotFound);
    }
    const auto memberships =
        currentSession()->connectedSets(node, instanceNumber, renderableSetsOnly);
    if (!memberships) {
        return toStatus(memberships.error());
    }
    for (const SetMembership& membership : *memberships) {
        sets.append(Inside::node(membership.set));
        components.append(componentOf(membership));
    }
    return MStatus();
}
