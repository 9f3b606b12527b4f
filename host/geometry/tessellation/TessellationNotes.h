// What was odd about a surface's trims, for those who report it.
#pragma once

#include <string_view>
#include <vector>

namespace host::geometry {

enum class TessellationNote : unsigned char {
    InvalidSurface,       ///< nothing can be made of it
    Coarsened,            ///< the limit of triangles was met
    MissingParameterEdge, ///< a trim edge without usable curves in the parameter plane: a straight
                          ///< one instead
    OutsideDomain,        ///< a trim curve leaves the domain: led along its border
    OpenBoundary,         ///< a trim boundary does not close: left out
    EmptyBoundary,        ///< a trim boundary without area: left out
    EntangledBoundaries,  ///< boundaries that cross too often: the region's are left out
    NothingLeft           ///< the boundaries leave nothing of a region
};

/// Plain English for a report.
constexpr std::string_view textOf(TessellationNote note)
{
    switch (note) {
    case TessellationNote::InvalidSurface:
        return "surface";
    case TessellationNote::Coarsened:
        return "triangles of a surface";
    case TessellationNote::MissingParameterEdge:
        return "trim edge without parameter curves";
    case TessellationNote::OutsideDomain:
        return "trim curve outside the domain";
    case TessellationNote::OpenBoundary:
        return "open trim boundary";
    case TessellationNote::EmptyBoundary:
        return "trim boundary without area";
    case TessellationNote::EntangledBoundaries:
        return "crossings of trim boundaries";
    default:
        return "trim region without area";
    }
}

/// Each note once, in order of appearance.
class TessellationNotes {
public:
    void add(TessellationNote note)
    {
        for (const TessellationNote known : m_notes) {
            if (known == note) {
                return;
            }
        }
        m_notes.push_back(note);
    }
    const std::vector<TessellationNote>& list() const { return m_notes; }

private:
    std::vector<TessellationNote> m_notes;
};

} // namespace host::geometry
