// Payloads of setAttr by type.
#include "tests/unit/host_file/readText.h"

#include "host/file/ascii/payloads/payloads.h"
#include "host/geometry/mesh/MeshData.h"

#include <gtest/gtest.h>

using test::readStatements;

namespace {

/// The line of one unknown attribute with a payload of that type.
std::string read(const std::string& type, const std::string& payload, std::string_view before = {})
{
    return readStatements("setAttr \".zz\" -type \"" + type + "\" " + payload + ";", "mesh",
                          before);
}

constexpr const char* kMetres = "currentUnit -l m;\n";

} // namespace

TEST(Payloads, Strings)
{
    EXPECT_EQ(read("string", R"("a\"b\\c\nd\te\rf\gh")"),
              "setAttr .zz string \"a\\\"b\\\\c\\nd\\te\\rfgh\"\n");
    EXPECT_EQ(read("string", "( \"one \" + \"two\"+\"three\" )"),
              "setAttr .zz string \"one twothree\"\n");
    EXPECT_EQ(read("string", "\"line\nbreak // no comment; no end\""),
              "setAttr .zz string \"line\\nbreak // no comment; no end\"\n");
    EXPECT_EQ(read("string", "\"\""), "setAttr .zz string \"\"\n");
    EXPECT_EQ(read("string", "(\"a\" 5)"),
              "damaged \"setAttr\": a string was expected instead of '5'\n");
    EXPECT_EQ(readStatements("setAttr \".b\" (\"x\" + \"y\");", "script"),
              "setAttr .b string \"xy\"\n");
}

TEST(Payloads, StringsOfARange)
{
    EXPECT_EQ(readStatements("setAttr \".zz[4:5]\" -type \"string\" \"a\" \"b\";"),
              "setAttr .zz[4] string \"a\"\nsetAttr .zz[5] string \"b\"\n");
    EXPECT_EQ(readStatements("setAttr \".zz\" -type \"string\" \"a\" \"b\";"),
              "setAttr .zz string \"a\"\ndamaged \"setAttr\": more values than the plug takes\n");
    EXPECT_EQ(readStatements("setAttr \".zz[4:5]\" -type \"string\" \"a\";"),
              "setAttr .zz[4] string \"a\"\n"
              "damaged \"setAttr\": fewer values than the range of the plug takes\n");
}

TEST(Payloads, ATypeWithoutDataIsNoValue)
{
    EXPECT_EQ(read("mesh", ""), "setAttr .zz nothing\n");
    EXPECT_EQ(read("nurbsTrimface", ""), "setAttr .zz nothing\n");
}

TEST(Payloads, Arrays)
{
    EXPECT_EQ(read("stringArray", "2 \"a\" \"b\""), "setAttr .zz strings \"a\" \"b\"\n");
    EXPECT_EQ(read("stringArray", "0"), "setAttr .zz strings\n");
    EXPECT_EQ(read("Int32Array", "3 1 -2 3"), "setAttr .zz integers 3 1 -2 3\n");
    EXPECT_EQ(read("doubleArray", "2 0.5 1e-3"), "setAttr .zz numbers 2 0.5 0.001\n");
    EXPECT_EQ(read("floatArray", "1 0.25"), "setAttr .zz numbers 1 0.25\n");
    EXPECT_EQ(read("componentList", "2 \"f[0:5]\" \"vtx[*]\""),
              "setAttr .zz components \"f[0:5]\" \"vtx[*]\"\n");
    EXPECT_EQ(read("doubleArray", "1000000000 1"),
              "damaged \"setAttr\": 1000000000 entries announced, 3 bytes left\n");
    EXPECT_EQ(read("doubleArray", "-1"),
              "damaged \"setAttr\": a whole number from 0 to 2147483647 was expected\n");
}

TEST(Payloads, PointsAreLengthsAndVectorsAreNot)
{
    EXPECT_EQ(read("vectorArray", "1 1 2 3", kMetres), "setAttr .zz vectors 1 2 3\n");
    EXPECT_EQ(read("pointArray", "1 1 2 3 1", kMetres), "setAttr .zz points 100 200 300 1\n");
}

TEST(Payloads, MatricesAreTakenAsTheyAre)
{
    EXPECT_EQ(read("matrix", "1 0 0 0 0 1 0 0 0 0 1 0 5 6 7 1", kMetres),
              "setAttr .zz matrix 1 0 0 0 0 1 0 0 0 0 1 0 5 6 7 1\n");
    EXPECT_EQ(read("fltMatrix", "1 0 0 0 0 1 0 0 0 0 1 0 5 6 7 1"),
              "setAttr .zz matrix 1 0 0 0 0 1 0 0 0 0 1 0 5 6 7 1\n");
    EXPECT_EQ(read("matrix", "1 0 0"),
              "damaged \"setAttr\": the statement ends inside its payload\n");
}

