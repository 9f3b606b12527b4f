#include "host/file/PayloadText.h"

#include "host/geometry/deform/LatticeData.h"
#include "host/geometry/mesh/MeshData.h"
#include "host/geometry/nurbs/SurfaceData.h"

#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <limits>

namespace host::file {
namespace {

std::string hexText(std::uint64_t number)
{
    std::array<char, 17> digits{};
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), number, 16);
    const std::string text(digits.data(), result.ptr);
    return std::string(16 - text.size(), '0') + text;
}

template<class T>
std::string shortestText(T number)
{
    if (std::isnan(number)) {
        return "nan";
    }
    std::array<char, 40> digits{};
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    return std::string(digits.data(), result.ptr);
}

template<class List>
void addAll(PayloadText& text, const List& numbers)
{
    for (const auto number : numbers) {
        text.add(static_cast<double>(number));
    }
}

template<class List>
void addCounted(PayloadText& text, std::string_view word, const List& numbers)
{
    text.add(word);
    text.add(static_cast<double>(numbers.size()));
    addAll(text, numbers);
}

void addPoint(PayloadText& text, const Vec3d& point)
{
    text.add(point.x);
    text.add(point.y);
    text.add(point.z);
}

void add(PayloadText& text, const std::string& data)
{
    text.add("string");
    text.add(quotedText(data));
}

void add(PayloadText& text, const Matrix4& data)
{
    text.add("matrix");
    for (const auto& row : data.m) {
        addAll(text, row);
    }
}

void add(PayloadText& text, const std::vector<std::string>& data)
{
    text.add("strings");
    for (const std::string& entry : data) {
        text.add(quotedText(entry));
    }
}

void add(PayloadText& text, const std::vector<std::int32_t>& data)
{
    addCounted(text, "integers", data);
}

void add(PayloadText& text, const std::vector<double>& data)
{
    addCounted(text, "numbers", data);
}

void add(PayloadText& text, const std::vector<Vec3d>& data)
{
    text.add("vectors");
    for (const Vec3d& vector : data) {
        addPoint(text, vector);
    }
}

void add(PayloadText& text, const std::vector<std::array<double, 4>>& data)
{
    text.add("points");
    for (const auto& point : data) {
        addAll(text, point);
    }
}

void add(PayloadText& text, const ComponentList& data)
{
    text.add("components");
    for (const std::string& component : data.components) {
        text.add(quotedText(component));
    }
}

void add(PayloadText& text, const PolyComponentData& data)
{
    constexpr std::array<std::string_view, 4> kDomains{"edge", "vertex", "uv", "face"};
    text.add("polyComponent");
    text.add(kDomains[static_cast<std::size_t>(data.domain)]);
    addCounted(text, "indices", data.indices);
    addCounted(text, "values", data.values);
}

void add(PayloadText& text, const PolyFaces& data)
{
    text.add("faces");
    addAll(text, data.faceLoopCounts);
    addCounted(text, "loops", data.loopSizes);
    addCounted(text, "corners", data.corners);
}

void add(PayloadText& text, const geometry::MeshData& data)
{
    text.add("mesh");
    text.add("points");
    for (const Vec3f& point : *data.points) {
        text.add(point.x);
        text.add(point.y);
        text.add(point.z);
    }
    text.add("edges");
    for (std::size_t i = 0; i < data.topology->edges.size(); ++i) {
        text.add(static_cast<double>(data.topology->edges[i].start));
        text.add(static_cast<double>(data.topology->edges[i].end));
        text.add(data.isSmooth(static_cast<std::uint32_t>(i)) ? 1.0 : 0.0);
    }
    addCounted(text, "corners", data.topology->corners);
    addCounted(text, "loopStart", data.topology->loopStart);
    addCounted(text, "faceLoop", data.topology->faceLoop);
    for (const geometry::UvSet& set : data.uvSets) {
        text.add("uvSet");
        text.add(quotedText(set.name));
        for (const Vec2f& point : *set.points) {
            text.add(point.x);
            text.add(point.y);
        }
        addCounted(text, "ids", *set.corners);
    }
}

void add(PayloadText& text, const geometry::CurveData& data)
{
    text.add("curve");
    text.add(static_cast<double>(data.degree));
    text.add(static_cast<double>(data.spans));
    text.add(static_cast<double>(data.form));
    text.add(data.rational ? 1.0 : 0.0);
    text.add(static_cast<double>(data.dimension));
    addCounted(text, "knots", data.knots);
    addCounted(text, "poles", data.poles);
}

void add(PayloadText& text, const geometry::SurfaceData& data)
{
    text.add("surface");
    text.add(static_cast<double>(data.degreeU));
    text.add(static_cast<double>(data.degreeV));
    text.add(static_cast<double>(data.formU));
    text.add(static_cast<double>(data.formV));
    text.add(data.rational ? 1.0 : 0.0);
    addCounted(text, "knotsU", data.knotsU);
    addCounted(text, "knotsV", data.knotsV);
    addCounted(text, "poles", data.poles);
}

