#include <maya/MPlug.h>

#include "host/api/src/Inside.h"
#include "host/api/src/toStatus.h"
#include "host/math/units.h"

#include <maya/MPlugArray.h>

#include <algorithm>
#include <cmath>
#include <limits>

using host::Attribute;
using host::AttributeIndex;
using host::AttributeKind;
using host::Error;
using host::ErrorCode;
using host::Expected;
using host::api::answer;
using host::api::Inside;
using host::api::toStatus;
using host::graph::Plug;
using host::session::currentSession;
using host::session::kNoNode;
using host::session::NodeId;
using host::session::Session;

namespace {

/// The answer to a question about a plug, or `none` when there is no plug.
template<class T, class Question>
T ask(const MPlug& handle, MStatus* status, T none, Question question)
{
    const Plug plug = Inside::plugOf(handle);
    if (!plug) {
        return answer(status, toStatus(ErrorCode::NotFound), std::move(none));
    }
    return answer(status, MStatus(), T(question(*currentSession(), plug)));
}

Attribute attributeOf(const Session& session, const Plug& plug)
{
    return session.graph().attribute(plug.node, plug.attribute);
}

bool isWholeArray(const Session& session, const Plug& plug)
{
    return plug.index < 0 && attributeOf(session, plug).isMulti;
}

/// The number on a plug; fails for plugs that hold something else.
Expected<double> numberOn(const MPlug& handle)
{
    const Plug plug = Inside::plugOf(handle);
    if (!plug) {
        return Error{ErrorCode::NotFound, "no plug of the open scene", {}};
    }
    Session& session = *currentSession();
    const Attribute attribute = attributeOf(session, plug);
    const bool isNumber = host::isNumeric(attribute.kind) || session.value(plug).isNumber();
    if (!isNumber || isWholeArray(session, plug)) {
        return Error{ErrorCode::InvalidParameter, "no number", session.plugName(plug)};
    }
    const double number = session.number(plug, attribute.initial);
    return attribute.kind == AttributeKind::Time
               ? number / static_cast<double>(host::kTicksPerSecond)
               : number;
}

/// The nearest T to a number; 0 for what is none.
template<class T>
T nearest(double number)
{
    if (std::isnan(number)) {
        return 0;
    }
    const auto least = static_cast<double>(std::numeric_limits<T>::min());
    const auto most = static_cast<double>(std::numeric_limits<T>::max());
    return static_cast<T>(std::round(std::min(std::max(number, least), most)));
}

template<class T, class Convert>
T convert(const MPlug& plug, MStatus* status, Convert toValue)
{
    const Expected<double> number = numberOn(plug);
    return answer(status, toStatus(number), number ? toValue(*number) : T());
}

/// What `read` gives, unless it fails.
template<class T, class Read>
MStatus fetch(T& value, Read read)
{
    MStatus status;
    T fetched = read(&status);
    if (status) {
        value = std::move(fetched);
    }
    return status;
}

MFnNumericData::Type numbersType(AttributeKind kind, std::size_t count)
{
    const bool isPair = count == 2;
    if (host::isSinglePrecision(kind)) {
        return isPair ? MFnNumericData::k2Float : MFnNumericData::k3Float;
    }
    if (kind == AttributeKind::Short) {
        return isPair ? MFnNumericData::k2Short : MFnNumericData::k3Short;
    }
    if (host::isInteger(kind)) {
        return isPair ? MFnNumericData::k2Int : MFnNumericData::k3Int;
    }
    return isPair ? MFnNumericData::k2Double : MFnNumericData::k3Double;
}

/// Two or three numbers of a compound; fails for other plugs.
Expected<host::api::NumericRecord> numbersOn(const MPlug& handle)
{
    const Plug plug = Inside::plugOf(handle);
    if (!plug) {
        return Error{ErrorCode::NotFound, "no plug of the open scene", {}};
    }
    Session& session = *currentSession();
    const std::vector<Plug> children =
        isWholeArray(session, plug) ? std::vector<Plug>() : session.children(plug);
    host::api::NumericRecord record;
    if (children.size() != 2 && children.size() != 3) {
        return Error{ErrorCode::InvalidParameter, "no compound of numbers", {}};
    }
    for (const Plug& child : children) {
        const Attribute attribute = attributeOf(session, child);
        if (!host::isNumeric(attribute.kind)) {
            return Error{ErrorCode::InvalidParameter, "no compound of numbers", {}};
        }
        record.numbers[record.count++] = session.number(child, attribute.initial);
    }
    record.type = numbersType(attributeOf(session, children[0]).kind, record.count);
    return record;
}

} // namespace

