#include "host/recorder/relocation.h"

#include <algorithm>

#include "platform/system/files.h"

namespace zel::recorder {

namespace {

/// A path below one directory as the same path below another.
std::string Moved(const std::string& path, const std::string& from, const std::string& to) {
    if (from.empty() || !path.starts_with(from)) return path;
    return path.size() == from.size() || path[from.size()] == '/' ? to + path.substr(from.size()) : path;
}

void ReplaceAll(std::string& text, const std::string& from, const std::string& to) {
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
}

}  // namespace

std::string Relocation::Recorded(const std::string& path) const {
    return Moved(path, from, to);
}

std::string Relocation::Actual(const std::string& path) const {
    return Moved(path, to, from);
}

std::string Relocation::InText(std::string text) const {
    if (IsNone()) return text;
    ReplaceAll(text, from, to);
    ReplaceAll(text, system::ModulePath(from), system::ModulePath(to));
    return text;
}

void Relocation::Apply(document::MessageRecord& message) const {
    const std::string module_from = system::ModulePath(from), module_to = system::ModulePath(to);
    const auto move = [&](std::string& path) {
        if (path.starts_with(module_from)) path.replace(0, module_from.size(), module_to);
    };
    move(message.file);
    for (std::optional<document::FontRecord>& font : message.fonts) {
        if (font) move(font->file_name);
    }
    for (std::string& line : message.glyph_failures) line = InText(line);
}

}  // namespace zel::recorder