TEST(Payloads, PosesAreComposed)
{
    // Scale (2 3 4), no rotation, translation (5 6 7): rows scaled, translation last; centimetres
    // whatever the unit.
    EXPECT_EQ(read("matrix",
                   "\"xform\" 2 3 4 0 0 0 0 5 6 7 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 "
                   "0 0 0 1 0 0 0 1 1 1 1 yes",
                   kMetres),
              "setAttr .zz matrix 2 0 0 0 0 3 0 0 0 0 4 0 5 6 7 1\n");
    // A joint orientation of half a turn about x as quaternion (1 0 0 0), x y z w: rows y and z
    // turn over.
    const std::string half =
        read("matrix", "xform 1 1 1 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 "
                       "0 0 0 1 1 0 0 0 1 1 1 no");
    EXPECT_EQ(half, "setAttr .zz matrix 1 0 0 0 0 -1 0 0 0 0 -1 0 0 0 0 1\n");
    // inverseParentScale (2 1 1) with compensation halves x.
    EXPECT_EQ(read("matrix", "\"xform\" 1 1 1 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 "
                             "0 0 0 1 0 0 0 1 2 1 1 yes"),
              "setAttr .zz matrix 0.5 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1\n");
}

TEST(Payloads, AttributeAliases)
{
    EXPECT_EQ(read("attributeAlias", "{\"a\",\"b\" , \"c\" \"d[0]\"}"),
              "setAttr .zz strings \"a\" \"b\" \"c\" \"d[0]\"\n");
    EXPECT_EQ(read("attributeAlias", "{}"), "setAttr .zz strings\n");
    EXPECT_EQ(read("attributeAlias", "{\"a\", b}"),
              "damaged \"setAttr\": a string or a closing brace was expected\n");
    EXPECT_EQ(read("attributeAlias", "\"a\""),
              "damaged \"setAttr\": an opening brace was expected\n");
}

TEST(Payloads, ComponentValues)
{
    EXPECT_EQ(read("dataPolyComponent", "Index_Data Edge 0"),
              "setAttr .zz polyComponent edge indices 0 values 0\n");
    EXPECT_EQ(read("dataPolyComponent", "Index_Data Vertex 2 \n\t3 1.5 4 2"),
              "setAttr .zz polyComponent vertex indices 2 3 4 values 2 1.5 2\n");
    EXPECT_EQ(read("dataPolyComponent", "Index_Data Face 3 1 2 3"),
              "setAttr .zz polyComponent face indices 3 1 2 3 values 0\n");
    EXPECT_EQ(read("dataPolyComponent", "Index_Data UV 1 7 0"),
              "setAttr .zz polyComponent uv indices 1 7 values 1 0\n");
    EXPECT_EQ(read("dataPolyComponent", "Index_Data Hair 1 7 0"),
              "damaged \"setAttr\": Edge, Vertex, UV or Face was expected\n");
    EXPECT_EQ(read("dataPolyComponent", "Index_Data Edge 2 7 0 1"),
              "damaged \"setAttr\": the entries do not fit their count\n");
    EXPECT_EQ(read("dataPolyComponent", "Index_Data Edge 1 -7 0"),
              "damaged \"setAttr\": a component index is out of range\n");
}

TEST(Payloads, Curves)
{
    // Degree 1, one span: two knots, two points.
    EXPECT_EQ(read("nurbsCurve", "1 1 0 no 3 2 0 1 2 0 0 0 1 2 3", kMetres),
              "setAttr .zz curve 1 1 0 0 3 knots 2 0 1 poles 6 0 0 0 100 200 300\n");
    // Points in a parameter plane are no lengths; neither are weights.
    EXPECT_EQ(read("nurbsCurve", "1 1 0 no 2 2 0 1 2 0 0 1 2", kMetres),
              "setAttr .zz curve 1 1 0 0 2 knots 2 0 1 poles 4 0 0 1 2\n");
    EXPECT_EQ(read("nurbsCurve", "1 1 0 yes 3 2 0 1 2 0 0 0 1 1 2 3 0.5", kMetres),
              "setAttr .zz curve 1 1 0 1 3 knots 2 0 1 poles 8 0 0 0 1 100 200 300 0.5\n");
    EXPECT_EQ(read("nurbsCurve", "3 1 0 no 3 2 0 1 2 0 0 0 1 2 3"),
              "damaged \"setAttr\": the counts of a curve's knots and points do not fit its "
              "degree\n");
    EXPECT_EQ(read("nurbsCurve", "1 1 3 no 3 2 0 1 2 0 0 0 1 2 3"),
              "damaged \"setAttr\": a whole number from 0 to 2 was expected\n");
    EXPECT_EQ(read("nurbsCurve", "1 1 0 no 4 2 0 1 2 0 0 0 1 2 3"),
              "damaged \"setAttr\": a whole number from 2 to 3 was expected\n");
}

