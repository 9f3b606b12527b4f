// Writes small binary scenes (.mb) for tests: each function gives the bytes of one part, parts are
// joined with +. Shares nothing with the reader.
//
//   const BinaryScene mb(kMaya2019);
//   mb.file(mb.header() + mb.node("XFRM", {"a"}, mb.doubles("t", {1, 2, 3})));
#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace test {

/// What differs from version to version.
struct BinaryManner {
    std::string_view version;
    bool isWide = true;               ///< FOR8 instead of FOR4
    bool hasIds = true;               ///< nodes have ids
    bool hasLongTime = true;          ///< times are 8 bytes, TDUR tells the ticks a second
    bool hasWideFlags = true;         ///< attribute definitions have 32 bits of flags
    std::uint32_t meshComponents = 4; ///< blocks of component data at a mesh's end
    char filler = '\0';               ///< of padding and of the bytes that mean nothing
};

inline constexpr BinaryManner kMaya85{"8.5", false, false, false, false, 1};
inline constexpr BinaryManner kMaya2011{"2011", false, false, false, false, 3};
inline constexpr BinaryManner kMaya2012{"2012", false, false, false, true, 3};
inline constexpr BinaryManner kMaya2015{"2015", true, false, false, true, 3};
inline constexpr BinaryManner kMaya2016{"2016", true, true, false, true, 4};
inline constexpr BinaryManner kMaya2019{"2019", true, true, true, true, 4};

/// The same manner with other bytes where nothing counts.
constexpr BinaryManner withFiller(BinaryManner manner, char filler)
{
    manner.filler = filler;
    return manner;
}

/// The bytes of numbers and texts, one behind the other.
class BinaryBytes {
public:
    BinaryBytes& u8(unsigned value) { return add(value, 1); }
    BinaryBytes& u16(unsigned value) { return add(value, 2); }
    BinaryBytes& u32(std::uint64_t value) { return add(value, 4); }
    BinaryBytes& i32(std::int64_t value) { return add(static_cast<std::uint64_t>(value), 4); }
    BinaryBytes& u64(std::uint64_t value) { return add(value, 8); }
    BinaryBytes& i64(std::int64_t value) { return add(static_cast<std::uint64_t>(value), 8); }
    BinaryBytes& f32(float value) { return add(std::bit_cast<std::uint32_t>(value), 4); }
    BinaryBytes& f64(double value) { return add(std::bit_cast<std::uint64_t>(value), 8); }
    BinaryBytes& f64s(const std::vector<double>& values)
    {
        for (const double value : values) {
            f64(value);
        }
        return *this;
    }
    /// A text with its zero byte.
    BinaryBytes& text(std::string_view value) { return raw(value).u8(0); }
    BinaryBytes& raw(std::string_view bytes)
    {
        m_bytes += bytes;
        return *this;
    }
    /// A count and as many numbers.
    BinaryBytes& counted(const std::vector<float>& values)
    {
        u32(values.size());
        for (const float value : values) {
            f32(value);
        }
        return *this;
    }
    template<class Integer>
    BinaryBytes& counted(const std::vector<Integer>& values)
    {
        u32(values.size());
        for (const Integer value : values) {
            u32(static_cast<std::uint32_t>(value));
        }
        return *this;
    }

    const std::string& bytes() const { return m_bytes; }
    operator const std::string&() const { return m_bytes; }
    operator std::string_view() const { return m_bytes; }

private:
    BinaryBytes& add(std::uint64_t value, unsigned count)
    {
        for (unsigned i = count; i-- > 0;) {
            m_bytes += static_cast<char>(value >> (8 * i) & 0xff);
        }
        return *this;
    }

    std::string m_bytes;
};

/// Flags of an attribute's value.
enum BinaryFlags : unsigned {
    kMbLocked = 0x01,
    kMbKeyable = 0x04,
    kMbSized = 0x08, ///< set by the functions below where they are given a size
    kMbChannelBox = 0x10,
    kMbCached = 0x20 ///< as nearly all have
};

