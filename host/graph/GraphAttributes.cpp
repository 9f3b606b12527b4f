// Attributes of nodes: those of the type, then those that were added.
#include "host/graph/Graph.h"
#include "host/graph/GraphIndex.h"

#include <string>
#include <utility>

namespace host::graph {
namespace {

constexpr std::size_t kFewAttributes = 12; // added ones that are searched one by one
constexpr std::size_t kMaxNesting =
    12; // of added compounds: as many as the text of a plug may name

} // namespace

AttributeIndex Graph::findAttribute(NodeId node, std::string_view name) const
{
    const Node& owner = m_nodes[node];
    const AttributeIndex known = owner.type.findAttribute(name);
    if (known != kNoAttribute || !owner.dynamicAttributes) {
        return known;
    }
    const std::vector<Attribute>& added = *owner.dynamicAttributes;
    const std::size_t base = owner.type.attributeCount();
    if (added.size() > kFewAttributes) {
        const auto& names = m_index->dynamicNames.at(node).byName;
        const auto found = names.find(name);
        return found == names.end() ? kNoAttribute : found->second;
    }
    for (std::size_t i = 0; i < added.size(); ++i) {
        if (added[i].longName == name || added[i].shortName == name) {
            return static_cast<AttributeIndex>(base + i);
        }
    }
    return kNoAttribute;
}

Attribute Graph::attribute(NodeId node, AttributeIndex index) const
{
    const Node& owner = m_nodes[node];
    const std::size_t base = owner.type.attributeCount();
    return index < base ? owner.type.attribute(index) : (*owner.dynamicAttributes)[index - base];
}

std::size_t Graph::attributeCount(NodeId node) const
{
    const Node& owner = m_nodes[node];
    const std::size_t added = owner.dynamicAttributes ? owner.dynamicAttributes->size() : 0;
    return owner.type.attributeCount() + added;
}

AttributeIndex Graph::addAttribute(NodeId node, const Attribute& attribute)
{
    const AttributeIndex existing = findAttribute(node, attribute.longName);
    if (existing != kNoAttribute) {
        return existing;
    }
    const std::size_t position = attributeCount(node);
    if (attribute.longName.empty() || position >= kNoAttribute) {
        return kNoAttribute;
    }
    Node& owner = m_nodes[node];
    if (!owner.dynamicAttributes) {
        owner.dynamicAttributes = std::make_unique<std::vector<Attribute>>();
    }
    const auto keep = [&](std::string_view text) {
        return std::string_view(*m_index->texts.emplace(text).first);
    };
    Attribute added = attribute;
    added.longName = keep(attribute.longName);
    added.shortName = attribute.shortName.empty() ? added.longName : keep(attribute.shortName);
    added.parent = usableParent(node, attribute.parent);
    added.firstChild = kNoAttribute;
    added.nextSibling = kNoAttribute;
    owner.dynamicAttributes->push_back(added);
    indexAttribute(node, static_cast<AttributeIndex>(position));
    return static_cast<AttributeIndex>(position);
}

/// The parent itself if it was added too and is not nested too deep, else none.
AttributeIndex Graph::usableParent(NodeId node, AttributeIndex parent) const
{
    const std::size_t base = m_nodes[node].type.attributeCount();
    if (parent == kNoAttribute || parent < base || parent >= attributeCount(node)) {
        return kNoAttribute;
    }
    std::size_t levels = 1;
    for (AttributeIndex up = parent; up != kNoAttribute; up = attribute(node, up).parent) {
        if (++levels > kMaxNesting) {
            return kNoAttribute;
        }
    }
    return parent;
}

/// Enters the node's last attribute among its parent's children and, where there are many, in the
/// index of names.
void Graph::indexAttribute(NodeId node, AttributeIndex index)
{
    std::vector<Attribute>& added = *m_nodes[node].dynamicAttributes;
    const std::size_t base = m_nodes[node].type.attributeCount();
    const bool areMany = added.size() > kFewAttributes;
    if (areMany) {
        auto& names = m_index->dynamicNames[node].byName;
        for (std::size_t i = names.empty() ? 0 : added.size() - 1; i < added.size(); ++i) {
            names.try_emplace(added[i].longName, static_cast<AttributeIndex>(base + i));
            names.try_emplace(added[i].shortName, static_cast<AttributeIndex>(base + i));
        }
    }
    if (added.back().parent == kNoAttribute) {
        return;
    }
    Attribute& parent = added[added.back().parent - base];
    if (parent.firstChild == kNoAttribute) {
        parent.firstChild = index;
        return;
    }
    AttributeIndex last = parent.firstChild;
    if (areMany) {
        last = m_index->dynamicNames[node]
                   .lastChild.try_emplace(added.back().parent, last)
                   .first->second;
    }
    while (added[last - base].nextSibling != kNoAttribute) {
        last = added[last - base].nextSibling;
    }
    added[last - base].nextSibling = index;
    if (areMany) {
        m_index->dynamicNames[node].lastChild[added.back().parent] = index;
    }
}

} // namespace host::graph
