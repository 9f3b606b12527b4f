#include "apps/maya2vistrel/ProgressBar.h"

#include "platform/terminal.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>

namespace {

constexpr int kBarWidth = 30;
constexpr std::size_t kNameWidth = 36;

/// At most kNameWidth bytes, cut between characters; control characters become blanks.
std::string shortened(std::string_view name)
{
    std::size_t length = std::min(name.size(), kNameWidth);
    while (length > 0 && length < name.size() &&
           (static_cast<unsigned char>(name[length]) & 0xc0) == 0x80) {
        --length;
    }
    std::string result(name.substr(0, length));
    std::replace_if(
        result.begin(), result.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20; },
        ' ');
    return result;
}

} // namespace

ProgressBar::ProgressBar(bool isEnabled) : m_isEnabled(isEnabled && platform::isErrorTerminal()) {}

void ProgressBar::show(std::string_view name, double fraction)
{
    if (!m_isEnabled || !std::isfinite(fraction)) {
        return;
    }
    const double share = std::clamp(fraction, 0.0, 1.0);
    const int filled = static_cast<int>(share * kBarWidth);
    const std::string bar(static_cast<std::size_t>(filled), '#');
    std::fprintf(stderr, "\r\033[K[%-*s] %3d%%  %s", kBarWidth, bar.c_str(),
                 static_cast<int>(share * 100), shortened(name).c_str());
    std::fflush(stderr);
    m_isShown = true;
}

void ProgressBar::clear()
{
    if (m_isShown) {
        std::fputs("\r\033[K", stderr);
        std::fflush(stderr);
        m_isShown = false;
    }
}
