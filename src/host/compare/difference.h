#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <nlohmann/json.hpp>

namespace zel::compare {

/// What one side of a comparison has.
struct DifferenceSide {
    /// Of the row, field, font slot, palette entry or glyph, from 0; empty if this side doesn't have it.
    std::optional<int> index{};
    /// A run of the row's characters in reading order: the first one, and how many.
    struct Run {
        int first = 0, count = 0;
        bool operator==(const Run&) const = default;
    };
    std::optional<Run> run{};
    /// Null for what this side doesn't have.
    nlohmann::ordered_json value{};
    /// The words that contain the run, UTF-8.
    std::string words{};

    bool operator==(const DifferenceSide&) const = default;
};

/// One difference of two messages, fonts or recordings.
struct Difference {
    /// "message", "frame", "slot", "font", "palette", "row" and "field" of a message, "header", "block" and "glyph" of
    /// a font.
    std::string part;
    /// What of it differs, such as "text" or "y"; "presence" for a part that one side doesn't have.
    std::string property;
    DifferenceSide a, b;

    bool operator==(const Difference&) const = default;
};
using Differences = std::vector<Difference>;

/// The difference with its sides exchanged.
inline Difference Mirrored(Difference difference) {
    std::swap(difference.a, difference.b);
    return difference;
}

/// A difference in one line, without a line break; texts in it are as base::TerminalText makes them.
std::string TextOf(const Difference& difference);

/// Differences as lines. All of one glyph share a line, and so do glyphs or empty rows that one side doesn't have, and
/// the colours of a set.
std::vector<std::string> LinesOf(const Differences& differences);

/// Members "part", "property", "a" and "b"; a side is null if it doesn't have the part.
nlohmann::ordered_json JsonOf(const Difference& difference);

}  // namespace zel::compare
