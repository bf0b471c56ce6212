#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <span>

/// The two functions that libFuzzer calls, and the mutator that it provides. Without libFuzzer, replay_main.cpp calls
/// and provides them.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t max_size,
                                               unsigned seed);
extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t max_size);

namespace zel::fuzz {

using Input = std::span<const std::uint8_t>;

/// Aborts the program unless `holds`; libFuzzer then saves the input.
inline void Require(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "broken: %s\n", what);
    std::abort();
}

}  // namespace zel::fuzz
