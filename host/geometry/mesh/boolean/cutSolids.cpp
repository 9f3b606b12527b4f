// The only file that knows CGAL (https://www.cgal.org). Checks of the library throw and are caught
// here; numbers are those of Boost, so that nothing has to be linked.
#include "host/geometry/mesh/boolean/cutSolids.h"

#include <CGAL/Lazy_kernel.h>
#include <CGAL/Polygon_mesh_processing/corefinement.h>
#include <CGAL/Polygon_mesh_processing/self_intersections.h>
#include <CGAL/Simple_cartesian.h>
#include <CGAL/Surface_mesh.h>
#include <CGAL/assertions_behaviour.h>
#include <CGAL/boost_mp.h>
#include <CGAL/box_intersection_d.h>

#include <array>
#include <cmath>
#include <exception>
#include <vector>

namespace host::geometry {
namespace {

/// Exact numbers are fractions in lowest terms. Those of the library's usual kernel are not reduced
/// without GMP: of two solids that nearly touch they grow until a single sum takes seconds.
using Kernel = CGAL::Lazy_kernel<CGAL::Simple_cartesian<boost::multiprecision::cpp_rational>>;
using Point = Kernel::Point_3;
using Mesh = CGAL::Surface_mesh<Point>;
using Face = Mesh::Face_index;
using Vertex = Mesh::Vertex_index;

/// The source of each face of the library's mesh.
using Sources = Mesh::Property_map<Face, std::uint32_t>;

Sources sourcesOf(Mesh& mesh)
{
    return mesh.add_property_map<Face, std::uint32_t>("f:source").first;
}

/// Checks that fail throw without a word on the terminal, as long as this lives.
class QuietChecks {
public:
    QuietChecks()
        : m_errors(CGAL::set_error_handler(&QuietChecks::ignore))
        , m_warnings(CGAL::set_warning_handler(&QuietChecks::ignore))
    {
    }
    QuietChecks(const QuietChecks&) = delete;
    QuietChecks& operator=(const QuietChecks&) = delete;
    ~QuietChecks()
    {
        CGAL::set_error_handler(m_errors);
        CGAL::set_warning_handler(m_warnings);
    }

private:
    static void ignore(const char*, const char*, const char*, int, const char*) {}

    CGAL::Failure_function m_errors;
    CGAL::Failure_function m_warnings;
};

/// Follows the faces while they are cut and copied. The library passes it on by value.
class SourceKeeper : public CGAL::Polygon_mesh_processing::Corefinement::Default_visitor<Mesh> {
public:
    SourceKeeper(const Mesh& second, const Sources& ofFirst, const Sources& ofSecond,
                 const Sources& ofResult)
        : m_second(&second), m_ofFirst(ofFirst), m_ofSecond(ofSecond), m_ofResult(ofResult)
    {
    }

    void before_subface_creations(Face whole, Mesh& mesh) { m_cut = sourcesIn(mesh)[whole]; }
    void after_subface_created(Face part, Mesh& mesh) { sourcesIn(mesh)[part] = m_cut; }
    void after_face_copy(Face from, const Mesh& mesh, Face to, Mesh&)
    {
        m_ofResult[to] = sourcesIn(mesh)[from];
    }

private:
    Sources& sourcesIn(const Mesh& mesh) { return &mesh == m_second ? m_ofSecond : m_ofFirst; }

