#include "host/archive/entry_name.h"

#include <algorithm>

#include "base/fold_case.h"
#include "base/utf8.h"

namespace zel::archive {

namespace {

/// In bytes; paths of the module are shorter.
constexpr std::size_t kLongestName = 1024;
constexpr std::size_t kMostParts = 32;

bool HasControlCharacter(std::string_view text) {
    while (!text.empty()) {
        const base::Utf8Character first = base::FirstCharacter(text);
        if (first.valid && base::IsControl(first.code)) return true;
        text.remove_prefix(first.size);
    }
    return false;
}

std::string FaultOf(std::string_view name) {
    if (name.empty()) return "an entry without a name";
    if (name.size() > kLongestName) return "its name is longer than " + std::to_string(kLongestName) + " bytes";
    if (name.front() == '/') return "its name is an absolute path";
    if (HasControlCharacter(name)) return "its name has a control character";
    if (name.find('\\') != std::string_view::npos) return "its name has a backslash";
    return {};
}

}  // namespace

std::string EntryName::Path() const {
    std::string path;
    for (const std::string& part : parts) path += (path.empty() ? "" : "/") + part;
    return path;
}

bool EntryName::IsIn(std::string_view folder) const {
    return parts.size() >= 2 && base::EqualsFolded(parts[parts.size() - 2], folder);
}

EntryName ParseEntryName(std::string_view name) {
    EntryName parsed;
    parsed.fault = FaultOf(name);
    if (!parsed.fault.empty()) return parsed;
    for (std::size_t begin = 0; begin < name.size();) {
        const std::size_t end = std::min(name.find('/', begin), name.size());
        const std::string_view part = name.substr(begin, end - begin);
        begin = end + 1;
        if (part == "..") parsed.fault = "its name leads out of the archive";
        if (!part.empty() && part != ".") parsed.parts.emplace_back(part);
    }
    if (parsed.parts.size() > kMostParts)
        parsed.fault = "it is in more than " + std::to_string(kMostParts - 1) + " folders";
    return parsed;
}

}  // namespace zel::archive
