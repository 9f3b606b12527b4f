// Compares animated values of real scenes with what Maya gave for them.
//
//   animated_values [FOLDER]     without a folder: the one that ORV_CORPUS names
//
// Three kinds of files tell what is right: infile_truth.jsonl lists values that a scene stores
// beside the curve that feeds them, as of the frame at which it was saved; maya_usd/expected_*.json
// numbers of single nodes at single frames; *.truth.json beside a scene, where it has tracks, the
// local transforms of nodes at times, as an exporter wrote them. Exit status 1 when one differs by
// more than its file allows. Scenes that cannot be opened are told and left out. Without a folder
// nothing is compared, which is told and succeeds.
#include "host/file/CommandPrinter.h"
#include "host/file/readScene.h"
#include "host/math/decompose.h"
#include "host/math/quaternion.h"
#include "host/math/units.h"
#include "host/session/Session.h"
#include "platform/MappedFile.h"
#include "platform/programMain.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <numbers>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using host::session::kNoNode;
using host::session::NodeId;
using host::session::Plug;
using host::session::Session;
using Json = nlohmann::json;
using Numbers = std::vector<double>;

constexpr double kDegrees = 180 / std::numbers::pi;
constexpr double kMillimetres = 25.4; // of an inch

struct Totals {
    std::size_t compared = 0;
    std::size_t right = 0;
    std::size_t scenes = 0;
    std::size_t unopened = 0;
    std::size_t constrained = 0; ///< tracks of rotations and places that constraints make
};

bool open(Session& session, const std::filesystem::path& scene, Totals& totals)
{
    const auto opened = session.open(scene.string());
    if (!opened) {
        std::printf("%s: left out: %s\n", scene.string().c_str(), opened.error().message.c_str());
        ++totals.unopened;
        return false;
    }
    ++totals.scenes;
    return true;
}

void goToFrame(Session& session, double frame)
{
    const auto ticks = static_cast<double>(session.units().ticksPerFrame);
    session.setCurrentTime(std::llround(frame * ticks));
}

Numbers flattened(const Json& value)
{
    Numbers numbers;
    for (const Json& each : value.is_array() ? value : Json::array({value})) {
        numbers.push_back(each.is_boolean() ? (each.get<bool>() ? 1.0 : 0.0) : each.get<double>());
    }
    return numbers;
}

void compare(const std::string& what, const Numbers& found, const Numbers& wanted, double tolerance,
             Totals& totals)
{
    ++totals.compared;
    bool isRight = found.size() == wanted.size();
    for (std::size_t i = 0; isRight && i < found.size(); ++i) {
        isRight = std::fabs(found[i] - wanted[i]) <= tolerance * (1 + std::fabs(wanted[i]));
    }
    totals.right += isRight ? 1 : 0;
    if (!isRight) {
        std::printf("%s:", what.c_str());
        for (const double number : found) {
            std::printf(" %.9g", number);
        }
        std::printf(", not");
        for (const double number : wanted) {
            std::printf(" %.9g", number);
        }
        std::printf("\n");
    }
}

/// The numbers of a plug: of its children where it has some.
Numbers numbersOf(Session& session, NodeId node, const std::string& attribute, double scale = 1)
{
    const Plug plug = session.findPlug(node, attribute);
    Numbers numbers;
    const double kNone = std::nan("");
    const std::vector<Plug> children = session.children(plug);
    for (const Plug& child : children) {
        numbers.push_back(session.number(child, kNone) * scale);
    }
    if (children.empty()) {
        numbers.push_back(session.number(plug, kNone) * scale);
    }
    return numbers;
}

/// The node of a path that is written with '/' or '|'; of its last name where no path fits.
NodeId nodeOf(const Session& session, std::string path)
{
    std::replace(path.begin(), path.end(), '/', '|');
    const NodeId found = session.graph().findNode(path);
    return found != kNoNode ? found
                            : session.graph().findNode(path.substr(path.find_last_of('|') + 1));
}

/// The first shape below a transform; the node itself where there is none.
NodeId shapeOf(const Session& session, NodeId node)
{
    for (const NodeId child : session.graph().node(node).children) {
        if (session.graph().node(child).type.isShape()) {
            return child;
        }
    }
    return node;
}

