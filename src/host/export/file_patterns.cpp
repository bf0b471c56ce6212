#include "host/export/file_patterns.h"

#include <algorithm>

#include "base/fold_case.h"
#include "host/export/manifest.h"

namespace zel::exporter {

namespace {

/// The parts of a pattern before and after its star; all is before it if there is none.
struct Pattern {
    explicit Pattern(std::string_view text)
        : has_star(text.find('*') != std::string_view::npos),
          begin(text.substr(0, text.find('*'))),
          end(has_star ? text.substr(text.find('*') + 1) : std::string_view()) {}

    bool Fits(std::string_view name) const {
        if (!has_star) return name == begin;
        return name.size() >= begin.size() + end.size() && name.starts_with(begin) && name.ends_with(end);
    }
    std::string_view Star(std::string_view name) const {
        return name.substr(begin.size(), name.size() - begin.size() - end.size());
    }

    bool has_star;
    std::string_view begin, end;
};

/// Whether StemOf can have made it: a number with four digits, alone or after the name of a disk and "_".
bool IsStem(std::string_view stem) {
    const std::string_view number = stem.substr(stem.rfind('_') + 1);  // after no _, all of it
    return number.size() == 4 && std::ranges::all_of(number, [](char c) { return c >= '0' && c <= '9'; });
}

}  // namespace

bool FitsPattern(std::string_view name, std::string_view pattern) noexcept {
    return Pattern(pattern).Fits(name);
}

bool IsExportFile(std::string_view folder, std::string_view name) {
    if (folder.empty() && (name == kManifestName || name == kChecksumsName)) return true;
    const std::string path = (folder.empty() ? std::string() : std::string(folder) + '/').append(name);
    for (const ExportFormat& format : ExportFormats()) {
        for (const std::string_view text : format.files) {
            const Pattern pattern(text);
            if (!pattern.Fits(path)) continue;
            const bool is_named_by_message =
                pattern.has_star && (pattern.begin.empty() || pattern.begin.ends_with('/'));
            if (!is_named_by_message || IsStem(pattern.Star(path))) return true;
        }
    }
    return false;
}

std::set<std::string> FoldersOf(std::span<const ExportFormat> formats) {
    std::set<std::string> folders;
    for (const ExportFormat& format : formats) {
        for (const std::string_view file : format.files) {
            // A folder that is named by the message has no files of others.
            const std::size_t slash = file.find('/');
            if (slash != std::string_view::npos && file.substr(0, slash).find('*') == std::string_view::npos)
                folders.emplace(file.substr(0, slash));
        }
    }
    return folders;
}

bool IsNameOfOthers(std::string_view stem, std::string_view format) {
    for (const std::string_view text : FindExportFormat(format)->files) {
        const Pattern pattern(text.substr(0, text.find('.')));
        if (pattern.begin.ends_with('/')) continue;
        const bool is_suffix = pattern.has_star && pattern.begin.empty();
        if (is_suffix ? !pattern.end.empty() && stem.ends_with(pattern.end)
                      : (pattern.has_star ? pattern.Fits(stem) : base::EqualsFolded(stem, pattern.begin))) {
            return true;
        }
    }
    return false;
}

}  // namespace zel::exporter