/// Flags of a node that is created.
enum BinaryNodeFlags : unsigned {
    kMbShared = 0x01,
    kMbDag = 0x04,
    kMbTransform = 0x08,
    kMbLockedNode = 0x10
};

/// An attribute as a value's chunk names it.
struct BinaryPlug {
    std::string name;
    unsigned flags = kMbCached;
    std::optional<std::uint32_t> size = std::nullopt;

    BinaryPlug(const char* plug) : name(plug) {}
    BinaryPlug(std::string plug, unsigned allFlags = kMbCached,
               std::optional<std::uint32_t> arraySize = std::nullopt)
        : name(std::move(plug)), flags(allFlags), size(arraySize)
    {
    }
};

struct BinaryNode {
    std::string name;
    std::string parent = {}; ///< empty: none
    unsigned flags = kMbDag;
    std::array<std::uint8_t, 16> id{}; ///< as the file holds it; left out in old manners
};

/// A dynamic attribute. Flags that belong to a member are set when it has a value.
struct BinaryDefinition {
    std::string kind; ///< "aDBL", "aTYP", ...
    std::string longName;
    std::string shortName;
    unsigned flags = 0x00f84000; ///< keyable; the high half is dropped where flags are short
    std::uint32_t children = 0;
    std::string parent = {};
    std::string niceName = {};
    std::string enumNames = {};
    std::vector<std::string> types = {std::string(4, '\0')};
    std::optional<double> least = std::nullopt;
    std::optional<double> most = std::nullopt;
    std::optional<double> softLeast = std::nullopt;
    std::optional<double> softMost = std::nullopt;
    std::optional<double> initial = std::nullopt;
    std::string initialBytes = {}; ///< instead of `initial`: tag and bytes
};

struct BinaryMesh {
    struct Edge {
        std::uint32_t start;
        std::uint32_t end;
        bool isHard = false;
    };
    /// Loops of edges as in text: -1 - edge is walked backwards. The first one is the face.
    using Face = std::vector<std::vector<std::int32_t>>;
    struct Set {
        std::string name;
        std::vector<float> numbers;
        std::vector<std::int32_t> corners = {}; ///< one id per corner, -1: none
        std::uint32_t channels = 4;             ///< of colours
    };
    std::vector<float> points;
    std::vector<Edge> edges;
    std::vector<Face> faces;
    std::vector<float> normals = {};
    std::vector<Set> uvSets = {};
    std::vector<Set> colorSets = {};
    std::string components = {}; ///< the blocks' bytes; empty: as many empty ones as the manner has
    std::string tags = {};       ///< "gtag" and what follows
};

/// One kind of a component list: all ranges, first and last per dimension.
struct BinaryComponents {
    std::string kind;
    std::vector<std::vector<std::int32_t>> ranges;
};

class BinaryScene {
public:
    BinaryManner manner;

    explicit BinaryScene(const BinaryManner& ofVersion) : manner(ofVersion) {}

    // ---- container

    std::string padding(std::size_t size) const
    {
        const std::size_t unit = manner.isWide ? 8 : 4;
        return std::string((unit - size % unit) % unit, manner.filler);
    }
    /// The heading of a chunk that says it has `size` bytes.
    std::string heading(std::string_view tag, std::uint64_t size) const
    {
        BinaryBytes bytes;
        bytes.raw(tag);
        return manner.isWide ? bytes.raw(std::string(4, manner.filler)).u64(size) : bytes.u32(size);
    }
    std::string leaf(std::string_view tag, std::string_view payload) const
    {
        return heading(tag, payload.size()) + std::string(payload) + padding(payload.size());
    }
    /// `sort`: FOR, LIS, CAT or PRO.
    std::string group(std::string_view kind, std::string_view children,
                      std::string_view sort = "FOR") const
    {
        const std::string tag = std::string(sort) + (manner.isWide ? '8' : '4');
        return heading(tag, kind.size() + children.size()) + std::string(kind) +
               std::string(children);
    }
    std::string file(std::string_view groups) const { return group("Maya", groups); }

