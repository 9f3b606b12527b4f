// The layouts of the values of the scene API as text: which codes are rows of numbers, how the
// elements of a list look, and which lists have a binary form.
#pragma once

#include "sceneapi/TextTarget.h"
#include "sceneapi/orvSceneValues.h"

#include <cstddef>
#include <cstdint>

namespace orv {

enum class Component : std::uint8_t {
    Float,        // "%g"
    Double,       // "%g"
    FixedDouble,  // "%16.16f"
    Integer,      // "%d"
    Boolean,      // 1 or 0
    MatrixDouble, // "%g " with the blank
    String,       // "%s"
};

/// A value of `count` components separated by one blank.
struct ScalarLayout {
    std::uint32_t type;
    Component component;
    std::uint8_t count;
};

/// One element of a list. `letter` is that of the binary header, 0 for a list that is always text.
struct ListLayout {
    std::uint32_t type;
    Component component;
    std::uint8_t count;
    std::uint8_t stride; // bytes of an element
    char letter;
};

/// Null for a code that is no row of numbers (strings, booleans, blobs, the checked float, unknown
/// codes).
const ScalarLayout* findScalarLayout(std::uint32_t type);
/// Null for a code that is no list.
const ListLayout* findListLayout(std::uint32_t type);

void appendScalar(TextTarget& target, const ScalarLayout& layout, const void* value);

/// "%g"; NaN and what is not strictly inside the float range as -1.
void appendCheckedFloat(TextTarget& target, float value);

/// The elements between "[ " and "] ", nine on the first line and eight on each further one, which
/// begins with `blanks` blanks. NaN and infinity have no text that a reader would take: they become
/// -1, as in a checked float. Strings are cut at `maxString` bytes.
void appendList(TextTarget& target, const ListLayout& layout, const List& list, std::size_t blanks,
                std::size_t maxString);

} // namespace orv
