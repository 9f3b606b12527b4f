// Opening and beginning scenes, and time.
#include "host/session/Session.h"
#include "host/session/plugLookup.h"

#include "host/file/readScene.h"
#include "host/math/units.h"
#include "host/nodes/allNodeTypes.h"
#include "host/session/SessionState.h"
#include "host/session/defaultScene.h"
#include "host/session/rotationCurves.h"
#include "platform/MappedFile.h"
#include "platform/largeArrays.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <system_error>

namespace host::session {
namespace {

using graph::Graph;

constexpr double kDefaultRangeStart = 1; ///< frames
constexpr double kDefaultRangeEnd = 120;
constexpr double kDefaultFrame = 1;

std::string utf8(const std::filesystem::path& path)
{
    const std::u8string text = path.generic_u8string();
    return {text.begin(), text.end()};
}

/// With forward slashes; the text itself where the system cannot tell.
std::string absolutePath(std::string_view utf8Path)
{
    std::error_code error;
    const std::filesystem::path path(std::u8string(utf8Path.begin(), utf8Path.end()));
    const std::filesystem::path absolute = std::filesystem::absolute(path, error);
    return error ? std::string(utf8Path) : utf8(absolute.lexically_normal());
}

/// Ticks of a frame number, kept inside what a count of ticks can hold.
std::int64_t ticksOf(double frame, const WorkingUnits& units)
{
    constexpr double kMost = 9e18;
    const double ticks = frame * static_cast<double>(units.ticksPerFrame);
    if (std::isnan(ticks)) {
        return 0;
    }
    return std::llround(std::min(std::max(ticks, -kMost), kMost));
}

/// What the scene's configuration scripts say in the order of the file: those of scriptType 6, and
/// the one of the name that Maya gives it.
PlaybackRange readPlaybackRange(const Graph& graph)
{
    constexpr double kSceneConfiguration = 6;
    PlaybackRange range;
    const NodeType scriptType = NodeType::find("script");
    for (NodeId node = 0; node < graph.nodeCount(); ++node) {
        const graph::Node& script = graph.node(node);
        if (!script.isAlive || script.type != scriptType) {
            continue;
        }
        const bool isConfiguration =
            script.name == "sceneConfigurationScriptNode" ||
            storedValue(graph, node, "scriptType").number() == kSceneConfiguration;
        if (!isConfiguration) {
            continue;
        }
        if (const auto text = storedValue(graph, node, "before").data<std::string>()) {
            range = parsePlaybackOptions(*text, range);
        }
    }
    return range;
}

} // namespace

Session::Evaluation::Evaluation(Graph& graph, Diagnostics& diagnostics, SceneFacts sceneFacts)
    : facts(std::move(sceneFacts))
    , instances(graph)
    , evaluator(graph, instances, nodes::allNodeTypes(), diagnostics)
    , visibility(graph.nodeCount())
{
}

Session::Session()
{
    newScene();
}

Session::~Session() = default;

bool Session::isOpened() const
{
    return m_evaluation != nullptr && m_evaluation->isFile;
}

void Session::beginScene()
{
    if (isOpened()) {
        m_lastReport = report();
    }
    ++m_generation;
    m_evaluation.reset();
    m_diagnostics.clear();
    m_graph = std::make_unique<Graph>();
    SceneBuilder builder(*m_graph, m_diagnostics, true);
    sendDefaultScene(builder);
}

void Session::newScene()
{
    beginScene();
    m_currentFile = absolutePath("untitled");
    finishScene(std::make_unique<Evaluation>(*m_graph, m_diagnostics, SceneFacts()));
}

void Session::finishScene(std::unique_ptr<Evaluation> evaluation)
{
    m_evaluation = std::move(evaluation);
    m_units = m_evaluation->facts.units;
    m_isZUp = false; // scene files do not tell the up axis; without a user it is Y
    const PlaybackRange range = readPlaybackRange(*m_graph);
    m_playbackStart = ticksOf(range.minimum.value_or(kDefaultRangeStart), m_units);
    m_playbackEnd =
        std::max(m_playbackStart, ticksOf(range.maximum.value_or(kDefaultRangeEnd), m_units));
    const NodeId clock = m_graph->findNode("time1");
    const Value time = storedValue(*m_graph, clock, "outTime");
    m_time = time.isNumber()
                 ? ticksOf(time.number() / static_cast<double>(m_units.ticksPerFrame), m_units)
                 : ticksOf(kDefaultFrame, m_units);
    m_evaluation->evaluator.setClock(clock);
    m_evaluation->evaluator.setTime(m_time);
    joinRotationCurves(*m_graph, m_evaluation->evaluator);
}

Expected<void> Session::setTimeUnit(std::string_view name)
{
    const std::optional<double> ticks = findTimeUnit(name);
    if (!ticks) {
        return Error{ErrorCode::InvalidParameter, "no unit of time", std::string(name)};
    }
    m_units.time = name;
    m_units.ticksPerFrame = std::max<std::int64_t>(1, std::llround(*ticks));
    return {};
}

Expected<void> Session::open(std::string_view utf8Path)
{
    std::string reason;
    auto file = platform::MappedFile::open(std::string(utf8Path), reason);
    if (!file) {
        newScene();
        return Error{ErrorCode::Io, reason, std::string(utf8Path)};
    }
    platform::expectLargeArrays();
    beginScene();
    m_currentFile = absolutePath(utf8Path);
    SceneBuilder builder(*m_graph, m_diagnostics);
    file::ReadOptions options;
    options.progress = [&file](std::size_t done) { file->releaseBefore(done); };
    const Expected<void> read =
        file::readScene(std::span(file->data(), file->size()), builder, options);
    if (!read) {
        newScene();
        return Error{read.error().code, read.error().message, std::string(utf8Path)};
    }
    auto evaluation = std::make_unique<Evaluation>(*m_graph, m_diagnostics, builder.facts());
    evaluation->isFile = true;
    finishScene(std::move(evaluation));
    return {};
}

void Session::setCurrentTime(std::int64_t ticks)
{
    if (ticks == m_time) {
        return;
    }
    m_time = ticks;
    m_evaluation->evaluator.setTime(ticks);
    ++m_evaluation->visibilityRound;
    m_evaluation->lastPath.nodes.clear();
    m_evaluation->lastWorlds.clear();
}

} // namespace host::session