void compareCamera(Session& session, const std::string& what, NodeId node, const Json& check,
                   Totals& totals)
{
    struct Row {
        const char* name;
        const char* attribute;
        double scale;
        double tolerance = 0; ///< where it is more than the file's
    };
    // An aperture that a scene does not store is 36 x 24 mm in full here, in inches of five
    // decimals in some versions of Maya.
    constexpr double kRounded = 1e-5;
    constexpr Row kRows[] = {
        {"focal_length_mm", "focalLength", 1},
        {"near", "nearClipPlane", 1},
        {"far", "farClipPlane", 1},
        {"focus_distance", "focusDistance", 1},
        {"fstop", "fStop", 1},
        {"orthographic", "orthographic", 1},
        {"horizontal_aperture_mm", "horizontalFilmAperture", kMillimetres, kRounded},
        {"vertical_aperture_mm", "verticalFilmAperture", kMillimetres, kRounded}};
    const NodeId camera = shapeOf(session, node);
    for (const Row& row : kRows) {
        if (check["value"].contains(row.name)) {
            compare(what + " " + row.name, numbersOf(session, camera, row.attribute, row.scale),
                    flattened(check["value"][row.name]),
                    std::max(check["tol"].get<double>(), row.tolerance), totals);
        }
    }
}

void compareCheck(Session& session, const std::string& scene, const Json& check, Totals& totals)
{
    const std::string kind = check["kind"];
    std::string path = check["node"];
    std::string attribute;
    double scale = 1;
    if (kind == "attr") {
        attribute = path.substr(path.find('.') + 1);
        path = path.substr(0, path.find('.'));
    } else if (kind == "local_translate" || kind == "local_scale") {
        attribute = kind.substr(6);
    } else if (kind == "local_rotate_xyz") {
        attribute = "rotate";
        scale = kDegrees;
    } else if (kind != "camera") {
        return;
    }
    const bool isAtFrame = check.contains("frame") && !check["frame"].is_null();
    const std::string what =
        scene + " " + path + " " + kind + (isAtFrame ? " at " + check["frame"].dump() : "");
    const NodeId node = nodeOf(session, path);
    if (node == kNoNode) {
        compare(what + ": no such node", {}, {0}, 0, totals);
        return;
    }
    if (isAtFrame) {
        goToFrame(session, check["frame"]);
    }
    if (kind == "camera") {
        compareCamera(session, what, node, check, totals);
        return;
    }
    // A transform's name also stands for its shape's attributes.
    const NodeId owner = session.findPlug(node, attribute) ? node : shapeOf(session, node);
    compare(what, numbersOf(session, owner, attribute, scale), flattened(check["value"]),
            check["tol"], totals);
}

void compareExpectations(const std::filesystem::path& file, Totals& totals)
{
    std::ifstream stream(file);
    const Json all = Json::parse(stream);
    for (const auto& [scene, row] : all["scenes"].items()) {
        Session session;
        if (open(session, file.parent_path() / scene, totals)) {
            for (const Json& check : row["checks"]) {
                compareCheck(session, scene, check, totals);
            }
        }
    }
}

/// The channel of a track: a translation, a rotation as a quaternion, or a scale.
Numbers transformPart(const host::Matrix4& local, const std::string& channel, const Numbers& wanted)
{
    const host::DecomposedMatrix parts = host::decompose(local, host::RotationOrder::Xyz);
    if (channel.starts_with("rotation")) {
        const host::Quaternion q = parts.rotation;
        const host::Quaternion other{wanted[0], wanted[1], wanted[2], wanted[3]};
        const double sign = host::dot(q, other) < 0 ? -1 : 1;
        return {q.x * sign, q.y * sign, q.z * sign, q.w * sign};
    }
    const host::Vec3d& v = channel.starts_with("scal") ? parts.scale : parts.translate;
    return {v.x, v.y, v.z};
}

/// What a file's exporter makes of times and transforms.
struct Manner {
    bool isInSeconds = false; ///< else in frames
    /// The first versions of an exporter to left-handed scenes left z of places as it is, which was
    /// then turned back all the same, and took the degrees of rotations for radians.
    bool isUnconverted = false;
    double firstFrame = 0; ///< where a clip's times begin
};

Manner mannerOf(const std::string& fileName, const Json& truth)
{
    Manner manner;
    manner.isInSeconds = fileName.find(".gltf.") != std::string::npos;
    const std::string producer = truth.value("producer", "");
    manner.isUnconverted =
        !manner.isInSeconds && producer.find("\"exporter_version\": \"1.0") != std::string::npos;
    return manner;
}