    // ---- header

    std::string header(std::string_view more = {}, std::string_view linear = "cm",
                       std::string_view time = "film") const
    {
        std::string chunks = leaf("VERS", manner.version);
        for (const char* tag : {"UVER", "MADE", "CHNG", "ICON", "INFO", "OBJN", "INCL"}) {
            chunks += leaf(tag, "undef");
        }
        chunks += leaf("LUNI", linear) + leaf("TUNI", time) + leaf("AUNI", "deg");
        if (manner.hasLongTime) {
            chunks += leaf("TDUR", "141120000");
        }
        return group("HEAD", chunks + std::string(more));
    }
    std::string fileInfo(std::string_view key, std::string_view value) const
    {
        return leaf("FINF", BinaryBytes().text(key).text(value).bytes());
    }
    /// `types`: of nodes, and their codes of four bytes.
    std::string plugin(std::string_view name, std::string_view version,
                       const std::vector<std::pair<std::string, std::uint32_t>>& types = {}) const
    {
        BinaryBytes bytes;
        bytes.text(name).text(version);
        if (manner.isWide) {
            bytes.text("");
            for (const auto& [type, code] : types) {
                bytes.text(type).u32(code);
            }
        }
        return leaf("PLUG", bytes.bytes());
    }
    std::string trailer(std::uint32_t nodes = 1) const
    {
        std::string chunks = leaf("OBJN", std::to_string(nodes)) + leaf("INCL", "undef(");
        if (manner.isWide) {
            chunks += leaf("BCSZ", BinaryBytes().u32(68).bytes());
        }
        return group("HEAD", chunks);
    }

    // ---- nodes

    std::string created(const BinaryNode& node) const
    {
        BinaryBytes bytes;
        const bool hasParent = !node.parent.empty();
        bytes.u8(node.flags | (manner.hasIds && !hasParent ? 0x80u : 0u)).text(node.name);
        if (hasParent) {
            bytes.text(node.parent);
        }
        if (manner.hasIds) {
            for (const std::uint8_t byte : node.id) {
                bytes.u8(byte);
            }
        }
        return leaf("CREA", bytes.bytes());
    }
    std::string node(std::string_view code, const BinaryNode& node,
                     std::string_view values = {}) const
    {
        return group(code, created(node) + std::string(values));
    }
    /// Values of a node that every scene has; its name begins with a colon.
    std::string selected(std::string_view name, std::string_view values = {}) const
    {
        return group("SLCT", leaf("SLCT", name) + std::string(values));
    }

    std::string definition(const BinaryDefinition& attribute) const
    {
        unsigned flags = attribute.flags;
        flags |= attribute.least ? 0x2u : 0u;
        flags |= attribute.most ? 0x4u : 0u;
        flags |= attribute.initial || !attribute.initialBytes.empty() ? 0x8u : 0u;
        flags |= attribute.children != 0 ? 0x10u : 0u;
        flags |= attribute.parent.empty() ? 0u : 0x20u;
        flags |= attribute.enumNames.empty() ? 0u : 0x200u;
        flags |= attribute.softLeast ? 0x800u : 0u;
        flags |= attribute.softMost ? 0x1000u : 0u;
        flags |= attribute.niceName.empty() ? 0u : 0x8000u;
        BinaryBytes bytes;
        bytes.raw(attribute.kind);
        manner.hasWideFlags ? bytes.u32(flags) : bytes.u16(flags & 0xffff);
        if (attribute.children != 0) {
            bytes.u32(attribute.children);
        }
        bytes.u32(attribute.types.size());
        for (const std::string& type : attribute.types) {
            bytes.raw(type);
        }
        bytes.text(attribute.longName).text(attribute.shortName);
        for (const std::string* text :
             {&attribute.parent, &attribute.niceName, &attribute.enumNames}) {
            if (!text->empty()) {
                bytes.text(*text);
            }
        }
        bytes.raw(std::string(4, manner.filler));
        for (const std::optional<double>& limit :
             {attribute.least, attribute.most, attribute.softLeast, attribute.softMost}) {
            if (limit) {
                bytes.f64(*limit);
            }
        }
        if (!attribute.initialBytes.empty()) {
            bytes.raw(attribute.initialBytes);
        } else if (attribute.initial) {
            bytes.raw("DBLE").f64(*attribute.initial);
        }
        return leaf("ATTR", bytes.bytes());
    }

