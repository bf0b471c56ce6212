// The cost of starting a C++ program: the standard library and nothing else.
#include <iostream>

int main() {
    return std::cout.good() ? 0 : 1;
}
