#include "host/compare/difference.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>

#include "base/terminal_text.h"
#include "base/text.h"
#include "base/utf8.h"
#include "module/contract/records/palette.h"

namespace zel::compare {

namespace {

using Json = nlohmann::ordered_json;

std::string Quoted(const std::string& text) {
    return '"' + base::TerminalText(text) + '"';
}

std::string ValueText(const Json& value) {
    if (value.is_null()) return "none";
    if (value.is_boolean()) return value.get<bool>() ? "yes" : "no";
    if (value.is_string()) return base::TerminalText(value.get<std::string>());
    return value.dump();
}

std::string Change(const Difference& difference) {
    return ValueText(difference.a.value) + " -> " + ValueText(difference.b.value);
}

/// "row 3", or "row 3 -> 4" for a row that other rows have moved.
std::string Place(const Difference& difference) {
    const auto& [a, b] = std::pair(difference.a.index, difference.b.index);
    if (!a && !b) return {};
    std::string text = " " + std::to_string(a ? *a : *b);
    if (a && b && *a != *b) text += " -> " + std::to_string(*b);
    return text;
}

/// "2" or "2 to 14".
std::string Span(int least, int most) {
    return least == most ? std::to_string(least) : std::to_string(least) + " to " + std::to_string(most);
}

/// How far the characters of a run have moved along one axis; empty if none has.
std::string Distance(const Difference& difference, std::size_t axis, const char* forth, const char* back) {
    int least = 0, most = 0;
    bool is_first = true;
    for (std::size_t i = 0; i < difference.a.value.size(); ++i) {
        const int distance = difference.b.value[i][axis].get<int>() - difference.a.value[i][axis].get<int>();
        least = is_first ? distance : std::min(least, distance);
        most = is_first ? distance : std::max(most, distance);
        is_first = false;
    }
    if (least == 0 && most == 0) return {};
    if (least >= 0) return Span(least, most) + " " + forth;
    if (most <= 0) return Span(-most, -least) + " " + back;
    return std::to_string(-least) + " " + back + " to " + std::to_string(most) + " " + forth;
}

std::string RowText(const Difference& difference) {
    const DifferenceSide &a = difference.a, &b = difference.b;
    if (difference.property == "presence") {
        const DifferenceSide& side = a.index ? a : b;
        const auto& text = side.value.get_ref<const std::string&>();
        return std::string(a.index ? " removed" : " added") + (text.empty() ? ", without text" : ": " + Quoted(text));
    }
    if (difference.property == "text") {
        if (a.words.empty()) return ": added " + Quoted(b.words);
        if (b.words.empty()) return ": removed " + Quoted(a.words);
        return ": " + Quoted(a.words) + " -> " + Quoted(b.words);
    }
    if (difference.property == "place") {
        const std::string x = Distance(difference, 0, "right", "left"), y = Distance(difference, 1, "down", "up");
        return ": " + Quoted(b.words) + " moved " + x + (x.empty() || y.empty() ? "" : ", ") + y;
    }
    const std::string of = difference.a.run && difference.property != "codes" ? Quoted(b.words) + " " : std::string();
    return ": " + of + difference.property + " " + Change(difference);
}

std::string FieldText(const Difference& difference) {
    const std::string& name = difference.a.index ? difference.a.words : difference.b.words;
    const std::string shown = name.empty() ? std::string() : " " + Quoted(name);
    if (difference.property != "presence") return shown + ": " + difference.property + " " + Change(difference);
    const Json& field = difference.a.index ? difference.a.value : difference.b.value;
    return shown + (difference.a.index ? " removed" : " added") + ": row " + field["row"].dump() + ", " +
           field["left"].dump() + " to " + field["right"].dump();
}

std::string PaletteText(const Difference& difference) {
    const int entry = difference.a.index.value_or(0);
    const int in_set = entry % kSetEntries;
    return " set " + std::to_string(entry / kSetEntries) + ", colour " + std::to_string(in_set) +
           (in_set == kFaceEntry   ? " (face)"
            : in_set == kEdgeEntry ? " (edge)"
                                   : "") +
           ": " + Change(difference);
}

/// "65 (A)".
std::string GlyphName(int code) {
    std::string text = std::to_string(code);
    if (code > ' ' && !base::IsControl(static_cast<char32_t>(code))) {
        std::string letter;
        base::AppendUtf8(letter, static_cast<char32_t>(code));
        text += " (" + letter + ")";
    }
    return text;
}

std::string GlyphText(const Difference& difference) {
    const std::string name = " " + GlyphName(difference.a.index ? *difference.a.index : difference.b.index.value_or(0));
    if (difference.property == "presence") return name + (difference.a.index ? " removed" : " added");
    if (difference.property == "codes" || difference.property == "stored bytes")
        return name + ": " + difference.property + " differ, the same is drawn";
    if (difference.property == "large glyph") return name + ": differs, too large to be drawn";
    if (difference.property == "pixels") {
        const auto count = difference.a.value.get<std::uint64_t>();
        return name + ": " + std::to_string(count) + " " + base::Noun(count, "pixel differs", "pixels differ");
    }
    return name + ": " + difference.property + " " + Change(difference);
}

/// Glyphs and palette entries come in long runs.
bool IsOfMany(const Difference& difference) {
    return difference.part == "palette" || difference.part == "glyph";
}

bool IsEmptyRow(const Difference& difference) {
    if (difference.part != "row" || difference.property != "presence") return false;
    const DifferenceSide& side = difference.a.index ? difference.a : difference.b;
    return side.value.get_ref<const std::string&>().empty();
}

bool SharesLine(const Difference& one, const Difference& other) {
    if (IsEmptyRow(one) && IsEmptyRow(other)) return one.a.index.has_value() == other.a.index.has_value();
    const bool same_kind = (one.property == "presence") == (other.property == "presence");
    if (!IsOfMany(one) || one.part != other.part || !same_kind) return false;
    if (one.part == "palette") return one.a.index.value_or(0) / kSetEntries == other.a.index.value_or(0) / kSetEntries;
    if (one.property != "presence") return one.a.index == other.a.index;
    return one.a.index.has_value() == other.a.index.has_value();
}

/// Lines of differences that share one: the first ones, and how many more.
std::string SharedLine(Differences::const_iterator from, Differences::const_iterator to) {
    constexpr std::ptrdiff_t kShown = 24;
    if (from->part == "palette") {
        constexpr std::ptrdiff_t kColours = 2;
        const std::ptrdiff_t more = to - from - std::min(kColours, to - from);
        std::string line = TextOf(*from);
        if (to - from > 1) {
            const std::string next = PaletteText(from[1]);
            line += next.substr(next.find(','));
        }
        return line + (more == 0 ? "" : ", and " + base::Counted(static_cast<std::uint64_t>(more), "more colour"));
    }
    if (from->part == "row") {
        const auto index = [](const Difference& difference) {
            return std::to_string(difference.a.index ? *difference.a.index : difference.b.index.value_or(0));
        };
        return "rows " + index(*from) + " to " + index(to[-1]) + (from->a.index ? " removed" : " added") +
               ", without text";
    }
    if (from->property != "presence") {
        std::string line = TextOf(*from);
        for (auto it = from + 1; it != to; ++it) {
            const std::string text = TextOf(*it);
            line += "," + text.substr(text.find(": ") + 1);
        }
        return line;
    }
    std::string line = "glyphs";
    for (auto it = from; it != to && it - from < kShown; ++it)
        line += (it == from ? " " : ", ") + GlyphName(it->a.index ? *it->a.index : it->b.index.value_or(0));
    if (to - from > kShown) line += " and " + std::to_string(to - from - kShown) + " more";
    return line + (from->a.index ? " removed" : " added");
}

Json SideJson(const DifferenceSide& side, bool has_part) {
    if (!has_part) return {};
    const auto number = [](std::optional<int> value) { return value ? Json(*value) : Json(); };
    Json json{{"index", number(side.index)}, {"value", side.value}};
    if (side.run) {
        json["first"] = side.run->first;
        json["count"] = side.run->count;
        json["words"] = side.words;
    }
    return json;
}

}  // namespace

std::string TextOf(const Difference& difference) {
    const std::string& part = difference.part;
    if (part == "row") return part + Place(difference) + RowText(difference);
    if (part == "field") return "tab field" + Place(difference) + FieldText(difference);
    if (part == "palette") return part + PaletteText(difference);
    if (part == "glyph") return part + GlyphText(difference);
    if (part == "message" || part == "header" || part == "block")
        return difference.property + ": " + Change(difference);
    if (part == "slot") return "font slot" + Place(difference) + ": " + difference.property + " " + Change(difference);
    return part + Place(difference) + ": " + difference.property + " " + Change(difference);
}

std::vector<std::string> LinesOf(const Differences& differences) {
    std::vector<std::string> lines;
    for (auto from = differences.begin(); from != differences.end();) {
        const auto to =
            std::find_if(from + 1, differences.end(), [&](const Difference& next) { return !SharesLine(*from, next); });
        lines.push_back(to - from == 1 ? TextOf(*from) : SharedLine(from, to));
        from = to;
    }
    return lines;
}

nlohmann::ordered_json JsonOf(const Difference& difference) {
    const bool presence = difference.property == "presence";
    return {{"part", difference.part},
            {"property", difference.property},
            {"a", SideJson(difference.a, !presence || difference.a.index)},
            {"b", SideJson(difference.b, !presence || difference.b.index)}};
}

}  // namespace zel::compare
