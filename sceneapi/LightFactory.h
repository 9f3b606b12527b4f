// Where the object layer gets its scene API from.
#pragma once

class orvScene_api;

namespace orv {

/// Order of the virtual operations is part of the contract.
class LightFactory {
public:
    virtual ~LightFactory() = default;
    /// The scene API; the factory or its maker keeps it. Null when there is none (any more).
    virtual orvScene_api* sceneApi() = 0;
    /// Writes what a scene file begins with.
    virtual void writeHeader() = 0;
    /// Finishes the output; the scene API is gone afterwards. Throws std::runtime_error when the
    /// output is not complete.
    virtual void close() = 0;
};

} // namespace orv
