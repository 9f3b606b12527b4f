// Writes the inputs of the benchmarks: one smooth wavy mesh as a Maya ASCII scene, as an .obj file
// or as a Maya Binary scene, many small nodes, or animated transforms among others.
//
//   bench_make_scene mesh COLUMNS scene.ma scene.obj
//       COLUMNS x COLUMNS quads with texture coordinates
//   bench_make_scene binary COLUMNS scene.mb
//       the same scene, number by number, in the binary form of Maya 2019
//   bench_make_scene nodes COUNT scene.ma
//       COUNT transforms, ten to a group, with a few channels each
//   bench_make_scene animated COUNT OTHERS FRAMES scene.ma
//       COUNT transforms with nine curves of four keys each, OTHERS without, a range of FRAMES
#include "tests/support/BinaryScene.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

namespace {

struct Closer {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, Closer>;

File create(const char* path)
{
    File file(std::fopen(path, "wb"));
    if (!file) {
        std::perror(path);
        std::exit(1);
    }
    return file;
}

/// Numbers as Maya prints single precision in its files.
constexpr const char* kFloat = " %.8g";
/// Elements of one setAttr statement in files.
constexpr int kPerStatement = 166;

/// Writes count elements by `element(i)` as statements of consecutive ranges.
template<class Element>
void writeRanges(std::FILE* ma, const char* attribute, const char* type, int count, Element element)
{
    for (int first = 0; first < count; first += kPerStatement) {
        const int last = first + kPerStatement < count ? first + kPerStatement - 1 : count - 1;
        if (first == 0) {
            std::fprintf(ma, "\tsetAttr -s %d \"%s[%d:%d]\"%s", count, attribute, first, last,
                         type);
        } else {
            std::fprintf(ma, "\tsetAttr \"%s[%d:%d]\"", attribute, first, last);
        }
        for (int i = first; i <= last; ++i) {
            if ((i - first) % 2 == 0) {
                std::fputs("\n\t\t", ma);
            }
            element(i);
        }
        std::fputs(";\n", ma);
    }
}

struct Grid {
    int n; ///< quads in a row
    int vertexCount() const { return (n + 1) * (n + 1); }
    // Edges: all horizontal ones row by row, then all vertical ones column by column within rows.
    int horizontal(int row, int column) const { return row * n + column; }
    int vertical(int row, int column) const { return (n + 1) * n + row * (n + 1) + column; }
};

void point(const Grid& grid, int vertex, double out[3])
{
    const double u = vertex % (grid.n + 1) / static_cast<double>(grid.n);
    const double v = vertex / (grid.n + 1) / static_cast<double>(grid.n);
    out[0] = 100 * u - 50;
    out[1] = 3 * std::sin(17 * u) * std::cos(13 * v) + 0.3 * std::sin(171 * u + 97 * v);
    out[2] = 50 - 100 * v;
}

void writeMesh(const Grid& grid, const char* maPath, const char* objPath)
{
    const File maFile = create(maPath);
    const File objFile = create(objPath);
    std::FILE* ma = maFile.get();
    std::FILE* obj = objFile.get();
    std::fputs(
        "//Maya ASCII 2018 scene\nrequires maya \"2018\";\ncurrentUnit -l centimeter -a degree -t "
        "film;\n"
        "createNode transform -n \"waves\";\ncreateNode mesh -n \"wavesShape\" -p \"waves\";\n"
        "\tsetAttr -k off \".v\";\n\tsetAttr \".uvst[0].uvsn\" -type \"string\" \"map1\";\n",
        ma);
    const int n = grid.n;
    const int vertices = grid.vertexCount();
    writeRanges(ma, ".uvst[0].uvsp", " -type \"float2\"", vertices, [&](int i) {
        const double u = i % (n + 1) / static_cast<double>(n);
        const double v = i / (n + 1) / static_cast<double>(n);
        std::fprintf(ma, kFloat, u);
        std::fprintf(ma, kFloat, v);
        std::fprintf(obj, "vt %.8g %.8g\n", u, v);
    });
    std::fputs("\tsetAttr \".cuvs\" -type \"string\" \"map1\";\n", ma);
    writeRanges(ma, ".vt", "", vertices, [&](int i) {
        double p[3];
        point(grid, i, p);
        for (const double c : p) {
            std::fprintf(ma, kFloat, c);
        }
        std::fprintf(obj, "v %.8g %.8g %.8g\n", p[0], p[1], p[2]);
    });
    const int edges = 2 * n * (n + 1);
    writeRanges(ma, ".ed", "", edges, [&](int i) {
        if (i < n * (n + 1)) {
            const int a = i / n * (n + 1) + i % n;
            std::fprintf(ma, " %d %d 1", a, a + 1);
        } else {
            const int k = i - n * (n + 1);
            std::fprintf(ma, " %d %d 1", k, k + n + 1);
        }
    });
    writeRanges(ma, ".fc", " -type \"polyFaces\"", n * n, [&](int i) {
        const int row = i / n;
        const int column = i % n;
        const int a = row * (n + 1) + column;
        std::fprintf(ma, " f 4 %d %d %d %d mu 0 4 %d %d %d %d", grid.horizontal(row, column),
                     grid.vertical(row, column + 1), -grid.horizontal(row + 1, column) - 1,
                     -grid.vertical(row, column) - 1, a, a + 1, a + n + 2, a + n + 1);
        std::fprintf(obj, "f %d/%d %d/%d %d/%d %d/%d\n", a + 1, a + 1, a + 2, a + 2, a + n + 3,
                     a + n + 3, a + n + 2, a + n + 2);
    });
    std::fputs(
        "connectAttr \"wavesShape.iog\" \":initialShadingGroup.dsm\" -na;\n// End of scene\n", ma);
}

/// The number that a reader finds in the text.
float asPrinted(double number)
{
    char text[64];
    std::snprintf(text, sizeof text, kFloat, number);
    return static_cast<float>(std::strtod(text, nullptr));
}

test::BinaryMesh binaryMesh(const Grid& grid)
{
    const int n = grid.n;
    test::BinaryMesh mesh;
    test::BinaryMesh::Set map{"map1", {}};
    for (int i = 0; i < grid.vertexCount(); ++i) {
        double p[3];
        point(grid, i, p);
        for (const double c : p) {
            mesh.points.push_back(asPrinted(c));
        }
        map.numbers.push_back(asPrinted(i % (n + 1) / static_cast<double>(n)));
        map.numbers.push_back(asPrinted(i / (n + 1) / static_cast<double>(n)));
    }
    const auto edge = [&](int start, int end) {
        mesh.edges.push_back({static_cast<std::uint32_t>(start), static_cast<std::uint32_t>(end)});
    };
    for (int i = 0; i < n * (n + 1); ++i) {
        const int a = i / n * (n + 1) + i % n;
        edge(a, a + 1);
    }
    for (int i = 0; i < n * (n + 1); ++i) {
        edge(i, i + n + 1);
    }
    for (int i = 0; i < n * n; ++i) {
        const int row = i / n;
        const int column = i % n;
        const int a = row * (n + 1) + column;
        mesh.faces.push_back(
            {{grid.horizontal(row, column), grid.vertical(row, column + 1),
              -grid.horizontal(row + 1, column) - 1, -grid.vertical(row, column) - 1}});
        map.corners.insert(map.corners.end(), {a, a + 1, a + n + 2, a + n + 1});
    }
    mesh.uvSets = {std::move(map)};
    return mesh;
}

void writeBinaryMesh(const Grid& grid, const char* path)
{
    const test::BinaryScene mb(test::kMaya2019);
    const test::BinaryMesh mesh = binaryMesh(grid);
    const std::string last = std::to_string(grid.vertexCount() - 1);
    const std::string values =
        mb.string("uvst[0].uvsn", "map1") +
        mb.floats("uvst[0].uvsp[0:" + last + "]", mesh.uvSets[0].numbers, 2) +
        mb.string("cuvs", "map1") + mb.mesh("o", mesh);
    const std::string file =
        mb.file(mb.header() + mb.node("XFRM", {"waves"}) +
                mb.node("DMSH", {"wavesShape", "waves"}, values) +
                mb.connections(mb.connection("wavesShape.iog", ":initialShadingGroup.dsm", 1)) +
                mb.trailer(2));
    std::fwrite(file.data(), 1, file.size(), create(path).get());
}

void writeNodes(int count, const char* maPath)
{
    const File maFile = create(maPath);
    std::FILE* ma = maFile.get();
    std::fputs("//Maya ASCII 2018 scene\nrequires maya \"2018\";\ncurrentUnit -l centimeter -a "
               "degree -t film;\n",
               ma);
    for (int i = 0; i < count; ++i) {
        if (i % 10 == 0) {
            std::fprintf(ma, "createNode transform -n \"group%d\";\n", i / 10 + 1);
            continue;
        }
        std::fprintf(ma,
                     "createNode transform -n \"item%d\" -p \"group%d\";\n"
                     "\tsetAttr \".t\" -type \"double3\" %d %d %d ;\n\tsetAttr \".ry\" %d;\n",
                     i, i / 10 + 1, i % 7, i % 11, i % 13, i % 360);
    }
    std::fputs("// End of scene\n", ma);
}

void writeCurve(std::FILE* ma, int item, const char* kind, const char* channel, int frames)
{
    std::fprintf(ma,
                 "createNode animCurve%s -n \"item%d_%s\";\n\tsetAttr \".tan\" 18;\n"
                 "\tsetAttr \".wgt\" no;\n\tsetAttr -s 4 \".ktv[0:3]\"  1 %d %d %d %d %d %d %d;\n"
                 "connectAttr \"item%d_%s.o\" \"item%d.%s\";\n",
                 kind, item, channel, 1 + item % 3, frames / 3, 2 + item % 5, frames / 2,
                 1 + item % 7, frames, 3, item, channel, item, channel);
}

void writeAnimated(int count, int others, int frames, const char* maPath)
{
    const File maFile = create(maPath);
    std::FILE* ma = maFile.get();
    std::fputs("//Maya ASCII 2018 scene\nrequires maya \"2018\";\ncurrentUnit -l centimeter -a "
               "degree -t film;\n",
               ma);
    for (int i = 0; i < others; ++i) {
        std::fprintf(ma, "createNode transform -n \"still%d\";\n\tsetAttr \".ry\" %d;\n", i,
                     i % 360);
    }
    constexpr const char* kChannels[][2] = {{"TL", "tx"}, {"TL", "ty"}, {"TL", "tz"},
                                            {"TA", "rx"}, {"TA", "ry"}, {"TA", "rz"},
                                            {"TU", "sx"}, {"TU", "sy"}, {"TU", "sz"}};
    for (int i = 0; i < count; ++i) {
        std::fprintf(ma, "createNode transform -n \"item%d\";\n", i);
        for (const auto& [kind, channel] : kChannels) {
            writeCurve(ma, i, kind, channel, frames);
        }
    }
    std::fprintf(ma,
                 "createNode script -n \"sceneConfigurationScriptNode\";\n\tsetAttr \".b\" -type "
                 "\"string\" \"playbackOptions -min 1 -max %d\";\n\tsetAttr \".st\" 6;\n// End of "
                 "scene\n",
                 frames);
}

} // namespace

int main(int argc, char** argv)
{
    const std::string_view kind = argc > 1 ? argv[1] : "";
    if (kind == "mesh" && argc == 5) {
        writeMesh(Grid{std::atoi(argv[2])}, argv[3], argv[4]);
        return 0;
    }
    if (kind == "binary" && argc == 4) {
        writeBinaryMesh(Grid{std::atoi(argv[2])}, argv[3]);
        return 0;
    }
    if (kind == "nodes" && argc == 4) {
        writeNodes(std::atoi(argv[2]), argv[3]);
        return 0;
    }
    if (kind == "animated" && argc == 6) {
        writeAnimated(std::atoi(argv[2]), std::atoi(argv[3]), std::atoi(argv[4]), argv[5]);
        return 0;
    }
    std::fputs("usage: bench_make_scene mesh COLUMNS scene.ma scene.obj | binary COLUMNS "
               "scene.mb | nodes COUNT scene.ma | "
               "animated COUNT OTHERS FRAMES scene.ma\n",
               stderr);
    return 2;
}
