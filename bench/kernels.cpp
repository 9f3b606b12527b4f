// How fast operations on meshes are, against a plain copy of the same mesh; and how much a long
// chain of small ones costs.
//
//   bench_kernels [RUNS [kernels|chains [NAME]]]
//
// Meshes are planes with waves and texture coordinates: one of 1,000,000 quads, ten of about
// 100,000, a hundred of 10,000. Prints for each operation the median of alternating runs over all
// meshes of a size, the time per face, that in copies of the meshes, and the growth of the time per
// face from the smallest meshes to the largest. Chains are evaluated by a session from a scene
// file: 900 edits of one component each on 100,000 faces, of one kind or mixed, against scenes with
// one of them. Where OpenSubdiv is installed, one step of its uniform refinement stands beside
// ours.
#include "host/geometry/mesh/edit/bevelEdges.h"
#include "host/geometry/mesh/edit/extrudeFaces.h"
#include "host/geometry/mesh/edit/uniteMeshes.h"
#include "host/geometry/mesh/primitives/boxes.h"
#include "host/geometry/mesh/shape/smoothMesh.h"
#include "host/geometry/mesh/shape/softenEdges.h"
#include "host/session/Session.h"
#include "platform/largeArrays.h"

#ifdef ORV_OPENSUBDIV
#include <opensubdiv/far/primvarRefiner.h>
#include <opensubdiv/far/topologyDescriptor.h>
#endif

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <numeric>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace host::geometry;
using SharedMesh = std::shared_ptr<const MeshData>;

constexpr std::array<std::uint32_t, 3> kColumns{100, 316, 1000};
constexpr std::uint32_t kChainColumns = 316;
constexpr int kChainLength = 900;

