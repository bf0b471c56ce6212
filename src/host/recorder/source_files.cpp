#include "host/recorder/source_files.h"

#include <algorithm>
#include <cstdio>
#include <stdexcept>
#include <system_error>

#include "base/sha256.h"
#include "base/text.h"
#include "host/document/message_warnings.h"
#include "platform/system/files.h"

namespace zel::recorder {

namespace {

/// Largest number of cached files, so that a long batch needs no more memory than a short one.
constexpr std::size_t kMaxKnown = 256;

std::string FontPath(const std::string& directory, int number) {
    return directory + "/" + base::NumberedName(number);
}

}  // namespace

library::SourceFile FileDigests::Of(const std::string& path) {
    std::error_code error;
    const auto changed = std::filesystem::last_write_time(path, error);
    const std::uintmax_t size = error ? 0 : std::filesystem::file_size(path, error);
    if (error) return {path, std::nullopt, 0, {}};
    {
        const std::lock_guard lock(m_mutex);
        const auto found = m_known.find(path);
        if (found != m_known.end() && found->second.changed == changed && found->second.file.size == size)
            return found->second.file;
    }
    library::SourceFile file{path, std::nullopt, size, {}};
    try {
        file.sha256 = base::Sha256OfFile(path, m_stop);
    } catch (const std::runtime_error&) {
        return file;
    }
    const std::lock_guard lock(m_mutex);
    // Few entries are needed again: messages are read once, and the fonts are soon cached again.
    if (m_known.size() >= kMaxKnown) m_known.clear();
    m_known.insert_or_assign(path, Known{changed, file});
    return file;
}

std::vector<library::SourceFile> SourcesOf(const document::MessageRecord& message, const std::string& font_directory,
                                           FileDigests& digests) {
    std::vector<library::SourceFile> sources{digests.Of(system::NativePath(message.file.c_str()))};
    for (std::size_t slot = 0; slot < message.fonts.size(); ++slot) {
        if (!message.fonts[slot]) continue;
        library::SourceFile& font =
            sources.emplace_back(digests.Of(system::NativePath(message.fonts[slot]->file_name.c_str())));
        font.font_number = message.header.font_numbers[slot];
    }
    for (const int number : document::MissingFonts(message)) {
        library::SourceFile& font = sources.emplace_back(digests.Of(FontPath(font_directory, number)));
        font.font_number = number;
    }
    return sources;
}

bool AreUnchanged(const std::vector<library::SourceFile>& sources, const std::string& font_directory,
                  FileDigests& digests) {
    return !sources.empty() && std::ranges::all_of(sources, [&](const library::SourceFile& source) {
        const library::SourceFile now = digests.Of(source.path);
        if (now.sha256 != source.sha256 || (now.sha256.empty() && now.size + source.size != 0)) return false;
        // A font from another directory is outdated if the font directory contains one by now.
        const std::string expected = source.font_number ? FontPath(font_directory, *source.font_number) : source.path;
        return expected == source.path || digests.Of(expected).sha256.empty();
    });
}

}  // namespace zel::recorder
