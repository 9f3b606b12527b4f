// Compares world matrices with those that stored poses of real scenes keep.
//
//   dag_poses [FOLDER]     without a folder: the one that ORV_CORPUS names
//
// infile_truth.jsonl in the folder lists the poses, one record a line: the world matrix of a node
// and the local record it was made of. Each record's chain of local records must give its world
// matrix; and where a node of the scene still has the channels of its record, and so have those
// above it, the scene must give that matrix too. Binary scenes tell both themselves: the records
// that a pose keeps, and the world matrices that its joints keep. Exit status 1 when one differs
// by more than 1e-5.
// Without a folder nothing is compared, which is told and succeeds.
#include "host/math/transform.h"
#include "host/session/Session.h"
#include "platform/programMain.h"
#include "tests/corpus/scenesBelow.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace {

using host::Matrix4;
using host::Vec3d;
using host::session::NodeId;
using host::session::Session;

constexpr double kTolerance = 1e-5;
constexpr double kSameChannel = 1e-9;
constexpr std::size_t kXformNumbers = 37;

struct Record {
    std::string node; ///< empty: the pose does not say
    std::optional<int> parent;
    Matrix4 world;
    host::PoseParts pose;
};

using Pose = std::map<int, Record>;

struct Totals {
    std::size_t records = 0;
    std::size_t composed = 0;   ///< chains of local records that give their world matrix
    std::size_t inPose = 0;     ///< nodes that still stand as their records say
    std::size_t inScene = 0;    ///< of these, where the scene gives the matrix
    std::size_t ownRecords = 0; ///< of binary scenes, with a world matrix
    std::size_t ownRight = 0;
};

double numberOf(const nlohmann::json& text)
{
    const auto word = text.get<std::string>();
    if (word == "yes" || word == "no") {
        return word == "yes" ? 1 : 0;
    }
    return std::stod(word);
}

host::PoseParts poseParts(const nlohmann::json& xform)
{
    std::array<double, kXformNumbers> n{};
    for (std::size_t i = 0; i < kXformNumbers; ++i) {
        n[i] = numberOf(xform.at(i));
    }
    const auto vector = [&](std::size_t first) {
        return Vec3d{n[first], n[first + 1], n[first + 2]};
    };
    host::PoseParts pose;
    pose.parts.scale = vector(0);
    pose.parts.rotate = vector(3);
    pose.parts.order = host::rotationOrderFromNumber(n[6]);
    pose.parts.translate = vector(7);
    pose.parts.shear = vector(10);
    pose.parts.scalePivot = vector(13);
    pose.parts.scalePivotTranslate = vector(16);
    pose.parts.rotatePivot = vector(19);
    pose.parts.rotatePivotTranslate = vector(22);
    pose.rotateOrient = {n[25], n[26], n[27], n[28]};
    pose.jointOrient = {n[29], n[30], n[31], n[32]};
    pose.inverseScale = vector(33);
    pose.segmentScaleCompensate = n[36] != 0;
    return pose;
}

double difference(const Matrix4& a, const Matrix4& b)
{
    double largest = 0;
    for (std::size_t row = 0; row < 4; ++row) {
        for (std::size_t column = 0; column < 4; ++column) {
            largest = std::max(largest, std::fabs(a.m[row][column] - b.m[row][column]));
        }
    }
    return largest;
}

/// Poses by scene and name.
std::map<std::string, std::map<std::string, Pose>> readPoses(const std::filesystem::path& file)
{
    std::map<std::string, std::map<std::string, Pose>> poses;
    std::ifstream stream(file);
    for (std::string line; std::getline(stream, line);) {
        const auto row = nlohmann::json::parse(line);
        if (row.at("kind") != "dagpose") {
            continue;
        }
        Record record;
        record.node = row.at("node").is_null() ? "" : row.at("node").get<std::string>();
        if (!row.at("parent_index").is_null()) {
            record.parent = row.at("parent_index").get<int>();
        }
        for (std::size_t i = 0; i < 16; ++i) {
            record.world.m[i / 4][i % 4] = row.at("world").at(i).get<double>();
        }
        record.pose = poseParts(row.at("xform"));
        const std::string name = row.at("pose");
        poses[row.at("scene")][name][row.at("index").get<int>()] = record;
    }
    return poses;
}

/// The records from one up to the top of its pose.
std::vector<const Record*> chainOf(const Pose& pose, const Record& record)
{
    std::vector<const Record*> chain{&record};
    while (chain.back()->parent && chain.size() <= pose.size()) {
        const auto above = pose.find(*chain.back()->parent);
        if (above == pose.end()) {
            break;
        }
        chain.push_back(&above->second);
    }
    return chain;
}

Matrix4 composedWorld(const std::vector<const Record*>& chain)
{
    Matrix4 world;
    for (const Record* record : chain) {
        world = world * host::composePose(record->pose);
    }
    return world;
}

Vec3d channels(Session& session, NodeId node, const char* name)
{
    const auto children = session.children(session.findPlug(node, name));
    if (children.size() != 3) {
        return {};
    }
    return {session.number(children[0], 0), session.number(children[1], 0),
            session.number(children[2], 0)};
}

