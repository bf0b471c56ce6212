#include "host/document/message_warnings.h"

#include "base/text.h"
#include "module/contract/records/msg_header.h"
#include "platform/system/files.h"

namespace zel::document {

std::vector<int> MissingFonts(const MessageRecord& message) {
    std::vector<int> numbers;
    if (message.rgba) return numbers;
    for (std::size_t slot = 0; slot < message.fonts.size(); ++slot) {
        const std::uint16_t number = message.header.font_numbers[slot];
        if (number != kNoFont && !message.fonts[slot]) numbers.push_back(number);
    }
    return numbers;
}

std::vector<std::string> WarningsOf(const MessageRecord& message) {
    std::vector<std::string> warnings;
    std::string numbers;
    for (const int number : MissingFonts(message)) numbers += (numbers.empty() ? "" : ", ") + std::to_string(number);
    if (!numbers.empty()) {
        warnings.push_back("not found or not readable: font " + numbers + "; a row ends where it is used");
    }
    for (std::size_t slot = 0; slot < message.fonts.size(); ++slot) {
        const std::optional<FontRecord>& font = message.fonts[slot];
        if (!font || !font->elsewhere) continue;
        warnings.push_back(
            "font " + std::to_string(message.header.font_numbers[slot]) +
            " is not in the font directory; used instead: " + system::NativePath(font->file_name.c_str()));
    }
    if (!message.glyph_failures.empty()) {
        warnings.push_back(base::Counted(message.glyph_failures.size(), "glyph") +
                           " couldn't be drawn: " + message.glyph_failures.front());
    }
    return warnings;
}

}  // namespace zel::document
