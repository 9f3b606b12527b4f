// The report of the open scene.
#include "host/session/JsonText.h"
#include "host/session/SessionState.h"

#include <algorithm>
#include <set>

namespace host::session {
namespace {

using graph::Graph;

struct KindRow {
    std::string_view key;
    DiagnosticKind kind;
    std::string_view subject; ///< the key of the diagnostic's subject
    std::string_view detail;  ///< of its first detail
};

/// The lists of the report that come from diagnostics one to one.
constexpr KindRow kLists[] = {
    {"unknownNodeTypes", DiagnosticKind::UnknownNodeType, "type", "first"},
    {"uncomputedNodeTypes", DiagnosticKind::UncomputedNode, "type", "first"},
    {"approximatedBy", DiagnosticKind::ApproximatedShape, "type", "firstShape"},
    {"missingBecauseOf", DiagnosticKind::MissingGeometry, "type", "firstShape"},
    {"unknownStatements", DiagnosticKind::UnknownStatement, "word", ""},
    {"badStatements", DiagnosticKind::BadStatement, "word", "reason"},
    {"unknownAttributes", DiagnosticKind::UnknownAttribute, "attribute", "first"},
    {"missingNodes", DiagnosticKind::MissingNode, "statement", "first"},
    {"damagedGeometry", DiagnosticKind::DamagedGeometry, "what", "first"},
    {"limits", DiagnosticKind::Limit, "limit", "first"},
};

void writeList(JsonText& json, const KindRow& row, const std::vector<Diagnostic>& entries)
{
    json.beginList(row.key);
    for (const Diagnostic& entry : entries) {
        if (entry.kind != row.kind) {
            continue;
        }
        json.beginObject();
        json.text(row.subject, entry.subject);
        json.number("count", entry.count);
        if (!row.detail.empty() && !entry.firstDetail.empty()) {
            json.text(row.detail, entry.firstDetail);
        }
        if (!entry.firstWhere.empty()) {
            json.text("where", entry.firstWhere);
        }
        json.endObject();
    }
    json.endList();
}

void writeTextures(JsonText& json, const Graph& graph)
{
    json.beginList("textures");
    std::set<std::string> written;
    for (NodeId node = 1; node < graph.nodeCount(); ++node) {
        if (!graph.node(node).type.isA("file")) {
            continue;
        }
        const AttributeIndex name = graph.findAttribute(node, "fileTextureName");
        if (name == kNoAttribute) {
            continue;
        }
        const auto path = graph.storedValue({node, name, graph::kNoSlot, -1}).data<std::string>();
        if (path != nullptr && !path->empty() && written.insert(*path).second) {
            json.text({}, *path);
        }
    }
    json.endList();
}

/// Shapes that are read and kept but delivered to nobody yet.
constexpr std::string_view kNotConverted[] = {"nurbsSurface", "pfxHair"};

void writeShapesNotConverted(JsonText& json, const Graph& graph)
{
    json.beginList("shapesNotConverted");
    for (const std::string_view type : kNotConverted) {
        std::uint64_t count = 0;
        std::string_view first;
        for (NodeId node = 1; node < graph.nodeCount(); ++node) {
            const graph::Node& candidate = graph.node(node);
            if (candidate.isAlive && candidate.type.name() == type && count++ == 0) {
                first = graph.node(node).name;
            }
        }
        if (count > 0) {
            json.beginObject();
            json.text("type", type);
            json.number("count", count);
            json.text("first", first);
            json.endObject();
        }
    }
    json.endList();
}

} // namespace

std::string Session::report() const
{
    JsonText json;
    json.beginObject();
    json.text("file", m_currentFile);
    json.beginObject("nodes");
    std::size_t defaults = 0;
    std::size_t dagNodes = 0;
    std::size_t meshShapes = 0;
    std::size_t alive = 0;
    for (NodeId node = 1; node < m_graph->nodeCount(); ++node) {
        if (!m_graph->node(node).isAlive) {
            continue;
        }
        ++alive;
        defaults += m_graph->node(node).isDefault ? 1 : 0;
        dagNodes += m_graph->node(node).isDag() ? 1 : 0;
        meshShapes += m_graph->node(node).type.isA("mesh") ? 1 : 0;
    }
    json.number("total", alive);
    json.number("ofNewScene", defaults);
    json.number("inDag", dagNodes);
    json.endObject();

    const auto count = [&](MeshOutcome wanted) {
        return static_cast<std::uint64_t>(
            std::count_if(m_evaluation->meshes.begin(), m_evaluation->meshes.end(),
                          [&](const auto& entry) { return entry.second == wanted; }));
    };
    json.beginObject("meshes");
    json.number("total", meshShapes);
    json.number("stored", count(MeshOutcome::Exact));
    json.number("approximated", count(MeshOutcome::Approximated));
    json.number("missing", count(MeshOutcome::Missing));
    json.number("empty", count(MeshOutcome::Empty));
    json.number("notAsked", meshShapes - m_evaluation->meshes.size());
    json.endObject();

    for (const KindRow& row : kLists) {
        writeList(json, row, m_diagnostics.entries());
    }
    writeShapesNotConverted(json, *m_graph);
    writeTextures(json, *m_graph);
    json.beginList("referencesLeftOut");
    for (const std::string& path : m_evaluation->facts.references) {
        json.text({}, path);
    }
    json.endList();
    json.endObject();
    return json.take();
}

} // namespace host::session