TEST(Payloads, Surfaces)
{
    const std::string points = "4 0 0 0 0 1 0 1 0 0 1 1 0";
    const std::string line = "setAttr .zz surface 1 1 0 2 0 knotsU 2 0 1 knotsV 2 0 1 poles 12 "
                             "0 0 0 0 1 0 1 0 0 1 1 0\n";
    EXPECT_EQ(read("nurbsSurface", "1 1 0 2 no 2 0 1 2 0 1 " + points), line);
    EXPECT_EQ(read("nurbsSurface", "1 1 0 2 no 2 0 1 2 0 1 \"TRIM\" " + points), line);
    EXPECT_EQ(read("nurbsSurface", "1 1 0 2 no 2 0 1 2 0 1 NOTRIM " + points), line);
    EXPECT_EQ(read("nurbsSurface", "1 1 0 0 yes 2 0 1 2 0 1 4 0 0 0 1 0 1 0 1 1 0 0 1 1 1 0 0.5",
                   kMetres),
              "setAttr .zz surface 1 1 0 0 1 knotsU 2 0 1 knotsV 2 0 1 poles 16 "
              "0 0 0 1 0 100 0 1 100 0 0 1 100 100 0 0.5\n");
    EXPECT_EQ(read("nurbsSurface", "1 1 0 2 no 3 0 1 2 2 0 1 " + points),
              "damaged \"setAttr\": the counts of a surface's knots and points do not fit its "
              "degrees\n");
}

TEST(Payloads, TrimRegions)
{
    const std::string curve3 = "1 1 0 no 3 2 0 1 2 0 0 0 1 0 0 ";
    const std::string curve2 = "1 1 0 no 2 2 -1 0 2 0 0 1 0 ";
    EXPECT_EQ(
        read("nurbsTrimface", "yes 1  0 1 0  1 " + curve3 + "0.01 1 -1  1 " + curve2 + "1 0.02"),
        "setAttr .zz trim 1 boundary 0 flags 1 0 edge "
        "curve 1 1 0 0 3 knots 2 0 1 poles 6 0 0 0 1 0 0 0.01 1 -1 "
        "curve 1 1 0 0 2 knots 2 -1 0 poles 4 0 0 1 0 1 0.02\n");
    EXPECT_EQ(read("nurbsTrimface", "no 0"), "setAttr .zz trim 0\n");
    EXPECT_EQ(read("nurbsTrimface", "no 1 0 1 0 1 1"),
              "damaged \"setAttr\": 1 entries announced, 3 bytes left\n");
}

TEST(Payloads, Lattices)
{
    EXPECT_EQ(read("lattice", "2 1 1 2 0 0 0 1 2 3", kMetres),
              "setAttr .zz lattice 2 1 1 0 0 0 100 200 300\n");
    EXPECT_EQ(read("lattice", "2 2 1 2 0 0 0 1 2 3"),
              "damaged \"setAttr\": the count of lattice points is not the product of its "
              "divisions\n");
    EXPECT_EQ(read("lattice", "0 2 1 2 0 0 0 1 2 3"),
              "damaged \"setAttr\": a whole number from 1 to 2147483647 was expected\n");
}

TEST(Payloads, MeshesOfTheOldDialect)
{
    // A triangle: edges 0-1, 1-2, 2-0; the face walks 0, 1, 2; -1 would be edge 0 backwards.
    EXPECT_EQ(read("mesh", "\"v\" 3 0 0 0 1 0 0 0 1 0 \"vn\" 1 0 0 1 \"vt\" 3 0 0 1 0 0 1 "
                           "\"e\" 3 0 1 \"hard\" 1 2 \"smooth\" 2 0 \"hard\" "
                           "\"face\" \"l\" 3 0 1 2 \"lt\" 3 0 1 2 \"face\" \"l\" 3 -1 -3 -2"),
              "setAttr .zz mesh points 0 0 0 1 0 0 0 1 0 edges 0 1 0 1 2 1 2 0 0 "
              "corners 6 0 1 2 -1 -3 -2 loopStart 3 0 3 6 faceLoop 0 "
              "uvSet \"map1\" 0 0 1 0 0 1 ids 6 0 1 2 -1 -1 -1\n");
}