template<class Action>
double secondsOf(const Action& action)
{
    const auto start = std::chrono::steady_clock::now();
    action();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

void require(bool isWell, const char* what)
{
    if (!isWell) {
        std::fprintf(stderr, "bench_kernels: %s failed\n", what);
        std::exit(1);
    }
}

SharedMesh wavyPlane(std::uint32_t columns)
{
    PlaneSettings settings;
    settings.widthCells = settings.heightCells = columns;
    settings.width = settings.height = columns;
    const SharedMesh flat = makePlane(settings, SolidPlacement{});
    auto points = std::make_shared<std::vector<host::Vec3f>>(*flat->points);
    for (host::Vec3f& point : *points) {
        point.y += 2 * std::sin(0.3F * point.x) * std::cos(0.2F * point.z);
    }
    auto mesh = std::make_shared<MeshData>(*flat);
    mesh->points = std::move(points);
    return mesh;
}

template<class T>
std::shared_ptr<const T> copyOf(const std::shared_ptr<const T>& part)
{
    return part != nullptr ? std::make_shared<const T>(*part) : nullptr;
}

/// The mesh with all its arrays copied.
SharedMesh deepCopy(const MeshData& mesh)
{
    auto copy = std::make_shared<MeshData>(mesh);
    copy->topology = copyOf(mesh.topology);
    copy->edgeSmooth = copyOf(mesh.edgeSmooth);
    copy->points = copyOf(mesh.points);
    for (UvSet& set : copy->uvSets) {
        set.points = copyOf(set.points);
        set.corners = copyOf(set.corners);
    }
    for (FaceGroup& group : copy->groups) {
        group.faces = copyOf(group.faces);
    }
    return copy;
}

std::vector<std::uint32_t> upTo(std::size_t count)
{
    std::vector<std::uint32_t> numbers(count);
    std::iota(numbers.begin(), numbers.end(), 0U);
    return numbers;
}

struct Kernel {
    const char* name;
    std::function<SharedMesh(const MeshData&)> run;
};

SharedMesh extruded(const MeshData& mesh, bool isTogether, std::size_t step)
{
    std::vector<std::uint32_t> faces;
    for (std::uint32_t face = 0; face < mesh.topology->faceCount(); ++face) {
        if (face % step == 0) {
            faces.push_back(face);
        }
    }
    FaceExtrusion extrusion;
    extrusion.isTogether = isTogether;
    extrusion.motion.localTranslate = {0, 0, 0.2};
    extrusion.motion.offset = 0.1;
    return extrudeFaces(mesh, faces, extrusion);
}

SharedMesh beveled(const MeshData& mesh, std::uint32_t step)
{
    std::vector<std::uint32_t> edges;
    for (std::uint32_t edge = 0; edge < mesh.topology->edges.size(); ++edge) {
        // the border is at the first and the last row, whose vertices no bevel goes through
        const MeshEdge& ends = mesh.topology->edges[edge];
        const auto columns = static_cast<std::uint32_t>(
            std::lround(std::sqrt(static_cast<double>(mesh.topology->faceCount()))));
        const auto isInside = [columns](std::uint32_t vertex) {
            const std::uint32_t x = vertex % (columns + 1);
            const std::uint32_t y = vertex / (columns + 1);
            return x > 0 && y > 0 && x < columns && y < columns;
        };
        if (edge % step == 0 && isInside(ends.start) && isInside(ends.end)) {
            edges.push_back(edge);
        }
    }
    Beveling beveling;
    beveling.isFraction = true;
    return bevelEdges(mesh, edges, beveling).mesh;
}

std::vector<Kernel> kernels()
{
    return {
        {"copy", deepCopy},
        {"unite",
         [](const MeshData& mesh) {
             const std::array<UnitedMesh, 2> parts{UnitedMesh{&mesh, {}}, UnitedMesh{&mesh, {}}};
             return uniteMeshes(parts, UvSetMerging::ByName);
         }},
        {"soften",
         [](const MeshData& mesh) {
             return softenEdges(mesh, upTo(mesh.topology->edges.size()), 0.5, {});
         }},
        {"smooth", [](const MeshData& mesh) { return smoothMesh(mesh, 1, {}); }},
        {"extrude-all", [](const MeshData& mesh) { return extruded(mesh, true, 1); }},
        {"extrude-half", [](const MeshData& mesh) { return extruded(mesh, false, 2); }},
        {"bevel-all", [](const MeshData& mesh) { return beveled(mesh, 1); }},
        {"bevel-tenth", [](const MeshData& mesh) { return beveled(mesh, 10); }},
    };
}

#ifdef ORV_OPENSUBDIV
struct PeerPoint {
    float x = 0, y = 0, z = 0;
    void Clear(void* = nullptr) { x = y = z = 0; }
    void AddWithWeight(const PeerPoint& point, float weight)
    {
        x += weight * point.x;
        y += weight * point.y;
        z += weight * point.z;
    }
};

/// Refines once and moves the points; texture coordinates stay out of it.
void refineByPeer(const MeshData& mesh)
{
    namespace Far = OpenSubdiv::Far;
    const MeshTopology& topology = *mesh.topology;
    const std::vector<int> sizes(topology.faceCount(), 4);
    std::vector<int> vertices(topology.corners.size());
    for (std::uint32_t corner = 0; corner < vertices.size(); ++corner) {
        vertices[corner] = static_cast<int>(topology.cornerVertex(corner));
    }
    Far::TopologyDescriptor descriptor;
    descriptor.numVertices = static_cast<int>(topology.vertexCount);
    descriptor.numFaces = static_cast<int>(topology.faceCount());
    descriptor.numVertsPerFace = sizes.data();
    descriptor.vertIndicesPerFace = vertices.data();
    using Factory = Far::TopologyRefinerFactory<Far::TopologyDescriptor>;
    const std::unique_ptr<Far::TopologyRefiner> refiner(
        Factory::Create(descriptor, Factory::Options(OpenSubdiv::Sdc::SCHEME_CATMARK)));
    refiner->RefineUniform(Far::TopologyRefiner::UniformOptions(1));
    std::vector<PeerPoint> from(topology.vertexCount);
    for (std::size_t i = 0; i < from.size(); ++i) {
        const host::Vec3f& point = (*mesh.points)[i];
        from[i] = {point.x, point.y, point.z};
    }
    std::vector<PeerPoint> to(static_cast<std::size_t>(refiner->GetLevel(1).GetNumVertices()));
    Far::PrimvarRefiner(*refiner).Interpolate(1, from, to);
}
#endif

/// As many meshes of a size as make a million faces: every size so works on, and makes, as much
/// memory as the others, and none of them lives in the processor's cache alone.
std::vector<SharedMesh> millionFaces(std::uint32_t columns)
{
    const SharedMesh mesh = wavyPlane(columns);
    const std::uint32_t faces = columns * columns;
    std::vector<SharedMesh> meshes((1'000'000 + faces / 2) / faces);
    std::generate(meshes.begin(), meshes.end(), [&mesh] { return deepCopy(*mesh); });
    return meshes;
}

/// Seconds of each kernel (and of the peer behind them) on all of the meshes, whose results stay
/// until the last one is done: medians of alternating runs.
std::vector<double> measure(const std::vector<Kernel>& all, const std::vector<SharedMesh>& meshes,
                            int runs)
{
    std::vector<std::vector<double>> seconds(all.size() + 1);
    std::vector<SharedMesh> results(meshes.size());
    for (int run = 0; run < runs; ++run) {
        for (std::size_t i = 0; i < all.size(); ++i) {
            seconds[i].push_back(secondsOf([&] {
                std::transform(meshes.begin(), meshes.end(), results.begin(),
                               [&](const SharedMesh& mesh) { return all[i].run(*mesh); });
            }));
            for (SharedMesh& result : results) {
                require(result != nullptr, all[i].name);
                result.reset();
            }
        }
#ifdef ORV_OPENSUBDIV
        seconds.back().push_back(secondsOf([&] {
            for (const SharedMesh& mesh : meshes) {
                refineByPeer(*mesh);
            }
        }));
#else
        seconds.back().push_back(0);
#endif
    }
    std::vector<double> medians;
    std::transform(seconds.begin(), seconds.end(), std::back_inserter(medians), median);
    return medians;
}

/// All kernels, or the plain copy and the one of that name.
void measureKernels(int runs, std::string_view name)
{
    std::vector<Kernel> all = kernels();
    std::erase_if(all, [name](const Kernel& kernel) {
        return !name.empty() && kernel.name != name && kernel.name != std::string_view("copy");
    });
    std::array<std::vector<double>, kColumns.size()> perFace;
    std::array<std::vector<double>, kColumns.size()> seconds;
    for (std::size_t size = 0; size < kColumns.size(); ++size) {
        const std::vector<SharedMesh> meshes = millionFaces(kColumns[size]);
        seconds[size] = measure(all, meshes, runs);
        const double faces = static_cast<double>(meshes.size()) * kColumns[size] * kColumns[size];
        for (const double one : seconds[size]) {
            perFace[size].push_back(one / faces * 1e9);
        }
    }
#ifdef ORV_OPENSUBDIV
    all.push_back({"opensubdiv", {}});
#else
    std::printf("OpenSubdiv is not installed (libosd-dev): no peer\n");
#endif
    std::printf("%-13s %30s %30s %24s %7s\n", "", "ms", "ns a face", "in copies", "growth");
    for (std::size_t i = 0; i < all.size(); ++i) {
        std::printf("%-13s", all[i].name);
        for (const auto& row : seconds) {
            std::printf(" %9.2f", row[i] * 1e3);
        }
        for (const auto& row : perFace) {
            std::printf(" %9.1f", row[i]);
        }
        for (const auto& row : seconds) {
            std::printf(" %7.1f", row[i] / row[0]);
        }
        std::printf(" %7.2f\n", perFace.back()[i] / perFace.front()[i]);
    }
    for (std::size_t i = 0; i < all.size(); ++i) {
        std::printf("growth-%s %.3f\ncopies-%s %.3f\n", all[i].name,
                    perFace.back()[i] / perFace.front()[i], all[i].name,
                    seconds.back()[i] / seconds.back()[0]);
    }
}

/// Small edits of one component each.
struct EditKind {
    const char* type;
    const char* input;
    const char* output;
    const char* list;       ///< the attribute that names the components; null for tweaks
    const char* components; ///< their prefix
    const char* setting;    ///< null: none
};

constexpr EditKind kTweakPoint{"polyTweak", "ip", "out", nullptr, nullptr, nullptr};
constexpr EditKind kMoveVertex{"polyMoveVertex", "ip", "out", "ics", "vtx", "setAttr \".ty\" 0.1;"};
constexpr EditKind kMoveFace{"polyMoveFace", "ip", "out", "ics", "f", "setAttr \".ltz\" 0.1;"};
constexpr EditKind kHardEdge{"polySoftEdge", "ip", "out", "ics", "e", "setAttr \".a\" 0;"};
constexpr EditKind kTweakUv{"polyTweakUV", "ip", "out", nullptr, nullptr, nullptr};
constexpr EditKind kTurnFace{"polyNormal", "ip", "out", "ics", "f", "setAttr \".nm\" 0;"};
constexpr EditKind kDeleteFace{"deleteComponent", "ig", "og", "dc", "f", nullptr};

/// What takes turns in a chain.
struct Chain {
    const char* name;
    std::vector<EditKind> kinds;
};

std::vector<Chain> chains()
{
    return {{"polyTweak", {kTweakPoint}},
            {"polyMoveVertex", {kMoveVertex}},
            {"polyMoveFace", {kMoveFace}},
            {"polySoftEdge", {kHardEdge}},
            {"polyTweakUV", {kTweakUv}},
            {"polyNormal", {kTurnFace}},
            {"deleteComponent", {kDeleteFace}},
            {"mixed", {kTweakPoint, kMoveVertex, kMoveFace, kTweakUv}},
            {"all-kinds",
             {kTweakPoint, kMoveVertex, kMoveFace, kHardEdge, kTweakUv, kTurnFace, kDeleteFace}}};
}

/// The statements of one edit.
void writeEdit(std::ostream& scene, int number, const EditKind& kind)
{
    const int place = 40000 + 7 * number; // away from the border
    scene << "createNode " << kind.type << " -n \"edit" << number << "\";\n";
    if (kind.list != nullptr) {
        scene << "setAttr \"." << kind.list << "\" -type \"componentList\" 1 \"" << kind.components
              << '[' << place << "]\";\n";
    } else if (kind.type == std::string_view("polyTweakUV")) {
        scene << "setAttr \".uvtk[" << place << "]\" -type \"float2\" 0.1 0.1;\n";
    } else {
        scene << "setAttr \".tk[" << place << "]\" -type \"float3\" 0 0.1 0;\n";
    }
    if (kind.setting != nullptr) {
        scene << kind.setting << '\n';
    }
}

/// A plane, then `count` edits, then the shape.
void writeChain(const std::string& path, const std::vector<EditKind>& kinds, int count)
{
    std::ofstream scene(path);
    scene << "//Maya ASCII 2018 scene\ncreateNode polyPlane -n \"plane\";\nsetAttr \".sw\" "
          << kChainColumns << ";\nsetAttr \".sh\" " << kChainColumns << ";\n";
    const auto kindOf = [&](int i) { return kinds[static_cast<std::size_t>(i) % kinds.size()]; };
    for (int i = 0; i < count; ++i) {
        writeEdit(scene, i, kindOf(i));
    }
    scene << "createNode transform -n \"t\";\ncreateNode mesh -n \"shape\" -p \"t\";\n";
    std::string last = "plane.out";
    for (int i = 0; i < count; ++i) {
        const std::string node = "edit" + std::to_string(i);
        scene << "connectAttr \"" << last << "\" \"" << node << '.' << kindOf(i).input << "\";\n";
        last = node + '.' + kindOf(i).output;
    }
    scene << "connectAttr \"" << last << "\" \"shape.i\";\n";
}

/// How many parts of a mesh differ from those of the plane: points, flags of edges, texture
/// coordinates, the way faces go round, or faces that are gone.
std::size_t changesOf(const MeshData& mesh, const MeshData& plane)
{
    const auto differing = [](const auto& a, const auto& b) {
        std::size_t count = 0;
        for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i) {
            count += a[i] == b[i] ? 0U : 1U;
        }
        return count;
    };
    const std::uint32_t gone = plane.topology->faceCount() - mesh.topology->faceCount();
    if (gone > 0) {
        return gone;
    }
    std::size_t turned = 0;
    for (std::uint32_t face = 0; face < plane.topology->faceCount(); ++face) {
        const std::uint32_t corner = plane.topology->firstCorner(face);
        turned += mesh.topology->corners[corner] == plane.topology->corners[corner] ? 0U : 1U;
    }
    return turned + differing(*mesh.points, *plane.points) +
           differing(mesh.edgeFlags(), plane.edgeFlags()) +
           differing(*mesh.uvSets.at(0).points, *plane.uvSets.at(0).points);
}

