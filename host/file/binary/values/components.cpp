// Lists of components: for each kind its ranges.
#include "host/file/binary/values/eachElement.h"

#include <algorithm>
#include <iterator>

namespace host::file::binary {
namespace {

struct KindRow {
    Tag tag;
    std::string_view name;
    std::size_t dimensions;
};

// clang-format off
constexpr KindRow kKinds[] = {
    {"CCCV", "cv",   1},
    {"CCEP", "ep",   1},
    {"CCKN", "knot", 1},
    {"CLAT", "pt",   3},
    {"CMDE", "e",    1},
    {"CMDF", "f",    1},
    {"CMDM", "map",  1},
    {"CMDV", "vtx",  1},
    {"CSCV", "cv",   2},
};
// clang-format on

constexpr std::size_t kRangeBytes = 2 * sizeof(std::int32_t);

/// "[2]", "[2:5]", or "[*]" for all.
std::string takeRange(Cursor& cursor)
{
    const std::int32_t first = cursor.i32();
    const std::int32_t last = cursor.i32();
    if (first == -1) {
        return "[*]";
    }
    if (first < 0 || last < first) {
        cursor.fail("a range of components from " + std::to_string(first) + " to " +
                    std::to_string(last));
        return {};
    }
    const std::string end = last == first ? "]" : ":" + std::to_string(last) + "]";
    return "[" + std::to_string(first) + end;
}

void takeEntry(Cursor& cursor, std::vector<std::string>& components)
{
    const Tag tag = cursor.tag();
    const KindRow* const row = std::find_if(std::begin(kKinds), std::end(kKinds),
                                            [&](const KindRow& each) { return each.tag == tag; });
    if (row == std::end(kKinds)) {
        cursor.fail("component kind " + tag.text());
        return;
    }
    const std::size_t count = cursor.count(row->dimensions * kRangeBytes);
    for (std::size_t i = 0; i < count && !cursor.hasFailed(); ++i) {
        std::string& text = components.emplace_back(row->name);
        for (std::size_t k = 0; k < row->dimensions; ++k) {
            text += takeRange(cursor);
        }
    }
}

} // namespace

std::vector<std::string> takeComponents(Cursor& cursor)
{
    constexpr std::size_t kShortestEntry = 2 * sizeof(std::uint32_t);
    std::vector<std::string> components;
    const std::size_t entries = cursor.count(kShortestEntry);
    for (std::size_t i = 0; i < entries && !cursor.hasFailed(); ++i) {
        takeEntry(cursor, components);
    }
    return components;
}

void readComponents(Reader& reader, ValueTask& task)
{
    sendEachElement(reader, task,
                    [](Cursor& cursor) { return ComponentList{takeComponents(cursor)}; });
}

} // namespace host::file::binary