TEST(Payloads, MeshesWithHoles)
{
    EXPECT_EQ(read("mesh", "v 3 0 0 0 1 0 0 0 1 0 e 3 0 1 hard 1 2 hard 2 0 hard "
                           "face l 3 0 1 2 l 3 -1 -3 -2"),
              "setAttr .zz mesh points 0 0 0 1 0 0 0 1 0 edges 0 1 0 1 2 0 2 0 0 "
              "corners 6 0 1 2 -1 -3 -2 loopStart 3 0 3 6 faceLoop 2 0 2\n");
}

TEST(Payloads, MeshesOfTheNewDialect)
{
    EXPECT_EQ(read("mesh",
                   "\"verts\" 3 0 0 0 1 0 0 0 1 0 \"edges\" 3 0 1 1 1 2 0 2 0 1 "
                   "\"faces\" 1 3 0 1 2 \"uvMaps\" 1 0 \"mi\" \"map1\" \"uv\" 0",
                   kMetres),
              "setAttr .zz mesh points 0 0 0 100 0 0 0 100 0 edges 0 1 1 1 2 0 2 0 1 "
              "corners 3 0 1 2 loopStart 2 0 3 faceLoop 0 uvSet \"map1\" ids 0\n");
}

TEST(Payloads, MeshesWithBadIndicesAreReported)
{
    EXPECT_EQ(read("mesh", "v 2 0 0 0 1 0 0 e 1 0 2 hard"),
              "damaged \"setAttr\": a whole number from 0 to 1 was expected\n");
    EXPECT_EQ(read("mesh", "v 2 0 0 0 1 0 0 e 1 0 1 hard face l 1 1"),
              "damaged \"setAttr\": a whole number from -1 to 0 was expected\n");
    EXPECT_EQ(read("mesh", "v 2 0 0 0 1 0 0 e 1 0 1 hard face l 1 -2"),
              "damaged \"setAttr\": a whole number from -1 to 0 was expected\n");
    EXPECT_EQ(read("mesh", "v 0 e 1 0 0 hard"),
              "damaged \"setAttr\": an index into an empty list\n");
    EXPECT_EQ(read("mesh", "v 1 0 0 0 e 1 0 0 hard face l 1 0 lt 2 0 0"),
              "damaged \"setAttr\": a loop has more texture coordinates than corners\n");
    EXPECT_EQ(read("mesh", "\"what\" 1"), "damaged \"setAttr\": 'v' was expected\n");
}

TEST(Payloads, TypesThatNobodyKnowsAreKeptAsText)
{
    EXPECT_EQ(read("subd", "20 0 ( \"a;b\" ) {1}"),
              "setAttr .zz opaque \"subd\" \"20 0 ( \\\"a;b\\\" ) {1}\"\n");
    EXPECT_EQ(read("newParticles", ""), "setAttr .zz opaque \"newParticles\" \"\"\n");
    EXPECT_EQ(read("characterMapping", "1 \"a.b\" 1 1"),
              "setAttr .zz opaque \"characterMapping\" \"1 \\\"a.b\\\" 1 1\"\n");
    EXPECT_EQ(read("dataReferenceEdits", "\"N\" \"\" 0 \"M\" 1 5 3 \"x\" \"y\" \"\""),
              "setAttr .zz opaque \"dataReferenceEdits\" "
              "\"\\\"N\\\" \\\"\\\" 0 \\\"M\\\" 1 5 3 \\\"x\\\" \\\"y\\\" \\\"\\\"\"\n");
}

TEST(Payloads, LongUnknownTextIsCut)
{
    const std::string file = std::string(test::kHeader) +
                             "createNode mesh -n \"m\"; setAttr \".zz\" -type \"thing\" \"" +
                             std::string(3u << 20, 'x') + "\";";
    class Keeper : public test::NodeTableSink {
    public:
        std::size_t bytes = 0;
        void setAttribute(const host::file::SetAttribute& command) override
        {
            bytes = command.values[0].data<host::OpaqueText>()->text.size();
        }
    };
    Keeper sink;
    ASSERT_TRUE(host::file::readAscii({file.data(), file.size()}, sink));
    EXPECT_EQ(sink.bytes, 1u << 20);
}

TEST(Payloads, TheTableIsSortedAndUnique)
{
    const auto rows = host::file::ascii::payloadTable();
    for (std::size_t i = 1; i < rows.size(); ++i) {
        EXPECT_LT(rows[i - 1].type, rows[i].type);
    }
    EXPECT_EQ(host::file::ascii::findPayload("zzz"), nullptr);
    EXPECT_EQ(host::file::ascii::findPayload("mesh")->kind, host::AttributeKind::Mesh);
}

TEST(Payloads, AttributesOfAKindNeedNoType)
{
    EXPECT_EQ(readStatements("setAttr \".ic\" 1 \"f[0]\";", "groupParts"),
              "setAttr .ic components \"f[0]\"\n");
}
