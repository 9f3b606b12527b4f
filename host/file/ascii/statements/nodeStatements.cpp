// createNode, rename, select, lockNode, parent.
#include "host/file/ascii/statements/statements.h"

#include <span>

namespace host::file::ascii {

void createNode(Reader& reader, const Arguments& arguments)
{
    const std::string_view type = arguments.object(0);
    if (type.empty()) {
        reader.damaged("createNode", "no node type is named");
        return;
    }
    CreateNode command;
    command.type = type;
    command.name = arguments.text("n");
    command.parent = arguments.text("p");
    command.isShared = arguments.isSet("s");
    reader.hasNode = true;
    reader.currentNode = command.name;
    reader.lastType = {};
    reader.sink.createNode(command);
}

void renameNode(Reader& reader, const Arguments& arguments)
{
    if (arguments.has("uid")) {
        reader.sink.uuid(arguments.text("uid"));
        return;
    }
    const auto& objects = arguments.objects();
    if (objects.empty()) {
        reader.damaged("rename", "no name is given");
        return;
    }
    // Commands rename the current node only; files never rename another one.
    if (objects.size() > 1 && objects[0] != reader.currentNode) {
        reader.damaged("rename", "another node than the current one is to be renamed");
        return;
    }
    reader.currentNode = objects.back();
    reader.sink.renameNode(objects.back());
}

void selectNode(Reader& reader, const Arguments& arguments)
{
    if (arguments.objects().empty()) {
        return; // a selection that is cleared leaves the current node
    }
    reader.currentNode = arguments.object(0);
    reader.lastType = {};
    reader.sink.selectNode(arguments.object(0));
}

void lockNode(Reader& reader, const Arguments& arguments)
{
    const bool isOther = !arguments.objects().empty() && arguments.object(0) != reader.currentNode;
    const bool isAboutLocks = arguments.has("l") || !(arguments.has("lu") || arguments.has("ln"));
    if (!isOther && isAboutLocks) {
        reader.sink.lockNode(arguments.state("l") != 0);
    }
}

void parentNodes(Reader& reader, const Arguments& arguments)
{
    const std::span<const std::string_view> objects = arguments.objects();
    ParentNodes command;
    command.isAdded = arguments.isSet("add");
    command.isRemoved = arguments.isSet("rm");
    const bool hasParent = !command.isRemoved && !arguments.isSet("w");
    const std::size_t needed = hasParent ? 2 : 1;
    if (objects.size() < needed) {
        reader.damaged("parent", "a node or its parent is missing");
        return;
    }
    command.nodes = hasParent ? objects.first(objects.size() - 1) : objects;
    command.parent = hasParent ? objects.back() : std::string_view();
    reader.sink.parentNodes(command);
}

} // namespace host::file::ascii
