#include "host/eval/ComputeTable.h"

#include "host/eval/outputNames.h"

#include <algorithm>

namespace host::eval {
namespace {

bool byAttribute(const OutputEntry& entry, AttributeIndex attribute)
{
    return entry.attribute < attribute;
}

/// Adds an entry; of two rows for one attribute the one of the more derived type holds.
void put(TypeComputes& computes, const OutputEntry& entry)
{
    const auto at = std::lower_bound(computes.outputs.begin(), computes.outputs.end(),
                                     entry.attribute, byAttribute);
    if (at == computes.outputs.end() || at->attribute != entry.attribute) {
        computes.outputs.insert(at, entry);
    } else if (NodeType::find(entry.row->type).isA(at->row->type)) {
        *at = entry;
    }
}

std::size_t placeOfState(const NodeCompute& row)
{
    const auto at = std::find(row.inputs.begin(), row.inputs.end(), "nodeState");
    return at != row.inputs.end() ? static_cast<std::size_t>(at - row.inputs.begin())
                                  : OutputEntry::kNoState;
}

/// Says of an input whether it may be read without looking any further.
void settle(InputEntry& input, NodeType type, const TypeComputes& computes)
{
    if (input.attribute == kNoAttribute) {
        return;
    }
    const Attribute row = type.attribute(input.attribute);
    input.initial = row.initial;
    for (AttributeIndex at = input.attribute; at != kNoAttribute; at = type.attribute(at).parent) {
        input.ways.add(at);
    }
    input.isPlainNumber = isNumeric(row.kind) && !row.isMulti && !type.isA("time") &&
                          !computes.isResult[input.attribute] &&
                          computes.find(input.attribute) == nullptr;
}

} // namespace

const OutputEntry* TypeComputes::find(AttributeIndex attribute) const
{
    const auto at = std::lower_bound(outputs.begin(), outputs.end(), attribute, byAttribute);
    return at != outputs.end() && at->attribute == attribute ? &*at : nullptr;
}

const TypeComputes& ComputeTable::of(NodeType type)
{
    if (m_last != nullptr && type == m_lastType) {
        return *m_last;
    }
    std::unique_ptr<TypeComputes>& known = m_types[type.name()];
    if (known == nullptr) {
        known = std::make_unique<TypeComputes>();
        resolve(type, *known);
    }
    m_lastType = type;
    m_last = known.get();
    return *known;
}

void ComputeTable::resolve(NodeType type, TypeComputes& result) const
{
    bool takesGeometry = false;
    for (const NodeCompute* row : m_rows) {
        if (!type.isA(row->type)) {
            continue;
        }
        auto inputs = std::make_unique<std::vector<InputEntry>>();
        for (const std::string_view name : row->inputs) {
            inputs->emplace_back().attribute = type.findAttribute(name);
            takesGeometry |= isGeometryInput(name);
        }
        for (std::size_t output = 0; output < row->outputs.size(); ++output) {
            const AttributeIndex attribute = type.findAttribute(row->outputs[output]);
            if (attribute != kNoAttribute) {
                put(result, {attribute, output, row, inputs.get(), placeOfState(*row)});
            }
        }
        result.inputLists.push_back(std::move(inputs));
    }
    for (AttributeIndex attribute = 0; attribute < type.attributeCount(); ++attribute) {
        const Attribute row = type.attribute(attribute);
        if (!takesGeometry && isGeometryInput(row.longName)) {
            result.geometryInputs.push_back(attribute);
        }
        result.isResult.push_back(row.kind != AttributeKind::Message &&
                                  eval::isResult(type, row.longName));
    }
    for (const auto& inputs : result.inputLists) {
        for (InputEntry& input : *inputs) {
            settle(input, type, result);
        }
    }
}

} // namespace host::eval
