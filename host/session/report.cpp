// The report of the open scene.
#include "host/session/JsonText.h"
#include "host/session/SessionState.h"

#include <array>
#include <map>
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

void writeOutcomes(JsonText& json, const Graph& graph,
                   const std::map<NodeId, ShapeOutcome>& outcomes, std::string_view key,
                   std::string_view type)
{
    std::uint64_t total = 0;
    for (NodeId node = 1; node < graph.nodeCount(); ++node) {
        total += graph.node(node).isAlive && graph.node(node).type.isA(type) ? 1 : 0;
    }
    std::array<std::uint64_t, kShapeOutcomes> counts{};
    std::uint64_t asked = 0;
    for (const auto& [shape, outcome] : outcomes) {
        if (graph.node(shape).type.isA(type)) {
            ++asked;
            ++counts[static_cast<std::size_t>(outcome)];
        }
    }
    const auto count = [&](ShapeOutcome outcome) {
        return counts[static_cast<std::size_t>(outcome)];
    };
    json.beginObject(key);
    json.number("total", total);
    json.number("stored", count(ShapeOutcome::Exact));
    json.number("computed", count(ShapeOutcome::Computed));
    json.number("approximated",
                count(ShapeOutcome::Approximated) + count(ShapeOutcome::TexturesOnly));
    json.number("approximatedInTexturesOnly", count(ShapeOutcome::TexturesOnly));
    json.number("missing", count(ShapeOutcome::Missing));
    json.number("empty", count(ShapeOutcome::Empty));
    json.number("notAsked", total - asked);
    json.endObject();
}

std::string_view outcomeWord(ShapeOutcome outcome)
{
    constexpr std::string_view kWords[kShapeOutcomes] = {
        "stored", "computed", "approximated", "approximatedInTexturesOnly", "missing", "empty"};
    return kWords[static_cast<std::size_t>(outcome)];
}

/// Each shape with a history by its path, and the nodes of it that were passed by, nearest first,
/// with the reason.
void writeHistory(JsonText& json, const Session& session, const std::vector<HistoryShape>& shapes,
                  const eval::Evaluator& evaluator)
{
    const Graph& graph = session.graph();
    json.beginList("history");
    for (const HistoryShape& entry : shapes) {
        json.beginObject();
        json.text("shape", session.fullPathName(session.firstPathTo(entry.shape)));
        json.text("outcome", outcomeWord(entry.outcome));
        json.beginList("passed");
        for (const NodeId id : entry.passed) {
            const graph::Node& node = graph.node(id);
            json.beginObject();
            json.text("type", node.unknownType.empty() ? node.type.name()
                                                       : std::string_view(node.unknownType));
            json.text("node", node.name);
            const std::string_view why = wordsOf(evaluator.lackOf(id));
            json.text("why", why.empty() ? "is not computed" : why);
            json.endObject();
        }
        json.endList();
        json.endObject();
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
    std::size_t alive = 0;
    for (NodeId node = 1; node < m_graph->nodeCount(); ++node) {
        if (!m_graph->node(node).isAlive) {
            continue;
        }
        ++alive;
        defaults += m_graph->node(node).isDefault ? 1 : 0;
        dagNodes += m_graph->node(node).isDag() ? 1 : 0;
    }
    json.number("total", alive);
    json.number("ofNewScene", defaults);
    json.number("inDag", dagNodes);
    json.endObject();

    writeOutcomes(json, *m_graph, m_evaluation->shapes, "meshes", "mesh");
    writeOutcomes(json, *m_graph, m_evaluation->shapes, "surfaces", "nurbsSurface");
    writeOutcomes(json, *m_graph, m_evaluation->shapes, "paintEffects", "pfxGeometry");

    writeHistory(json, *this, m_evaluation->history, m_evaluation->evaluator);
    for (const KindRow& row : kLists) {
        writeList(json, row, m_diagnostics.entries());
    }
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
