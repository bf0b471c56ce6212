// Runs a fuzz target without libFuzzer, on each file of the given directories and on changed copies of each. The copies
// are the same in each run. Directories after --as-it-is are replayed without copies.
#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "fuzz_target.h"

using namespace zel;

#pragma weak LLVMFuzzerCustomMutator

namespace {

// Maximum size of a copy that grows.
constexpr std::size_t kMaxCopy = 65536;

std::minstd_rand g_random;
// Number of successive changes to one copy.
constexpr int kChanges = 4;
int g_copies = 60;

void Replay(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    const std::vector<std::uint8_t> bytes{std::istreambuf_iterator<char>(in), {}};
    fuzz::Require(!in.bad(), file.c_str());
    LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
    std::vector<std::uint8_t> copy(bytes);
    copy.resize(std::max(bytes.size(), kMaxCopy));
    std::size_t size = bytes.size();
    for (int i = 0; i < g_copies; ++i) {
        if (i % kChanges == 0) {
            std::copy(bytes.begin(), bytes.end(), copy.begin());
            size = bytes.size();
        }
        size = LLVMFuzzerCustomMutator != nullptr
                   ? LLVMFuzzerCustomMutator(copy.data(), size, copy.size(), static_cast<unsigned>(i))
                   : LLVMFuzzerMutate(copy.data(), size, copy.size());
        const std::vector<std::uint8_t> exact(copy.begin(), copy.begin() + static_cast<std::ptrdiff_t>(size));
        LLVMFuzzerTestOneInput(exact.data(), exact.size());
    }
}

}  // namespace

std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t max_size) {
    if (size == 0 && max_size != 0) data[size++] = 0;
    if (size != 0) data[g_random() % size] = static_cast<std::uint8_t>(g_random());
    return size;
}

int main(int argc, char** argv) {
    int files = 0;
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--as-it-is") == 0) {
            g_copies = 0;
            continue;
        }
        std::vector<std::filesystem::path> inputs;
        for (const auto& entry : std::filesystem::directory_iterator(argv[i])) inputs.push_back(entry.path());
        std::sort(inputs.begin(), inputs.end());
        for (const auto& input : inputs) {
            std::fprintf(stderr, "%s\n", input.c_str());
            Replay(input);
            ++files;
        }
    }
    fuzz::Require(files != 0, "a corpus to replay");
}
