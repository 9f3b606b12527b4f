// Node types and their attributes: read-only tables, made by tools/make_node_tables.py, that cost
// nothing at start-up.
#pragma once

#include "host/types/AttributeKind.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace host {

/// Position of an attribute in its node's list: static ones first, in declaration order, then
/// dynamic ones.
using AttributeIndex = std::uint16_t;
inline constexpr AttributeIndex kNoAttribute = 0xffff;

/// One attribute of a node type, or a dynamic one of a node. `parent`, `firstChild` and
/// `nextSibling` are positions in the same list.
struct Attribute {
    std::string_view longName;
    std::string_view shortName;
    AttributeKind kind = AttributeKind::Any;
    bool isMulti = false;
    double initial = 0; ///< default of a number, in internal units (centimetres, radians, ticks);
                        ///< 0/1 for booleans
    AttributeIndex parent = kNoAttribute;
    AttributeIndex firstChild = kNoAttribute;
    AttributeIndex nextSibling = kNoAttribute;
};

/// A node type by its file word. Handles are small and compare by identity.
class NodeType {
public:
    /// The type of a name, or a null handle.
    static NodeType find(std::string_view name);
    /// Types in the table, sorted by name.
    static std::size_t count();
    static NodeType at(std::size_t position);

    NodeType() = default;
    explicit operator bool() const { return m_row >= 0; }
    friend bool operator==(const NodeType&, const NodeType&) = default;

    std::string_view name() const;
    /// True for the type itself and everything derived from `ancestor` ("transform", "shape",
    /// "lambert", "dagNode", ...).
    bool isA(std::string_view ancestor) const;
    bool isDag() const;       ///< lives in the DAG
    bool isTransform() const; ///< derived from transform
    bool isShape() const;     ///< in the DAG, neither a transform nor the world
    /// Function-set number of the type itself (2018 numbers), 0 when it has none of its own.
    int functionSet() const;
    /// True when `functionSetNumber` is the type's own or an ancestor's number (kDagNode, kShape,
    /// kLambert, ...).
    bool hasFunctionSet(int functionSetNumber) const;

    std::size_t attributeCount() const;
    Attribute attribute(AttributeIndex index) const;
    /// The attribute of a long or short name; kNoAttribute if there is none. Where a name occurs
    /// twice the first wins.
    AttributeIndex findAttribute(std::string_view name) const;

private:
    explicit NodeType(int row) : m_row(row) {}
    int m_row = -1;
};

/// The types that stand for unknown ones; always in the table.
NodeType unknownType();
NodeType unknownDagType();
NodeType unknownTransformType();

} // namespace host
