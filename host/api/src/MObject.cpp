#include <maya/MObject.h>

#include "host/api/src/Inside.h"
#include "host/api/src/functionSetName.h"

#include <algorithm>
#include <initializer_list>

using host::AttributeIndex;
using host::AttributeKind;
using host::api::Component;
using host::api::Inside;
using host::session::currentSession;
using host::session::kNoNode;
using host::session::kWorld;
using host::session::NodeId;

namespace {

MFn::Type nodeType(NodeId id)
{
    const host::graph::Node& node = currentSession()->graph().node(id);
    if (id == kWorld) {
        return MFn::kWorld;
    }
    const int own = node.type.functionSet();
    if (own != 0) {
        return static_cast<MFn::Type>(own);
    }
    return node.type.isTransform() ? MFn::kTransform
           : node.isDag()          ? MFn::kShape
                                   : MFn::kDependencyNode;
}

MFn::Type attributeType(NodeId node, AttributeIndex index)
{
    const AttributeKind kind = currentSession()->graph().attribute(node, index).kind;
    return kind == AttributeKind::Compound ? MFn::kCompoundAttribute
           : host::isNumeric(kind)         ? MFn::kNumericAttribute
                                           : MFn::kTypedAttribute;
}

MFn::Type numbersType(MFnNumericData::Type type)
{
    switch (type) {
    case MFnNumericData::k2Double:
        return MFn::kData2Double;
    case MFnNumericData::k2Float:
        return MFn::kData2Float;
    case MFnNumericData::k3Float:
        return MFn::kData3Float;
    default:
        return MFn::kNumericData;
    }
}

bool isOneOf(MFn::Type type, std::initializer_list<MFn::Type> types)
{
    return std::find(types.begin(), types.end(), type) != types.end();
}

} // namespace

constinit MObject MObject::kNullObj;

bool MObject::isNull() const
{
    AttributeIndex attribute = host::kNoAttribute;
    switch (m_kind) {
    case Kind::Node:
        return Inside::nodeOf(*this) == kNoNode;
    case Kind::Attribute:
        return Inside::attributeOf(*this, attribute) == kNoNode;
    default:
        return m_content == nullptr;
    }
}

bool MObject::hasFn(MFn::Type type) const
{
    if (isNull()) {
        return false;
    }
    switch (m_kind) {
    case Kind::Node:
        return (type == MFn::kWorld && m_node == kWorld) ||
               host::api::hasFunctionSet(currentSession()->graph().node(m_node), type);
    case Kind::Attribute:
        return isOneOf(type, {MFn::kBase, MFn::kAttribute, attributeType(m_node, m_attribute)});
    case Kind::Component:
        return isOneOf(type, {MFn::kBase, MFn::kComponent, MFn::kMeshComponent,
                              MFn::kSingleIndexedComponent, Inside::componentOf(*this)->type});
    case Kind::Curve:
        return isOneOf(type, {MFn::kBase, MFn::kData, MFn::kNurbsCurveData, MFn::kNurbsCurve});
    default:
        return isOneOf(type, {MFn::kBase, MFn::kData, MFn::kNumericData, apiType()});
    }
}

MFn::Type MObject::apiType() const
{
    if (isNull()) {
        return MFn::kInvalid;
    }
    switch (m_kind) {
    case Kind::Node:
        return nodeType(m_node);
    case Kind::Attribute:
        return attributeType(m_node, m_attribute);
    case Kind::Component:
        return Inside::componentOf(*this)->type;
    case Kind::Curve:
        return MFn::kNurbsCurveData;
    default:
        return numbersType(Inside::numbersOf(*this)->type);
    }
}

const char* MObject::apiTypeStr() const
{
    return host::api::functionSetName(apiType());
}

bool MObject::operator==(const MObject& other) const
{
    if (isNull() || other.isNull()) {
        return isNull() && other.isNull();
    }
    if (m_kind != other.m_kind) {
        return false;
    }
    if (m_kind != Kind::Attribute) {
        return m_node == other.m_node && m_content == other.m_content;
    }
    // Nodes of one type share its attributes; dynamic ones are each node's own.
    const host::graph::Graph& graph = currentSession()->graph();
    const host::NodeType type = graph.node(m_node).type;
    const bool isShared =
        type == graph.node(other.m_node).type && m_attribute < type.attributeCount();
    return m_attribute == other.m_attribute && (m_node == other.m_node || isShared);
}
