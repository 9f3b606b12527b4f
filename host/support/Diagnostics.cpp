#include "host/support/Diagnostics.h"

namespace host {
namespace {

constexpr std::size_t kMaxEntries = 10000;
constexpr std::size_t kMaxTextBytes =
    400; // a subject or detail beyond it is cut: files may hold anything

std::string bounded(std::string_view text)
{
    return std::string(text.substr(0, kMaxTextBytes));
}

} // namespace

std::string_view diagnosticKindName(DiagnosticKind kind)
{
    switch (kind) {
    case DiagnosticKind::UnknownStatement:
        return "unknown statement";
    case DiagnosticKind::BadStatement:
        return "bad statement";
    case DiagnosticKind::UnknownNodeType:
        return "unknown node type";
    case DiagnosticKind::UnknownAttribute:
        return "unknown attribute";
    case DiagnosticKind::MissingNode:
        return "missing node";
    case DiagnosticKind::UncomputedNode:
        return "node not computed";
    case DiagnosticKind::ApproximatedShape:
        return "approximated shape";
    case DiagnosticKind::MissingGeometry:
        return "missing geometry";
    case DiagnosticKind::DamagedGeometry:
        return "damaged geometry";
    case DiagnosticKind::ReferenceLeftOut:
        return "reference left out";
    case DiagnosticKind::Texture:
        return "texture";
    case DiagnosticKind::Limit:
        return "limit";
    }
    return "unknown";
}

void Diagnostics::note(DiagnosticKind kind, std::string_view subject, std::string_view detail,
                       std::string_view where)
{
    std::string key(1, static_cast<char>('a' + static_cast<int>(kind)));
    key += bounded(subject);
    const auto found = m_index.find(key);
    if (found != m_index.end()) {
        ++m_entries[found->second].count;
        return;
    }
    if (m_entries.size() >= kMaxEntries) {
        return;
    }
    m_index.emplace(std::move(key), m_entries.size());
    m_entries.push_back({kind, bounded(subject), bounded(detail), bounded(where), 1});
}

std::size_t Diagnostics::count(DiagnosticKind kind) const
{
    std::size_t total = 0;
    for (const Diagnostic& entry : m_entries) {
        if (entry.kind == kind) {
            total += entry.count;
        }
    }
    return total;
}

void Diagnostics::clear()
{
    m_entries.clear();
    m_index.clear();
}

} // namespace host
