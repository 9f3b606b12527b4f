// What a plug takes, as far as a reader must know it to read a value straight into its final form.
#pragma once

#include "host/types/AttributeKind.h"
#include "host/types/NumericArray.h"

#include <array>

namespace host {

/// Numbers: `width` numbers per element (the leaf children of a compound in order, or 1), each with
/// its unit. Anything else: `kind`.
struct PlugShape {
    static constexpr std::size_t kMaxWidth = 32;
    bool isKnown =
        false; ///< false: the attribute is not there; the payload follows the statement's own -type
    bool isNumbers = false;                  ///< numbers, `width` of them per element
    AttributeKind kind = AttributeKind::Any; ///< the attribute's kind (Compound for a compound)
    bool isMulti = false;
    NumberStorage storage =
        NumberStorage::Double; ///< of all numbers of an element: Double if the children differ
    std::size_t width = 1;
    std::array<UnitKind, kMaxWidth> units{}; ///< of each number of an element
};

} // namespace host