void add(PayloadText& text, const geometry::TrimRegion& data)
{
    text.add("trim");
    text.add(data.flipNormal ? 1.0 : 0.0);
    for (const geometry::TrimBoundary& boundary : data.boundaries) {
        text.add("boundary");
        text.add(static_cast<double>(boundary.type));
        addCounted(text, "flags", boundary.edgeFlags);
        for (const geometry::TrimEdge& edge : boundary.edges) {
            text.add("edge");
            for (const geometry::CurveData& curve : edge.curves3d) {
                add(text, curve);
            }
            text.add(edge.tolerance3d);
            text.add(edge.reversed ? 1.0 : 0.0);
            text.add(static_cast<double>(edge.continuity));
            for (const geometry::CurveData& curve : edge.curves2d) {
                add(text, curve);
            }
            text.add(edge.monotone ? 1.0 : 0.0);
            text.add(edge.tolerance2d);
        }
    }
}

void add(PayloadText& text, const geometry::LatticeData& data)
{
    text.add("lattice");
    text.add(static_cast<double>(data.s));
    text.add(static_cast<double>(data.t));
    text.add(static_cast<double>(data.u));
    for (const Vec3d& point : data.points) {
        addPoint(text, point);
    }
}

void add(PayloadText& text, const OpaqueText& data)
{
    text.add("opaque");
    text.add(quotedText(data.type));
    text.add(quotedText(data.text));
}

/// Adds the value's data if it is a T.
template<class T>
void addIf(PayloadText& text, const Value& value)
{
    if (const auto data = value.data<T>()) {
        add(text, *data);
    }
}

template<class... Types>
void addAny(PayloadText& text, const Value& value)
{
    (addIf<Types>(text, value), ...);
}

} // namespace

std::string numberText(double number)
{
    return shortestText(number);
}

std::string quotedText(std::string_view text)
{
    std::string quoted(1, '"');
    for (const char c : text) {
        const unsigned char byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            quoted += '\\';
            quoted += c;
        } else if (c == '\n' || c == '\t' || c == '\r') {
            quoted += c == '\n' ? "\\n" : c == '\t' ? "\\t" : "\\r";
        } else if (byte < 0x20 || byte == 0x7f) {
            quoted += "\\x";
            quoted += hexText(byte).substr(14);
        } else {
            quoted += c;
        }
    }
    quoted += '"';
    return quoted;
}

void PayloadText::addBytes(const void* bytes, std::size_t size)
{
    constexpr std::uint64_t kPrime = 1099511628211u;
    const auto* const p = static_cast<const unsigned char*>(bytes);
    for (std::size_t i = 0; i < size; ++i) {
        m_digest = (m_digest ^ p[i]) * kPrime;
    }
}

void PayloadText::addText(std::string_view shown)
{
    m_shown += m_shown.empty() ? "" : " ";
    m_shown += shown;
    if (m_count < kShownOfLong) {
        m_beginning = m_shown;
    }
}

void PayloadText::addNumber(double number, std::string_view shown)
{
    if (m_count < kShownEntries) {
        addText(shown);
    }
    ++m_count;
    const double canonical = std::isnan(number) ? std::numeric_limits<double>::quiet_NaN() : number;
    std::uint64_t bits = std::bit_cast<std::uint64_t>(canonical);
    std::array<unsigned char, 8> bytes{}; // lowest first, whatever the machine
    for (unsigned char& byte : bytes) {
        byte = static_cast<unsigned char>(bits & 0xff);
        bits >>= 8;
    }
    addBytes(bytes.data(), bytes.size());
}

void PayloadText::add(double number)
{
    addNumber(number, m_count < kShownEntries ? shortestText(number) : std::string());
}

void PayloadText::add(float number)
{
    addNumber(static_cast<double>(number),
              m_count < kShownEntries ? shortestText(number) : std::string());
}

void PayloadText::add(std::string_view word)
{
    if (m_count < kShownEntries) {
        addText(word);
    }
    ++m_count;
    addBytes(word.data(), word.size());
}

std::string PayloadText::text() const
{
    if (m_count <= kShownEntries) {
        return m_shown;
    }
    return m_beginning + " ... " + std::to_string(m_count) + " in all, digest " + hexText(m_digest);
}

std::string valueText(const Value& value)
{
    if (value.isEmpty()) {
        return "nothing";
    }
    PayloadText text;
    if (value.isNumber()) {
        text.add(value.number());
    }
    addAny<std::string, Matrix4, std::vector<std::string>, std::vector<std::int32_t>,
           std::vector<double>, std::vector<Vec3d>, std::vector<std::array<double, 4>>,
           ComponentList, PolyComponentData, PolyFaces, geometry::MeshData, geometry::CurveData,
           geometry::SurfaceData, geometry::TrimRegion, geometry::LatticeData, OpaqueText>(text,
                                                                                           value);
    return text.text();
}

} // namespace host::file