MPlug::MPlug(const MObject& node, const MObject& attribute)
{
    AttributeIndex index = host::kNoAttribute;
    const NodeId owner = Inside::attributeOf(attribute, index);
    const NodeId id = Inside::nodeOf(node);
    if (id == kNoNode || owner == kNoNode) {
        return;
    }
    const host::graph::Graph& graph = currentSession()->graph();
    if (id != owner) {
        // An attribute taken from another node: this one has its like, or it has not.
        index = graph.findAttribute(id, graph.attribute(owner, index).longName);
    }
    if (index != host::kNoAttribute) {
        *this = Inside::plug({.node = id, .attribute = index});
    }
}

MObject MPlug::node(MStatus* ReturnStatus) const
{
    return ask(*this, ReturnStatus, MObject(),
               [](const Session&, const Plug& plug) { return Inside::node(plug.node); });
}

MObject MPlug::attribute(MStatus* ReturnStatus) const
{
    return ask(*this, ReturnStatus, MObject(), [](const Session&, const Plug& plug) {
        return Inside::attribute(plug.node, plug.attribute);
    });
}

bool MPlug::isNull(MStatus* ReturnStatus) const
{
    return answer(ReturnStatus, MStatus(), !Inside::plugOf(*this));
}

MString MPlug::name(MStatus* ReturnStatus) const
{
    return ask(*this, ReturnStatus, MString(), [](const Session& session, const Plug& plug) {
        return MString(session.plugName(plug).c_str());
    });
}

bool MPlug::isArray(MStatus* ReturnStatus) const
{
    return ask(*this, ReturnStatus, false, isWholeArray);
}

bool MPlug::isElement(MStatus* ReturnStatus) const
{
    return ask(*this, ReturnStatus, false,
               [](const Session&, const Plug& plug) { return plug.index >= 0; });
}

bool MPlug::isCompound(MStatus* ReturnStatus) const
{
    return ask(*this, ReturnStatus, false, [](const Session& session, const Plug& plug) {
        return attributeOf(session, plug).kind == AttributeKind::Compound;
    });
}

unsigned int MPlug::numChildren(MStatus* ReturnStatus) const
{
    return ask(*this, ReturnStatus, 0u, [](Session& session, const Plug& plug) {
        return static_cast<unsigned int>(session.children(plug).size());
    });
}

MPlug MPlug::child(unsigned int index, MStatus* ReturnStatus) const
{
    const Plug plug = Inside::plugOf(*this);
    const std::vector<Plug> children =
        plug ? currentSession()->children(plug) : std::vector<Plug>();
    if (index >= children.size()) {
        answer(ReturnStatus, plug ? ErrorCode::InvalidParameter : ErrorCode::NotFound);
        return MPlug();
    }
    return answer(ReturnStatus, MStatus(), Inside::plug(children[index]));
}

unsigned int MPlug::numElements(MStatus* ReturnStatus) const
{
    return ask(*this, ReturnStatus, 0u, [](const Session& session, const Plug& plug) {
        return isWholeArray(session, plug)
                   ? static_cast<unsigned int>(session.graph().elementIndices(plug).size())
                   : 0u;
    });
}

MPlug MPlug::elementByLogicalIndex(unsigned int index, MStatus* ReturnStatus) const
{
    const Plug plug = Inside::plugOf(*this);
    constexpr auto kLast = static_cast<unsigned int>(std::numeric_limits<std::int32_t>::max()) - 1;
    if (!plug || !isWholeArray(*currentSession(), plug) || index > kLast) {
        answer(ReturnStatus, plug ? ErrorCode::InvalidParameter : ErrorCode::NotFound);
        return MPlug();
    }
    const Plug element = currentSession()->element(plug, static_cast<std::int32_t>(index));
    return answer(ReturnStatus, MStatus(), Inside::plug(element));
}

