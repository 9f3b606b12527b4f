// MESH: a whole mesh in one block, told as the lists that the text form has: texture coordinates,
// points, edges, normals, faces, values of components. Ids of colours are left out, as there.
#include "host/file/binary/values/PieceSender.h"
#include "host/file/binary/values/meshWords.h"
#include "host/geometry/mesh/buildTopology.h"

#include <algorithm>
#include <array>

namespace host::file::binary {
namespace {

/// Corners of a piece, about.
constexpr std::size_t kPieceCorners = 131072;
constexpr std::size_t kMaxUvSets = 64;

constexpr Tag kGeometryTags("gtag");

struct UvSetPart {
    std::string_view name;
    Words points; ///< u and v in turn
    Words ids;    ///< one per corner, -1 none; or none at all
};

/// Where the parts of a block lie.
struct MeshParts {
    Words points;
    Words edges;
    Words corners;
    Words normals;
    std::size_t currentUvSet = 0;
    std::vector<UvSetPart> uvSets;
};

/// Values of components, in the order in which blocks have them: each version of Maya that knew
/// more kinds put them at the end. The order of the first three is inferred from that.
struct ComponentRow {
    std::string_view plug;
    PolyComponentData::Domain domain;
    bool isMulti;
};
constexpr std::array<ComponentRow, 4> kComponentRows{{
    {"cd", PolyComponentData::Domain::Edge, false},
    {"cvd", PolyComponentData::Domain::Vertex, false},
    {"hfd", PolyComponentData::Domain::Face, false},
    {"pd", PolyComponentData::Domain::Uv, true},
}};

// --- steps of plugs

PlugStep stepOf(std::string_view name)
{
    PlugStep step;
    step.name = name;
    return step;
}

PlugStep stepOf(std::string_view name, std::size_t index)
{
    PlugStep step = stepOf(name);
    step.first = step.last = static_cast<std::int64_t>(index);
    return step;
}

void setRange(SetAttribute& command, std::size_t first, std::size_t count)
{
    PlugStep& step = command.plug.steps[command.plug.stepCount - 1];
    step.first = static_cast<std::int64_t>(first);
    step.last = static_cast<std::int64_t>(first + count) - 1;
}

/// True for the attributes that hold the mesh of a shape.
bool isStoredMesh(const PlugPath& plug)
{
    constexpr std::array<std::string_view, 4> kNames{"o", "outMesh", "ci", "cachedInMesh"};
    return plug.stepCount == 1 && !plug.last().hasIndex() &&
           std::find(kNames.begin(), kNames.end(), plug.last().name) != kNames.end();
}

/// Reads the block where its parts lie, then sends them one after the other.
class MeshReader {
public:
    MeshReader(Reader& reader, ValueTask& task)
        : m_reader(reader)
        , m_cursor(task.cursor)
        , m_command(task.command)
        , m_node(task.command.plug.node)
    {
        // The mesh of a shape is told as its lists; any other one, such as a dynamic attribute's,
        // is a value.
        m_hasLists =
            isStoredMesh(task.command.plug) &&
            (!task.shape.isKnown || reader.sink.shapeOf(commandFor(stepOf(kPoints)).plug).isKnown);
    }

    void read()
    {
        findParts();
        if (m_hasLists) {
            sendUvSets();
            sendVectors(stepOf(kPoints), m_parts.points, 3);
            sendEdges();
            sendVectors(stepOf("n"), m_parts.normals, 3);
            sendFaces();
        } else if (!m_cursor.hasFailed()) {
            sendValue(m_command, meshValue());
        }
        readComponentData();
        if (!m_oddity.empty()) {
            m_cursor.fail(m_oddity);
        }
    }

private:
    static constexpr std::string_view kPoints = "vt";

    /// What is wrong though the block can be read on; of a literal, and the first one counts.
    void note(std::string_view oddity)
    {
        if (m_oddity.empty()) {
            m_oddity = oddity;
        }
    }

    // --- where the parts lie

    Words takeWords() { return Words(m_cursor.takeItems(m_cursor.count(4), 4)); }

    Words takeGroups(std::size_t width)
    {
        const Words words = takeWords();
        if (words.size() % width != 0) {
            note("a list of a mesh has numbers left over");
        }
        return words;
    }

    /// Where something does not fit, the parts from there on stay empty.
    void findParts()
    {
        m_parts.points = takeGroups(3);
        m_parts.edges = takeGroups(2);
        m_parts.corners = takeWords();
        m_parts.normals = takeGroups(3);
        if (!m_parts.normals.isEmpty()) {
            m_cursor.u32(); // always 0
        }
        findUvSets();
        skipColourSets();
    }

