// Texts, lists of texts, and what is told as text.
#include "host/file/PayloadText.h"
#include "host/file/binary/values/eachElement.h"

#include <algorithm>
#include <array>

namespace host::file::binary {
namespace {

constexpr std::size_t kMaxOpaqueBytes = std::size_t{1} << 20; ///< what is longer is cut

std::vector<std::string> countedTexts(Reader& reader, Cursor& cursor)
{
    std::vector<std::string> texts;
    const std::size_t count = cursor.count(1);
    for (std::size_t i = 0; i < count && !cursor.hasFailed(); ++i) {
        texts.emplace_back(reader.text(cursor.text()));
    }
    return texts;
}

/// Collects words and strings as statements have them.
class OpaqueWriter {
public:
    OpaqueWriter(Reader& reader, std::string_view type) : m_reader(reader) { m_opaque.type = type; }

    void add(std::uint32_t number) { append(std::to_string(number)); }
    void add(std::string_view raw) { append(quotedText(m_reader.text(raw))); }
    OpaqueText take() { return std::move(m_opaque); }

private:
    void append(std::string_view word)
    {
        std::string& text = m_opaque.text;
        if (text.size() >= kMaxOpaqueBytes) {
            return;
        }
        text += text.empty() ? "" : " ";
        text += word.substr(0, kMaxOpaqueBytes - std::min(text.size(), kMaxOpaqueBytes));
    }

    Reader& m_reader;
    OpaqueText m_opaque;
};

struct EditRow {
    std::uint32_t kind;
    std::uint32_t variant; ///< of a placeholder's edit
    std::size_t texts;
};

constexpr std::uint32_t kPlaceholder = 5;

/// The edits that files were seen to have.
constexpr std::array<EditRow, 5> kEdits{{
    {2, 0, 3}, // setAttr
    {3, 0, 3}, // connectAttr, disconnectAttr
    {kPlaceholder, 0, 6},
    {kPlaceholder, 3, 4},
    {kPlaceholder, 4, 4},
}};

void takeEdit(Cursor& cursor, OpaqueWriter& writer)
{
    const std::uint32_t kind = cursor.u32();
    const std::uint32_t variant = kind == kPlaceholder ? cursor.u32() : 0;
    const auto row = std::find_if(kEdits.begin(), kEdits.end(), [&](const EditRow& each) {
        return each.kind == kind && each.variant == variant;
    });
    if (row == kEdits.end()) {
        cursor.fail("a reference edit of kind " + std::to_string(kind));
        return;
    }
    writer.add(kind);
    if (kind == kPlaceholder) {
        writer.add(variant);
    }
    for (std::size_t i = 0; i < row->texts; ++i) {
        writer.add(cursor.text());
    }
}

/// For each reference its node and its edits.
void takeEdits(Cursor& cursor, OpaqueWriter& writer)
{
    constexpr std::size_t kShortestReference = 1 + sizeof(std::uint32_t);
    constexpr std::size_t kShortestEdit = sizeof(std::uint32_t) + 3;
    const std::size_t references = cursor.count(kShortestReference);
    for (std::size_t i = 0; i < references && !cursor.hasFailed(); ++i) {
        writer.add(cursor.text());
        const std::size_t edits = cursor.count(kShortestEdit);
        writer.add(static_cast<std::uint32_t>(edits));
        for (std::size_t k = 0; k < edits && !cursor.hasFailed(); ++k) {
            takeEdit(cursor, writer);
        }
    }
}

} // namespace

void readString(Reader& reader, ValueTask& task)
{
    sendEachElement(reader, task,
                    [&](Cursor& cursor) { return std::string(reader.text(cursor.text())); });
}

void readStringArray(Reader& reader, ValueTask& task)
{
    sendEachElement(reader, task, [&](Cursor& cursor) { return countedTexts(reader, cursor); });
}

void readAttributeAlias(Reader& reader, ValueTask& task)
{
    sendEachElement(reader, task, [&](Cursor& cursor) { return countedTexts(reader, cursor); });
}

void readCharacterMap(Reader& reader, ValueTask& task)
{
    sendEachElement(reader, task, [&](Cursor& cursor) {
        constexpr std::size_t kShortestMember = 1 + 1 + sizeof(std::uint32_t);
        OpaqueWriter writer(reader, "characterMapping");
        const std::size_t members = cursor.count(kShortestMember);
        writer.add(static_cast<std::uint32_t>(members));
        for (std::size_t i = 0; i < members && !cursor.hasFailed(); ++i) {
            writer.add(cursor.text());
            writer.add(std::uint32_t{cursor.u8()});
            writer.add(cursor.u32());
        }
        return writer.take();
    });
}

void readReferenceEdits(Reader& reader, ValueTask& task)
{
    sendEachElement(reader, task, [&](Cursor& cursor) {
        OpaqueWriter writer(reader, "dataReferenceEdits");
        writer.add(cursor.text());
        takeEdits(cursor, writer); // those that failed
        takeEdits(cursor, writer);
        return writer.take();
    });
}

} // namespace host::file::binary
