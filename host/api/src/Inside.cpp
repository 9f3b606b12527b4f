#include "host/api/src/Inside.h"

#include <utility>

namespace host::api {

using session::currentSession;
using session::kNoNode;
using session::NodeId;

MObject Inside::node(NodeId id)
{
    MObject object;
    const Session* session = currentSession();
    if (session == nullptr || id >= session->graph().nodeCount()) {
        return object;
    }
    object.m_kind = MObject::Kind::Node;
    object.m_generation = session->generation();
    object.m_node = id;
    return object;
}

MObject Inside::attribute(NodeId node, AttributeIndex attribute)
{
    MObject object = Inside::node(node);
    if (!object.isNull()) {
        object.m_kind = MObject::Kind::Attribute;
        object.m_attribute = attribute;
    }
    return object;
}

MObject Inside::component(std::shared_ptr<Component> component)
{
    MObject object;
    object.m_kind = MObject::Kind::Component;
    object.m_content = std::move(component);
    return object;
}

MObject Inside::numbers(const NumericRecord& record)
{
    MObject object;
    object.m_kind = MObject::Kind::Data;
    object.m_content = std::make_shared<NumericRecord>(record);
    return object;
}

MObject Inside::curve(std::shared_ptr<const geometry::CurveData> curve)
{
    MObject object;
    object.m_kind = MObject::Kind::Curve;
    object.m_content = std::const_pointer_cast<geometry::CurveData>(std::move(curve));
    return object;
}

NodeId Inside::nodeOf(const MObject& object)
{
    const Session* session = currentSession();
    const bool isOurs = object.m_kind == MObject::Kind::Node && session != nullptr &&
                        object.m_generation == session->generation() &&
                        object.m_node < session->graph().nodeCount() &&
                        session->graph().node(object.m_node).isAlive;
    return isOurs ? object.m_node : kNoNode;
}

NodeId Inside::attributeOf(const MObject& object, AttributeIndex& attribute)
{
    const Session* session = currentSession();
    const bool isOurs = object.m_kind == MObject::Kind::Attribute && session != nullptr &&
                        object.m_generation == session->generation() &&
                        object.m_node < session->graph().nodeCount() &&
                        object.m_attribute < session->graph().attributeCount(object.m_node);
    attribute = isOurs ? object.m_attribute : kNoAttribute;
    return isOurs ? object.m_node : kNoNode;
}

Component* Inside::componentOf(const MObject& object)
{
    return object.m_kind == MObject::Kind::Component
               ? static_cast<Component*>(object.m_content.get())
               : nullptr;
}

const NumericRecord* Inside::numbersOf(const MObject& object)
{
    return object.m_kind == MObject::Kind::Data
               ? static_cast<const NumericRecord*>(object.m_content.get())
               : nullptr;
}

std::shared_ptr<const geometry::CurveData> Inside::curveOf(const MObject& object)
{
    return object.m_kind == MObject::Kind::Curve
               ? std::static_pointer_cast<const geometry::CurveData>(object.m_content)
               : nullptr;
}

MDagPath Inside::path(session::DagPath path)
{
    MDagPath made;
    if (const Session* session = currentSession()) {
        made.m_content = std::make_shared<const MDagPath::Content>(
            MDagPath::Content{session->generation(), std::move(path)});
    }
    return made;
}

const session::DagPath* Inside::pathOf(const MDagPath& path)
{
    const Session* session = currentSession();
    const bool isOurs = path.m_content != nullptr && session != nullptr &&
                        path.m_content->generation == session->generation();
    return isOurs ? &path.m_content->path : nullptr;
}

MPlug Inside::plug(const graph::Plug& plug)
{
    MPlug made;
    const Session* session = currentSession();
    if (session == nullptr || !plug) {
        return made;
    }
    made.m_generation = session->generation();
    made.m_node = plug.node;
    made.m_attribute = plug.attribute;
    made.m_context = plug.context;
    made.m_index = plug.index;
    return made;
}

graph::Plug Inside::plugOf(const MPlug& plug)
{
    const Session* session = currentSession();
    if (session == nullptr || plug.m_node == MPlug::kNone ||
        plug.m_generation != session->generation()) {
        return {};
    }
    const graph::Graph& graph = session->graph();
    const bool isThere =
        plug.m_node < graph.nodeCount() && plug.m_attribute < graph.attributeCount(plug.m_node) &&
        (plug.m_context == graph::kNoSlot || plug.m_context < graph.node(plug.m_node).slots.size());
    return isThere ? graph::Plug{plug.m_node, plug.m_attribute, plug.m_context, plug.m_index}
                   : graph::Plug{};
}

MTime Inside::time(std::int64_t ticks, MTime::Unit unit)
{
    MTime time;
    time.m_ticks = ticks;
    time.m_unit = unit;
    return time;
}

bool hasFunctionSet(const graph::Node& node, MFn::Type type)
{
    switch (type) {
    case MFn::kBase:
    case MFn::kNamedObject:
    case MFn::kDependencyNode:
        return true;
    case MFn::kDagNode:
        return node.isDag();
    default:
        return node.type.hasFunctionSet(type);
    }
}

} // namespace host::api
