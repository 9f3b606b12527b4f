// The object layer: what scene nodes write through. It numbers ids and shaders, turns containers
// into the value records of the scene API, and writes the prologue of the file.
#pragma once

#include "sceneapi/orvSceneValues.h"

#include <cstdint>
#include <string>
#include <vector>

class orvScene_api;

namespace orv {

class LightFactory;
class LightNode;

/// Order of the virtual operations is part of the contract (the number before each is its slot).
/// Every operation forwards to the scene API; while none is attached it does nothing.
class orvSceneapi_oo {
public:
    /// Attaches the factory's scene API and, if there is one, writes header, banner and version.
    /// The factory and its scene API must outlive the layer's use.
    explicit orvSceneapi_oo(LightFactory& factory);
    orvSceneapi_oo(const orvSceneapi_oo&) = delete;
    orvSceneapi_oo& operator=(const orvSceneapi_oo&) = delete;

    /* 0 */ virtual ~orvSceneapi_oo();
    /// Numbering starts again with every attached API. Null detaches.
    /* 1 */ virtual void attach(orvScene_api* api);
    /// Writes and returns the next id: 1, 2, ...; ids and shaders are numbered together.
    /* 2 */ virtual std::uint32_t newId();
    /// Calls the node's `write` with this layer.
    /* 3 */ virtual void writeNode(LightNode& node);
    /* 4 */ virtual void progress(const std::string& name, float fraction);
    /// Groups are written in place, never as a definition.
    /* 5 */ virtual void beginGroup(const std::string& name);
    /* 6 */ virtual void endGroup();
    /// Begins a numbered shader definition and returns its number.
    /* 7 */ virtual std::uint32_t defineShader(const std::string& type);
    /* 8 */ virtual void endShader();
    /// Always throws std::invalid_argument. Its name keeps literals away from it: stringParameter
    /// takes them.
    /* 9 */ virtual void deprecatedStringParameter(const std::string& name, const char* text);
    /* 10 */ virtual void stringParameter(const std::string& name, const std::string& text);
    /* 11 */ virtual void float3Parameter(const std::string& name, const Float3& value);
    /* 12 */ virtual void double3Parameter(const std::string& name, const Double3& value);
    /* 13 */ virtual void doubleParameter(const std::string& name, double value);
    /* 14 */ virtual void floatParameter(const std::string& name, float value);
    /* 15 */ virtual void intParameter(const std::string& name, std::int32_t value);
    /* 16 */ virtual void boolParameter(const std::string& name, bool value);
    /* 17 */ virtual void matrixListParameter(const std::string& name,
                                              const std::vector<Matrix4>& values);
    /* 18 */ virtual void intListParameter(const std::string& name,
                                           const std::vector<std::int32_t>& values);
    /* 19 */ virtual void floatListParameter(const std::string& name,
                                             const std::vector<float>& values);
    /* 20 */ virtual void doubleListParameter(const std::string& name,
                                              const std::vector<double>& values);
    /// x, y, z of each point in turn; an incomplete last point is left out.
    /* 21 */ virtual void pointsParameter(const std::string& name,
                                          const std::vector<float>& values);
    /* 22 */ virtual void transform(const Matrix4& matrix);
    /// `set` replaces the transform in force instead of adding to it.
    /* 23 */ virtual void transform(const Matrix4& matrix, bool set);
    /* 24 */ virtual void flags(std::uint32_t bits);
    /// The attached scene API; null when there is none.
    /* 25 */ virtual orvScene_api* sceneApi();

    /// A pointer is no boolean: without this a text would be written as "on".
    void boolParameter(const std::string& name, const void* value) = delete;

private:
    void list(const std::string& name, std::uint32_t type, const void* elements, std::size_t count);

    orvScene_api* m_api = nullptr;  // as attached
    orvScene_api* m_sink = nullptr; // never null: m_api, or what discards everything
    LightFactory* m_factory;
    std::uint32_t m_groupCounter = 0; // reset with the other; no operation numbers groups
    std::uint32_t m_idCounter = 0;
};

} // namespace orv