/// The quaternion of a turn about z, then x, then y by degrees that are taken for radians, with the
/// signs of x and y turned; about each axis half the angle's sine and cosine.
Numbers mistakenRotation(const Numbers& degrees)
{
    const auto [sx, cx] = std::pair(std::sin(degrees[0] / 2), std::cos(degrees[0] / 2));
    const auto [sy, cy] = std::pair(std::sin(degrees[1] / 2), std::cos(degrees[1] / 2));
    const auto [sz, cz] = std::pair(std::sin(degrees[2] / 2), std::cos(degrees[2] / 2));
    return {-(cy * sx * cz + sy * cx * sz), -(sy * cx * cz - cy * sx * sz),
            cy * cx * sz - sy * sx * cz, cy * cx * cz + sy * sx * sz};
}

/// A constraint makes the channel.
bool isConstrained(Session& session, NodeId node, const std::string& channel)
{
    const char* const attribute = channel.starts_with("rotation") ? "rotate"
                                  : channel.starts_with("scal")   ? "scale"
                                                                  : "translate";
    const Plug whole = session.findPlug(node, attribute);
    std::vector<Plug> plugs = session.children(whole);
    plugs.push_back(whole);
    return std::any_of(plugs.begin(), plugs.end(), [&](const Plug& plug) {
        const Plug source = session.source(plug);
        return source && session.graph().node(source.node).type.isA("constraint");
    });
}

Numbers foundNumbers(Session& session, NodeId node, const host::Matrix4& local,
                     const std::string& channel, const Numbers& wanted, const Manner& manner)
{
    if (manner.isUnconverted && channel.starts_with("rotation")) {
        return mistakenRotation(numbersOf(session, node, "rotate", kDegrees));
    }
    Numbers found = transformPart(local, channel, wanted);
    if (manner.isUnconverted && channel == "position") {
        found[2] = -found[2];
    }
    return found;
}

void compareTrack(Session& session, const std::string& what, NodeId node,
                  const std::string& channel, const Json& keys, const Manner& manner,
                  Totals& totals)
{
    if (isConstrained(session, node, channel)) {
        ++totals.constrained;
        return;
    }
    constexpr double kTolerance = 2e-4; // exporters round to four decimals
    const std::size_t width = channel.starts_with("rotation") ? 4 : 3;
    for (const Json& key : keys) {
        Numbers wanted = flattened(key);
        const double time = wanted.front();
        wanted.erase(wanted.begin());
        if (wanted.size() != width) {
            continue;
        }
        if (manner.isInSeconds) {
            const double start =
                manner.firstFrame * static_cast<double>(session.units().ticksPerFrame);
            session.setCurrentTime(
                std::llround(start + time * static_cast<double>(host::kTicksPerSecond)));
        } else {
            goToFrame(session, time);
        }
        const auto local = session.localMatrix(node);
        if (local) {
            compare(what + " " + channel + " at " + std::to_string(time),
                    foundNumbers(session, node, *local, channel, wanted, manner), wanted,
                    kTolerance, totals);
        }
    }
}

/// Where the exporter's clips begin, in frames: the scene's file information has a line
/// "NAME;FIRST;LAST;" for each.
std::map<std::string, double> clipStarts(const std::filesystem::path& scene)
{
    std::map<std::string, double> starts;
    const auto take = [&starts](std::string_view line) {
        const std::size_t value = line.rfind(" \"");
        if (!line.starts_with("fileInfo ") || value == std::string_view::npos) {
            return;
        }
        std::istringstream cells{std::string(line.substr(value + 2))};
        std::string name;
        double first = 0;
        if (std::getline(cells, name, ';') && cells >> first && cells.get() == ';') {
            starts[name] = first;
        }
    };
    std::string error;
    const auto file = platform::MappedFile::open(scene.string(), error);
    if (file) {
        host::file::CommandPrinter printer(take);
        static_cast<void>(host::file::readScene({file->data(), file->size()}, printer));
    }
    return starts;
}

bool isTransformTrack(const std::string& channel)
{
    constexpr std::array<const char*, 6> kChannels{"position", "translation", "rotationQuaternion",
                                                   "rotation", "scaling",     "scale"};
    return std::find(kChannels.begin(), kChannels.end(), channel) != kChannels.end();
}