/// True when the node has the translation, rotation and scale of its record; of a record that names
/// no node, when it changes nothing.
bool stands(Session& session, const Record& record)
{
    if (record.node.empty()) {
        return host::composePose(record.pose) == Matrix4{};
    }
    const NodeId node = session.graph().findNode(record.node);
    if (node == host::session::kNoNode) {
        return false;
    }
    const auto isSame = [](const Vec3d& a, const Vec3d& b) {
        return host::length(a - b) <= kSameChannel * (1 + host::length(a));
    };
    const host::TransformParts& parts = record.pose.parts;
    return isSame(channels(session, node, "translate"), parts.translate) &&
           isSame(channels(session, node, "rotate"), parts.rotate) &&
           isSame(channels(session, node, "scale"), parts.scale);
}

void comparePose(Session& session, const std::string& name, const Pose& pose, Totals& totals)
{
    for (const auto& [index, record] : pose) {
        ++totals.records;
        const auto chain = chainOf(pose, record);
        const double error = difference(composedWorld(chain), record.world);
        totals.composed += error <= kTolerance ? 1 : 0;
        if (error > kTolerance) {
            std::printf("%s[%d] %s: its records are off by %g\n", name.c_str(), index,
                        record.node.c_str(), error);
        }
        if (record.node.empty() ||
            !std::all_of(chain.begin(), chain.end(),
                         [&](const Record* each) { return stands(session, *each); })) {
            continue;
        }
        ++totals.inPose;
        const auto path = session.firstPathTo(session.graph().findNode(record.node));
        const double off = difference(session.inclusiveMatrix(path), record.world);
        totals.inScene += off <= kTolerance ? 1 : 0;
        if (off > kTolerance) {
            std::printf("%s[%d] %s: the scene is off by %g\n", name.c_str(), index,
                        record.node.c_str(), off);
        }
    }
}

using MatrixData = std::shared_ptr<const Matrix4>;

MatrixData matrixOf(Session& session, NodeId node, const char* array, std::int32_t index)
{
    return session.value(session.element(session.findPlug(node, array), index)).data<Matrix4>();
}

/// The position of the record above one; -1 where it is the topmost.
std::int32_t recordAbove(Session& session, NodeId pose, std::int32_t index)
{
    const auto plug = session.source(session.element(session.findPlug(pose, "parents"), index));
    return plug && plug.node == pose ? plug.index : -1;
}

/// The product of the local records from one up to the top; null where one is missing.
std::optional<Matrix4> ownWorld(Session& session, NodeId pose, std::int32_t index)
{
    constexpr int kDeepest = 1000;
    Matrix4 world;
    for (int depth = 0; index >= 0 && depth < kDeepest; ++depth) {
        const MatrixData local = matrixOf(session, pose, "xformMatrix", index);
        if (!local) {
            return std::nullopt;
        }
        world = world * *local;
        index = recordAbove(session, pose, index);
    }
    return world;
}

void compareOwnPose(Session& session, const std::string& scene, NodeId pose, Totals& totals)
{
    constexpr std::int32_t kMostRecords = 1000;
    for (std::int32_t index = 0; index < kMostRecords; ++index) {
        const MatrixData stored = matrixOf(session, pose, "worldMatrix", index);
        const auto composed = stored ? ownWorld(session, pose, index) : std::nullopt;
        if (!composed) {
            continue;
        }
        // Skeletons that came through other programs have numbers of single precision.
        constexpr double kSingle = 1e-6;
        const double allowed = kTolerance + kSingle * difference(*stored, Matrix4{});
        const double error = difference(*composed, *stored);
        ++totals.ownRecords;
        totals.ownRight += error <= allowed ? 1 : 0;
        if (error > allowed) {
            std::printf("%s %s[%d]: its records are off by %g\n", scene.c_str(),
                        session.graph().node(pose).name.c_str(), index, error);
        }
    }
}

/// False when the scene cannot be opened.
bool compareOwnPoses(Session& session, const std::string& scene, Totals& totals)
{
    if (!session.open(scene)) {
        return false;
    }
    const std::size_t count = session.graph().nodeCount();
    for (std::size_t id = 0; id < count; ++id) {
        const auto node = static_cast<NodeId>(id);
        if (session.graph().node(node).type.isA("dagPose")) {
            compareOwnPose(session, scene, node, totals);
        }
    }
    return true;
}

} // namespace

int programMain(int argc, char** argv)
{
    const char* const folder = argc > 1 ? argv[1] : std::getenv("ORV_CORPUS");
    if (folder == nullptr || *folder == '\0') {
        std::puts("skipped: ORV_CORPUS names no folder; 0 poses compared");
        return 0;
    }
    const std::filesystem::path root(folder);
    Session session;
    Totals totals;
    bool isReadable = true;
    for (const auto& [scene, poses] : readPoses(root / "infile_truth.jsonl")) {
        if (const auto opened = session.open((root / scene).string()); !opened) {
            std::printf("%s: %s\n", scene.c_str(), opened.error().message.c_str());
            isReadable = false;
            continue;
        }
        for (const auto& [name, pose] : poses) {
            comparePose(session, name, pose, totals);
        }
    }
    for (const std::string& scene : test::scenesBelow(folder, ".mb")) {
        isReadable = compareOwnPoses(session, scene, totals) && isReadable;
    }
    std::printf("%zu stored poses: %zu composed right; %zu still in their pose, %zu of them right; "
                "%zu of binary scenes: %zu right\n",
                totals.records, totals.composed, totals.inPose, totals.inScene, totals.ownRecords,
                totals.ownRight);
    const bool isRight = totals.composed == totals.records && totals.inScene == totals.inPose &&
                         totals.ownRight == totals.ownRecords;
    return isReadable && isRight && totals.records > 0 ? 0 : 1;
}
