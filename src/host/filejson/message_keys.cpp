#include "host/filejson/message_keys.h"

#include <charconv>

#include "base/utf8.h"

namespace zel::filejson {

namespace {

constexpr std::size_t kSetEntries = 32, kSets = 8;

std::string ColourText(std::uint32_t entry) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    const std::uint32_t red = entry & 0xFF, green = entry >> 24, blue = entry >> 16 & 0xFF, unread = entry >> 8 & 0xFF;
    std::string text = "#";
    const auto add = [&](std::uint32_t byte) {
        text += kDigits[byte >> 4];
        text += kDigits[byte & 15];
    };
    add(red);
    add(green);
    add(blue);
    if (unread != 0xFF) add(unread);
    return text;
}

std::optional<std::uint32_t> EntryOf(std::string_view text) {
    if ((text.size() != 7 && text.size() != 9) || text.front() != '#') return std::nullopt;
    std::uint32_t value = 0;
    const auto [end, error] = std::from_chars(text.data() + 1, text.data() + text.size(), value, 16);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    const std::uint32_t unread = text.size() == 9 ? value & 0xFF : 0xFF;
    const std::uint32_t colour = text.size() == 9 ? value >> 8 : value;
    return (colour >> 8 & 0xFF) << 24 | (colour & 0xFF) << 16 | unread << 8 | colour >> 16;
}

/// The code of a text of one character; empty, and reported, if it is another text.
std::optional<unsigned> CodeOfCharacter(KeyReader& io, const std::string& text, unsigned most) {
    const auto bytes = io.Latin1("text", text);
    if (!bytes) return std::nullopt;
    const unsigned code = bytes->empty() ? 0 : static_cast<unsigned char>(bytes->front());
    if (bytes->size() != 1) {
        io.AddFault("text", "must be one character");
    } else if (code > most) {
        io.AddFault("text", "has the code " + std::to_string(code) + ", which is above " + std::to_string(most));
    } else {
        return code;
    }
    return std::nullopt;
}

void CheckText(KeyReader& io, const std::string& text, unsigned code) {
    const auto of_text = CodeOfCharacter(io, text, 0xFF);
    if (!of_text || *of_text == code) return;
    io.AddFault("text", '"' + text + "\" has the code " + std::to_string(*of_text) + ", but code is " +
                            std::to_string(code) + "; leave one of them out");
}

/// The records that the chain visits, until it leaves the row or comes back.
struct ChainWalk {
    std::size_t steps = 0;
    /// The record whose next_char, or row whose first_char for an empty value, leads to `next`.
    std::optional<std::size_t> last{};
    unsigned next = 0;
    bool leaves = false, loops = false;
};

ChainWalk WalkChain(const files::RowText& row) {
    ChainWalk walk;
    std::bitset<kMostCharacters + 1> visited;
    walk.next = row.first_char;
    for (; walk.steps < row.cells.size(); ++walk.steps) {
        walk.leaves = walk.next >= row.cells.size();
        walk.loops = !walk.leaves && visited[walk.next];
        if (walk.leaves || walk.loops) break;
        visited.set(walk.next);
        walk.last = walk.next;
        walk.next = row.cells[walk.next].next_char;
    }
    return walk;
}

void CheckChain(KeyReader& io, const files::RowText& row) {
    const ChainWalk walk = WalkChain(row);
    if (!walk.leaves && !walk.loops) return;
    std::string place = walk.last ? "characters/" + std::to_string(*walk.last) + "/next_char" : "first_char";
    std::string rule = std::to_string(walk.next);
    if (walk.loops) {
        rule += " comes back to a record of the chain";
    } else {
        rule += walk.next == kEndOfChain ? " ends the chain" : " is no record of the row";
    }
    rule += " after " + std::to_string(walk.steps) + " of " + std::to_string(row.cells.size()) + " characters";
    io.State().faults.Add(io.Where().Pointer() + '/' + place, rule);
}

}  // namespace

bool IsWholeChain(const files::RowText& row) {
    const ChainWalk walk = WalkChain(row);
    return !walk.leaves && !walk.loops;
}

void CodeKeys(KeyWriter& io, unsigned code) {
    if (code < 256 && !base::IsControl(code)) {
        const char text = static_cast<char>(code);
        io.Json().Bytes("text", {&text, 1});
    }
    io.Json().Number("code", code);
}

