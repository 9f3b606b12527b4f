// The commands about connections.
#include "host/session/SceneBuilder.h"

#include "host/session/plugLookup.h"

namespace host::session {

using graph::kNoNode;
using graph::Plug;

/// One end of a connection as it is written. A source multi without an index means its element 0.
std::optional<SceneBuilder::End> SceneBuilder::findEnd(std::string_view text, std::string_view word,
                                                       bool isSource)
{
    const Expected<PlugPath> path = parsePlugPath(text);
    if (!path) {
        note(DiagnosticKind::BadStatement, word, path.error().message);
        return std::nullopt;
    }
    const FoundNode found = path->node.empty() ? FoundNode{m_current, 0} : findInstance(path->node);
    if (found.node == kNoNode) {
        note(DiagnosticKind::MissingNode, word, text);
        return std::nullopt;
    }
    Plug plug = plugAt(m_graph, found.node, *path, found.instance);
    if (!plug) {
        noteUnknownAttribute(found.node, *path);
        plug = makeUnknownPlug(found.node, *path, AttributeKind::Any);
        if (!plug) {
            return std::nullopt;
        }
    }
    const Attribute attribute = m_graph.attribute(plug.node, plug.attribute);
    if (!attribute.isMulti) {
        return End{plug, false};
    }
    const PlugStep& last = path->last();
    if (last.hasIndex()) {
        return End{m_graph.element(plug, static_cast<std::int32_t>(last.first)), false};
    }
    if (isPerInstance(attribute.longName)) {
        return End{m_graph.element(plug, found.instance), false};
    }
    return isSource ? End{m_graph.element(plug, 0), false} : End{plug, true};
}

void SceneBuilder::connect(const file::Connection& command)
{
    constexpr std::string_view kWord = "connectAttr";
    const auto source = findEnd(command.source, kWord, true);
    if (!source) {
        return;
    }
    auto destination = findEnd(command.destination, kWord, false);
    if (!destination) {
        return;
    }
    if (destination->isOpenMulti) {
        destination->plug =
            m_graph.element(destination->plug, m_graph.nextAvailable(destination->plug));
    }
    const Expected<void> done = m_graph.connect(source->plug, destination->plug);
    if (!done) {
        note(DiagnosticKind::BadStatement, kWord, done.error().message);
    }
}

void SceneBuilder::disconnect(const file::Connection& command)
{
    constexpr std::string_view kWord = "disconnectAttr";
    const auto source = findEnd(command.source, kWord, true);
    const auto destination = source ? findEnd(command.destination, kWord, false) : std::nullopt;
    if (!destination) {
        return;
    }
    if (!destination->isOpenMulti) {
        m_graph.disconnect(source->plug, destination->plug);
        return;
    }
    for (const Plug& fed : m_graph.outputsOf(source->plug)) {
        if (fed.node == destination->plug.node && fed.attribute == destination->plug.attribute) {
            m_graph.disconnect(source->plug, fed);
            return;
        }
    }
}

} // namespace host::session
