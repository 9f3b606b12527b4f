// One line on a terminal that shows how far the work is. Draws nothing where standard error is no
// terminal.
#pragma once

#include <string_view>

class ProgressBar {
public:
    explicit ProgressBar(bool isEnabled);
    /// `fraction` from 0 to 1, `name` of the item at hand.
    void show(std::string_view name, double fraction);
    /// Takes the line away.
    void clear();

private:
    bool m_isEnabled;
    bool m_isShown = false;
};