    // ---- values

    /// Any value: what follows name, flags and size is `payload`.
    std::string value(std::string_view tag, const BinaryPlug& plug,
                      std::string_view payload = {}) const
    {
        BinaryBytes bytes;
        bytes.text(plug.name).u8(plug.flags | (plug.size ? kMbSized : 0u));
        if (plug.size) {
            bytes.u32(*plug.size);
        }
        return leaf(tag, bytes.raw(payload).bytes());
    }
    std::string flags(const BinaryPlug& plug) const { return value("FLGS", plug); }
    std::string number(const BinaryPlug& plug, double number) const
    {
        return value("DBLE", plug, BinaryBytes().f64(number).bytes());
    }
    /// DBLE, DBL2, DBL3 or DBL4 by `width`.
    std::string doubles(const BinaryPlug& plug, const std::vector<double>& numbers,
                        std::size_t width = 3) const
    {
        const std::string tag = width == 1 ? "DBLE" : "DBL" + std::to_string(width);
        return value(tag, plug, BinaryBytes().f64s(numbers).bytes());
    }
    std::string floats(const BinaryPlug& plug, const std::vector<float>& numbers,
                       std::size_t width = 3) const
    {
        BinaryBytes bytes;
        for (const float number : numbers) {
            bytes.f32(number);
        }
        return value("FLT" + std::to_string(width), plug, bytes.bytes());
    }
    std::string shorts(const BinaryPlug& plug, const std::vector<int>& numbers,
                       std::size_t width = 2) const
    {
        BinaryBytes bytes;
        for (const int number : numbers) {
            bytes.u16(static_cast<unsigned>(number) & 0xffff);
        }
        return value("SRT" + std::to_string(width), plug, bytes.bytes());
    }
    std::string longs(const BinaryPlug& plug, const std::vector<std::int32_t>& numbers,
                      std::size_t width = 2) const
    {
        BinaryBytes bytes;
        for (const std::int32_t number : numbers) {
            bytes.i32(number);
        }
        return value("LNG" + std::to_string(width), plug, bytes.bytes());
    }
    std::string compound(const BinaryPlug& plug, const std::vector<double>& members) const
    {
        return value("CMPD", plug, BinaryBytes().f64s(members).bytes());
    }
    /// A time in ticks of the file: 6000 a second, or those of TDUR.
    BinaryBytes time(std::int64_t ticks) const
    {
        BinaryBytes bytes;
        manner.hasLongTime ? bytes.i64(ticks) : bytes.i32(ticks);
        return bytes;
    }
    std::string times(const BinaryPlug& plug, std::int64_t ticks) const
    {
        return value("DBLE", plug, time(ticks).bytes());
    }
    /// Keys of an animation curve: times in ticks and values.
    std::string keys(const BinaryPlug& plug,
                     const std::vector<std::pair<std::int64_t, double>>& keys) const
    {
        std::string payload;
        for (const auto& [ticks, number] : keys) {
            payload += time(ticks).bytes() + BinaryBytes().f64(number).bytes();
        }
        return value("CMPD", plug, payload);
    }
    /// Rows of (inner index, number); the plug has a range in front ("wl[0:1].w").
    std::string sparse(const BinaryPlug& plug,
                       const std::vector<std::vector<std::pair<std::uint32_t, double>>>& rows) const
    {
        BinaryBytes bytes;
        for (const auto& row : rows) {
            bytes.u32(row.size());
            for (const auto& [index, number] : row) {
                bytes.u32(index).f64(number);
            }
        }
        return value("DBLE", BinaryPlug(plug.name, 0u), bytes.bytes());
    }
    std::string string(const BinaryPlug& plug, std::string_view text) const
    {
        return value("STR ", plug, BinaryBytes().text(text).bytes());
    }
    std::string strings(const BinaryPlug& plug, const std::vector<std::string>& texts,
                        std::string_view tag = "STR#") const
    {
        BinaryBytes bytes;
        bytes.u32(texts.size());
        for (const std::string& text : texts) {
            bytes.text(text);
        }
        return value(tag, plug, bytes.bytes());
    }
    /// Alias, attribute, alias, attribute, ...
    std::string aliases(const BinaryPlug& plug, const std::vector<std::string>& texts) const
    {
        return strings(plug, texts, "ATAL");
    }
    /// 16 numbers, row after row.
    std::string matrix(const BinaryPlug& plug, const std::vector<double>& numbers) const
    {
        return value("MATR", plug, BinaryBytes().f64s(numbers).bytes());
    }
    std::string components(const BinaryPlug& plug,
                           const std::vector<BinaryComponents>& entries) const
    {
        return value("CMP#", plug, componentList(entries));
    }
    static std::string componentList(const std::vector<BinaryComponents>& entries)
    {
        BinaryBytes bytes;
        bytes.u32(entries.size());
        for (const BinaryComponents& entry : entries) {
            bytes.raw(entry.kind).u32(entry.ranges.size());
            for (const auto& range : entry.ranges) {
                for (const std::int32_t index : range) {
                    bytes.i32(index);
                }
            }
        }
        return bytes;
    }
    /// Points are x, y, z, w.
    std::string lattice(const BinaryPlug& plug, unsigned s, unsigned t, unsigned u,
                        const std::vector<double>& points) const
    {
        return value("LATT", plug, BinaryBytes().u16(s).u16(t).u16(u).f64s(points).bytes());
    }
    std::string curve(const BinaryPlug& plug, std::uint32_t degree, std::uint32_t spans,
                      std::uint32_t form, const std::vector<double>& knots,
                      const std::vector<double>& points, std::uint32_t dimension = 3) const
    {
        BinaryBytes bytes;
        bytes.u32(degree).u32(spans).u32(form).u8(0).u32(dimension);
        bytes.u32(knots.size()).f64s(knots);
        bytes.u32(points.size() / dimension).f64s(points);
        return value("NRBC", plug, bytes.bytes());
    }
    /// An open surface; points are x, y, z, rows of constant u.
    std::string surface(const BinaryPlug& plug, std::uint32_t degreeU, std::uint32_t degreeV,
                        const std::vector<double>& knotsU, const std::vector<double>& knotsV,
                        const std::vector<double>& points) const
    {
        BinaryBytes bytes;
        bytes.u32(degreeU).u32(degreeV);
        bytes.u32(knotsU.size() + 1 - 2 * degreeU).u32(knotsV.size() + 1 - 2 * degreeV);
        bytes.u32(0).u32(0).u8(0).u32(3);
        bytes.u32(knotsU.size()).f64s(knotsU).u32(knotsV.size()).f64s(knotsV);
        bytes.u32(points.size() / 3).f64s(points).raw("N");
        return value("NRBS", plug, bytes.bytes());
    }
    std::string mesh(const BinaryPlug& plug, const BinaryMesh& mesh) const
    {
        return value("MESH", plug, meshBlock(mesh));
    }
    std::string meshBlock(const BinaryMesh& mesh) const
    {
        BinaryBytes bytes;
        bytes.counted(mesh.points).u32(2 * mesh.edges.size());
        for (const BinaryMesh::Edge& edge : mesh.edges) {
            bytes.u32(edge.start | (edge.isHard ? 0x80000000u : 0u)).u32(edge.end);
        }
        bytes.counted(faceCorners(mesh)).counted(mesh.normals);
        if (!mesh.normals.empty()) {
            bytes.u32(0);
        }
        addSets(bytes, mesh.uvSets, false);
        addSets(bytes, mesh.colorSets, true);
        if (mesh.components.empty()) {
            bytes.raw(std::string(std::size_t{4} * manner.meshComponents, '\0'));
        }
        return bytes.raw(mesh.components).raw(mesh.tags);
    }

