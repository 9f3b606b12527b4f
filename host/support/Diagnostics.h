// What was odd but survivable while a scene was read and evaluated, counted per kind and subject.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace host {

enum class DiagnosticKind : std::uint8_t {
    UnknownStatement,  ///< subject: the statement's first word
    BadStatement,      ///< subject: the statement's word; a statement that could not be carried out
    UnknownNodeType,   ///< subject: the type; the node is kept as unknown, unknownDag or
                       ///< unknownTransform
    UnknownAttribute,  ///< subject: type.attribute; the value is kept as text
    MissingNode,       ///< subject: the command; a node or plug that a statement names is not there
    UncomputedNode,    ///< subject: node type that stands in a chain but has no computation here
    ApproximatedShape, ///< subject: type of a node that was passed through or only approximates;
                       ///< detail: shape and node
    MissingGeometry, ///< subject: node type whose result is missing; detail: shape that stays empty
    DamagedGeometry, ///< subject: what is damaged; detail: shape
    ReferenceLeftOut, ///< subject: the reference's path
    Texture,          ///< subject: a file texture's path (information)
    Limit             ///< subject: the limit that was met
};

/// The kind's word in reports, such as "unknown node type".
std::string_view diagnosticKindName(DiagnosticKind kind);

struct Diagnostic {
    DiagnosticKind kind;
    std::string subject;
    std::string firstDetail; ///< node name or message of the first case
    std::string firstWhere;  ///< "line 12, column 3" or "offset 0x40" of the first case, or empty
    std::size_t count = 0;
};

/// Collects diagnostics in order of first appearance. Bounded: subjects beyond 10,000 are only
/// counted.
class Diagnostics {
public:
    void note(DiagnosticKind kind, std::string_view subject, std::string_view detail = {},
              std::string_view where = {});
    const std::vector<Diagnostic>& entries() const { return m_entries; }
    std::size_t count(DiagnosticKind kind) const;
    void clear();

private:
    std::vector<Diagnostic> m_entries;
    std::unordered_map<std::string, std::size_t> m_index; ///< kind letter + subject -> entry
};

} // namespace host