MPlug MPlug::elementByPhysicalIndex(unsigned int index, MStatus* ReturnStatus) const
{
    if (index >= numElements(ReturnStatus)) {
        answer(ReturnStatus, isNull() ? ErrorCode::NotFound : ErrorCode::InvalidParameter);
        return MPlug();
    }
    const Plug plug = Inside::plugOf(*this);
    const std::int32_t logical = currentSession()->graph().elementIndices(plug)[index];
    return elementByLogicalIndex(static_cast<unsigned int>(logical), ReturnStatus);
}

unsigned int MPlug::logicalIndex(MStatus* ReturnStatus) const
{
    const Plug plug = Inside::plugOf(*this);
    if (!plug || plug.index < 0) {
        answer(ReturnStatus, plug ? ErrorCode::InvalidParameter : ErrorCode::NotFound);
        return 0;
    }
    return answer(ReturnStatus, MStatus(), static_cast<unsigned int>(plug.index));
}

bool MPlug::isConnected(MStatus* ReturnStatus) const
{
    return ask(*this, ReturnStatus, false, [](const Session& session, const Plug& plug) {
        return session.source(plug) || !session.destinations(plug).empty();
    });
}

bool MPlug::connectedTo(MPlugArray& plugs, bool asDestination, bool asSource,
                        MStatus* ReturnStatus) const
{
    plugs.clear();
    const auto list = [&](const Session& session, const Plug& plug) {
        const Plug source = session.source(plug);
        const std::vector<Plug> destinations = session.destinations(plug);
        if (source && asDestination) {
            plugs.append(Inside::plug(source));
        }
        for (const Plug& destination : asSource ? destinations : std::vector<Plug>()) {
            plugs.append(Inside::plug(destination));
        }
        return source || !destinations.empty();
    };
    return ask(*this, ReturnStatus, false, list);
}

double MPlug::asDouble(MStatus* ReturnStatus) const
{
    return convert<double>(*this, ReturnStatus, [](double number) { return number; });
}

float MPlug::asFloat(MStatus* ReturnStatus) const
{
    return convert<float>(*this, ReturnStatus,
                          [](double number) { return static_cast<float>(number); });
}

int MPlug::asInt(MStatus* ReturnStatus) const
{
    return convert<int>(*this, ReturnStatus, nearest<int>);
}

short MPlug::asShort(MStatus* ReturnStatus) const
{
    return convert<short>(*this, ReturnStatus, nearest<short>);
}

bool MPlug::asBool(MStatus* ReturnStatus) const
{
    return convert<bool>(*this, ReturnStatus, [](double number) { return number != 0; });
}

MString MPlug::asString(MStatus* ReturnStatus) const
{
    const Plug plug = Inside::plugOf(*this);
    if (!plug || isWholeArray(*currentSession(), plug) ||
        attributeOf(*currentSession(), plug).kind != AttributeKind::String) {
        answer(ReturnStatus, plug ? ErrorCode::InvalidParameter : ErrorCode::NotFound);
        return MString();
    }
    return answer(ReturnStatus, MStatus(), MString(currentSession()->text(plug).c_str()));
}

MObject MPlug::asMObject(MStatus* ReturnStatus) const
{
    const auto numbers = numbersOn(*this);
    return answer(ReturnStatus, toStatus(numbers), numbers ? Inside::numbers(*numbers) : MObject());
}

MStatus MPlug::getValue(double& value) const
{
    return fetch(value, [&](MStatus* status) { return asDouble(status); });
}

MStatus MPlug::getValue(float& value) const
{
    return fetch(value, [&](MStatus* status) { return asFloat(status); });
}

MStatus MPlug::getValue(int& value) const
{
    return fetch(value, [&](MStatus* status) { return asInt(status); });
}

MStatus MPlug::getValue(short& value) const
{
    return fetch(value, [&](MStatus* status) { return asShort(status); });
}

MStatus MPlug::getValue(bool& value) const
{
    return fetch(value, [&](MStatus* status) { return asBool(status); });
}

MStatus MPlug::getValue(MString& value) const
{
    return fetch(value, [&](MStatus* status) { return asString(status); });
}

MStatus MPlug::getValue(MObject& value) const
{
    return fetch(value, [&](MStatus* status) { return asMObject(status); });
}

bool MPlug::operator==(const MPlug& other) const
{
    return Inside::plugOf(*this) == Inside::plugOf(other);
}