    const Mesh* m_second;
    Sources m_ofFirst;
    Sources m_ofSecond;
    Sources m_ofResult;
    std::uint32_t m_cut = 0;
};

/// Gives the library's mesh the triangles; false where they are no closed surface without
/// degenerate triangles, or one that crosses or touches itself.
bool fill(Mesh& mesh, Sources& sources, const Solid& solid)
{
    const Vertex kNotYet;
    std::vector<Vertex> vertices(solid.points.size(), kNotYet);
    for (const SolidTriangle& triangle : solid.triangles) {
        std::array<Vertex, 3> corners;
        for (std::size_t i = 0; i < corners.size(); ++i) {
            Vertex& vertex = vertices[triangle.corners[i]];
            if (vertex == kNotYet) {
                const Vec3d& point = solid.points[triangle.corners[i]];
                vertex = mesh.add_vertex(Point(point.x, point.y, point.z));
            }
            corners[i] = vertex;
        }
        if (corners[0] == corners[1] || corners[1] == corners[2] || corners[2] == corners[0] ||
            CGAL::collinear(mesh.point(corners[0]), mesh.point(corners[1]),
                            mesh.point(corners[2]))) {
            return false;
        }
        const Face face = mesh.add_face(corners[0], corners[1], corners[2]);
        if (face == Mesh::null_face()) {
            return false;
        }
        sources[face] = triangle.source;
    }
    return CGAL::is_closed(mesh) && !CGAL::Polygon_mesh_processing::does_self_intersect(mesh);
}

std::vector<CGAL::Box_intersection_d::Box_d<double, 3>> boxesOf(const Solid& solid)
{
    std::vector<CGAL::Box_intersection_d::Box_d<double, 3>> boxes;
    boxes.reserve(solid.triangles.size());
    for (const SolidTriangle& triangle : solid.triangles) {
        CGAL::Bbox_3 box;
        for (const std::uint32_t corner : triangle.corners) {
            const Vec3d& point = solid.points[corner];
            box += CGAL::Bbox_3(point.x, point.y, point.z, point.x, point.y, point.z);
        }
        boxes.emplace_back(box);
    }
    return boxes;
}

/// Ends the count of pairs.
struct TooManyPairs : std::exception {};

/// Takes the pairs from what is left of them; throws where they are more.
void takeMeetings(const Solid& first, const Solid& second, std::size_t& meetings)
{
    auto firstBoxes = boxesOf(first);
    auto secondBoxes = boxesOf(second);
    CGAL::box_intersection_d(firstBoxes.begin(), firstBoxes.end(), secondBoxes.begin(),
                             secondBoxes.end(), [&meetings](const auto&, const auto&) {
                                 if (meetings == 0) {
                                     throw TooManyPairs();
                                 }
                                 --meetings;
                             });
}

/// Throws where so many triangles of one solid lie across each other that to look for crossings
/// would take too long; those of a usual one meet a dozen neighbours.
void checkNeighbours(const Solid& solid)
{
    constexpr std::size_t kMostForEach = 64;
    std::size_t pairsLeft = kMostForEach * solid.triangles.size();
    auto boxes = boxesOf(solid);
    CGAL::box_self_intersection_d(boxes.begin(), boxes.end(),
                                  [&pairsLeft](const auto&, const auto&) {
                                      if (pairsLeft == 0) {
                                          throw TooManyPairs();
                                      }
                                      --pairsLeft;
                                  });
}

/// The nearest whole number of the exact value: bounds that have the same spare that value.
double rounded(const Kernel::FT& number)
{
    for (const bool isLast : {false, true}) {
        const auto bounds = CGAL::to_interval(number);
        const double low = std::floor(bounds.first + 0.5);
        const double high = std::floor(bounds.second + 0.5);
        if (low == high) {
            return low;
        }
        if (isLast) {
            return number == 0 ? 0 : number < Kernel::FT((low + high) / 2) ? low : high;
        }
        number.exact(); // leaves narrow bounds behind
    }
    return 0;
}

Solid take(const Mesh& mesh, const Sources& sources)
{
    Solid solid;
    std::vector<std::uint32_t> numbers(mesh.num_vertices());
    for (const Vertex vertex : mesh.vertices()) {
        const Point& point = mesh.point(vertex);
        numbers[vertex] = static_cast<std::uint32_t>(solid.points.size());
        solid.points.push_back({rounded(point.x()), rounded(point.y()), rounded(point.z())});
    }
    for (const Face face : mesh.faces()) {
        SolidTriangle triangle;
        auto corner = triangle.corners.begin();
        for (const Vertex vertex : mesh.vertices_around_face(mesh.halfedge(face))) {
            *corner++ = numbers[vertex];
        }
        triangle.source = sources[face];
        solid.triangles.push_back(triangle);
    }
    return solid;
}

/// The library's number of the operation.
std::size_t placeOf(BooleanOperation operation)
{
    using namespace CGAL::Polygon_mesh_processing::Corefinement;
    return operation == BooleanOperation::Union        ? UNION
           : operation == BooleanOperation::Difference ? TM1_MINUS_TM2
                                                       : INTERSECTION;
}

std::optional<Solid> cut(const Solid& first, const Solid& second, BooleanOperation operation)
{
    namespace parameters = CGAL::parameters;
    Mesh a;
    Mesh b;
    Mesh result;
    Sources sourcesA = sourcesOf(a);
    Sources sourcesB = sourcesOf(b);
    const Sources sourcesOfResult = sourcesOf(result);
    if (!fill(a, sourcesA, first) || !fill(b, sourcesB, second)) {
        return std::nullopt;
    }
    const SourceKeeper keeper(b, sourcesA, sourcesB, sourcesOfResult);
    std::array<boost::optional<Mesh*>, 4> wanted;
    wanted[placeOf(operation)] = &result;
    const auto isDone = CGAL::Polygon_mesh_processing::corefine_and_compute_boolean_operations(
        a, b, wanted, parameters::visitor(keeper));
    if (!isDone[placeOf(operation)]) {
        return std::nullopt;
    }
    return take(result, sourcesOfResult);
}

} // namespace

bool canCutSolids()
{
    return true;
}

std::optional<Solid> cutSolids(const Solid& first, const Solid& second, BooleanOperation operation,
                               std::size_t& meetings)
{
    const QuietChecks quiet;
    try {
        takeMeetings(first, second, meetings);
        checkNeighbours(first);
        checkNeighbours(second);
        return cut(first, second, operation);
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

} // namespace host::geometry
