// What starting a C++ program costs.
#include <iostream>

int main()
{
    std::cout << std::flush;
    return 0;
}
