// A small binary scene with a value of every kind that files have, for tests that damage it.
#pragma once

#include "tests/support/BinaryScene.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace test {

/// A node and the chunks of its group behind the creation.
struct BinaryNodeChunks {
    std::string code;
    BinaryNode node;
    std::vector<std::string> chunks;
};

/// A square of 1 cm with normals, texture coordinates and colours, and a triangle with its hole.
inline BinaryMesh smallMesh()
{
    BinaryMesh mesh;
    mesh.points = {0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0, .2f, .2f, 0, .4f, .2f, 0, .2f, .4f, 0};
    mesh.edges = {{0, 1}, {1, 2, true}, {2, 3}, {3, 0}, {4, 5}, {5, 6}, {6, 4}};
    mesh.faces = {{{0, 1, 2, 3}, {-7, -6, -5}}, {{4, 5, 6}}};
    mesh.normals = {0, 0, 1, 0, 0, 1, 0, 0, 1, 0, 0, 1};
    mesh.uvSets = {{"map1", {0, 0, 1, 0, 1, 1, 0, 1}, {0, 1, 2, 3, -1, -1, -1, 0, 1, 2}},
                   {"empty", {}}};
    mesh.colorSets = {{"colors", {1, 0, 0, 1, 0, 1, 0, .5f}, {0, 1, 0, 1, -1, -1, -1, 0, 0, 0}}};
    return mesh;
}

/// The numbers of a transform as bind poses hold it: 328 bytes.
inline std::string transformMatrix()
{
    const std::vector<double> three(3, 0.0);
    BinaryBytes bytes;
    bytes.f64s({1, 1, 1}).f64s({0.1, 0.2, 0.3}).u32(2).u32(0xcdcdcdcd).f64s({1, 2, 3});
    for (int i = 0; i < 5; ++i) { // shear, then the pivots and their translations
        bytes.f64s(three);
    }
    bytes.f64s({0, 0, 0, 1}).f64s({0, 0, 0, 1}).f64s({1, 1, 1}).f64s({0, 0, 0, 1});
    return bytes.u8(0).u8(1).raw("garble").bytes();
}

/// Edits of a reference: an attribute that is set, a connection, a placeholder.
inline std::string referenceEdits()
{
    return BinaryBytes()
        .text("topRN")
        .u32(1)
        .text("topRN")
        .u32(3)
        .u32(2)
        .text("|a")
        .text("tx")
        .text(" 5")
        .u32(3)
        .text("a.o")
        .text("b.i")
        .text("")
        .u32(5)
        .u32(3)
        .text("topRN")
        .text("a.o")
        .text("topRN.phl[1]")
        .text("")
        .u32(0)
        .bytes();
}

