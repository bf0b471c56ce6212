#include "programs/cli/diff_output.h"

#include <filesystem>

#include <nlohmann/json.hpp>

#include "base/terminal_text.h"
#include "base/text.h"
#include "host/document/json_version.h"
#include "programs/cli/diagnostics.h"
#include "programs/cli/json_output.h"

namespace zel::cli {

namespace {

using compare::ComparisonResult;
using compare::FileComparison;
using Json = nlohmann::ordered_json;

std::string Counted(const compare::ByteDifference& bytes) {
    return base::GroupedDigits(bytes.count) + " " + base::Noun(bytes.count, "byte");
}

std::string SizeText(int width, int height) {
    return width == 0 ? "none" : std::to_string(width) + " x " + std::to_string(height);
}

std::string PictureLines(const compare::PictureDifference& picture) {
    std::string text;
    if (picture.width_a != picture.width_b || picture.height_a != picture.height_b) {
        text += "  picture: " + SizeText(picture.width_a, picture.height_a) + " -> " +
                SizeText(picture.width_b, picture.height_b) + "\n";
    }
    if (picture.pixels == 0) return text;
    const picture::PixelBox& box = picture.box;
    return text + "  picture: " + base::GroupedDigits(picture.pixels) + " " +
           base::Noun(picture.pixels, "pixel differs", "pixels differ") + ", in " +
           SizeText(box.Width(), box.Height()) + " at " + std::to_string(box.left) + "," + std::to_string(box.top) +
           "\n";
}

std::string ByteLine(const compare::ByteDifference& bytes) {
    const std::string first = std::to_string(bytes.first);
    std::string text = "  bytes: " + base::GroupedDigits(bytes.count) + " " +
                       (bytes.count == 1 ? "differs, at offset " + first
                                         : "differ, from offset " + first + " to " + std::to_string(bytes.last));
    if (bytes.size_a != bytes.size_b)
        text += "; size " + std::to_string(bytes.size_a) + " -> " + std::to_string(bytes.size_b);
    return text + "\n";
}

/// What differs, in indented lines.
std::string DifferenceLines(const FileComparison& comparison, bool bytes) {
    std::string text;
    for (const std::string& line : compare::LinesOf(comparison.differences)) text += "  " + line + "\n";
    if (comparison.picture) text += PictureLines(*comparison.picture);
    const bool only_bytes = comparison.kind == compare::ComparedKind::kOther;
    if (comparison.bytes && (bytes || only_bytes)) text += ByteLine(*comparison.bytes);
    return text;
}

const char* ResultName(ComparisonResult result) noexcept {
    switch (result) {
        case ComparisonResult::kSame:
            return "same";
        case ComparisonResult::kSameButBytes:
            return "same_but_bytes";
        case ComparisonResult::kDifferent:
            return "different";
        case ComparisonResult::kTrouble:
            break;
    }
    return "trouble";
}

Json PictureJson(const std::optional<compare::PictureDifference>& picture) {
    if (!picture) return {};
    const auto size = [](int width, int height) {
        return width == 0 ? Json() : Json{{"width", width}, {"height", height}};
    };
    Json box;
    if (picture->pixels != 0) {
        box = {{"left", picture->box.left},
               {"top", picture->box.top},
               {"right", picture->box.right},
               {"bottom", picture->box.bottom}};
    }
    return {{"pixels", picture->pixels},
            {"box", std::move(box)},
            {"a", size(picture->width_a, picture->height_a)},
            {"b", size(picture->width_b, picture->height_b)}};
}

Json BytesJson(const std::optional<compare::ByteDifference>& bytes) {
    if (!bytes) return {};
    return {{"count", bytes->count},
            {"first", bytes->first},
            {"last", bytes->last},
            {"size_a", bytes->size_a},
            {"size_b", bytes->size_b}};
}

/// One line of JSON of a pair.
struct PairJson {
    std::string kind;
    Json disk, number, a, b;
};

void PrintPairJson(const PairJson& item, const char* result, const FileComparison& comparison) {
    Json differences = Json::array();
    for (const compare::Difference& difference : comparison.differences)
        differences.push_back(compare::JsonOf(difference));
    PrintJson({{"version", document::kJsonVersion},
               {"type", "comparison"},
               {"kind", item.kind},
               {"disk", item.disk},
               {"number", item.number},
               {"a", item.a},
               {"b", item.b},
               {"result", result},
               {"reason", TextOrNull(comparison.trouble)},
               {"differences", std::move(differences)},
               {"picture", PictureJson(comparison.picture)},
               {"bytes", BytesJson(comparison.bytes)}});
}

std::string SameButBytes(const FileComparison& comparison) {
    return "the same but for " + Counted(*comparison.bytes) + " without effect on an import";
}

/// A pair of which only differences are printed.
void PrintPair(const std::string& name, const FileComparison& comparison, bool is_different, bool bytes) {
    if (comparison.result == ComparisonResult::kTrouble) {
        PrintError(comparison.trouble);
    } else if (is_different) {
        PrintLines(base::TerminalText(name) + " differs:\n" + DifferenceLines(comparison, bytes));
    } else if (comparison.result == ComparisonResult::kSameButBytes) {
        PrintDetail(name + ": " + SameButBytes(comparison));
    }
    for (const std::string& warning : comparison.warnings) PrintDetail(warning);
}

}  // namespace

void DiffOutput::PrintFiles(const FileComparison& comparison) const {
    for (const std::string& warning : comparison.warnings) PrintWarning(warning);
    if (comparison.result == ComparisonResult::kTrouble) PrintError(comparison.trouble);
    if (json) {
        PrintPairJson({compare::NameOf(comparison.kind), {}, {}, a, b}, ResultName(comparison.result), comparison);
        return;
    }
    const std::string both = base::TerminalText(a) + " and " + base::TerminalText(b);
    if (IsDifferent(comparison)) {
        PrintLines(both + " differ:\n" + DifferenceLines(comparison, bytes));
    } else if (comparison.result == ComparisonResult::kSameButBytes) {
        PrintLines(both + " are " + SameButBytes(comparison) + "\n");
    } else if (comparison.result == ComparisonResult::kSame) {
        PrintLines(both + " are the same\n");
    }
}

void DiffOutput::PrintItem(const compare::DiskItem& item) const {
    const std::string& path = item.a.empty() ? item.b : item.a;
    const std::string name =
        (item.folder.empty() ? "" : item.folder + "/") + std::filesystem::path(path).filename().string();
    const bool in_both = !item.a.empty() && !item.b.empty();
    if (json) {
        if (in_both && item.comparison.result == ComparisonResult::kSame) return;
        if (item.comparison.result == ComparisonResult::kTrouble) PrintError(item.comparison.trouble);
        const char* const kind = compare::NameOf(in_both ? item.comparison.kind : compare::KindOf(path));
        const Json number = item.number ? Json(*item.number) : Json();
        const char* const result = in_both          ? ResultName(item.comparison.result)
                                   : item.b.empty() ? "only_in_a"
                                                    : "only_in_b";
        PrintPairJson({kind, {}, number, TextOrNull(item.a), TextOrNull(item.b)}, result, item.comparison);
    } else if (in_both) {
        PrintPair(name, item.comparison, IsDifferent(item.comparison), bytes);
    } else {
        PrintLine(name + ": only in " + (item.b.empty() ? a : b));
    }
}

void DiffOutput::PrintItem(const compare::LibraryItem& item) const {
    const std::string name = item.key.disk + "/" + base::NumberedName(item.key.number);
    const bool in_both = item.in_a && item.in_b;
    if (json) {
        if (in_both && item.comparison.result == ComparisonResult::kSame) return;
        const char* const result = in_both ? ResultName(item.comparison.result) : item.in_a ? "only_in_a" : "only_in_b";
        const auto side = [](bool is_there, const std::string& library) { return is_there ? Json(library) : Json(); };
        PrintPairJson({"recording", item.key.disk, item.key.number, side(item.in_a, a), side(item.in_b, b)}, result,
                      item.comparison);
    } else if (in_both) {
        compare::FileComparison named = item.comparison;
        named.trouble = name + ": " + named.trouble;
        PrintPair(name, named, IsDifferent(named), bytes);
    } else {
        PrintLine(name + ": only in " + (item.in_a ? a : b));
    }
}

void DiffOutput::PrintSummary(const char* kind, const char* noun, const compare::ItemCounts& counts) const {
    if (json) {
        PrintJson({{"version", document::kJsonVersion},
                   {"type", "summary"},
                   {"kind", kind},
                   {"a", a},
                   {"b", b},
                   {"same", counts.same},
                   {"same_but_bytes", counts.same_but_bytes},
                   {"different", counts.different},
                   {"only_in_a", counts.only_in_a},
                   {"only_in_b", counts.only_in_b},
                   {"trouble", counts.trouble}});
        return;
    }
    std::string text = base::Counted(counts.same, noun) + " the same";
    if (counts.same_but_bytes != 0)
        text += ", " + std::to_string(counts.same_but_bytes) + " the same but for bytes without effect on an import";
    if (counts.different != 0) text += ", " + std::to_string(counts.different) + " different";
    if (counts.only_in_a != 0) text += ", " + std::to_string(counts.only_in_a) + " only in " + a;
    if (counts.only_in_b != 0) text += ", " + std::to_string(counts.only_in_b) + " only in " + b;
    if (counts.trouble != 0) text += ", " + std::to_string(counts.trouble) + " not compared";
    PrintLine(a + " and " + b + ": " + text);
}

}  // namespace zel::cli
