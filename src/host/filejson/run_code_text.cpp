#include "host/filejson/run_code_text.h"

#include <charconv>

namespace zel::filejson {

namespace {

constexpr std::uint32_t kUnreadBits = 0x7F000004;
constexpr unsigned kFullLevel = 255;

/// Takes numbers and marks from the front of a word.
class WordReader {
  public:
    explicit WordReader(std::string_view text) noexcept : m_rest(text) {}

    bool Mark(char mark) noexcept {
        if (m_rest.empty() || m_rest.front() != mark) return false;
        m_rest.remove_prefix(1);
        return true;
    }
    std::optional<unsigned> Number(unsigned least, unsigned most) noexcept {
        unsigned value = 0;
        const auto [end, error] = std::from_chars(m_rest.data(), m_rest.data() + m_rest.size(), value);
        if (error != std::errc() || value < least || value > most) return std::nullopt;
        m_rest.remove_prefix(static_cast<std::size_t>(end - m_rest.data()));
        return value;
    }
    bool IsAtEnd() const noexcept { return m_rest.empty(); }

  private:
    std::string_view m_rest;
};

std::string HexText(std::uint32_t code) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string text = "0x";
    for (int shift = 28; shift >= 0; shift -= 4) text += kDigits[code >> shift & 15];
    return text;
}

std::optional<std::uint32_t> CodeOfHex(std::string_view text) {
    std::uint32_t code = 0;
    const auto [end, error] = std::from_chars(text.data() + 2, text.data() + text.size(), code, 16);
    if (text.size() != 10 || error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return code;
}

std::string TextOfCode(std::uint32_t code) {
    using files::RunOperation;
    const auto operation = static_cast<RunOperation>(code & 3);
    const unsigned colour = code >> 16 & 0xFF, level = code >> 8 & 0xFF;
    const unsigned count = files::kLongestRun - (code >> 3 & 0x1F);
    const std::string stay = (code >> 31) != 0 ? "+" : "";
    if (code == files::EndOfGlyph()) return ".";
    if (code == files::EndOfLine()) return "|";
    if ((code & kUnreadBits) != 0 || operation == RunOperation::kEndOfLine) return HexText(code);
    if (operation == RunOperation::kBackground) {
        const bool is_usual = colour == files::kBackIndex && level == 0;
        return "b" + std::to_string(count) +
               (is_usual ? "" : ":" + std::to_string(colour) + "/" + std::to_string(level)) + stay;
    }
    return (operation == RunOperation::kColour ? "c" : "m") + std::to_string(colour) +
           (level == kFullLevel ? "" : "/" + std::to_string(level)) + "x" + std::to_string(count) + stay;
}

std::optional<std::uint32_t> BackgroundCode(WordReader word) {
    const auto count = word.Number(1, files::kLongestRun);
    std::optional<unsigned> colour = files::kBackIndex, level = 0;
    if (word.Mark(':')) {
        colour = word.Number(0, 255);
        level = word.Mark('/') ? word.Number(0, 255) : std::nullopt;
    }
    const bool stay = word.Mark('+');
    if (!count || !colour || !level || !word.IsAtEnd()) return std::nullopt;
    const std::uint32_t code = files::RunCode(files::RunOperation::kBackground, *colour, *level, *count, stay);
    return code != files::EndOfGlyph() ? std::optional(code) : std::nullopt;
}

std::optional<std::uint32_t> ColourCode(WordReader word, files::RunOperation operation) {
    const auto colour = word.Number(0, 255);
    std::optional<unsigned> level = kFullLevel;
    if (word.Mark('/')) level = word.Number(0, 255);
    const auto count = word.Mark('x') ? word.Number(1, files::kLongestRun) : std::nullopt;
    const bool stay = word.Mark('+');
    if (!colour || !level || !count || !word.IsAtEnd()) return std::nullopt;
    return files::RunCode(operation, *colour, *level, *count, stay);
}

}  // namespace

std::optional<std::uint32_t> CodeOfText(std::string_view text) {
    if (text == ".") return files::EndOfGlyph();
    if (text == "|") return files::EndOfLine();
    if (text.starts_with("0x")) return CodeOfHex(text);
    WordReader word(text);
    if (word.Mark('b')) return BackgroundCode(word);
    if (word.Mark('c')) return ColourCode(word, files::RunOperation::kColour);
    if (word.Mark('m')) return ColourCode(word, files::RunOperation::kBlended);
    return std::nullopt;
}

std::vector<std::string> LinesOfCodes(std::span<const std::uint32_t> codes) {
    std::vector<std::string> lines;
    bool in_line = false;
    for (const std::uint32_t code : codes) {
        if (!in_line) lines.emplace_back();
        if (in_line) lines.back() += ' ';
        lines.back() += TextOfCode(code);
        in_line = code != files::EndOfLine() && code != files::EndOfGlyph();
    }
    return lines;
}

std::string_view AppendCodes(std::string_view line, files::RunCodes& codes) {
    while (true) {
        line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
        if (line.empty()) return {};
        const std::string_view word = line.substr(0, line.find(' '));
        const auto code = CodeOfText(word);
        if (!code) return word;
        codes.push_back(*code);
        line.remove_prefix(word.size());
    }
}

}  // namespace zel::filejson
