// The entry of a program whose arguments are UTF-8 on every system. The one file of a program that
// includes this header defines programMain; the entry that the system calls comes from here.
#pragma once

#ifdef _WIN32
#include "platform/wideText.h"

#include <string>
#include <vector>
#endif

/// The program: `argc` arguments (UTF-8) and a null pointer behind them; returns the exit status.
int programMain(int argc, char** argv);

#ifdef _WIN32

int wmain(int argc, wchar_t** argv)
{
    std::vector<std::string> texts;
    for (int i = 0; i < argc; ++i) {
        texts.push_back(platform::toUtf8(argv[i]));
    }
    std::vector<char*> pointers;
    for (std::string& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    return programMain(argc, pointers.data());
}

#else

int main(int argc, char** argv)
{
    return programMain(argc, argv);
}

#endif
