// The computations of all node types, resolved to attribute positions for the types that are met.
#pragma once

#include "host/types/ComputeContext.h"
#include "host/types/NodeType.h"

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <unordered_map>
#include <vector>

namespace host::eval {

/// A set of attributes in 128 bits, one for every 128th: what has no bit in it is not in the set.
/// That many keep the channels of transforms apart from everything else that their matrix needs.
class AttributeBits {
public:
    void add(AttributeIndex attribute) { m_words[wordOf(attribute)] |= bitOf(attribute); }
    bool mayHave(AttributeIndex attribute) const
    {
        return (m_words[wordOf(attribute)] & bitOf(attribute)) != 0;
    }
    bool mayMeet(const AttributeBits& other) const
    {
        return ((m_words[0] & other.m_words[0]) | (m_words[1] & other.m_words[1])) != 0;
    }
    bool isEmpty() const { return (m_words[0] | m_words[1]) == 0; }

private:
    static constexpr std::size_t wordOf(AttributeIndex attribute) { return attribute / 64 % 2; }
    static constexpr std::uint64_t bitOf(AttributeIndex attribute)
    {
        return std::uint64_t{1} << (attribute % 64);
    }
    std::array<std::uint64_t, 2> m_words{};
};

/// One input of a computation, for one type.
struct InputEntry {
    AttributeIndex attribute = kNoAttribute; ///< the type may not have it
    double initial = 0;
    bool isPlainNumber = false; ///< without a connection it is what is stored, else `initial`
    AttributeBits ways;         ///< itself and the compounds around it
};

/// What computes one attribute of a type.
struct OutputEntry {
    AttributeIndex attribute = kNoAttribute;
    std::size_t output = 0; ///< position in the row's list
    const NodeCompute* row = nullptr;
    const std::vector<InputEntry>* inputs = nullptr; ///< in step with the row's list
    std::size_t state = kNoState;                    ///< where the row asks for the node's state
    static constexpr std::size_t kNoState = ~std::size_t{0};
};

/// The computations of one type.
struct TypeComputes {
    std::vector<OutputEntry> outputs; ///< ascending attributes
    std::vector<std::unique_ptr<std::vector<InputEntry>>> inputLists;
    /// What the type hands geometry on from; empty where a computation takes it in.
    std::vector<AttributeIndex> geometryInputs;
    std::vector<bool> isResult; ///< per attribute: computed by the node, never stored
    /// Null when nothing computes the attribute.
    const OutputEntry* find(AttributeIndex attribute) const;
};

class ComputeTable {
public:
    explicit ComputeTable(std::span<const NodeCompute* const> rows) : m_rows(rows) {}
    const TypeComputes& of(NodeType type);

private:
    void resolve(NodeType type, TypeComputes& result) const;

    std::span<const NodeCompute* const> m_rows;
    std::unordered_map<std::string_view, std::unique_ptr<TypeComputes>> m_types;
    NodeType m_lastType;
    const TypeComputes* m_last = nullptr;
};

} // namespace host::eval
