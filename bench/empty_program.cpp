// What starting any C++ program costs: the standard library and nothing else.
#include <iostream>

int main() {
    return std::cout.good() ? 0 : 1;
}
