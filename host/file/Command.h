// The commands that a scene consists of. Readers of every format speak them, listeners carry them
// out, print or count them. All numbers are in internal units: centimetres, radians, ticks. All
// texts are UTF-8. Views live until the call returns.
#pragma once

#include "host/types/PlugPath.h"
#include "host/types/PlugShape.h"
#include "host/types/Value.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace host::file {

/// Where a command stands: line and column (from 1) in a text, or a byte offset.
struct Place {
    std::uint64_t line = 0; ///< 0: `offset` counts
    std::uint64_t column = 0;
    std::uint64_t offset = 0;
    /// "line 12, column 3" or "offset 0x1f40".
    std::string text() const;
};

struct Units {
    std::string_view linear = "cm";
    std::string_view angular = "deg";
    std::string_view time = "film";
    /// The numbers of attributes that nobody knows are in internal units as well.
    bool areForDisplay = false;
};

struct Reference {
    std::string_view path;
    std::string_view nodeName;      ///< of the reference node
    std::string_view nameSpace;     ///< or the renaming prefix
    bool isTableOfContents = false; ///< an entry of the list of references, not a load
    bool isDeferred = false;
};

struct CreateNode {
    std::string_view type;
    std::string_view name;   ///< empty: to be invented
    std::string_view parent; ///< name, partial or full path; empty: the world, for DAG types
    bool isShared = false;
};

struct AddAttribute {
    std::string_view longName;
    std::string_view shortName; ///< empty: the long name
    std::string_view parent;    ///< of a child; empty: none
    AttributeKind kind = AttributeKind::Double;
    bool isMulti = false;
    double initial = 0; ///< internal units
    std::int32_t childCount = 0;
};

/// Flags of a setAttr; -1 not given, else 0 or 1.
struct AttributeFlags {
    std::int8_t isKeyable = -1;
    std::int8_t isLocked = -1;
    std::int8_t isInChannelBox = -1;
};

/// Numbers for `count()` consecutive elements from the plug's first index on (or for the plug
/// itself): exactly one of the three spans is used, by `storage`.
struct NumberBlock {
    NumberStorage storage = NumberStorage::Double;
    std::size_t width = 1;
    std::span<const float> floats;
    std::span<const double> doubles;
    std::span<const std::int32_t> integers;
    std::size_t numberCount() const { return floats.size() + doubles.size() + integers.size(); }
    std::size_t count() const { return numberCount() / width; }
};

/// One run of a sparse inner multi: outer element, inner index, number (".wl[0:1].w"  2 0 0.857 1
/// 0.143 ...).
struct SparseNumber {
    std::uint32_t outer = 0;
    std::uint32_t inner = 0;
    double number = 0;
};

struct SetAttribute {
    enum class Payload : std::uint8_t {
        None,          ///< only flags or a size hint
        Numbers,       ///< `numbers`
        SparseNumbers, ///< `sparse`: elements of a multi inside a multi
        Faces,         ///< `faces`: appended to the plug's faces from index `plug.last().first` on
        Value          ///< `values`: one per element of the plug's range (one for a plug without)
    };
    PlugPath plug;
    AttributeFlags flags;
    std::int64_t sizeHint = -1;
    Payload payload = Payload::None;
    NumberBlock numbers;
    std::span<const SparseNumber> sparse;
    PolyFaces* faces = nullptr; ///< the listener may move it away
    /// What this command and those that go on with it bring in all, where the reader has seen it
    /// (else 0): memory for it can be taken at once.
    std::size_t elementsAhead = 0;
    std::size_t cornersAhead = 0; ///< of faces
    std::span<Value> values;      ///< the listener may move them away
};

struct Connection {
    std::string_view source;
    std::string_view destination;
    bool isNextAvailable = false;
    bool isForced = false;
};

struct ParentNodes {
    std::span<const std::string_view> nodes; ///< to be parented
    std::string_view parent;                 ///< empty: the world
    bool isAdded = false;   ///< a further parent (an instance) instead of another one
    bool isRemoved = false; ///< the parent is taken away (-removeObject)
};

/// The listener to a scene's commands, in file order. Nothing here fails: what cannot be carried
/// out is the listener's to report.
class CommandSink {
public:
    virtual ~CommandSink() = default;

    /// The place of the command that follows.
    virtual void at(const Place& place) = 0;

    virtual void requirePlugin(std::string_view plugin, std::string_view version,
                               std::span<const std::string_view> nodeTypes) = 0;
    virtual void currentUnit(const Units& units) = 0;
    virtual void fileInfo(std::string_view key, std::string_view value) = 0;
    virtual void reference(const Reference& reference) = 0;

    virtual void createNode(const CreateNode& command) = 0;
    virtual void renameNode(std::string_view newName) = 0; ///< the current node
    virtual void uuid(std::string_view uuid) = 0;          ///< of the current node
    virtual void selectNode(std::string_view name) = 0;    ///< makes it the current one
    virtual void parentNodes(const ParentNodes& command) = 0;
    virtual void lockNode(bool isLocked) = 0;

    virtual void addAttribute(const AddAttribute& command) = 0;
    /// What a plug takes, seen from the current node; asked once per setAttr with values, before
    /// they are read.
    virtual PlugShape shapeOf(const PlugPath& plug) = 0;
    virtual void setAttribute(const SetAttribute& command) = 0;
    virtual void connect(const Connection& command) = 0;
    virtual void disconnect(const Connection& command) = 0;

    /// A statement or chunk that means nothing here; skipped whole.
    virtual void unknown(std::string_view word) = 0;
    /// A statement or chunk that could not be read: `reason` begins lower case.
    virtual void damaged(std::string_view word, std::string_view reason) = 0;

    virtual void endOfScene() = 0;
};

} // namespace host::file
