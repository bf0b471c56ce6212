#pragma once

#include <string>
#include <vector>

/// What a program has used, with the programs that it started and waited for.
struct ProgramResult {
    bool succeeded = false;
    double processor_seconds = 0;
    long peak_memory_kib = 0;
};

/// Runs a program without output.
/// @param words  its path and its arguments.
ProgramResult RunProgram(const std::vector<std::string>& words);
