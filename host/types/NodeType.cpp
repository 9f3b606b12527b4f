#include "host/types/NodeType.h"

#include <algorithm>
#include <cassert>
#include <iterator>

namespace host {
namespace {

struct AttributeRow {
    std::uint32_t longName; // offsets into the store of names
    std::uint32_t shortName;
    std::uint8_t longLength;
    std::uint8_t shortLength;
    std::uint8_t kind;
    std::uint8_t isMulti;
    std::uint16_t initial;
};

struct Entry {
    std::uint16_t row;
    AttributeIndex parent;
    AttributeIndex firstChild;
    AttributeIndex nextSibling;
};

struct AttributeList {
    std::uint32_t firstEntry;
    std::uint16_t count;
    std::uint32_t firstName;
    std::uint16_t nameCount;
};

struct Class {
    std::uint32_t name;
    std::uint8_t nameLength;
    std::uint16_t parent;
    std::uint16_t functionSet;
};

struct Type {
    std::uint16_t row; // among the classes
    std::uint16_t list;
    std::uint8_t flags;
};

constexpr std::uint16_t kNoParent = 0xffff;
constexpr std::uint8_t kDagFlag = 1;
constexpr std::uint8_t kTransformFlag = 2;

#include "host/types/tables/nodeTypeTables.inc"

std::string_view nameAt(std::uint32_t offset, std::size_t length)
{
    constexpr std::size_t kChunk = sizeof(kNames[0]);
    return {kNames[offset / kChunk] + offset % kChunk, length};
}

std::string_view classNameOf(const Class& record)
{
    return nameAt(record.name, record.nameLength);
}

std::string_view typeNameOf(const Type& record)
{
    return classNameOf(kClasses[record.row]);
}

/// The name that a place of the name index stands for.
std::string_view indexedName(const AttributeList& list, std::uint16_t place)
{
    const AttributeRow& row = kRows[kEntries[list.firstEntry + place / 2].row];
    return place % 2 == 0 ? nameAt(row.longName, row.longLength)
                          : nameAt(row.shortName, row.shortLength);
}

/// Calls `visit` with each class from a type's own up to the root until it returns true.
template<class Visit>
bool anyClass(const Type& type, Visit visit)
{
    for (std::uint16_t row = type.row; row != kNoParent; row = kClasses[row].parent) {
        if (visit(kClasses[row])) {
            return true;
        }
    }
    return false;
}

} // namespace

NodeType NodeType::find(std::string_view name)
{
    const Type* found = std::lower_bound(
        std::begin(kTypes), std::end(kTypes), name,
        [](const Type& type, std::string_view sought) { return typeNameOf(type) < sought; });
    if (found == std::end(kTypes) || typeNameOf(*found) != name) {
        return {};
    }
    return NodeType(static_cast<int>(found - std::begin(kTypes)));
}

std::size_t NodeType::count()
{
    return std::size(kTypes);
}

NodeType NodeType::at(std::size_t position)
{
    assert(position < count() && "the position of a type in the table");
    return NodeType(static_cast<int>(position));
}

std::string_view NodeType::name() const
{
    return *this ? typeNameOf(kTypes[m_row]) : std::string_view();
}

bool NodeType::isA(std::string_view ancestor) const
{
    return *this && anyClass(kTypes[m_row], [ancestor](const Class& record) {
        return classNameOf(record) == ancestor;
    });
}

bool NodeType::isDag() const
{
    return *this && (kTypes[m_row].flags & kDagFlag) != 0;
}

bool NodeType::isTransform() const
{
    return *this && (kTypes[m_row].flags & kTransformFlag) != 0;
}

bool NodeType::isShape() const
{
    return isDag() && !isTransform() && name() != "dagNode";
}

int NodeType::functionSet() const
{
    return *this ? kClasses[kTypes[m_row].row].functionSet : 0;
}

bool NodeType::hasFunctionSet(int functionSetNumber) const
{
    if (!*this || functionSetNumber <= 0) {
        return false;
    }
    return anyClass(kTypes[m_row], [functionSetNumber](const Class& record) {
        return record.functionSet == functionSetNumber;
    });
}

std::size_t NodeType::attributeCount() const
{
    return *this ? kLists[kTypes[m_row].list].count : 0;
}

Attribute NodeType::attribute(AttributeIndex index) const
{
    assert(index < attributeCount() && "the index of an attribute of this type");
    const Entry& entry = kEntries[kLists[kTypes[m_row].list].firstEntry + index];
    const AttributeRow& row = kRows[entry.row];
    return {nameAt(row.longName, row.longLength),
            nameAt(row.shortName, row.shortLength),
            static_cast<AttributeKind>(row.kind),
            row.isMulti != 0,
            kInitials[row.initial],
            entry.parent,
            entry.firstChild,
            entry.nextSibling};
}

AttributeIndex NodeType::findAttribute(std::string_view name) const
{
    if (!*this) {
        return kNoAttribute;
    }
    const AttributeList& list = kLists[kTypes[m_row].list];
    const std::uint16_t* first = kNameIndex + list.firstName;
    const std::uint16_t* end = first + list.nameCount;
    const std::uint16_t* found =
        std::lower_bound(first, end, name, [&list](std::uint16_t place, std::string_view sought) {
            return indexedName(list, place) < sought;
        });
    if (found == end || indexedName(list, *found) != name) {
        return kNoAttribute;
    }
    return static_cast<AttributeIndex>(*found / 2);
}

NodeType unknownType()
{
    return NodeType::find("unknown");
}

NodeType unknownDagType()
{
    return NodeType::find("unknownDag");
}

NodeType unknownTransformType()
{
    return NodeType::find("unknownTransform");
}

} // namespace host
