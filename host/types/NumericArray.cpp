#include "host/types/NumericArray.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <limits>
#include <type_traits>
#include <utility>

namespace host {
namespace {

constexpr std::uint64_t kEndOfIndices = 0xffffffff; // one past the highest index

/// Whole numbers are cut towards zero and kept in range; no number is 0.
template<class To, class From>
To convert(From number)
{
    if constexpr (std::is_same_v<To, From> || !std::is_integral_v<To>) {
        return static_cast<To>(number);
    } else {
        constexpr double kLow = std::numeric_limits<To>::min();
        constexpr double kHigh = std::numeric_limits<To>::max();
        const double wide = static_cast<double>(number);
        return std::isnan(wide) ? To(0) : static_cast<To>(std::clamp(wide, kLow, kHigh));
    }
}

bool startsBefore(std::uint32_t index, const NumericArray::Run& run)
{
    return index < run.first;
}

} // namespace

NumericArray::NumericArray(NumberStorage storage, std::size_t width)
    : m_width(std::max<std::size_t>(width, 1))
{
    switch (storage) {
    case NumberStorage::Float:
        break; // the variant's first
    case NumberStorage::Double:
        m_numbers.emplace<std::vector<double>>();
        break;
    case NumberStorage::Int32:
        m_numbers.emplace<std::vector<std::int32_t>>();
        break;
    }
}

const std::vector<NumericArray::Run>& NumericArray::runs() const
{
    if (m_isStale) {
        m_runs.clear();
        m_runs.reserve(m_sorted.size());
        for (const auto& [first, run] : m_sorted) {
            m_runs.push_back(run);
        }
        m_isStale = false;
    }
    return m_runs;
}

std::uint64_t NumericArray::endIndex() const
{
    if (empty()) {
        return 0;
    }
    const Run& last = m_sorted.empty() ? m_runs.back() : m_sorted.rbegin()->second;
    return std::uint64_t{last.first} + last.count;
}

/// The run that holds an index, or null.
const NumericArray::Run* NumericArray::findRun(std::uint32_t index) const
{
    const Run* before = nullptr;
    if (m_sorted.empty()) {
        const auto after = std::upper_bound(m_runs.begin(), m_runs.end(), index, startsBefore);
        before = after == m_runs.begin() ? nullptr : &*std::prev(after);
    } else {
        const auto after = m_sorted.upper_bound(index);
        before = after == m_sorted.begin() ? nullptr : &std::prev(after)->second;
    }
    return before != nullptr && index - before->first < before->count ? before : nullptr;
}

/// First index of the first run that begins after `index`; the end of all indices if there is none.
std::uint32_t NumericArray::nextFirst(std::uint32_t index) const
{
    constexpr std::uint32_t kNone = 0xffffffff;
    if (m_sorted.empty()) {
        const auto after = std::upper_bound(m_runs.begin(), m_runs.end(), index, startsBefore);
        return after == m_runs.end() ? kNone : after->first;
    }
    const auto after = m_sorted.upper_bound(index);
    return after == m_sorted.end() ? kNone : after->first;
}

NumericArray::Run* NumericArray::lastRun()
{
    if (!m_sorted.empty()) {
        return &m_sorted.rbegin()->second;
    }
    return m_runs.empty() ? nullptr : &m_runs.back();
}

/// Enters a run of new elements whose numbers are the last of the block.
void NumericArray::addRun(const Run& run)
{
    m_elementCount += run.count;
    Run* last = lastRun();
    const bool isLast = last == nullptr || run.first >= last->first + last->count;
    if (isLast && last != nullptr && run.first == last->first + last->count &&
        run.offset == last->offset + last->count * m_width) {
        last->count += run.count;
        m_isStale = !m_sorted.empty();
        return;
    }
    if (isLast && m_sorted.empty()) {
        m_runs.push_back(run);
        return;
    }
    if (m_sorted.empty()) {
        for (const Run& known : m_runs) {
            m_sorted.emplace_hint(m_sorted.end(), known.first, known);
        }
    }
    m_sorted.emplace(run.first, run);
    m_isStale = true;
}

std::size_t NumericArray::numberCount() const
{
    return std::visit([](const auto& held) { return held.size(); }, m_numbers);
}

template<class T>
void NumericArray::appendNumbers(const T* numbers, std::size_t count)
{
    std::visit(
        [&](auto& held) {
            using Held = typename std::decay_t<decltype(held)>::value_type;
            if constexpr (std::is_same_v<Held, T>) {
                held.insert(held.end(), numbers, numbers + count);
            } else {
                for (std::size_t i = 0; i < count; ++i) {
                    held.push_back(convert<Held>(numbers[i]));
                }
            }
        },
        m_numbers);
}

template<class T>
void NumericArray::overwrite(std::size_t offset, const T* numbers, std::size_t count)
{
    std::visit(
        [&](auto& held) {
            using Held = typename std::decay_t<decltype(held)>::value_type;
            std::transform(numbers, numbers + count, held.begin() + static_cast<long long>(offset),
                           convert<Held, T>);
        },
        m_numbers);
}

void NumericArray::reserveMore(std::size_t elements)
{
    if (elements >= m_elementCount) {
        const std::size_t numbers = numberCount() + elements * m_width;
        std::visit([numbers](auto& held) { held.reserve(numbers); }, m_numbers);
    }
}

template<class T>
void NumericArray::store(std::uint32_t first, std::span<const T> numbers)
{
    const std::size_t room = static_cast<std::size_t>(kEndOfIndices - first);
    const std::size_t count = std::min(numbers.size() / m_width, room);
    if (count == 0) {
        return;
    }
    if (first < endIndex()) {
        storeAnywhere(first, numbers.data(), count);
        return;
    }
    const std::size_t offset = numberCount();
    appendNumbers(numbers.data(), count * m_width);
    addRun({first, static_cast<std::uint32_t>(count), offset});
}

/// Stores elements of which some may exist: piece by piece, each wholly in a run or wholly between
/// two.
template<class T>
void NumericArray::storeAnywhere(std::uint32_t first, const T* numbers, std::size_t count)
{
    while (count > 0) {
        std::size_t piece = 0;
        if (const Run* run = findRun(first)) {
            const std::size_t skipped = first - run->first;
            piece = std::min<std::size_t>(count, run->count - skipped);
            overwrite(run->offset + skipped * m_width, numbers, piece * m_width);
        } else {
            piece = std::min<std::size_t>(count, nextFirst(first) - first);
            const std::size_t offset = numberCount();
            appendNumbers(numbers, piece * m_width);
            addRun({first, static_cast<std::uint32_t>(piece), offset});
        }
        first += static_cast<std::uint32_t>(piece);
        numbers += piece * m_width;
        count -= piece;
    }
}

void NumericArray::storeComponent(std::uint32_t index, std::size_t component, double number)
{
    if (component >= m_width || index >= kEndOfIndices) {
        return;
    }
    std::size_t offset = numberCount();
    if (const Run* run = findRun(index)) {
        offset = run->offset + (index - run->first) * m_width;
    } else {
        std::visit([&](auto& held) { held.resize(held.size() + m_width); }, m_numbers);
        addRun({index, 1, offset});
    }
    overwrite(offset + component, &number, 1);
}

bool NumericArray::has(std::uint32_t index) const
{
    return findRun(index) != nullptr;
}

double NumericArray::number(std::uint32_t index, std::size_t component, double fallback) const
{
    const Run* run = findRun(index);
    if (run == nullptr || component >= m_width) {
        return fallback;
    }
    const std::size_t offset = run->offset + (index - run->first) * m_width + component;
    return std::visit([&](const auto& held) { return static_cast<double>(held[offset]); },
                      m_numbers);
}

template<class T>
std::vector<T> NumericArray::takeDense(std::size_t count, T fallback)
{
    std::vector<T> result;
    const std::vector<Run>& ordered = runs();
    const bool isOneRun = ordered.size() == 1 && ordered[0].first == 0 && ordered[0].count == count;
    auto* block = std::get_if<std::vector<T>>(&m_numbers);
    if (isOneRun && block != nullptr && block->size() == count * m_width) {
        result = std::move(*block);
    } else {
        result.assign(count * m_width, fallback);
        for (const Run& run : ordered) {
            if (run.first >= count) {
                break;
            }
            const std::size_t taken = std::min<std::size_t>(run.count, count - run.first) * m_width;
            T* target = result.data() + std::size_t{run.first} * m_width;
            std::visit(
                [&](const auto& held) {
                    using Held = typename std::decay_t<decltype(held)>::value_type;
                    const Held* source = held.data() + run.offset;
                    std::transform(source, source + taken, target, convert<T, Held>);
                },
                m_numbers);
        }
    }
    clear();
    return result;
}

void NumericArray::clear()
{
    m_runs.clear();
    m_sorted.clear();
    m_isStale = false;
    m_elementCount = 0;
    std::visit([](auto& held) { std::decay_t<decltype(held)>().swap(held); }, m_numbers);
}

template void NumericArray::store<float>(std::uint32_t, std::span<const float>);
template void NumericArray::store<double>(std::uint32_t, std::span<const double>);
template void NumericArray::store<std::int32_t>(std::uint32_t, std::span<const std::int32_t>);
template std::vector<float> NumericArray::takeDense<float>(std::size_t, float);
template std::vector<double> NumericArray::takeDense<double>(std::size_t, double);
template std::vector<std::int32_t> NumericArray::takeDense<std::int32_t>(std::size_t, std::int32_t);

} // namespace host