    void findUvSets()
    {
        constexpr std::size_t kShortest = 9; // an empty name and two counts
        const std::size_t count = m_cursor.count(kShortest);
        m_parts.currentUvSet = count > 0 ? m_cursor.u32() : 0;
        for (std::size_t i = 0; i < count && !m_cursor.hasFailed(); ++i) {
            UvSetPart set;
            set.name = m_cursor.text();
            set.points = takeGroups(2);
            set.ids = takeWords();
            if (!set.ids.isEmpty() && set.ids.size() != m_parts.corners.size()) {
                note("a mesh has another number of texture coordinates than of corners");
                set.ids = Words(); // which corner has which cannot be told
            }
            if (i < kMaxUvSets) {
                m_parts.uvSets.push_back(set);
            } else {
                note("more sets of texture coordinates than can be kept");
            }
        }
    }

    void skipColourSets()
    {
        constexpr std::size_t kShortest = 13; // an empty name, channels, two counts
        const std::size_t count = m_cursor.count(kShortest);
        if (count > 0) {
            m_cursor.u32(); // the current one
        }
        for (std::size_t i = 0; i < count && !m_cursor.hasFailed(); ++i) {
            m_cursor.text();
            m_cursor.u32();
            takeWords();
            takeWords();
        }
    }

    // --- commands

    SetAttribute commandFor(const PlugStep& step) const
    {
        SetAttribute command;
        command.plug.node = m_node;
        command.plug.steps[0] = step;
        command.plug.stepCount = 1;
        return command;
    }

    SetAttribute commandFor(const PlugStep& outer, const PlugStep& inner) const
    {
        SetAttribute command = commandFor(outer);
        command.plug.steps[command.plug.stepCount++] = inner;
        return command;
    }

    void sendValue(SetAttribute command, Value value)
    {
        std::vector<Value>& values = m_reader.buffers.values;
        values.clear();
        values.push_back(std::move(value));
        command.payload = SetAttribute::Payload::Value;
        command.values = values;
        m_reader.sink.setAttribute(command);
        values.clear();
    }

    /// A whole list in pieces. `load(bytes, elements, target)` makes `width` numbers of the `words`
    /// words of each element.
    template<class T, class Load>
    void sendNumbers(const SetAttribute& command, Words list, std::size_t words, std::size_t width,
                     std::vector<T>& buffer, Load load)
    {
        const std::size_t total = list.size() / words;
        const std::size_t perPiece = kPieceNumbers / width;
        buffer.resize(perPiece * width);
        ValueTask task;
        task.count = total;
        task.command = command;
        task.command.sizeHint = static_cast<std::int64_t>(total);
        setRange(task.command, 0, 1);
        PieceSender pieces(m_reader, task);
        for (std::size_t first = 0; first < total; first += perPiece) {
            const std::size_t count = std::min(perPiece, total - first);
            load(list.from(words * first), count, buffer.data());
            pieces.send(std::span<const T>(buffer).first(count * width), width);
            task.command.sizeHint = -1;
            passProgress(list.from(words * (first + count)));
        }
    }

    void passProgress(const char* position)
    {
        if (!m_isAhead) {
            m_reader.passProgress(static_cast<std::size_t>(position - m_reader.file.data()));
        }
    }

    void sendVectors(const SetAttribute& command, Words list, std::size_t width)
    {
        sendNumbers(command, list, width, width, m_reader.buffers.floats,
                    [width](const char* bytes, std::size_t count, float* target) {
                        loadMany(bytes, count * width, target);
                    });
    }

    void sendVectors(const PlugStep& step, Words list, std::size_t width)
    {
        sendVectors(commandFor(step), list, width);
    }

    void sendEdges()
    {
        sendNumbers(commandFor(stepOf("ed")), m_parts.edges, 2, 3, m_reader.buffers.integers,
                    loadEdges);
    }

    /// Names and coordinates mostly came in chunks of their own, before the block: those are not
    /// sent again.
    void sendUvSets()
    {
        m_isAhead = true; // of the points: their bytes are still wanted
        for (std::size_t i = 0; i < m_parts.uvSets.size(); ++i) {
            if ((m_reader.toldUvSets >> i & 1) != 0) {
                continue;
            }
            const UvSetPart& set = m_parts.uvSets[i];
            const Value name = Value::of(std::string(m_reader.text(set.name)));
            const PlugStep element = stepOf("uvst", i);
            sendValue(commandFor(element, stepOf("uvsn")), name);
            sendVectors(commandFor(element, stepOf("uvsp")), set.points, 2);
            if (i == m_parts.currentUvSet) {
                sendValue(commandFor(stepOf("cuvs")), name);
            }
        }
        m_isAhead = false;
    }

