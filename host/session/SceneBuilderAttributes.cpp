// The commands about attributes and their values.
#include "host/session/SceneBuilder.h"

#include "host/session/plugLookup.h"
#include "host/session/unknownNodes.h"

#include <algorithm>

namespace host::session {

using file::NumberBlock;
using file::SetAttribute;
using graph::kNoNode;
using graph::kNoSlot;
using graph::NodeId;
using graph::Plug;

namespace {

double numberAt(const NumberBlock& numbers, std::size_t position)
{
    switch (numbers.storage) {
    case NumberStorage::Float:
        return numbers.floats[position];
    case NumberStorage::Int32:
        return numbers.integers[position];
    case NumberStorage::Double:
        break;
    }
    return numbers.doubles[position];
}

NumberBlock elementOf(const NumberBlock& numbers, std::size_t element)
{
    const auto part = [&](auto all) {
        return all.empty() ? all : all.subspan(element * numbers.width, numbers.width);
    };
    NumberBlock one = numbers;
    one.floats = part(numbers.floats);
    one.doubles = part(numbers.doubles);
    one.integers = part(numbers.integers);
    return one;
}

void storeBlockIn(NumericArray& array, std::uint32_t first, const NumberBlock& numbers)
{
    const std::size_t whole = numbers.count() * numbers.width;
    if (array.storage() == numbers.storage) {
        switch (numbers.storage) {
        case NumberStorage::Float:
            array.store(first, numbers.floats.first(whole));
            return;
        case NumberStorage::Int32:
            array.store(first, numbers.integers.first(whole));
            return;
        case NumberStorage::Double:
            array.store(first, numbers.doubles.first(whole));
            return;
        }
    }
    for (std::size_t i = 0; i < whole; ++i) {
        array.storeComponent(first + static_cast<std::uint32_t>(i / numbers.width),
                             i % numbers.width, numberAt(numbers, i));
    }
}

Value vectorValue(const NumberBlock& numbers)
{
    std::vector<double> all;
    for (std::size_t i = 0; i < numbers.numberCount(); ++i) {
        all.push_back(numberAt(numbers, i));
    }
    return all.size() == 1 ? Value(all.front()) : Value::of(std::move(all));
}

/// The step whose range the numbers run along when it is not the last one.
std::size_t outerRange(const PlugPath& plug)
{
    for (std::size_t i = 0; i + 1 < plug.stepCount; ++i) {
        if (plug.steps[i].isRange()) {
            return i;
        }
    }
    return plug.stepCount;
}

std::string joinedName(const PlugPath& path)
{
    std::string name;
    for (std::size_t i = 0; i < path.stepCount; ++i) {
        name += (i == 0 ? "" : ".") + std::string(path.steps[i].name);
    }
    return name;
}

} // namespace

NodeId SceneBuilder::nodeOf(const PlugPath& plug) const
{
    return plug.node.empty() ? m_current : m_graph.findNode(plug.node);
}

void SceneBuilder::addAttribute(const file::AddAttribute& command)
{
    if (m_current == kNoNode) {
        return;
    }
    Attribute attribute;
    attribute.longName = command.longName;
    attribute.shortName = command.shortName.empty() ? command.longName : command.shortName;
    attribute.kind = command.kind;
    attribute.isMulti = command.isMulti;
    attribute.initial = command.initial;
    if (!command.parent.empty()) {
        attribute.parent = m_graph.findAttribute(m_current, command.parent);
    }
    if (m_graph.addAttribute(m_current, attribute) == kNoAttribute) {
        note(DiagnosticKind::Limit, "attributes", command.longName);
    }
}

PlugShape SceneBuilder::shapeOf(const PlugPath& plug)
{
    const NodeId node = nodeOf(plug);
    if (node == kNoNode) {
        return {};
    }
    const AttributeIndex attribute = attributeAt(m_graph, node, plug);
    return attribute == kNoAttribute ? PlugShape{} : shapeOfAttribute(m_graph, node, attribute);
}

void SceneBuilder::setAttribute(const SetAttribute& command)
{
    const NodeId node = nodeOf(command.plug);
    if (node == kNoNode) {
        if (!command.plug.node.empty()) {
            note(DiagnosticKind::MissingNode, "setAttr", command.plug.node);
        }
        return;
    }
    if (command.payload == SetAttribute::Payload::None) {
        return;
    }
    const AttributeIndex attribute = attributeAt(m_graph, node, command.plug);
    if (attribute == kNoAttribute) {
        if (!takeTransformAttribute(node, command)) {
            keepUnknown(node, command);
        }
        return;
    }
    switch (command.payload) {
    case SetAttribute::Payload::Numbers:
        setNumbers(node, command);
        break;
    case SetAttribute::Payload::SparseNumbers:
        setSparse(node, command);
        break;
    case SetAttribute::Payload::Faces: {
        const std::int64_t first = std::max<std::int64_t>(0, command.plug.last().first);
        if (!m_meshes.append(node, static_cast<std::uint32_t>(first), std::move(*command.faces),
                             command.cornersAhead)) {
            note(DiagnosticKind::DamagedGeometry, "faces", m_graph.node(node).name);
        }
        break;
    }
    case SetAttribute::Payload::Value:
        setValues(plugAt(m_graph, node, command.plug), command);
        break;
    case SetAttribute::Payload::None:
        break;
    }
}

void SceneBuilder::setNumbers(NodeId node, const SetAttribute& command)
{
    const NumberBlock& numbers = command.numbers;
    if (numbers.width == 0 || numbers.numberCount() == 0) {
        return;
    }
    const std::size_t outer = outerRange(command.plug);
    if (outer == command.plug.stepCount) {
        storeBlock(plugAt(m_graph, node, command.plug), command.plug.last(), numbers,
                   command.elementsAhead);
        return;
    }
    PlugPath one = command.plug;
    for (std::size_t element = 0; element < numbers.count(); ++element) {
        one.steps[outer].first = command.plug.steps[outer].first + static_cast<int>(element);
        one.steps[outer].last = one.steps[outer].first;
        storeBlock(plugAt(m_graph, node, one), one.last(), elementOf(numbers, element));
    }
}

void SceneBuilder::storeBlock(const Plug& plug, const PlugStep& step, const NumberBlock& numbers,
                              std::size_t elementsAhead)
{
    const Attribute attribute = m_graph.attribute(plug.node, plug.attribute);
    if (attribute.isMulti) {
        const auto first = static_cast<std::uint32_t>(std::max<std::int64_t>(0, step.first));
        if (!StoredMeshes::mayTake(attribute.longName) ||
            !m_meshes.append(m_graph, plug, first, numbers, elementsAhead)) {
            storeElements(plug, first, numbers, elementsAhead);
        }
    } else {
        storeSingle(plug, numbers, 0);
    }
    if (attribute.longName == "vrts") {
        m_meshes.addMesh(plug.node);
    }
}

void SceneBuilder::storeElements(const Plug& array, std::uint32_t first, const NumberBlock& numbers,
                                 std::size_t elementsAhead)
{
    const NumericArray* held = m_graph.findNumericArray(array);
    if (held != nullptr && held->width() != numbers.width) {
        note(DiagnosticKind::BadStatement, "setAttr", m_graph.plugName(array));
        return;
    }
    const std::size_t leaves = numericLeaves(m_graph, array.node, array.attribute).size();
    if (leaves != 0 && leaves != numbers.width) {
        note(DiagnosticKind::BadStatement, "setAttr", m_graph.plugName(array));
        return;
    }
    NumericArray& block = m_graph.numericArray(array, numbers.storage, numbers.width);
    block.reserveMore(elementsAhead);
    storeBlockIn(block, first, numbers);
}

void SceneBuilder::storeSingle(const Plug& plug, const NumberBlock& numbers, std::size_t from)
{
    m_meshes.putInGraph(m_graph, plug);
    const std::vector<AttributeIndex> leaves = numericLeaves(m_graph, plug.node, plug.attribute);
    if (leaves.empty()) {
        m_graph.setValue(plug, vectorValue(numbers));
        return;
    }
    const std::size_t count = std::min(leaves.size(), numbers.numberCount() - from);
    for (std::size_t i = 0; i < count; ++i) {
        storeNumber({plug.node, leaves[i], plug.context, -1}, numberAt(numbers, from + i));
    }
}

/// One number: into the block of the multi around it where there is one, else on its own.
void SceneBuilder::storeNumber(const Plug& plug, double number)
{
    if (plug.context == kNoSlot) {
        m_graph.setValue(plug, Value(number));
        return;
    }
    const graph::Slot& element = m_graph.node(plug.node).slots[plug.context];
    const auto leaves = numericLeaves(m_graph, plug.node, element.attribute);
    const auto position = std::find(leaves.begin(), leaves.end(), plug.attribute);
    if (position == leaves.end() || element.index < 0) {
        m_graph.setValue(plug, Value(number));
        return;
    }
    const auto index = static_cast<std::uint32_t>(element.index);
    const Plug array{plug.node, element.attribute, element.context, -1};
    const PlugShape shape = shapeOfAttribute(m_graph, plug.node, element.attribute);
    m_graph.numericArray(array, shape.storage, leaves.size())
        .storeComponent(index, static_cast<std::size_t>(position - leaves.begin()), number);
}

void SceneBuilder::setSparse(NodeId node, const SetAttribute& command)
{
    PlugPath path = command.plug;
    std::size_t outer = outerRange(path);
    for (std::size_t i = 0; outer == path.stepCount && i + 1 < path.stepCount; ++i) {
        if (path.steps[i].hasIndex()) {
            outer = i;
        }
    }
    if (outer == path.stepCount) {
        return;
    }
    const AttributeIndex attribute = attributeAt(m_graph, node, path);
    m_meshes.putInGraph(m_graph, {node, attribute, kNoSlot, -1});
    const PlugShape shape = shapeOfAttribute(m_graph, node, attribute);
    NumericArray* row = nullptr;
    for (const file::SparseNumber& entry : command.sparse) {
        if (row == nullptr || path.steps[outer].first != entry.outer) {
            path.steps[outer].first = entry.outer;
            path.steps[outer].last = entry.outer;
            row = &m_graph.numericArray(plugAt(m_graph, node, path), shape.storage, 1);
        }
        row->storeComponent(entry.inner, 0, entry.number);
    }
}

void SceneBuilder::setValues(const Plug& plug, const SetAttribute& command)
{
    m_meshes.putInGraph(m_graph, plug);
    if (!m_graph.attribute(plug.node, plug.attribute).isMulti) {
        if (!command.values.empty()) {
            m_graph.setValue(plug, std::move(command.values.front()));
        }
        return;
    }
    const auto first =
        static_cast<std::int32_t>(std::max<std::int64_t>(0, command.plug.last().first));
    for (std::size_t i = 0; i < command.values.size(); ++i) {
        m_graph.setValue(m_graph.element(plug, first + static_cast<std::int32_t>(i)),
                         std::move(command.values[i]));
    }
}

/// A node of an unknown type that is placed like a transform becomes one. The lengths and angles
/// were read as plain numbers, since nobody knew what they measure.
bool SceneBuilder::takeTransformAttribute(NodeId node, const SetAttribute& command)
{
    const bool looksLikeOne = isUnknown(m_graph, node) && command.plug.stepCount == 1 &&
                              command.payload == SetAttribute::Payload::Numbers &&
                              command.numbers.numberCount() == 3 && command.numbers.width == 3 &&
                              isPlacement(command.plug.last().name);
    if (!looksLikeOne) {
        return false;
    }
    node = replaceUnknown(node);
    const AttributeIndex attribute = attributeAt(m_graph, node, command.plug);
    if (attribute == kNoAttribute) {
        return false;
    }
    const PlugShape shape = shapeOfAttribute(m_graph, node, attribute);
    const auto leaves = numericLeaves(m_graph, node, attribute);
    for (std::size_t i = 0; i < leaves.size() && i < 3; ++i) {
        const double scale = shape.units[i] == UnitKind::Linear    ? m_linearScale
                             : shape.units[i] == UnitKind::Angular ? m_angularScale
                                                                   : 1;
        m_graph.setValue({node, leaves[i], kNoSlot, -1},
                         Value(numberAt(command.numbers, i) * scale));
    }
    return true;
}

void SceneBuilder::keepUnknown(NodeId node, const SetAttribute& command)
{
    noteUnknownAttribute(node, command.plug);
    if (command.payload == SetAttribute::Payload::Numbers) {
        const bool isScalar = command.numbers.width == 1;
        const Plug plug = makeUnknownPlug(node, command.plug,
                                          isScalar ? AttributeKind::Double : AttributeKind::Any);
        if (plug) {
            storeBlock(plug, command.plug.last(), command.numbers);
        }
        return;
    }
    if (command.payload != SetAttribute::Payload::Value || command.values.empty()) {
        return;
    }
    const bool isText = command.values.front().data<std::string>() != nullptr;
    const Plug plug =
        makeUnknownPlug(node, command.plug, isText ? AttributeKind::String : AttributeKind::Any);
    if (plug) {
        setValues(plug, command);
    }
}

/// An attribute that stands for a whole path that the node does not have, compounds and all; the
/// array as a whole where the last step has an index.
Plug SceneBuilder::makeUnknownPlug(NodeId node, const PlugPath& path, AttributeKind kind)
{
    const std::string name = joinedName(path);
    Attribute attribute;
    attribute.longName = name;
    attribute.shortName = name;
    attribute.kind = kind;
    attribute.isMulti = path.last().hasIndex();
    const AttributeIndex index = m_graph.addAttribute(node, attribute);
    return index == kNoAttribute ? Plug{} : Plug{node, index, kNoSlot, -1};
}

void SceneBuilder::noteUnknownAttribute(NodeId node, const PlugPath& path)
{
    const graph::Node& owner = m_graph.node(node);
    if (owner.unknownType.empty()) {
        note(DiagnosticKind::UnknownAttribute,
             std::string(owner.type.name()) + "." + joinedName(path), owner.name);
    }
}

} // namespace host::session
