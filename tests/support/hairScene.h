// A scene of a hair system whose strands can be worked out by hand, as statements.
#pragma once

#include <string>

namespace test {

/// A ground of side 2 about (10 0 0) that looks along y, with u along x and v against z, and a wall
/// in the plane z = 0 from (0 0) to (4 2) with the surface parameters 0..8 and 0..1.
inline std::string hairSurfaces()
{
    return R"(
        createNode transform -n "ground";
            setAttr ".t" -type "double3" 10 0 0 ;
        createNode mesh -n "groundShape" -p "ground";
            setAttr -s 4 ".uvst[0].uvsp[0:3]" -type "float2" 0 0 1 0 1 1 0 1;
            setAttr ".uvst[0].uvsn" -type "string" "map1";
            setAttr ".cuvs" -type "string" "map1";
            setAttr -s 4 ".vt[0:3]"  -1 0 1  1 0 1  1 0 -1  -1 0 -1;
            setAttr -s 4 ".ed[0:3]"  0 1 0  1 2 0  2 3 0  3 0 0;
            setAttr -ch 4 ".fc[0]" -type "polyFaces" f 4 0 1 2 3 mu 0 4 0 1 2 3;
        createNode transform -n "wall";
        createNode nurbsSurface -n "wallShape" -p "wall";
            setAttr ".cc" -type "nurbsSurface" 1 1 0 0 no
                2 0 8
                2 0 1
                4 0 0 0  0 2 0  4 0 0  4 2 0;
    )";
}

/// The follicle "groundFollicle" at u 0.25, v 0.75 of the ground, thus at (9.5 0 -0.5) with its z
/// along y, and its curve from there to 1 and 3 along z; `isOld`: connected as scenes before 2012
/// are.
inline std::string groundFollicle(bool isOld = false)
{
    const std::string curve =
        isOld ? "connectAttr \"groundCurveShape.ws\" \"groundFollicleShape.sp\";\n"
              : "connectAttr \"groundCurveShape.l\" \"groundFollicleShape.sp\";\n"
                "connectAttr \"groundCurve.wm\" \"groundFollicleShape.spm\";\n";
    return R"(
        createNode transform -n "groundFollicle";
        createNode follicle -n "groundFollicleShape" -p "groundFollicle";
            setAttr ".pu" 0.25;
            setAttr ".pv" 0.75;
        createNode transform -n "groundCurve" -p "groundFollicle";
        createNode nurbsCurve -n "groundCurveShape" -p "groundCurve";
            setAttr ".io" yes;
            setAttr ".cc" -type "nurbsCurve" 1 2 0 no 3
                3 0 1 2
                3 0 0 0  0 0 1  0 0 3;
        connectAttr "groundFollicleShape.ot" "groundFollicle.t";
        connectAttr "groundFollicleShape.or" "groundFollicle.r";
        connectAttr "groundShape.wm" "groundFollicleShape.iwm";
        connectAttr "groundShape.o" "groundFollicleShape.inm";
    )" + curve;
}

/// The passive follicle "wallFollicle" in the middle of the wall, without a curve: straight from
/// (2 1 0) to (2 1 1.5).
inline std::string wallFollicle()
{
    return R"(
        createNode transform -n "wallFollicle";
        createNode follicle -n "wallFollicleShape" -p "wallFollicle";
            setAttr ".pu" 0.5;
            setAttr ".pv" 0.5;
            setAttr ".sim" 0;
            setAttr ".sgl" 1.5;
        connectAttr "wallShape.l" "wallFollicleShape.is";
        connectAttr "wall.wm" "wallFollicleShape.iwm";
    )";
}

/// "hairsShape": one hair per clump without width, nothing random; "strandsShape" shows it under a
/// transform at (0 0 5). `settings`: further ones of the hair system.
inline std::string hairSystem(const std::string& settings = {})
{
    return R"(
        createNode transform -n "strands";
            setAttr ".t" -type "double3" 0 0 5 ;
        createNode pfxHair -n "strandsShape" -p "strands";
            setAttr ".dpc" 100;
            setAttr ".dam" no;
        createNode transform -n "hairs";
        createNode hairSystem -n "hairsShape" -p "hairs";
            setAttr ".hpc" 1;
            setAttr ".cwd" 0;
            setAttr ".dfr" 0;
            setAttr ".hwd" 0.2;
            setAttr -s 2 ".hws[0:1]"  0 1 1 1 0.5 1;
            setAttr ".hcl" -type "float3" 0.5 0.25 1 ;
            setAttr -s 2 ".hcs";
            setAttr ".hcs[0].hcsp" 0;
            setAttr ".hcs[0].hcsc" -type "float3" 1 1 1 ;
            setAttr ".hcs[0].hcsi" 1;
            setAttr ".hcs[1].hcsp" 1;
            setAttr ".hcs[1].hcsc" -type "float3" 0 1 0.5 ;
            setAttr ".hcs[1].hcsi" 1;
    )" + settings +
           "\nconnectAttr \"hairsShape.orh\" \"strandsShape.rhs\";\n";
}

/// Puts a follicle into the system at an index.
inline std::string joined(const std::string& follicle, int index)
{
    const std::string number = std::to_string(index);
    return "connectAttr \"" + follicle + ".oha\" \"hairsShape.ih[" + number + "]\";\n" +
           "connectAttr \"hairsShape.oh[" + number + "]\" \"" + follicle + ".crp\";\n";
}

/// Both follicles: the wall's first.
inline std::string hairScene(const std::string& settings = {})
{
    return hairSurfaces() + groundFollicle() + wallFollicle() + hairSystem(settings) +
           joined("groundFollicleShape", 4) + joined("wallFollicleShape", 1);
}

} // namespace test
