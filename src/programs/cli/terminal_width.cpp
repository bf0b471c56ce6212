#include "programs/cli/terminal_width.h"

#include <charconv>
#include <cstdlib>
#include <string_view>

#include <sys/ioctl.h>
#include <unistd.h>

namespace zel::cli {

namespace {

constexpr std::size_t kUsualWidth = 80;

/// 0 without a usable number.
std::size_t WidthOfEnvironment() {
    const char* const columns = std::getenv("COLUMNS");
    if (columns == nullptr) return 0;
    const std::string_view text(columns);
    unsigned short width = 0;
    const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), width);
    return error == std::errc() && stop == text.data() + text.size() ? width : 0;
}

}  // namespace

std::size_t TerminalWidth() {
    std::size_t width = WidthOfEnvironment();
    winsize size{};
    if (width == 0 && ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0) width = size.ws_col;
    return width == 0 ? kUsualWidth : width;
}

}  // namespace zel::cli