    // --- faces

    void sendFaces()
    {
        const std::size_t closed = closedCorners(m_parts.corners);
        if (closed < m_parts.corners.size()) {
            note("the last face of a mesh has no end");
        }
        m_parts.corners = m_parts.corners.part(0, closed);
        SetAttribute command = commandFor(stepOf("fc"));
        command.payload = SetAttribute::Payload::Faces;
        const std::size_t total = countFaces();
        command.sizeHint = static_cast<std::int64_t>(total);
        std::size_t faces = 0;
        for (std::size_t begin = 0; begin < closed;) {
            const std::size_t end = endOfPiece(m_parts.corners, begin, kPieceCorners);
            loadFaces(begin, end - begin);
            const std::size_t count = m_reader.buffers.faces.faceLoopCounts.size();
            setRange(command, faces, count);
            command.elementsAhead = total - faces;
            command.cornersAhead = closed - begin;
            command.faces = &m_reader.buffers.faces;
            m_reader.sink.setAttribute(command);
            command.sizeHint = -1;
            faces += count;
            begin = end;
            passProgress(m_parts.corners.from(end));
        }
    }

    std::size_t countFaces() const
    {
        std::size_t faces = 0;
        for (std::size_t first = 0; first < m_parts.corners.size(); first += kPieceCorners) {
            const std::size_t count = std::min(kPieceCorners, m_parts.corners.size() - first);
            faces += countEnds(m_parts.corners.part(first, count), kEndsFace);
        }
        return faces;
    }

    void loadFaces(std::size_t begin, std::size_t count)
    {
        const Words words = m_parts.corners.part(begin, count);
        PolyFaces& faces = m_reader.buffers.faces;
        faces.corners.resize(count);
        const std::int32_t highest = loadCorners(words, faces.corners.data());
        if (count > 0 && static_cast<std::size_t>(highest) >= m_parts.edges.size() / 2) {
            note("a face of a mesh refers to an edge that is not there");
        }
        loadRuns(words, faces);
        loadUvIds(begin, count);
    }

    static void loadRuns(Words words, PolyFaces& faces)
    {
        if (areQuads(words)) {
            faces.loopSizes.assign(words.size() / 4, 4);
            faces.faceLoopCounts.assign(words.size() / 4, 1);
            return;
        }
        const std::size_t faceCount = countEnds(words, kEndsFace);
        const std::size_t loopCount = countEnds(words, kEndsLoop | kEndsFace);
        faces.loopSizes.resize(loopCount);
        measureRuns(words, kEndsLoop | kEndsFace, faces.loopSizes.data());
        if (loopCount == faceCount) {
            faces.faceLoopCounts.assign(faceCount, 1);
        } else {
            faces.faceLoopCounts.resize(faceCount);
            countLoops(words, faces.faceLoopCounts.data());
        }
    }

    void loadUvIds(std::size_t begin, std::size_t count)
    {
        std::vector<PolyFaces::UvIds>& sets = m_reader.buffers.faces.uvSets;
        std::size_t used = 0;
        for (std::size_t i = 0; i < m_parts.uvSets.size(); ++i) {
            const Words& ids = m_parts.uvSets[i].ids;
            if (ids.isEmpty()) {
                continue;
            }
            if (used == sets.size()) {
                sets.emplace_back();
            }
            PolyFaces::UvIds& target = sets[used++];
            target.set = static_cast<std::int32_t>(i);
            target.ids.resize(count);
            loadMany(ids.from(begin), count, target.ids.data()); // as many as corners
        }
        sets.resize(used);
    }

    // --- values of components

    /// How many kinds there are depends on the version of Maya.
    void readComponentData()
    {
        for (std::size_t row = 0; !m_cursor.isAtEnd() && !m_cursor.hasFailed(); ++row) {
            const std::uint32_t blocks = m_cursor.u32();
            if (Tag(blocks) == kGeometryTags) {
                skipGeometryTags();
                return;
            }
            if (row == kComponentRows.size()) {
                m_cursor.fail("more values of components than are known");
                return;
            }
            for (std::uint32_t i = 0; i < blocks && !m_cursor.hasFailed(); ++i) {
                readComponentBlock(kComponentRows[row], i);
            }
        }
    }