void CodeKeys(KeyReader& io, unsigned& code, unsigned most) {
    const std::uint64_t faults = io.State().faults.Count();
    const auto text = io.FindText("text");
    std::optional<unsigned> number;
    io.Optional("code", number, 0, most);
    if (!number)
        number = text ? CodeOfCharacter(io, *text, most) : std::nullopt;
    else if (text)
        CheckText(io, *text, *number);
    if (!number && io.State().faults.Count() == faults) io.AddFault("code", "is missing");
    code = io.State().faults.Count() == faults ? number.value_or(kNoCode) : kNoCode;
}

void ReadRow(KeyReader& io, files::RowText& row) {
    bool faulty = false;
    RowKeys(io, row, faulty);
    const std::size_t count = row.cells.size();
    if (row.char_count == count) row.char_count.reset();
    if (row.row_empty && count != 0) io.AddFault("characters", "an empty row has none");
    if (faulty) return;
    if (row.char_count) {
        io.AddFault("char_count",
                    std::to_string(*row.char_count) + " is not the number of characters, " + std::to_string(count));
    }
    CheckChain(io, row);
}

void FontNumberKeys(KeyWriter& io, const std::array<std::uint16_t, 16>& numbers) {
    document::JsonLine& json = io.Json();
    json.Key("font_numbers").Open('[');
    for (const std::uint16_t number : numbers) number == kWord ? json.Null() : json.Number(number);
    json.Close(']');
}

void FontNumberKeys(KeyReader& io, std::array<std::uint16_t, 16>& numbers) {
    const Json* json = io.FindList("font_numbers", numbers.size());
    if (json == nullptr) return;
    const Place place(io.Where(), "font_numbers");
    for (std::size_t slot = 0; slot < std::min(json->size(), numbers.size()); ++slot) {
        const Json& number = (*json)[slot];
        numbers[slot] =
            number.is_null() ? kWord : static_cast<std::uint16_t>(io.NumberAt(number, Place(place, slot), 0, kWord));
    }
}

void ColourKeys(KeyWriter& io, const std::vector<std::uint32_t>& entries) {
    document::JsonLine& json = io.Json();
    json.Key("sets").Open('[');
    for (std::size_t n = 0; n < entries.size(); ++n) {
        if (n % kSetEntries == 0) json.Open('[');
        json.Bytes(ColourText(entries[n]));
        if (n % kSetEntries == kSetEntries - 1 || n + 1 == entries.size()) json.Close(']');
    }
    json.Close(']');
}

void ColourKeys(KeyReader& io, std::vector<std::uint32_t>& entries) {
    const Json* sets = io.FindList("sets", kSets);
    if (sets == nullptr) return;
    const Place place(io.Where(), "sets");
    for (std::size_t s = 0; s < std::min(sets->size(), kSets); ++s) {
        const Json& set = (*sets)[s];
        const Place at(place, s);
        const bool is_last = s + 1 == sets->size();
        if (!set.is_array() || set.size() > kSetEntries || (set.size() < kSetEntries && !is_last)) {
            io.State().faults.Add(at.Pointer(),
                                  is_last ? "must be an array of up to 32 colours" : "must be an array of 32 colours");
            continue;
        }
        for (std::size_t n = 0; n < set.size(); ++n) {
            const auto entry = set[n].is_string() ? EntryOf(set[n].get_ref<const std::string&>()) : std::nullopt;
            if (!entry) io.State().faults.Add(Place(at, n).Pointer(), "is not a colour such as #FFFFFF");
            entries.push_back(entry.value_or(0));
        }
    }
}

void RowsKey(KeyWriter& io, const std::vector<files::RowText>& rows) {
    io.List("rows", rows, kMostRows, [](KeyWriter& inner, const files::RowText& row, std::size_t, std::size_t) {
        const bool faulty = IsFaulty(row);
        RowKeys(inner, row, faulty);
    });
}

void RowsKey(KeyReader& io, std::vector<files::RowText>& rows) {
    io.FindList("rows", kMostRows);
    if (rows.size() > kMostRows) io.AddFault("rows", "has more than 65536 rows");
}

void StandardKey(KeyWriter& io, bool pal) {
    io.Json().Bytes("standard", pal ? "PAL" : "NTSC");
}

void StandardKey(KeyReader& io, bool& pal) {
    const auto text = io.FindText("standard");
    if (text && *text != "PAL" && *text != "NTSC") io.AddFault("standard", "must be PAL or NTSC");
    pal = text == "PAL";
}

}  // namespace zel::filejson
