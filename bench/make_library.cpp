// Makes a library of many recordings: make_library FILE RECORDINGS
#include <cstdlib>
#include <exception>
#include <iostream>

#include "sample_library.h"

int main(int argc, char** argv) {
    const int recordings = argc == 3 ? std::atoi(argv[2]) : 0;
    if (recordings < kLibraryDisks) {
        std::cerr << "usage: make_library FILE RECORDINGS, of which there are " << kLibraryDisks << " or more\n";
        return 2;
    }
    try {
        MakeSampleLibrary(argv[1], recordings);
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
    return 0;
}
