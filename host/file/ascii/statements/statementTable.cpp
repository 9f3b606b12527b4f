#include "host/file/ascii/statements/statements.h"

#include <algorithm>
#include <array>

namespace host::file::ascii {
namespace {

using enum FlagValue;

// Flags without dash: short, long, what follows. Sorted by the short name.
// clang-format off
constexpr FlagRow kAddAttr[] = {
    {"at",   "attributeType",       Text},
    {"bt",   "binaryTag",           Text},
    {"ci",   "cachedInternally",    Boolean},
    {"ct",   "category",            Text},
    {"dcb",  "disconnectBehaviour", Text},
    {"dt",   "dataType",            Text},
    {"dv",   "defaultValue",        Text},
    {"en",   "enumName",            Text},
    {"h",    "hidden",              Boolean},
    {"hnv",  "hasMinValue",         Boolean},
    {"hsn",  "hasSoftMinValue",     Boolean},
    {"hsx",  "hasSoftMaxValue",     Boolean},
    {"hxv",  "hasMaxValue",         Boolean},
    {"im",   "indexMatters",        Boolean},
    {"is",   "internalSet",         Boolean},
    {"k",    "keyable",             Boolean},
    {"ln",   "longName",            Text},
    {"m",    "multi",               Boolean},
    {"max",  "maxValue",            Text},
    {"min",  "minValue",            Text},
    {"nc",   "numberOfChildren",    Text},
    {"nn",   "niceName",            Text},
    {"p",    "parent",              Text},
    {"pxy",  "proxy",               Text},
    {"r",    "readable",            Boolean},
    {"s",    "storable",            Boolean},
    {"smn",  "softMinValue",        Text},
    {"smx",  "softMaxValue",        Text},
    {"sn",   "shortName",           Text},
    {"uac",  "usedAsColor",         Boolean},
    {"uaf",  "usedAsFilename",      Boolean},
    {"uap",  "usedAsProxy",         Boolean},
    {"w",    "writable",            Boolean},
};

constexpr FlagRow kConnectAttr[] = {
    {"f",  "force",         None},
    {"l",  "lock",          Boolean},
    {"na", "nextAvailable", None},
    {"rd", "referenceDest", Text},
};

constexpr FlagRow kCreateNode[] = {
    {"n",  "name",       Text},
    {"p",  "parent",     Text},
    {"s",  "shared",     None},
    {"ss", "skipSelect", None},
};

constexpr FlagRow kCurrentUnit[] = {
    {"a",  "angle",         Text},
    {"l",  "linear",        Text},
    {"t",  "time",          Text},
    {"ua", "updateAnimation", Boolean},
};

constexpr FlagRow kFile[] = {
    {"ap",  "applyTo",            Text},
    {"dns", "defaultNamespace",   None},
    {"dr",  "deferReference",     Boolean},
    {"lck", "lockReference",      None},
    {"ns",  "namespace",          Text},
    {"op",  "options",            Text},
    {"pm",  "proxyManager",       Text},
    {"pr",  "preserveReferences", None},
    {"pt",  "proxyTag",           Text},
    {"r",   "reference",          None},
    {"rdi", "referenceDepthInfo", Text},
    {"rfn", "referenceNode",      Text},
    {"rpr", "renamingPrefix",     Text},
    {"shd", "sharedNodes",        Text},
    {"ts",  "swapNamespace",      Text},
    {"typ", "type",               Text},
};

constexpr FlagRow kFileInfo[] = {
    {"rm", "remove", None},
};

constexpr FlagRow kLockNode[] = {
    {"ic",  "ignoreComponents", Boolean},
    {"l",   "lock",             Boolean},
    {"ln",  "lockName",         Boolean},
    {"lu",  "lockUnpublished",  Boolean},
};

constexpr FlagRow kParent[] = {
    {"a",   "absolute",      None},
    {"add", "addObject",     None},
    {"nc",  "noConnections", None},
    {"nis", "noInvScale",    None},
    {"r",   "relative",      None},
    {"rm",  "removeObject",  None},
    {"s",   "shape",         None},
    {"w",   "world",         None},
};

constexpr FlagRow kRename[] = {
    {"is",  "ignoreShape", None},
    {"uid", "uuid",        Text},
};

constexpr FlagRow kRequires[] = {
    {"dt",       "dataType", Text},
    {"nodeType", "nodeType", Text},
};

constexpr FlagRow kSelect[] = {
    {"add", "add",      None},
    {"cl",  "clear",    None},
    {"ne",  "noExpand", None},
    {"r",   "replace",  None},
};

constexpr StatementRow kStatements[] = {
    {"addAttr",        kAddAttr,     addAttribute},
    {"applyMetadata",  {},           nullptr},
    {"connectAttr",    kConnectAttr, connectAttributes},
    {"createNode",     kCreateNode,  createNode},
    {"currentUnit",    kCurrentUnit, currentUnit},
    {"dataStructure",  {},           nullptr},
    {"disconnectAttr", kConnectAttr, disconnectAttributes},
    {"file",           kFile,        referenceFile},
    {"fileInfo",       kFileInfo,    fileInfo},
    {"instanceable",   {},           nullptr},
    {"lockNode",       kLockNode,    lockNode},
    {"parent",         kParent,      parentNodes},
    {"relationship",   {},           nullptr},
    {"rename",         kRename,      renameNode},
    {"requires",       kRequires,    requirePlugin},
    {"select",         kSelect,      selectNode},
};
// clang-format on

} // namespace

std::span<const StatementRow> statementTable()
{
    return kStatements;
}

const StatementRow* findStatement(std::string_view word)
{
    const auto found =
        std::lower_bound(std::begin(kStatements), std::end(kStatements), word,
                         [](const StatementRow& row, std::string_view w) { return row.word < w; });
    return found != std::end(kStatements) && found->word == word ? found : nullptr;
}

} // namespace host::file::ascii
