#include "host/file/CommandPrinter.h"

#include "host/file/runningStep.h"

#include <array>
#include <utility>

namespace host::file {
namespace {

constexpr std::array<std::string_view, 36> kKindNames{
    "bool",          "byte",           "char",           "short",
    "long",          "enum",           "float",          "floatLinear",
    "floatAngle",    "double",         "doubleLinear",   "doubleAngle",
    "time",          "compound",       "message",        "string",
    "matrix",        "fltMatrix",      "stringArray",    "Int32Array",
    "floatArray",    "doubleArray",    "vectorArray",    "pointArray",
    "componentList", "attributeAlias", "polyFaces",      "polyComponent",
    "mesh",          "nurbsCurve",     "nurbsSurface",   "nurbsTrimface",
    "lattice",       "geometry",       "referenceEdits", "any"};

std::string indexText(std::int64_t first, std::int64_t last)
{
    if (first < 0) {
        return {};
    }
    std::string text = "[" + std::to_string(first);
    if (last != first) {
        text += ":" + std::to_string(last);
    }
    return text + "]";
}

std::string headText(const PlugPath& plug, std::size_t running)
{
    std::string text(plug.node);
    for (std::size_t i = 0; i < running; ++i) {
        text += '.';
        text += plug.steps[i].name;
        text += indexText(plug.steps[i].first, plug.steps[i].last);
    }
    text += '.';
    text += plug.steps[running].name;
    return text;
}

std::string tailText(const PlugPath& plug, std::size_t running)
{
    std::string text;
    for (std::size_t i = running + 1; i < plug.stepCount; ++i) {
        text += '.';
        text += plug.steps[i].name;
        text += indexText(plug.steps[i].first, plug.steps[i].last);
    }
    return text;
}

std::string formOf(const NumberBlock& block)
{
    constexpr std::array<std::string_view, 3> kStorages{"float", "double", "int32"};
    return std::string(kStorages[static_cast<std::size_t>(block.storage)]) + " x " +
           std::to_string(block.width);
}

void addNumbers(PayloadText& text, const NumberBlock& block)
{
    for (const float number : block.floats) {
        text.add(number);
    }
    for (const double number : block.doubles) {
        text.add(number);
    }
    for (const std::int32_t number : block.integers) {
        text.add(static_cast<double>(number));
    }
}

/// Faces one by one, each with the ids of the sets that it has ids in: the same text however the
/// faces were cut into pieces.
void addFaces(PayloadText& text, const PolyFaces& faces)
{
    std::size_t loop = 0;
    std::size_t corner = 0;
    for (const std::uint32_t loopCount : faces.faceLoopCounts) {
        const std::size_t begin = corner;
        for (std::uint32_t i = 0; i < loopCount; ++i, ++loop) {
            text.add(i == 0 ? "f" : "h");
            for (std::uint32_t k = 0; k < faces.loopSizes[loop]; ++k, ++corner) {
                text.add(static_cast<double>(faces.corners[corner]));
            }
        }
        for (const PolyFaces::UvIds& set : faces.uvSets) {
            bool hasIds = false;
            for (std::size_t k = begin; k < corner; ++k) {
                hasIds = hasIds || set.ids[k] != -1;
            }
            if (!hasIds) {
                continue;
            }
            text.add("mu" + std::to_string(set.set));
            for (std::size_t k = begin; k < corner; ++k) {
                text.add(static_cast<double>(set.ids[k]));
            }
        }
    }
}

std::string flagsText(const AttributeFlags& flags)
{
    std::string text;
    const auto append = [&](std::string_view name, std::int8_t state) {
        if (state >= 0) {
            text += " ";
            text += name;
            text += state == 1 ? " on" : " off";
        }
    };
    append("keyable", flags.isKeyable);
    append("locked", flags.isLocked);
    append("channelBox", flags.isInChannelBox);
    return text;
}

void appendQuoted(std::string& line, std::string_view word, std::string_view text)
{
    if (!text.empty()) {
        line += " ";
        line += word;
        line += " ";
        line += quotedText(text);
    }
}

void appendIf(std::string& line, bool condition, std::string_view word)
{
    if (condition) {
        line += " ";
        line += word;
    }
}

} // namespace

CommandPrinter::CommandPrinter(Write write, CommandSink* next)
    : m_write(std::move(write)), m_next(next)
{
}

void CommandPrinter::print(std::string line)
{
    flush();
    m_lastSettings.clear();
    line += '\n';
    m_write(line);
}

void CommandPrinter::flush()
{
    if (m_pending.payload == SetAttribute::Payload::None) {
        return;
    }
    std::string line = "setAttr " + m_pending.head +
                       indexText(m_pending.first, m_pending.next - 1) + m_pending.tail + " " +
                       m_pending.form + ": " + m_pending.text.text() + "\n";
    m_pending = {};
    m_write(line);
}

void CommandPrinter::at(const Place& place)
{
    if (m_next != nullptr) {
        m_next->at(place);
    }
}

void CommandPrinter::requirePlugin(std::string_view plugin, std::string_view version,
                                   std::span<const std::string_view> nodeTypes)
{
    std::string line = "requires " + quotedText(plugin) + " " + quotedText(version);
    for (const std::string_view type : nodeTypes) {
        appendQuoted(line, "nodeType", type);
    }
    print(std::move(line));
    if (m_next != nullptr) {
        m_next->requirePlugin(plugin, version, nodeTypes);
    }
}

void CommandPrinter::currentUnit(const Units& units)
{
    std::string line = "currentUnit";
    appendQuoted(line, "linear", units.linear);
    appendQuoted(line, "angular", units.angular);
    appendQuoted(line, "time", units.time);
    print(std::move(line));
    if (m_next != nullptr) {
        m_next->currentUnit(units);
    }
}

void CommandPrinter::fileInfo(std::string_view key, std::string_view value)
{
    print("fileInfo " + quotedText(key) + " " + quotedText(value));
    if (m_next != nullptr) {
        m_next->fileInfo(key, value);
    }
}

void CommandPrinter::reference(const Reference& reference)
{
    std::string line = "reference " + quotedText(reference.path);
    appendQuoted(line, "node", reference.nodeName);
    appendQuoted(line, "namespace", reference.nameSpace);
    appendIf(line, reference.isTableOfContents, "listed");
    appendIf(line, reference.isDeferred, "deferred");
    print(std::move(line));
    if (m_next != nullptr) {
        m_next->reference(reference);
    }
}

void CommandPrinter::createNode(const CreateNode& command)
{
    std::string line = "createNode " + std::string(command.type);
    appendQuoted(line, "name", command.name);
    appendQuoted(line, "parent", command.parent);
    appendIf(line, command.isShared, "shared");
    print(std::move(line));
    if (m_next != nullptr) {
        m_next->createNode(command);
    }
}

void CommandPrinter::renameNode(std::string_view newName)
{
    print("rename " + quotedText(newName));
    if (m_next != nullptr) {
        m_next->renameNode(newName);
    }
}

void CommandPrinter::uuid(std::string_view uuid)
{
    print("uuid " + quotedText(uuid));
    if (m_next != nullptr) {
        m_next->uuid(uuid);
    }
}

void CommandPrinter::selectNode(std::string_view name)
{
    print("select " + quotedText(name));
    if (m_next != nullptr) {
        m_next->selectNode(name);
    }
}

void CommandPrinter::parentNodes(const ParentNodes& command)
{
    std::string line = "parent";
    for (const std::string_view node : command.nodes) {
        line += " " + quotedText(node);
    }
    appendQuoted(line, "below", command.parent);
    appendIf(line, command.isAdded, "added");
    appendIf(line, command.isRemoved, "removed");
    print(std::move(line));
    if (m_next != nullptr) {
        m_next->parentNodes(command);
    }
}

void CommandPrinter::lockNode(bool isLocked)
{
    print(isLocked ? "lockNode on" : "lockNode off");
    if (m_next != nullptr) {
        m_next->lockNode(isLocked);
    }
}

void CommandPrinter::addAttribute(const AddAttribute& command)
{
    std::string line = "addAttr " + quotedText(command.longName);
    appendQuoted(line, "short", command.shortName);
    appendQuoted(line, "parent", command.parent);
    line += " ";
    line += kKindNames[static_cast<std::size_t>(command.kind)];
    appendIf(line, command.isMulti, "multi");
    appendIf(line, command.initial != 0, "initial " + numberText(command.initial));
    appendIf(line, command.childCount != 0, "children " + std::to_string(command.childCount));
    print(std::move(line));
    if (m_next != nullptr) {
        m_next->addAttribute(command);
    }
}

PlugShape CommandPrinter::shapeOf(const PlugPath& plug)
{
    return m_next != nullptr ? m_next->shapeOf(plug) : PlugShape{};
}

void CommandPrinter::printSettings(const SetAttribute& command)
{
    std::string settings = flagsText(command.flags);
    if (command.sizeHint >= 0) {
        settings += " size " + std::to_string(command.sizeHint);
    }
    const bool isBare = command.payload == SetAttribute::Payload::None;
    if (settings.empty() && !isBare) {
        return;
    }
    const std::size_t running = runningStep(command.plug);
    const PlugStep& step = command.plug.steps[running];
    const std::string head = headText(command.plug, running);
    const std::string tail = tailText(command.plug, running);
    const std::string key = head + tail + settings;
    if (key == m_lastSettings && !isBare) {
        return;
    }
    flush();
    m_lastSettings = key;
    m_write("setAttr " + head + (isBare ? indexText(step.first, step.last) : std::string()) + tail +
            settings + "\n");
}

void CommandPrinter::printValues(const SetAttribute& command)
{
    flush();
    const std::size_t running = runningStep(command.plug);
    std::int64_t index = command.plug.steps[running].first;
    const std::string head = headText(command.plug, running);
    const std::string tail = tailText(command.plug, running);
    for (const Value& value : command.values) {
        m_write("setAttr " + head + indexText(index, index) + tail + " " + valueText(value) + "\n");
        index += index < 0 ? 0 : 1;
    }
}

void CommandPrinter::collect(const SetAttribute& command)
{
    const std::size_t running = runningStep(command.plug);
    const PlugStep& step = command.plug.steps[running];
    const bool isNumbers = command.payload == SetAttribute::Payload::Numbers;
    const bool isFaces = command.payload == SetAttribute::Payload::Faces;
    const bool isSparse = !isNumbers && !isFaces;
    Pending next;
    next.payload = command.payload;
    next.head = headText(command.plug, running);
    next.tail = tailText(command.plug, running);
    next.form = isNumbers ? formOf(command.numbers) : isFaces ? "faces" : "sparse";
    const bool isSame = m_pending.payload == next.payload && m_pending.head == next.head &&
                        m_pending.tail == next.tail && m_pending.form == next.form;
    // The entries of a sparse payload carry their indices: its plug stands still.
    const bool isContinued =
        isSame && (isSparse ? m_pending.first == step.first && m_pending.next == step.last + 1
                            : step.hasIndex() && step.first == m_pending.next);
    if (!isContinued) {
        flush();
        next.first = step.first;
        next.next = step.first;
        m_pending = std::move(next);
    }
    if (isNumbers) {
        addNumbers(m_pending.text, command.numbers);
        m_pending.next += static_cast<std::int64_t>(command.numbers.count());
    } else if (isFaces) {
        addFaces(m_pending.text, *command.faces);
        m_pending.next += static_cast<std::int64_t>(command.faces->faceLoopCounts.size());
    } else {
        m_pending.next = step.last + 1;
        for (const SparseNumber& entry : command.sparse) {
            m_pending.text.add(static_cast<double>(entry.outer));
            m_pending.text.add(static_cast<double>(entry.inner));
            m_pending.text.add(entry.number);
        }
    }
}

void CommandPrinter::setAttribute(const SetAttribute& command)
{
    printSettings(command);
    if (command.payload == SetAttribute::Payload::Value) {
        printValues(command);
    } else if (command.payload != SetAttribute::Payload::None) {
        collect(command);
    }
    if (m_next != nullptr) {
        m_next->setAttribute(command);
    }
}

void CommandPrinter::printConnection(std::string_view word, const Connection& command)
{
    std::string line(word);
    line += " " + quotedText(command.source) + " " + quotedText(command.destination);
    appendIf(line, command.isNextAvailable, "nextAvailable");
    appendIf(line, command.isForced, "forced");
    print(std::move(line));
}

void CommandPrinter::connect(const Connection& command)
{
    printConnection("connectAttr", command);
    if (m_next != nullptr) {
        m_next->connect(command);
    }
}

void CommandPrinter::disconnect(const Connection& command)
{
    printConnection("disconnectAttr", command);
    if (m_next != nullptr) {
        m_next->disconnect(command);
    }
}

void CommandPrinter::unknown(std::string_view word)
{
    print("unknown " + quotedText(word));
    if (m_next != nullptr) {
        m_next->unknown(word);
    }
}

void CommandPrinter::damaged(std::string_view word, std::string_view reason)
{
    print("damaged " + quotedText(word) + ": " + std::string(reason));
    if (m_next != nullptr) {
        m_next->damaged(word, reason);
    }
}

void CommandPrinter::endOfScene()
{
    print("end");
    if (m_next != nullptr) {
        m_next->endOfScene();
    }
}

} // namespace host::file