SharedMesh chainPlane()
{
    PlaneSettings settings;
    settings.widthCells = settings.heightCells = kChainColumns;
    return makePlane(settings, SolidPlacement{});
}

/// Seconds that the shape of a chain takes, without reading the file. Every edit must have left
/// something of its own.
double chainSeconds(const std::string& folder, const std::vector<EditKind>& kinds, int count)
{
    const std::string path = folder + "/chain.ma";
    writeChain(path, kinds, count);
    host::session::Session session;
    require(static_cast<bool>(session.open(path)), "opening the chain");
    const auto shape = session.graph().findNode("shape");
    SharedMesh mesh;
    const double seconds = secondsOf([&] { mesh = session.mesh(shape); });
    require(mesh != nullptr, "the chain");
    static const SharedMesh plane = chainPlane();
    const bool isDeleting = std::any_of(kinds.begin(), kinds.end(), [](const EditKind& kind) {
        return kind.type == std::string_view(kDeleteFace.type);
    });
    // where faces go only those are counted; the edges at the ends of rows have one face, and stay
    // soft
    const auto edits = static_cast<std::size_t>(count);
    const std::size_t expected = isDeleting ? edits / kinds.size() : edits - edits / 100;
    require(changesOf(*mesh, *plane) >= expected, "an edit of the chain");
    return seconds;
}

