// requires, currentUnit, fileInfo, file.
#include "host/file/ascii/statements/statements.h"
#include "host/math/units.h"

#include <string>

namespace host::file::ascii {
namespace {

void reportUnit(Reader& reader, std::string_view kind, std::string_view word)
{
    const std::string reason =
        "unknown " + std::string(kind) + " unit '" + std::string(word.substr(0, 40)) + "'";
    reader.damaged("currentUnit", reason);
}

} // namespace

void requirePlugin(Reader& reader, const Arguments& arguments)
{
    const std::vector<std::string_view> nodeTypes = arguments.texts("nodeType");
    reader.sink.requirePlugin(arguments.object(0), arguments.object(1), nodeTypes);
}

void currentUnit(Reader& reader, const Arguments& arguments)
{
    if (arguments.has("l")) {
        const std::string_view word = arguments.text("l");
        if (const auto unit = findLinearUnit(word)) {
            reader.linearUnit = word;
            reader.scales.linear = unit->centimetres;
        } else {
            reportUnit(reader, "linear", word);
        }
    }
    if (arguments.has("a")) {
        const std::string_view word = arguments.text("a");
        if (const auto radians = findAngularUnit(word)) {
            reader.angularUnit = word;
            reader.scales.angular = *radians;
        } else {
            reportUnit(reader, "angular", word);
        }
    }
    if (arguments.has("t")) {
        const std::string_view word = arguments.text("t");
        if (const auto ticks = findTimeUnit(word)) {
            reader.timeUnit = word;
            reader.scales.time = *ticks;
        } else {
            reportUnit(reader, "time", word);
        }
    }
    reader.sink.currentUnit({reader.linearUnit, reader.angularUnit, reader.timeUnit});
}

void fileInfo(Reader& reader, const Arguments& arguments)
{
    if (!arguments.has("rm") && !arguments.objects().empty()) {
        reader.sink.fileInfo(arguments.object(0), arguments.object(1));
    }
}

void referenceFile(Reader& reader, const Arguments& arguments)
{
    Reference reference;
    reference.isTableOfContents = arguments.has("rdi");
    if (!reference.isTableOfContents && !arguments.has("r")) {
        reader.sink.unknown("file"); // imports, exports and the like are no part of scenes
        return;
    }
    if (arguments.objects().empty()) {
        reader.damaged("file", "no path is given");
        return;
    }
    reference.path = arguments.objects().back();
    reference.nodeName = arguments.text("rfn");
    reference.nameSpace = arguments.text("ns", arguments.text("rpr"));
    reference.isDeferred = arguments.isSet("dr");
    reader.sink.reference(reference);
}

} // namespace host::file::ascii
