#include "host/session/hairSettings.h"

#include <array>
#include <string_view>

namespace host::session {
namespace {

using geometry::HairGuide;
using geometry::HairStyle;
using geometry::Ramp;
using geometry::RampEntry;

struct StyleNumber {
    std::string_view attribute;
    double HairStyle::*setting;
};
constexpr std::array<StyleNumber, 16> kStyleNumbers{{
    {"hairsPerClump", &HairStyle::hairsPerClump},
    {"baldnessMap", &HairStyle::baldness},
    {"thinning", &HairStyle::thinning},
    {"subSegments", &HairStyle::subSegments},
    {"clumpWidth", &HairStyle::clumpWidth},
    {"clumpTwist", &HairStyle::clumpTwist},
    {"bendFollow", &HairStyle::bendFollow},
    {"hairWidth", &HairStyle::hairWidth},
    {"diffuseRand", &HairStyle::diffuseRandom},
    {"hueRand", &HairStyle::hueRandom},
    {"satRand", &HairStyle::saturationRandom},
    {"valRand", &HairStyle::brightnessRandom},
    {"curl", &HairStyle::curl},
    {"curlFrequency", &HairStyle::curlFrequency},
    {"noise", &HairStyle::noise},
    {"noiseFrequency", &HairStyle::noiseFrequency},
}};

struct StyleRamp {
    const char* attribute;
    Ramp<double> HairStyle::*setting;
};
constexpr std::array<StyleRamp, 5> kStyleRamps{{
    {"clumpWidthScale", &HairStyle::clumpWidthScale},
    {"clumpCurl", &HairStyle::clumpCurl},
    {"clumpFlatness", &HairStyle::clumpFlatness},
    {"hairWidthScale", &HairStyle::hairWidthScale},
    {"displacementScale", &HairStyle::displacementScale},
}};

struct GuideNumber {
    std::string_view attribute;
    double HairGuide::*setting;
};
constexpr std::array<GuideNumber, 5> kGuideNumbers{{
    {"densityMult", &HairGuide::densityFactor},
    {"clumpWidthMult", &HairGuide::clumpWidthFactor},
    {"clumpTwistOffset", &HairGuide::clumpTwistOffset},
    {"curlMult", &HairGuide::curlFactor},
    {"colorBlend", &HairGuide::colorBlend},
}};

/// Settings of a hair system that would change its strands, if they are not 0, but are not carried
/// out.
constexpr std::array<std::string_view, 6> kUnusedSettings{"clumpInterpolation", "subClumping",
                                                          "detailNoise",        "multiStreaks",
                                                          "noiseMethod",        "playFromCache"};

Vec3d readVector(Session& session, NodeId node, const std::string& name, std::string_view letters,
                 const Vec3d& fallback)
{
    const auto part = [&](std::size_t i, double other) {
        return readNumber(session, node, name + letters[i], other);
    };
    return {part(0, fallback.x), part(1, fallback.y), part(2, fallback.z)};
}

/// Reads the parts of a ramp's entries.
class RampReader {
public:
    RampReader(Session& session, NodeId node, const std::string& name)
        : m_session(session), m_name(name), m_array(session.findPlug(node, name))
    {
    }

    std::vector<std::int32_t> indices() const
    {
        return m_array ? m_session.graph().elementIndices(m_array) : std::vector<std::int32_t>();
    }
    /// The number at "name_<part>" of an entry.
    double number(std::int32_t index, const char* part, double fallback) const
    {
        return m_session.number(find(m_session.element(m_array, index), part), fallback);
    }
    Vec3d color(std::int32_t index) const
    {
        const Plug plug = find(m_session.element(m_array, index), "_Color");
        const std::vector<Plug> parts = m_session.children(plug);
        if (parts.size() != 3) {
            return {};
        }
        return {m_session.number(parts[0], 0), m_session.number(parts[1], 0),
                m_session.number(parts[2], 0)};
    }

private:
    Plug find(const Plug& entry, const char* part) const
    {
        const AttributeIndex wanted = m_session.graph().findAttribute(m_array.node, m_name + part);
        for (const Plug& child : m_session.children(entry)) {
            if (child.attribute == wanted) {
                return child;
            }
        }
        return {};
    }

    Session& m_session;
    const std::string& m_name;
    Plug m_array;
};

Ramp<Vec3d> readColorRamp(Session& session, NodeId node, const std::string& name)
{
    const RampReader reader(session, node, name);
    std::vector<RampEntry<Vec3d>> entries;
    for (const std::int32_t index : reader.indices()) {
        entries.push_back({reader.number(index, "_Position", 0), reader.color(index),
                           geometry::rampBlendFromNumber(reader.number(index, "_Interp", 1))});
    }
    return Ramp<Vec3d>(std::move(entries));
}

} // namespace

double readNumber(Session& session, NodeId node, std::string_view name, double fallback)
{
    return session.number(session.findPlug(node, name), fallback);
}

Ramp<double> readNumberRamp(Session& session, NodeId node, const std::string& name)
{
    const RampReader reader(session, node, name);
    std::vector<RampEntry<double>> entries;
    for (const std::int32_t index : reader.indices()) {
        entries.push_back({reader.number(index, "_Position", 0),
                           reader.number(index, "_FloatValue", 0),
                           geometry::rampBlendFromNumber(reader.number(index, "_Interp", 1))});
    }
    return Ramp<double>(std::move(entries));
}

HairStyle readHairStyle(Session& session, NodeId hairSystem)
{
    HairStyle style;
    for (const StyleNumber& row : kStyleNumbers) {
        style.*row.setting = readNumber(session, hairSystem, row.attribute, style.*row.setting);
    }
    for (const StyleRamp& row : kStyleRamps) {
        style.*row.setting = readNumberRamp(session, hairSystem, row.attribute);
    }
    style.color = readVector(session, hairSystem, "hairColor", "RGB", style.color);
    style.colorScale = readColorRamp(session, hairSystem, "hairColorScale");
    return style;
}

bool hasUnusedHairSettings(Session& session, NodeId hairSystem)
{
    for (const std::string_view name : kUnusedSettings) {
        if (readNumber(session, hairSystem, name, 0) != 0) {
            return true;
        }
    }
    for (const std::string_view name : {"baldnessMap", "hairColor"}) { // textures over the surface
        if (session.source(session.findPlug(hairSystem, name))) {
            return true;
        }
    }
    return false;
}

HairGuide readHairGuide(Session& session, NodeId follicle, std::uint32_t number)
{
    HairGuide guide;
    guide.number = number;
    if (const auto points =
            session.value(session.findPlug(follicle, "outHair")).data<std::vector<Vec3d>>()) {
        guide.points = *points;
    }
    guide.normal = readVector(session, follicle, "outNormal", "XYZ", {});
    guide.tangent = readVector(session, follicle, "outTangent", "XYZ", {});
    guide.isAlongNormal = readNumber(session, follicle, "startDirection", 0) == 0;
    for (const GuideNumber& row : kGuideNumbers) {
        guide.*row.setting = readNumber(session, follicle, row.attribute, guide.*row.setting);
    }
    guide.color = readVector(session, follicle, "color", "RGB", {});
    if (readNumber(session, follicle, "overrideDynamics", 0) != 0) {
        guide.clumpWidth = readNumber(session, follicle, "clumpWidth", 0.3);
        guide.clumpWidthScale = readNumberRamp(session, follicle, "clumpWidthScale");
    }
    return guide;
}

} // namespace host::session
