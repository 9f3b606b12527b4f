// A value or an error: what every function of the host that can fail on its input returns. The host
// throws nothing.
#pragma once

#include <cassert>
#include <cstdint>
#include <string>
#include <utility>
#include <variant>

namespace host {

enum class ErrorCode : std::uint8_t {
    Failure,          ///< anything that has no code of its own
    InvalidParameter, ///< the request does not fit its object (unknown attribute, wrong kind of
                      ///< node)
    NotFound,         ///< no object
    BadInput,         ///< bytes that do not follow their format
    Limit,            ///< a count, depth or size beyond what is accepted
    Io                ///< the system refused
};

/// What went wrong and where. `message` begins lower case and tells what was found and what was
/// expected; `where` is a line and column, a byte offset, a node or a file, or empty.
struct Error {
    ErrorCode code = ErrorCode::Failure;
    std::string message;
    std::string where;
};

/// Either a T or an Error; test with operator bool before taking either.
template<class T>
class [[nodiscard]] Expected {
public:
    Expected(T value) : m_state(std::in_place_index<0>, std::move(value)) {}
    Expected(Error error) : m_state(std::in_place_index<1>, std::move(error)) {}

    explicit operator bool() const { return m_state.index() == 0; }
    T& value()
    {
        assert(*this && "value() of a failed result");
        return *std::get_if<0>(&m_state);
    }
    const T& value() const
    {
        assert(*this && "value() of a failed result");
        return *std::get_if<0>(&m_state);
    }
    T& operator*() { return value(); }
    const T& operator*() const { return value(); }
    T* operator->() { return &value(); }
    const T* operator->() const { return &value(); }
    const Error& error() const
    {
        assert(!*this && "error() of a good result");
        return *std::get_if<1>(&m_state);
    }
    T valueOr(T fallback) const { return *this ? value() : std::move(fallback); }

private:
    std::variant<T, Error> m_state;
};

/// Success or an Error.
template<>
class [[nodiscard]] Expected<void> {
public:
    Expected() = default;
    Expected(Error error) : m_error(std::move(error)), m_failed(true) {}
    explicit operator bool() const { return !m_failed; }
    const Error& error() const
    {
        assert(m_failed && "error() of a good result");
        return m_error;
    }

private:
    Error m_error;
    bool m_failed = false;
};

} // namespace host

/// Declares `name` with the value of `expression`, or returns its error from the enclosing
/// function.
#define HOST_TRY(name, expression)                                                                 \
    auto name##Result = (expression);                                                              \
    if (!name##Result) {                                                                           \
        return name##Result.error();                                                               \
    }                                                                                              \
    auto name = std::move(*name##Result)
