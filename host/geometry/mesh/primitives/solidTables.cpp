#include "host/geometry/mesh/primitives/solidTables.h"

#include "host/math/angle.h"

#include <array>
#include <numbers>

namespace host::geometry {
namespace {

// The truncated icosahedron with a corner on +y and a neighbour of it towards +x: corner by corner,
// each one's neighbours after those of the one before. Faces in the same way.
constexpr std::array<std::array<double, 3>, 60> kBallPoints{
    {{0.0, 1.0, 0.0},
     {0.395248067202, 0.918574420161, 0.0},
     {-0.222785921548, 0.918574420161, -0.326477361829},
     {-0.144096595715, 0.918574420161, 0.368045113716},
     {0.567710212855, 0.755723260482, -0.326477361829},
     {0.495428211005, 0.786825064427, 0.368045113716},
     {-0.589668438811, 0.755723260482, -0.284909609942},
     {-0.050323775894, 0.755723260482, -0.652954723658},
     {0.162094877672, 0.786825064427, 0.595509503386},
     {-0.510979112978, 0.755723260482, 0.409612865603},
     {0.840352502313, 0.461122745069, -0.284909609942},
     {0.344924291307, 0.674297680642, -0.652954723658},
     {0.768070500463, 0.492224549014, 0.409612865603},
     {-0.643952158704, 0.492224549014, -0.585696688268},
     {-0.733765034526, 0.674297680642, 0.083135503774},
     {-0.310618825371, 0.492224549014, -0.813161077938},
     {0.101403833796, 0.492224549014, 0.864541644942},
     {-0.571670156854, 0.461122745069, 0.67864500716},
     {0.78606878242, 0.197624033601, -0.585696688268},
     {0.940532646116, 0.329373389335, 0.083135503774},
     {0.479877309033, 0.329373389335, -0.813161077938},
     {0.707379456586, 0.197624033601, 0.67864500716},
     {-0.842332474312, 0.147300257706, -0.518438652879},
     {-0.932145350134, 0.329373389335, 0.150393539163},
     {-0.175665807645, 0.147300257706, -0.973367432219},
     {0.374046123253, 0.197624033601, 0.906109396829},
     {-0.265478683467, 0.329373389335, 0.906109396829},
     {-0.83196520633, 0.197624033601, 0.518438652879},
     {0.83196520633, -0.197624033601, -0.518438652879},
     {0.986429070027, -0.065874677867, 0.150393539163},
     {0.219582259557, 0.065874677867, -0.973367432219},
     {0.842332474312, -0.147300257706, 0.518438652879},
     {-0.707379456586, -0.197624033601, -0.67864500716},
     {-0.986429070027, 0.065874677867, -0.150393539163},
     {-0.374046123253, -0.197624033601, -0.906109396829},
     {0.175665807645, -0.147300257706, 0.973367432219},
     {-0.219582259557, -0.065874677867, 0.973367432219},
     {-0.78606878242, -0.197624033601, 0.585696688268},
     {0.571670156854, -0.461122745069, -0.67864500716},
     {0.932145350134, -0.329373389335, -0.150393539163},
     {0.265478683467, -0.329373389335, -0.906109396829},
     {0.643952158704, -0.492224549014, 0.585696688268},
     {-0.768070500463, -0.492224549014, -0.409612865603},
     {-0.940532646116, -0.329373389335, -0.083135503774},
     {-0.101403833796, -0.492224549014, -0.864541644942},
     {0.310618825371, -0.492224549014, 0.813161077938},
     {-0.479877309033, -0.329373389335, 0.813161077938},
     {-0.840352502313, -0.461122745069, 0.284909609942},
     {0.510979112978, -0.755723260482, -0.409612865603},
     {0.733765034526, -0.674297680642, -0.083135503774},
     {0.589668438811, -0.755723260482, 0.284909609942},
     {-0.495428211005, -0.786825064427, -0.368045113716},
     {-0.162094877672, -0.786825064427, -0.595509503386},
     {0.050323775894, -0.755723260482, 0.652954723658},
     {-0.344924291307, -0.674297680642, 0.652954723658},
     {-0.567710212855, -0.755723260482, 0.326477361829},
     {0.144096595715, -0.918574420161, -0.368045113716},
     {0.222785921548, -0.918574420161, 0.326477361829},
     {-0.395248067202, -0.918574420161, 0.0},
     {0.0, -1.0, 0.0}}};
constexpr std::array<std::uint8_t, 180> kBallCorners{
    0,  1,  4,  11, 7,  2,  0,  2,  6,  14, 9,  3,  3,  8,  5,  1,  0,  5,  12, 19, 10, 4,  1,
    7,  15, 13, 6,  2,  9,  17, 26, 16, 8,  3,  4,  10, 18, 20, 11, 5,  8,  16, 25, 21, 12, 6,
    13, 22, 33, 23, 14, 7,  11, 20, 30, 24, 15, 9,  14, 23, 27, 17, 19, 29, 39, 28, 18, 10, 21,
    31, 29, 19, 12, 13, 15, 24, 34, 32, 22, 26, 36, 35, 25, 16, 27, 37, 46, 36, 26, 17, 28, 38,
    40, 30, 20, 18, 21, 25, 35, 45, 41, 31, 22, 32, 42, 43, 33, 33, 43, 47, 37, 27, 23, 24, 30,
    40, 44, 34, 39, 49, 48, 38, 28, 29, 31, 41, 50, 49, 39, 32, 34, 44, 52, 51, 42, 35, 36, 46,
    54, 53, 45, 47, 55, 54, 46, 37, 48, 56, 52, 44, 40, 38, 41, 45, 53, 57, 50, 51, 58, 55, 47,
    43, 42, 48, 49, 50, 57, 59, 56, 51, 52, 56, 59, 58, 53, 54, 55, 58, 59, 57};
constexpr std::array<std::uint8_t, 32> kBallSizes{6, 6, 5, 6, 5, 6, 5, 6, 6, 6, 5, 6, 5, 6, 5, 6,
                                                  6, 6, 5, 6, 5, 5, 6, 6, 6, 5, 6, 5, 6, 6, 5, 6};

PolygonMesh soccerBall()
{
    PolygonMesh mesh;
    for (const auto& [x, y, z] : kBallPoints) {
        mesh.points.push_back({x, y, z});
    }
    mesh.faces.corners.assign(kBallCorners.begin(), kBallCorners.end());
    std::uint32_t end = 0;
    for (const std::uint8_t size : kBallSizes) {
        end += size;
        mesh.faces.ends.push_back(end);
    }
    return mesh;
}

PolygonMesh tetrahedron()
{
    PolygonMesh mesh;
    const double s = 1 / std::sqrt(3.0);
    mesh.points = {{s, s, s}, {-s, -s, s}, {-s, s, -s}, {s, -s, -s}};
    for (const auto& face :
         {std::array<std::uint32_t, 3>{0, 1, 3}, {0, 2, 1}, {0, 3, 2}, {1, 2, 3}}) {
        mesh.faces.add({face[0], face[1], face[2]});
    }
    return mesh;
}

PolygonMesh cube()
{
    PolygonMesh mesh;
    const double s = 1 / std::sqrt(3.0);
    mesh.points = {{-s, -s, s}, {s, -s, s}, {-s, s, s},   {s, s, s},
                   {-s, s, -s}, {s, s, -s}, {-s, -s, -s}, {s, -s, -s}};
    mesh.faces.corners = {0, 1, 3, 2, 2, 3, 5, 4, 4, 5, 7, 6, 6, 7, 1, 0, 1, 7, 5, 3, 6, 0, 2, 4};
    mesh.faces.ends = {4, 8, 12, 16, 20, 24};
    return mesh;
}

PolygonMesh octahedron()
{
    PolygonMesh mesh;
    mesh.points = {{0, 0, -1}, {1, 0, 0}, {0, 1, 0}, {-1, 0, 0}, {0, -1, 0}, {0, 0, 1}};
    mesh.faces.corners = {0, 2, 1, 0, 3, 2, 0, 4, 3, 0, 1, 4, 1, 2, 5, 2, 3, 5, 3, 4, 5, 4, 1, 5};
    mesh.faces.ends = {3, 6, 9, 12, 15, 18, 21, 24};
    return mesh;
}

/// A corner on -z, two rings of five, a corner on +z.
PolygonMesh icosahedron()
{
    PolygonMesh mesh;
    const double height = 1 / std::sqrt(5.0);
    mesh.points.push_back({0, 0, -1});
    for (int ring = 0; ring < 2; ++ring) {
        for (int k = 0; k < 5; ++k) {
            const SineCosine turn = sineCosine(std::numbers::pi / 5 * (2 * k + 1 - ring));
            mesh.points.push_back(
                {2 * height * turn.cosine, 2 * height * turn.sine, ring == 0 ? -height : height});
        }
    }
    mesh.points.push_back({0, 0, 1});
    const auto low = [](std::uint32_t k) { return 1 + k % 5; };
    const auto high = [](std::uint32_t k) { return 6 + k % 5; };
    for (std::uint32_t k = 0; k < 5; ++k) {
        mesh.faces.add({0, low(k + 1), low(k)});
    }
    for (std::uint32_t k = 0; k < 5; ++k) {
        mesh.faces.add({low(k), low(k + 1), high(k + 1)});
    }
    for (std::uint32_t k = 0; k < 5; ++k) {
        mesh.faces.add({low(k), high(k + 1), high(k)});
    }
    for (std::uint32_t k = 0; k < 5; ++k) {
        mesh.faces.add({high(k), high(k + 1), 11});
    }
    return mesh;
}

/// The middles of the icosahedron's faces, joined about its corners.
PolygonMesh dodecahedron()
{
    const PolygonMesh dual = icosahedron();
    PolygonMesh mesh;
    for (std::uint32_t face = 0; face < dual.faces.size(); ++face) {
        const auto corners = dual.faces.face(face);
        mesh.points.push_back(normalized(dual.points[corners[0]] + dual.points[corners[1]] +
                                         dual.points[corners[2]]));
    }
    for (std::uint32_t center = 0; center < dual.points.size(); ++center) {
        // From one face about the corner to the next: the one that has the edge the other way.
        const auto faceWith = [&](std::uint32_t from, std::uint32_t to) {
            for (std::uint32_t face = 0; face < dual.faces.size(); ++face) {
                const auto c = dual.faces.face(face);
                for (std::size_t i = 0; i < 3; ++i) {
                    if (c[i] == from && c[(i + 1) % 3] == to) {
                        return std::pair(face, c[(i + 2) % 3]);
                    }
                }
            }
            return std::pair(dual.faces.size(), from);
        };
        std::uint32_t spoke = center == 0 ? 1 : center < 6 ? 0 : 11;
        spoke = center == 11 ? 6 : spoke;
        for (int i = 0; i < 5; ++i) {
            const auto [face, next] = faceWith(center, spoke);
            mesh.faces.corners.push_back(face);
            spoke = next;
        }
        mesh.faces.endFace();
    }
    return mesh;
}

} // namespace

PolygonMesh regularSolid(RegularSolid solid)
{
    switch (solid) {
    case RegularSolid::Tetrahedron:
        return tetrahedron();
    case RegularSolid::Cube:
        return cube();
    case RegularSolid::Octahedron:
        return octahedron();
    case RegularSolid::Dodecahedron:
        return dodecahedron();
    case RegularSolid::SoccerBall:
        return soccerBall();
    default:
        return icosahedron();
    }
}

} // namespace host::geometry
