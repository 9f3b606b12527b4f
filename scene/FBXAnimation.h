// A track of transform matrices, each with the time at which it holds.
#pragma once

#include "scene/Animation.h"
#include "sceneapi/orvSceneValues.h"

#include <cstdint>
#include <string>
#include <vector>

namespace orv {

/// Start and duration are in seconds, time stamps in milliseconds, as the driver supplies them;
/// nothing is converted here.
class FBXAnimation final : public Animation {
public:
    /// `interpolate` lets the renderer blend between neighbouring keys.
    FBXAnimation(std::string name, float startTime, float duration, bool interpolate);

    /// Tells of unequal numbers of stamps and matrices in an error directive and writes both
    /// anyway.
    void write(orvSceneapi_oo& oo) override;
    /// Animations have no definition form: does nothing.
    void define(orvSceneapi_oo& oo) override;
    bool isDefined() const override;

    /// Appends a time stamp and a matrix. Only the lower 32 bits of the stamp are kept; a negative
    /// time wraps there and comes out of the file negative again.
    void addKey(std::int64_t timeStamp, const Matrix4& matrix);
    // The two halves of a key, for tracks whose stamps and matrices come from different places.
    void addTimeStamp(std::int64_t timeStamp);
    void addMatrix(const Matrix4& matrix);

    const std::string& getName() const { return m_name; }
    const std::vector<std::uint32_t>& timeStamps() const { return m_timeStamps; }
    const std::vector<Matrix4>& matrices() const { return m_matrices; }

private:
    std::string m_name;
    std::string m_folder;
    float m_startTime;
    float m_duration;
    std::vector<std::uint32_t> m_timeStamps;
    std::vector<Matrix4> m_matrices;
    bool m_interpolate;
};

} // namespace orv
