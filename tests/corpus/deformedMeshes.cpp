// Checks what skins of real scenes do to their meshes.
//
//   deformed_meshes [FOLDER]     without a folder: the one that ORV_CORPUS names
//
// At the pose in which its joints were bound a skin leaves its mesh as it is: all skins of all
// scenes, at the saved frame and at the ends of the playback range. Where a *.truth.json stands
// beside scenes, deformed points that it tells are compared: COLLADA's vertex by vertex in the
// world, glTF's (split by normals, at a frame that is not told) each with the nearest vertex, at
// the frame of the playback range that fits best. Exit status 1 when something differs.
// Without a folder nothing is compared, which is told and succeeds.
#include "host/geometry/mesh/MeshData.h"
#include "host/session/Session.h"
#include "platform/programMain.h"
#include "tests/corpus/scenesBelow.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <limits>
#include <string>
#include <vector>

namespace {

using host::Matrix4;
using host::Vec3d;
using host::session::NodeId;
using host::session::Session;
using MeshPointer = std::shared_ptr<const host::geometry::MeshData>;
using Points = std::vector<Vec3d>;

struct Totals {
    std::size_t skins = 0;
    std::size_t bound = 0; ///< found in their bind pose
    std::size_t same = 0;  ///< of these, leave the mesh as it is
    std::size_t truths = 0;
    std::size_t right = 0;
};

double largestNumber(const Matrix4& a, const Matrix4& b)
{
    double largest = 0;
    for (std::size_t i = 0; i < 16; ++i) {
        largest = std::max(largest, std::fabs(a.m[i / 4][i % 4] - b.m[i / 4][i % 4]));
    }
    return largest;
}

Matrix4 matrixAt(Session& session, NodeId node, const char* array, std::int32_t index)
{
    const auto held =
        session.value(session.element(session.findPlug(node, array), index)).data<Matrix4>();
    return held != nullptr ? *held : Matrix4{};
}

/// How far the joints are from where they were bound: the largest number by which bindPreMatrix *
/// matrix differs from identity; infinite for a skin without joints.
double poseDistance(Session& session, NodeId skin)
{
    double largest = -1;
    for (const std::int32_t index :
         session.graph().elementIndices(session.findPlug(skin, "matrix"))) {
        const Matrix4 moved = matrixAt(session, skin, "bindPreMatrix", index) *
                              matrixAt(session, skin, "matrix", index);
        largest = std::max(largest, largestNumber(moved, Matrix4{}));
    }
    return largest < 0 ? std::numeric_limits<double>::infinity() : largest;
}

MeshPointer meshAt(Session& session, NodeId node, const char* array, const char* child)
{
    auto plug = session.element(session.findPlug(node, array), 0);
    for (const auto& part :
         child != nullptr ? session.children(plug) : std::vector<host::session::Plug>()) {
        if (session.plugName(part).ends_with(child)) {
            plug = part;
        }
    }
    return session.value(plug).data<host::geometry::MeshData>();
}

/// True for the same number of points, none further off than its size and the pose allow.
bool isSame(const host::geometry::MeshData& a, const host::geometry::MeshData& b, double pose)
{
    if (a.points == nullptr || b.points == nullptr || a.points->size() != b.points->size()) {
        return false;
    }
    constexpr double kSingle = 1e-6;
    for (std::size_t i = 0; i < a.points->size(); ++i) {
        const Vec3d p = toDouble((*a.points)[i]);
        const double allowed = (kSingle + 4 * pose) * (1 + length(p));
        if (!(length(p - toDouble((*b.points)[i])) <= allowed)) {
            return false;
        }
    }
    return true;
}

enum class BindCheck { NotBound, Same, Different };

BindCheck checkBound(Session& session, NodeId skin)
{
    constexpr double kBound = 1e-4;
    const double pose = poseDistance(session, skin);
    if (pose > kBound) {
        return BindCheck::NotBound;
    }
    const MeshPointer before = meshAt(session, skin, "input", "inputGeometry");
    const MeshPointer after = meshAt(session, skin, "outputGeometry", nullptr);
    if (before == nullptr) {
        return BindCheck::NotBound;
    }
    return after != nullptr && isSame(*before, *after, pose) ? BindCheck::Same
                                                             : BindCheck::Different;
}

void checkSkins(Session& session, const std::string& scene, Totals& totals)
{
    const std::int64_t saved = session.currentTime();
    for (std::size_t id = 0; id < session.graph().nodeCount(); ++id) {
        const auto skin = static_cast<NodeId>(id);
        if (!session.graph().node(skin).type.isA("skinCluster")) {
            continue;
        }
        ++totals.skins;
        for (const std::int64_t time : {saved, session.playbackStart(), session.playbackEnd()}) {
            session.setCurrentTime(time);
            const BindCheck check = checkBound(session, skin);
            if (check == BindCheck::NotBound) {
                continue;
            }
            ++totals.bound;
            totals.same += check == BindCheck::Same ? 1 : 0;
            if (check == BindCheck::Different) {
                std::printf("%s %s: moves its mesh in the pose in which it was bound\n",
                            scene.c_str(), session.graph().node(skin).name.c_str());
            }
            break;
        }
        session.setCurrentTime(saved);
    }
}

Points pointsOf(const nlohmann::json& numbers)
{
    Points points;
    for (std::size_t i = 0; i + 2 < numbers.size(); i += 3) {
        points.push_back(
            {numbers[i].get<double>(), numbers[i + 1].get<double>(), numbers[i + 2].get<double>()});
    }
    return points;
}

/// The mesh shape below the transform that ends in a name (exporters replace colons), first path.
MeshPointer shapeBelow(Session& session, const std::string& name, Matrix4& world)
{
    for (std::size_t id = 0; id < session.graph().nodeCount(); ++id) {
        const auto node = static_cast<NodeId>(id);
        if (!session.graph().node(node).type.isA("mesh")) {
            continue;
        }
        const auto path = session.firstPathTo(node);
        std::string full = session.fullPathName(path);
        std::replace(full.begin(), full.end(), ':', '_');
        if (session.isVisible(path) && full.find('|' + name + '|') != std::string::npos) {
            world = session.inclusiveMatrix(path);
            return session.mesh(node);
        }
    }
    return nullptr;
}

/// The largest distance of deformed points in the world from those that were told, over the
/// largest coordinate.
double worldError(Session& session, const nlohmann::json& skin)
{
    Matrix4 world;
    const MeshPointer mesh = shapeBelow(session, skin.at("node"), world);
    const Points told = pointsOf(skin.at("deformed_world_points"));
    if (mesh == nullptr || mesh->points == nullptr || mesh->points->size() != told.size()) {
        return std::numeric_limits<double>::infinity();
    }
    double largest = 0;
    double size = 1;
    for (std::size_t i = 0; i < told.size(); ++i) {
        const Vec3d own = transformPoint(toDouble((*mesh->points)[i]), world);
        largest = std::max(largest, length(own - told[i]));
        size = std::max(size, length(told[i]));
    }
    return largest / size;
}

/// The largest distance of a told point from the nearest vertex; gives up beyond `most`.
double nearestError(const Points& told, const std::vector<host::Vec3f>& own, double most)
{
    double largest = 0;
    for (const Vec3d& point : told) {
        double nearest = std::numeric_limits<double>::infinity();
        for (const host::Vec3f& vertex : own) {
            const Vec3d way = toDouble(vertex) - point;
            nearest = std::min(nearest, dot(way, way));
        }
        largest = std::max(largest, std::sqrt(nearest));
        if (largest >= most) {
            break;
        }
    }
    return largest;
}

/// The least error of a mesh over the playback range; tells the frame.
double bestFrame(Session& session, const nlohmann::json& truth, const std::string& scene)
{
    Points told;
    for (const auto& group : truth.at("groups")) {
        const Points part = pointsOf(group.at("positions"));
        told.insert(told.end(), part.begin(), part.end());
    }
    const std::int64_t step = session.units().ticksPerFrame;
    double best = std::numeric_limits<double>::infinity();
    std::int64_t frame = 0;
    constexpr std::int64_t kMostFrames = 1000;
    const std::int64_t last =
        std::min(session.playbackEnd(), session.playbackStart() + kMostFrames * step);
    for (std::int64_t time = session.playbackStart(); time <= last; time += step) {
        session.setCurrentTime(time);
        Matrix4 world;
        const MeshPointer mesh = shapeBelow(session, truth.at("node"), world);
        if (mesh == nullptr || mesh->points == nullptr) {
            break;
        }
        const double error = nearestError(told, *mesh->points, best);
        if (error < best) {
            best = error;
            frame = time / step;
        }
    }
    std::printf("%s: %zu points fit best at frame %lld, off by %g\n", scene.c_str(), told.size(),
                static_cast<long long>(frame), best);
    return best;
}

void count(Totals& totals, const std::string& scene, double error, double tolerance)
{
    ++totals.truths;
    totals.right += error <= tolerance ? 1 : 0;
    if (!(error <= tolerance)) {
        std::printf("%s: deformed points are off by %g\n", scene.c_str(), error);
    }
}

/// Compares what a truth tells of skins, where it tells of any.
void compareTruth(Session& session, const std::filesystem::path& root, const std::string& truthPath,
                  Totals& totals)
{
    std::ifstream stream(truthPath);
    const auto truth = nlohmann::json::parse(stream, nullptr, false);
    if (!truth.is_object() || !truth.contains("skins") || !truth.contains("scene")) {
        return;
    }
    const std::string scene = truth.at("scene");
    if (truth.at("skins").empty() || !session.open((root / scene).string())) {
        return;
    }
    const double tolerance = truth.at("tolerance").at("position");
    for (const auto& skin : truth.at("skins")) {
        if (skin.contains("deformed_world_points")) {
            const double error = worldError(session, skin);
            constexpr double kSixDigits = 5e-6; // of the weights, matrices and points that it is of
            std::printf("%s: off by %g of its size\n", scene.c_str(), error);
            count(totals, scene, error, kSixDigits);
        } else if (truth.contains("meshes")) {
            for (const auto& mesh : truth.at("meshes")) {
                if (mesh.at("node") == skin.at("node")) {
                    count(totals, scene, bestFrame(session, mesh, scene), tolerance);
                }
            }
        }
    }
}

} // namespace

int programMain(int argc, char** argv)
{
    const char* const folder = argc > 1 ? argv[1] : std::getenv("ORV_CORPUS");
    if (folder == nullptr || *folder == '\0') {
        std::puts("skipped: ORV_CORPUS names no folder; 0 skins compared");
        return 0;
    }
    Session session;
    Totals totals;
    for (const char* const extension : {".ma", ".mb"}) {
        for (const std::string& scene : test::scenesBelow(folder, extension)) {
            if (session.open(scene)) {
                checkSkins(session, scene, totals);
            }
        }
    }
    for (const std::string& truth : test::scenesBelow(folder, ".json")) {
        if (truth.ends_with(".truth.json")) {
            compareTruth(session, folder, truth, totals);
        }
    }
    std::printf("%zu skins, %zu found in their bind pose: %zu leave their mesh as it is; "
                "%zu deformed meshes with a truth: %zu right\n",
                totals.skins, totals.bound, totals.same, totals.truths, totals.right);
    const bool isRight = totals.same == totals.bound && totals.right == totals.truths;
    return isRight && totals.bound > 0 ? 0 : 1;
}
