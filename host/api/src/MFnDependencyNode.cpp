#include <maya/MFnDependencyNode.h>

#include "host/api/src/Inside.h"
#include "host/api/src/toStatus.h"

#include <maya/MPlugArray.h>

#include <string>

using host::AttributeIndex;
using host::Error;
using host::ErrorCode;
using host::Expected;
using host::api::answer;
using host::api::Inside;
using host::api::toStatus;
using host::session::currentSession;
using host::session::kNoNode;
using host::session::NodeId;

namespace {

Expected<AttributeIndex> findAttribute(const MObject& object, const MString& name)
{
    const NodeId node = Inside::nodeOf(object);
    if (node == kNoNode) {
        return Error{ErrorCode::NotFound, "no node of the open scene", {}};
    }
    const AttributeIndex index = currentSession()->graph().findAttribute(node, name.asUTF8());
    if (index == host::kNoAttribute) {
        return Error{ErrorCode::InvalidParameter, "no attribute of that name", name.asUTF8()};
    }
    return index;
}

} // namespace

MFnDependencyNode::MFnDependencyNode(const MObject& object, MStatus* ReturnStatus)
{
    answer(ReturnStatus, MFnBase::setObject(object));
}

MFn::Type MFnDependencyNode::type() const
{
    return MFn::kDependencyNode;
}

MString MFnDependencyNode::name(MStatus* ReturnStatus) const
{
    const NodeId node = Inside::nodeOf(object(ReturnStatus));
    return node != kNoNode ? MString(currentSession()->graph().node(node).name.c_str()) : MString();
}

MString MFnDependencyNode::typeName(MStatus* ReturnStatus) const
{
    const NodeId node = Inside::nodeOf(object(ReturnStatus));
    if (node == kNoNode) {
        return MString();
    }
    const std::string word(currentSession()->graph().node(node).type.name());
    return MString(word.c_str());
}

MObject MFnDependencyNode::attribute(const MString& attributeName, MStatus* ReturnStatus) const
{
    const auto found = findAttribute(m_object, attributeName);
    return answer(ReturnStatus, toStatus(found),
                  found ? Inside::attribute(Inside::nodeOf(m_object), *found) : MObject());
}

bool MFnDependencyNode::hasAttribute(const MString& attributeName, MStatus* ReturnStatus) const
{
    answer(ReturnStatus, check(m_object));
    return !attribute(attributeName).isNull();
}

MPlug MFnDependencyNode::findPlug(const MString& attributeName, bool, MStatus* ReturnStatus) const
{
    return findPlug(attributeName, ReturnStatus);
}

MPlug MFnDependencyNode::findPlug(const MString& attributeName, MStatus* ReturnStatus) const
{
    const auto found = findAttribute(m_object, attributeName);
    if (!found) {
        return answer(ReturnStatus, toStatus(found), MPlug());
    }
    const NodeId node = Inside::nodeOf(m_object);
    return answer(ReturnStatus, MStatus(),
                  Inside::plug(currentSession()->findPlug(node, attributeName.asUTF8())));
}

MPlug MFnDependencyNode::findPlug(const MObject& attribute, bool, MStatus* ReturnStatus) const
{
    const MPlug plug(m_object, attribute);
    answer(ReturnStatus, plug.isNull() ? toStatus(ErrorCode::InvalidParameter) : MStatus());
    return plug;
}

MStatus MFnDependencyNode::getConnections(MPlugArray& plugs) const
{
    plugs.clear();
    const NodeId node = Inside::nodeOf(m_object);
    if (node == kNoNode) {
        return toStatus(ErrorCode::NotFound);
    }
    for (const host::graph::Plug& plug : currentSession()->connectedPlugs(node)) {
        plugs.append(Inside::plug(plug));
    }
    return MStatus();
}