/// `name` is that of a channel, or of one of a clip: "rotation@Jump".
void compareChannel(Session& session, const std::string& what, NodeId node, const std::string& name,
                    const Json& keys, Manner manner, const std::map<std::string, double>& starts,
                    Totals& totals)
{
    const std::size_t at = std::min(name.find('@'), name.size());
    const std::string channel = name.substr(0, at);
    if (node == kNoNode || !isTransformTrack(channel)) {
        return;
    }
    // The .babylon file keeps the left-handed rotation of cameras.
    const bool isCamera = session.graph().node(shapeOf(session, node)).type.isA("camera");
    if (isCamera && !manner.isInSeconds && channel.starts_with("rotation")) {
        return;
    }
    if (at < name.size()) {
        const auto start = starts.find(name.substr(at + 1));
        if (start == starts.end()) {
            compare(what + " " + name + ": no such clip", {}, {0}, 0, totals);
            return;
        }
        manner.firstFrame = start->second;
    }
    compareTrack(session, what, node, channel, keys, manner, totals);
}

void compareTracks(const std::filesystem::path& file, Totals& totals)
{
    std::ifstream stream(file);
    const Json truth = Json::parse(stream, nullptr, false);
    if (!truth.contains("animation")) {
        return;
    }
    const std::string name = file.filename().string();
    const std::string stem = name.substr(0, name.find('.'));
    const Manner manner = mannerOf(name, truth);
    for (const char* extension : {".ma", ".mb"}) {
        const std::filesystem::path scene = file.parent_path() / (stem + extension);
        Session session;
        if (!std::filesystem::exists(scene) || !open(session, scene, totals)) {
            continue;
        }
        const auto starts = clipStarts(scene);
        for (const auto& [object, channels] : truth["animation"].items()) {
            const NodeId node = session.graph().findNode(object);
            for (const auto& [channel, keys] : channels.items()) {
                compareChannel(session, stem + " " + object, node, channel, keys, manner, starts,
                               totals);
            }
        }
    }
}

/// A value that the scene stores beside the curve that feeds it.
void compareStored(const std::filesystem::path& folder, const Json& row, Totals& totals)
{
    Session session;
    const std::string scene = row["scene"];
    if (!open(session, folder / scene, totals)) {
        return;
    }
    const std::string name = row["dest"];
    const std::size_t dot = name.find('.');
    const NodeId node = nodeOf(session, name.substr(0, dot));
    const Plug plug = node != kNoNode ? session.findPlug(node, name.substr(dot + 1)) : Plug{};
    if (!plug) {
        compare(scene + " " + name + ": no such plug", {}, {0}, 0, totals);
        return;
    }
    const bool isAngle = session.graph().attribute(plug.node, plug.attribute).kind ==
                         host::AttributeKind::DoubleAngle;
    const double found = session.number(plug, std::nan("")) * (isAngle ? kDegrees : 1);
    compare(scene + " " + name, {found}, {std::stod(row["value"].get<std::string>())}, 1e-9,
            totals);
}

void compareStoredValues(const std::filesystem::path& file, Totals& totals)
{
    std::ifstream stream(file);
    for (std::string line; std::getline(stream, line);) {
        const Json row = Json::parse(line);
        if (row["kind"] == "driven" &&
            row["source_type"].get<std::string>().starts_with("animCurve")) {
            compareStored(file.parent_path(), row, totals);
        }
    }
}

} // namespace

int programMain(int argc, char** argv)
{
    const char* const folder = argc > 1 ? argv[1] : std::getenv("ORV_CORPUS");
    if (folder == nullptr || *folder == '\0') {
        std::puts("skipped: ORV_CORPUS names no folder; 0 values compared");
        return 0;
    }
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    Totals totals;
    for (const std::filesystem::path& file : files) {
        const std::string name = file.filename().string();
        if (name.starts_with("expected_maya_usd") && name.ends_with(".json")) {
            compareExpectations(file, totals);
        } else if (name == "infile_truth.jsonl") {
            compareStoredValues(file, totals);
        } else if (name.ends_with(".truth.json")) {
            compareTracks(file, totals);
        }
    }
    std::printf(
        "%zu values in %zu scenes: %zu right; %zu scenes could not be opened; %zu tracks made "
        "by constraints not compared\n",
        totals.compared, totals.scenes, totals.right, totals.unopened, totals.constrained);
    return totals.right == totals.compared && totals.compared > 0 ? 0 : 1;
}
