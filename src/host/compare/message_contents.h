#pragma once

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <nlohmann/json_fwd.hpp>

#include "module/message/format/message_loader.h"

namespace zel::compare {

/// A character of a row.
struct ContentCharacter {
    int code = 0;
    /// In pixels of the picture.
    int x = 0;
    /// Of a message file: lines below the row's y. Of a document: its shift of the baseline.
    int y = 0;
    int slot = 0;
    /// Number of the slot's font; -1 without one.
    int font = -1;
    /// -1 in a document, which has colours instead.
    int colour_set = -1;
    std::uint32_t face = 0, edge = 0;
    bool place_flag = false;
    /// Of a document: form, edge and typeface as text.
    std::string form{};

    auto operator<=>(const ContentCharacter&) const = default;
};

struct ContentRow {
    /// In lines; the limits are relative to y.
    int y = 0, top = 0, bottom = 0;
    bool empty = false;
    /// In reading order.
    std::vector<ContentCharacter> characters{};

    auto operator<=>(const ContentRow&) const = default;
};

struct ContentField {
    /// UTF-8.
    std::string name{};
    int row = 0;
    /// In pixels of the picture.
    int left = 0, right = 0;
    int slot = 0;
    int font = -1;
    /// As in ContentCharacter.
    int colour_set = -1;
    std::uint32_t colour = 0;
    /// The values that are carried for the host.
    int byte = 0;
    std::uint32_t flags = 0;

    auto operator<=>(const ContentField&) const = default;
};

/// What an import reads of a message, whatever fonts are found: what two messages are compared by.
struct MessageContents {
    std::string standard{};
    /// Left, top, right, bottom.
    std::array<int, 4> frame{};
    std::array<std::optional<int>, kFontSlots> slots{};
    /// Of a document: the description of each slot's font.
    std::array<std::string, kFontSlots> fonts{};
    /// 8 sets of 32 colours, red in the top byte of 24 bits.
    std::array<std::uint32_t, kColourSets * kSetEntries> palette{};
    bool flash_font = false;
    /// Tab fields are rejected because of their row, or because they don't end after their beginning.
    bool bad_field_row = false, bad_field = false;
    std::vector<ContentRow> rows{};
    std::vector<ContentField> fields{};

    auto operator<=>(const MessageContents&) const = default;
};

/// The contents of a message that has been read completely.
MessageContents ContentsOf(const message::LoadedMessage& message);

/// The contents that a document has. A member that is missing or has the wrong type counts as 0 or empty.
MessageContents ContentsOf(const nlohmann::ordered_json& document);

/// The text of characters of a row, UTF-8, with a blank in each gap between words that has none.
std::string TextOf(const ContentRow& row, std::size_t first, std::size_t count);
inline std::string TextOf(const ContentRow& row) {
    return TextOf(row, 0, row.characters.size());
}

}  // namespace zel::compare
