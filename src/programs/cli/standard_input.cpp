#include "programs/cli/standard_input.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <system_error>

#include <unistd.h>

#include "base/file_descriptor.h"
#include "inspect/inspect.h"

namespace zel::cli {

std::vector<std::uint8_t> ReadStandardInput() {
    constexpr std::size_t kLargestBlock = std::size_t{4} << 20;
    constexpr auto kLargest = static_cast<std::size_t>(inspect::kLargestFile);
    std::vector<std::uint8_t> bytes;
    for (std::size_t block = std::size_t{16} << 10;; block = std::min(2 * block, kLargestBlock)) {
        const std::size_t before = bytes.size();
        bytes.resize(before + block);
        const std::size_t count = base::ReadFully(STDIN_FILENO, bytes.data() + before, block);
        bytes.resize(before + count);
        if (bytes.size() > kLargest) {
            throw std::runtime_error("more than " + std::to_string(kLargest >> 20) +
                                     " MiB, which no message or font has");
        }
        if (count == block) continue;
        if (errno == 0) return bytes;
        throw std::runtime_error("can't be read: " + std::generic_category().message(errno));
    }
}

}  // namespace zel::cli
