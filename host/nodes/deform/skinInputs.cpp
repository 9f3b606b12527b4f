#include "host/nodes/deform/skinInputs.h"

#include <algorithm>
#include <array>

namespace host::nodes {
namespace {

using geometry::InfluenceWeight;
using geometry::SkinWeights;

/// A weight that something is connected to.
struct LivingWeight {
    std::int32_t point = 0;
    std::int32_t influence = 0;
    double weight = 0;
};

std::vector<LivingWeight> livingWeights(ComputeContext& context, std::size_t position)
{
    std::vector<LivingWeight> living;
    for (const std::int32_t point : context.connectedIndices(position)) {
        const std::array<std::int32_t, 1> row{point};
        for (const std::int32_t influence : context.connectedIndices(position, row)) {
            const std::array<std::int32_t, 2> way{point, influence};
            living.push_back({point, influence, context.element(position, way).number(0)});
        }
    }
    return living;
}

/// Fills a table row by row; entries name influences by their logical indices until `finish`.
class TableMaker {
public:
    explicit TableMaker(std::size_t rows, std::size_t entries)
    {
        m_table.weights.points.reserve(rows);
        m_table.weights.starts.reserve(rows + 1);
        m_table.weights.entries.reserve(entries);
    }

    void beginRow(std::int32_t point)
    {
        m_table.weights.points.push_back(static_cast<std::uint32_t>(point));
        m_table.weights.starts.push_back(m_table.weights.entries.size());
    }
    void add(std::uint32_t influence, double weight)
    {
        if (influence > kMaxInfluence) {
            m_table.hasLostInfluences = true;
        } else {
            m_table.weights.entries.push_back({weight, influence});
        }
    }
    /// Puts other weights in the place of those of the row that was begun last.
    void replace(std::uint32_t influence, double weight)
    {
        auto& entries = m_table.weights.entries;
        const auto first =
            entries.begin() + static_cast<std::ptrdiff_t>(m_table.weights.starts.back());
        const auto same = std::find_if(first, entries.end(), [&](const InfluenceWeight& entry) {
            return entry.influence == influence;
        });
        if (same != entries.end()) {
            same->weight = weight;
        } else {
            add(influence, weight);
        }
    }

    std::shared_ptr<const SkinTable> finish(bool isNormalized)
    {
        m_table.weights.starts.push_back(m_table.weights.entries.size());
        nameByPosition();
        m_table.isNormalized = isNormalized;
        if (isNormalized) {
            normalize();
        }
        return std::make_shared<const SkinTable>(std::move(m_table));
    }

private:
    void nameByPosition()
    {
        std::vector<std::uint32_t> positions;
        for (const InfluenceWeight& entry : m_table.weights.entries) {
            if (entry.influence >= positions.size()) {
                positions.resize(entry.influence + 1, 0);
            }
            positions[entry.influence] = 1;
        }
        for (std::size_t index = 0; index < positions.size(); ++index) {
            if (positions[index] != 0) {
                positions[index] = static_cast<std::uint32_t>(m_table.influences.size());
                m_table.influences.push_back(static_cast<std::int32_t>(index));
            }
        }
        for (InfluenceWeight& entry : m_table.weights.entries) {
            entry.influence = positions[entry.influence];
        }
    }

    void normalize()
    {
        SkinWeights& weights = m_table.weights;
        for (std::size_t row = 0; row < weights.points.size(); ++row) {
            double sum = 0;
            for (std::size_t at = weights.starts[row]; at < weights.starts[row + 1]; ++at) {
                sum += weights.entries[at].weight;
            }
            for (std::size_t at = weights.starts[row]; at < weights.starts[row + 1] && sum != 0;
                 ++at) {
                weights.entries[at].weight /= sum;
            }
        }
    }

    SkinTable m_table;
};

void addStored(TableMaker& maker, const NumericArray& numbers)
{
    const auto* doubles = numbers.numbers<double>();
    for (const NumericArray::Run& run : numbers.runs()) {
        for (std::uint32_t i = 0; i < run.count; ++i) {
            const std::uint32_t influence = run.first + i;
            maker.add(influence, doubles != nullptr && numbers.width() == 1
                                     ? (*doubles)[run.offset + i]
                                     : numbers.number(influence, 0));
        }
    }
}

std::shared_ptr<const SkinTable> makeTable(ComputeContext& context, std::size_t position,
                                           const std::vector<LivingWeight>& living,
                                           bool isNormalized)
{
    const std::vector<InnerArray> rows = context.innerArrays(position);
    std::size_t entries = living.size();
    for (const InnerArray& row : rows) {
        entries += row.numbers->elementCount();
    }
    TableMaker maker(rows.size() + living.size(), entries);
    auto row = rows.begin();
    auto next = living.begin();
    while (row != rows.end() || next != living.end()) {
        const bool isStored =
            row != rows.end() && (next == living.end() || row->way[0] <= next->point);
        const std::int32_t point = isStored ? row->way[0] : next->point;
        maker.beginRow(point);
        for (; row != rows.end() && row->way[0] == point; ++row) {
            addStored(maker, *row->numbers);
        }
        for (; next != living.end() && next->point == point; ++next) {
            maker.replace(static_cast<std::uint32_t>(next->influence), next->weight);
        }
    }
    return maker.finish(isNormalized);
}

} // namespace

std::shared_ptr<const SkinTable> skinTable(ComputeContext& context, std::size_t position,
                                           bool isNormalized)
{
    const std::vector<LivingWeight> living = livingWeights(context, position);
    if (!living.empty()) {
        return makeTable(context, position, living, isNormalized);
    }
    auto kept = std::static_pointer_cast<const SkinTable>(context.kept());
    if (kept == nullptr || kept->isNormalized != isNormalized) {
        kept = makeTable(context, position, {}, isNormalized);
        context.kept() = kept;
    }
    return kept;
}

} // namespace host::nodes