    // ---- connections and the like

    /// The list of all connections.
    std::string connections(std::string_view chunks) const
    {
        return group("CONS", group("CONN", chunks), "LIS");
    }
    /// `flags`: 1 next available, 2 locked.
    std::string connection(std::string_view source, std::string_view destination,
                           unsigned flags = 0) const
    {
        return leaf("CWFL", BinaryBytes().u8(flags).text(source).text(destination).bytes());
    }
    std::string relationship(std::string_view kind, std::string_view node,
                             const std::vector<std::string>& plugs) const
    {
        BinaryBytes bytes;
        bytes.text(kind).text(node).u32(plugs.size());
        for (const std::string& plug : plugs) {
            bytes.text(plug);
        }
        return leaf("RELA", bytes.bytes());
    }
    /// An instance of `path` below `parent`.
    std::string instance(std::string_view path, std::string_view parent) const
    {
        return group("PING", leaf("PRNT", BinaryBytes().u8(2).text(path).text(parent).bytes()));
    }
    /// An entry of the list of references: group and chunk are called FRDI.
    std::string listedReference(std::string_view path, std::string_view nameSpace,
                                std::string_view node, bool isDeferred = false) const
    {
        BinaryBytes bytes;
        bytes.u32(1).text(path).text(nameSpace).u8(1).u8(isDeferred ? 1 : 0).text(node);
        bytes.raw(std::string(3, '\0')).text("").text("mayaBinary").u8(0);
        return group("FRDI", leaf("FRDI", bytes.bytes()));
    }
    /// A reference that is loaded.
    std::string reference(std::string_view path, std::string_view nameSpace, std::string_view node,
                          bool isDeferred = false) const
    {
        BinaryBytes bytes;
        bytes.text(path).text(nameSpace).u8(1).u8(isDeferred ? 1 : 0).text(node);
        bytes.raw(std::string(8, '\0')).text("").text("mayaBinary").u8(0);
        return group("FREF", leaf("FREF", bytes.bytes()));
    }

private:
    /// Bit 31: walked backwards, 30: the loop's last, 29: the face's last.
    static std::vector<std::uint32_t> faceCorners(const BinaryMesh& mesh)
    {
        std::vector<std::uint32_t> corners;
        for (const BinaryMesh::Face& face : mesh.faces) {
            for (const std::vector<std::int32_t>& loop : face) {
                for (const std::int32_t edge : loop) {
                    corners.push_back(edge < 0 ? 0x80000000u | static_cast<std::uint32_t>(-1 - edge)
                                               : static_cast<std::uint32_t>(edge));
                }
                corners.back() |= 0x40000000u;
            }
            corners.back() |= 0x20000000u;
        }
        return corners;
    }
    static void addSets(BinaryBytes& bytes, const std::vector<BinaryMesh::Set>& sets,
                        bool areColors)
    {
        bytes.u32(sets.size());
        if (!sets.empty()) {
            bytes.u32(0); // the current one
        }
        for (const BinaryMesh::Set& set : sets) {
            bytes.text(set.name);
            if (areColors) {
                bytes.u32(set.channels);
            }
            bytes.counted(set.numbers).counted(set.corners);
        }
    }
};

} // namespace test