inline std::vector<BinaryNodeChunks> nodesOfAllValues(const BinaryScene& mb)
{
    const auto number = [&mb](const char* plug, double value) { return mb.number(plug, value); };
    BinaryDefinition weight{"aDBL", "weight", "wt"};
    weight.least = 0;
    weight.most = 1;
    weight.initial = 0.5;
    BinaryDefinition choice{"aENM", "choice", "ch"};
    choice.enumNames = "one:two";
    choice.niceName = "The choice";
    BinaryDefinition words{"aTYP", "words", "wo"};
    words.types = {"STR "};
    const std::vector<double> unit{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    const std::string doubles = BinaryBytes().f64s({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12});
    BinaryMesh mesh = smallMesh();
    const bool hasTags = mb.manner.meshComponents == 4 && mb.manner.hasLongTime;
    if (hasTags) {
        mesh.tags = BinaryBytes().raw("gtag").u8(0).u32(1).text("top").raw(
            BinaryScene::componentList({{"CMDF", {{0, 0}}}}));
    }
    return {
        {"XFRM",
         {"a"},
         {mb.doubles("t", {1, 2, 3}), mb.doubles("r", {.1, .2, .3}), number("v", 1),
          mb.flags(BinaryPlug("s", kMbCached | kMbLocked)), mb.definition(weight),
          mb.definition(choice), mb.definition(words), number("wt", .25),
          mb.string("wo", "caf\xc3\xa9"), mb.aliases("aal", {"alias", "wt"}),
          mb.value("CHMP", "cm",
                   BinaryBytes().u32(2).text("a.tx").u8(1).u32(1).text("a.rx").u8(2).u32(1)),
          mb.value("REFE", "ed", referenceEdits())}},
        {"DMSH",
         {"mesh", "a"},
         {mb.flags(BinaryPlug("iog[0].og", kMbCached, 2)),
          mb.components("iog[0].og[0].gcl", {{"CMDF", {{0, 0}}}}),
          mb.string("uvst[0].uvsn", "map1"),
          mb.floats("uvst[0].uvsp[0:3]", {0, 0, 1, 0, 1, 1, 0, 1}, 2), mb.string("cuvs", "map1"),
          mb.floats("pt[0:1]", {.1f, 0, 0, 0, .1f, 0}), mb.compound("covm[0]", {0, 1, 1}),
          mb.mesh("o", mesh)}},
        {"NCRV", {"curve", "a"}, {mb.curve("cc", 1, 2, 0, {0, 1, 2}, {0, 0, 0, 1, 0, 0, 1, 1, 0})}},
        {"NSRF",
         {"surface", "a"},
         {mb.surface("cc", 1, 1, {0, 1}, {0, 1}, {0, 0, 0, 0, 1, 0, 1, 0, 0, 1, 1, 0})}},
        {"FLAT", {"lattice", "a"}, {mb.lattice("cc", 2, 1, 1, {0, 0, 0, 1, 1, 0, 0, 1})}},
        {"FSCL",
         {"skin", "", 0},
         {mb.sparse("wl[0:2].w", {{{0, .5}, {1, .5}}, {}, {{1, 1}}}),
          mb.doubles("wl[3].w[0:1]", {.5, .5}, 1), mb.matrix("gm", unit)}},
        {"PCTL",
         {"keys", "", 0},
         {mb.keys("ktv[0:1]", {{0, 1}, {6000, 2}}), mb.doubles("kit[0:1]", {1, 9}, 1)}},
        {"FPOS", {"pose", "", 0}, {mb.value("MATR", "xm[0]", transformMatrix())}},
        {"GRPP",
         {"parts", "", 0},
         {mb.components("ic",
                        {{"CMDV", {{-1, 2}}}, {"CSCV", {{0, 1, 2, 3}}}, {"CCCV", {{4, 4}}}})}},
        {"RTRA",
         {"odd", "", 0},
         {mb.shorts("sa", {1, -2}), mb.shorts("sb", {1, 2, 3}, 3), mb.longs("la", {1, 2}),
          mb.longs("lb", {1, 2, 3}, 3), mb.doubles("da", {1, 2}, 2),
          mb.doubles("db", {1, 2, 3, 4}, 4), mb.floats("fa[0:1]", {1, 2, 3, 4, 5, 6}),
          mb.strings("ta", {"one", "", "three"}), mb.value("DBL#", "ra", doubles),
          mb.value("VEC#", "rb", doubles), mb.value("PNT#", "rc", doubles),
          mb.value("I32#", "rd", BinaryBytes().u32(1).u32(2)),
          mb.value("FLT#", "re", BinaryBytes().f32(1)),
          mb.value("MAT#", "rf", BinaryBytes().f64s(unit)),
          mb.value("I64#", "rg", BinaryBytes().u64(1))}},
    };
}

/// The whole scene: header, references, all values, instance, selection and connections.
inline std::string sceneOfAllValues(const BinaryScene& mb)
{
    std::string groups = mb.header(mb.fileInfo("application", "maya") +
                                   mb.plugin("plug", "1.0", {{"plugNode", 0x7fff0001}})) +
                         mb.listedReference("/s/a.mb", "ns", "nsRN") +
                         mb.reference("/s/a.mb", "ns", "nsRN");
    for (const BinaryNodeChunks& entry : nodesOfAllValues(mb)) {
        std::string chunks;
        for (const std::string& chunk : entry.chunks) {
            chunks += chunk;
        }
        groups += mb.node(entry.code, entry.node, chunks);
    }
    groups += mb.node("XFRM", {"b"}) + mb.instance("|a|mesh", "b") +
              mb.selected(":time1", mb.times("o", 250)) +
              mb.connections(mb.connection("keys.o", "a.tx") +
                             mb.connection("mesh.iog", ":initialShadingGroup.dsm", 1) +
                             mb.relationship("link", ":lightLinker1", {"a.msg", "b.msg"})) +
              mb.trailer(12);
    return mb.file(groups);
}

} // namespace test