void measureChain(const Chain& chain, int runs, const std::string& folder)
{
    std::vector<double> plain, single, many;
    for (int run = 0; run < runs; ++run) {
        plain.push_back(chainSeconds(folder, chain.kinds, 0));
        double sum = 0;
        for (const EditKind& kind : chain.kinds) {
            sum += chainSeconds(folder, {kind}, 1);
        }
        single.push_back(sum / static_cast<double>(chain.kinds.size()));
        many.push_back(chainSeconds(folder, chain.kinds, kChainLength));
    }
    std::printf("%-15s alone %.2f ms, one edit %.2f ms, %d edits %.1f ms: %.3f ms an edit\n"
                "chain-%s %.3f\n",
                chain.name, median(plain) * 1e3, median(single) * 1e3, kChainLength,
                median(many) * 1e3, (median(many) - median(plain)) / kChainLength * 1e3, chain.name,
                median(many) / median(single));
    std::fflush(stdout);
}

void measureChains(int runs, std::string_view name)
{
    const auto folder = std::filesystem::temp_directory_path() / "bench_kernels";
    std::filesystem::create_directories(folder);
    for (const Chain& chain : chains()) {
        if (name.empty() || name == chain.name) {
            measureChain(chain, runs, folder.string());
        }
    }
    std::filesystem::remove_all(folder);
}

} // namespace

int main(int argc, char** argv)
{
    platform::expectLargeArrays(); // as the importer does
    const int runs = argc > 1 ? std::max(1, std::atoi(argv[1])) : 5;
    const std::string_view only = argc > 2 ? argv[2] : "";
    const std::string_view name = argc > 3 ? argv[3] : "";
    if (only != "chains") {
        measureKernels(runs, name);
    }
    if (only != "kernels") {
        measureChains(runs, name);
    }
    return 0;
}
