#include "host/types/PlugPath.h"

#include <algorithm>
#include <string>
#include <utility>

namespace host {
namespace {

constexpr std::int64_t kMaxIndex = 2147483646; // 2^31 - 2
constexpr std::size_t kMaxQuotedBytes = 80;    // of a bad plug, in messages

Error badPlug(std::string_view text, std::string_view reason)
{
    const std::string_view shown = text.substr(0, kMaxQuotedBytes);
    return {ErrorCode::BadInput, "plug '" + std::string(shown) + "': " + std::string(reason), {}};
}

/// A whole number of digits only; -1 when it is empty, has other characters or exceeds kMaxIndex.
std::int64_t parseIndex(std::string_view digits)
{
    if (digits.empty()) {
        return -1;
    }
    std::int64_t index = 0;
    for (const char digit : digits) {
        if (digit < '0' || digit > '9') {
            return -1;
        }
        index = index * 10 + (digit - '0');
        if (index > kMaxIndex) {
            return -1;
        }
    }
    return index;
}

/// Fills in the indices of what stands between the brackets; false when it is no index.
bool parseRange(std::string_view text, PlugStep& step)
{
    if (text == "-1") { // any element
        return true;
    }
    const std::size_t colon = text.find(':');
    step.first = parseIndex(text.substr(0, colon));
    step.last = colon == std::string_view::npos ? step.first : parseIndex(text.substr(colon + 1));
    return step.first >= 0 && step.last >= step.first;
}

/// One step of the path: a name and at most one bracket. Null on success, else the reason.
const char* parseStep(std::string_view text, PlugStep& step)
{
    const std::size_t bracket = text.find_first_of("[]");
    step.name = text.substr(0, bracket);
    if (step.name.empty()) {
        return "an attribute name is empty";
    }
    if (bracket == std::string_view::npos) {
        return nullptr;
    }
    const std::string_view rest = text.substr(bracket);
    if (rest.front() != '[' || rest.find(']') != rest.size() - 1) {
        return "brackets are not balanced";
    }
    const bool isGood = parseRange(rest.substr(1, rest.size() - 2), step);
    return isGood ? nullptr : "an index must be a whole number or an ascending range";
}

} // namespace

Expected<PlugPath> parsePlugPath(std::string_view text)
{
    const std::size_t dot = text.find('.');
    if (dot == std::string_view::npos) {
        return badPlug(text, "no attribute is named");
    }
    PlugPath path;
    path.node = text.substr(0, dot);
    std::size_t begin = dot + 1;
    while (true) {
        if (path.stepCount == PlugPath::kMaxSteps) {
            return badPlug(text, "too many steps");
        }
        const std::size_t end = std::min(text.find('.', begin), text.size());
        PlugStep& step = path.steps[path.stepCount];
        if (const char* reason = parseStep(text.substr(begin, end - begin), step)) {
            return badPlug(text, reason);
        }
        ++path.stepCount;
        if (end == text.size()) {
            return path;
        }
        begin = end + 1;
    }
}

} // namespace host