    void readComponentBlock(const ComponentRow& row, std::size_t number)
    {
        m_cursor.u32(); // kind, always 1
        m_cursor.u32(); // of component
        PolyComponentData data;
        data.domain = row.domain;
        data.indices = m_cursor.numbers<std::uint32_t>(m_cursor.count(4));
        const auto values = m_cursor.numbers<float>(m_cursor.count(4));
        if (m_cursor.hasFailed() || data.indices.empty()) {
            return;
        }
        if (values.size() == data.indices.size()) {
            data.values.assign(values.begin(), values.end());
        } else if (!values.empty()) {
            note("components of a mesh have another number of values than of indices");
        }
        if (m_hasLists) {
            sendValue(commandFor(row.isMulti ? stepOf(row.plug, number) : stepOf(row.plug)),
                      Value::of(std::move(data)));
        }
    }

    void skipGeometryTags()
    {
        constexpr std::size_t kShortest = 5; // an empty name, a count
        m_cursor.u8();
        const std::size_t count = m_cursor.count(kShortest);
        for (std::size_t i = 0; i < count && !m_cursor.hasFailed(); ++i) {
            m_cursor.text();
            takeComponents(m_cursor);
        }
    }

    // --- a mesh as a value

    /// Damage is noted; the mesh has what is left.
    Value meshValue()
    {
        m_parts.corners = m_parts.corners.part(0, closedCorners(m_parts.corners));
        loadFaces(0, m_parts.corners.size());
        PolyFaces faces = std::move(m_reader.buffers.faces);
        m_reader.buffers.faces = {};
        std::vector<std::int32_t> edges(m_parts.edges.size() / 2 * 3);
        loadEdges(m_parts.edges.from(0), edges.size() / 3, edges.data());
        auto points = std::make_shared<std::vector<Vec3f>>(m_parts.points.size() / 3);
        for (std::size_t i = 0; i < points->size(); ++i) {
            const char* const bytes = m_parts.points.from(3 * i);
            (*points)[i] = {load<float>(bytes), load<float>(bytes + 4), load<float>(bytes + 8)};
        }
        geometry::BuiltTopology built = geometry::buildTopology(
            static_cast<std::uint32_t>(points->size()), edges,
            {std::move(faces.corners), faces.loopSizes, faces.faceLoopCounts});
        if (!built.damage.isNone()) {
            note("a mesh has faces or edges that do not fit");
        }
        geometry::MeshData mesh;
        for (PolyFaces::UvIds& ids : faces.uvSets) {
            mesh.uvSets.push_back(uvSetOf(ids, built));
        }
        mesh.currentUvSet = mesh.uvSets.empty() ? std::string() : mesh.uvSets.front().name;
        mesh.topology = std::make_shared<const geometry::MeshTopology>(std::move(built.topology));
        mesh.edgeSmooth = geometry::shareEdgeFlags(std::move(built.edgeSmooth));
        mesh.points = std::move(points);
        return Value::of(std::move(mesh));
    }

    geometry::UvSet uvSetOf(PolyFaces::UvIds& ids, const geometry::BuiltTopology& built)
    {
        const UvSetPart& part = m_parts.uvSets[static_cast<std::size_t>(ids.set)];
        auto points = std::make_shared<std::vector<Vec2f>>(part.points.size() / 2);
        for (std::size_t i = 0; i < points->size(); ++i) {
            const char* const bytes = part.points.from(2 * i);
            (*points)[i] = {load<float>(bytes), load<float>(bytes + 4)};
        }
        geometry::removeCorners(ids.ids, built.damage.droppedCorners,
                                built.topology.corners.size());
        const auto count = static_cast<std::int64_t>(points->size());
        for (std::int32_t& id : ids.ids) {
            id = id < count ? std::max(id, -1) : -1;
        }
        return {std::string(m_reader.text(part.name)), std::move(points),
                std::make_shared<const std::vector<std::int32_t>>(std::move(ids.ids))};
    }

    Reader& m_reader;
    Cursor& m_cursor;
    const SetAttribute& m_command;
    std::string_view m_node;
    bool m_hasLists = true;
    bool m_isAhead = false; ///< what is read lies behind what will be read
    MeshParts m_parts;
    std::string_view m_oddity;
};

} // namespace

void readMesh(Reader& reader, ValueTask& task)
{
    MeshReader(reader, task).read();
}

void rememberUvSet(Reader& reader, const ValueTask& task)
{
    const PlugPath& plug = task.command.plug;
    if (plug.stepCount != 2 || plug.steps[0].name != "uvst" || plug.steps[1].name != "uvsp") {
        return;
    }
    const std::int64_t set = plug.steps[0].first;
    if (set >= 0 && set < static_cast<std::int64_t>(kMaxUvSets) && !task.cursor.hasFailed()) {
        reader.toldUvSets |= std::uint64_t{1} << set;
    }
}

} // namespace host::file::binary
