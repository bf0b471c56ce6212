#include "host/export/message_title.h"

#include <algorithm>
#include <string_view>

#include "host/export/utf8.h"

namespace zel::exporter {

std::string TitleOf(const std::string& text) {
    constexpr std::size_t kLongestTitle = 100;
    std::string title;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        const std::vector<char32_t> line = CodePoints(std::string_view(text).substr(begin, end - begin));
        const auto first = std::find_if(line.begin(), line.end(), [](char32_t code) { return code != ' '; });
        const auto size = static_cast<std::size_t>(line.end() - first);
        if (size > 1 || (size == 1 && title.empty())) {
            title = Utf8({line.data() + (first - line.begin()), std::min(size, kLongestTitle)});
        }
        if (size > 1) break;
        begin = end + 1;
    }
    return title;
}

}  // namespace zel::exporter
