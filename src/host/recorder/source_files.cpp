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

/// Bytes of all files of a message that get a checksum, before the next one.
constexpr std::uint64_t kMaxHashed = std::uint64_t{128} << 20;

std::string FontPath(const std::string& directory, int number) {
    return directory + "/" + base::NumberedName(number);
}

/// In bytes; 0 for a file that is missing or isn't a regular file.
std::uint64_t SizeOf(const std::string& path) {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    return error ? 0 : size;
}

/// The files of one message. A file that exceeds kMaxHashed has no checksum, so that 16 large fonts don't take long.
class SourceList {
  public:
    explicit SourceList(FileDigests& digests) : m_digests(digests) {}

    void Add(const std::string& path, std::optional<int> font_number) {
        const auto same = std::ranges::find(m_files, path, &library::SourceFile::path);
        library::SourceFile file = same != m_files.end() ? *same : Make(path);
        file.font_number = font_number;
        m_files.push_back(std::move(file));
    }
    std::vector<library::SourceFile> Take() noexcept { return std::move(m_files); }

  private:
    library::SourceFile Make(const std::string& path) {
        const std::uint64_t size = SizeOf(path);
        if (size > m_left) return {path, std::nullopt, size, {}};
        m_left -= size;
        return m_digests.Of(path);
    }

    FileDigests& m_digests;
    std::uint64_t m_left = kMaxHashed;
    std::vector<library::SourceFile> m_files;
};

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
    SourceList sources(digests);
    sources.Add(system::NativePath(message.file.c_str()), std::nullopt);
    for (std::size_t slot = 0; slot < message.fonts.size(); ++slot) {
        if (!message.fonts[slot]) continue;
        sources.Add(system::NativePath(message.fonts[slot]->file_name.c_str()), message.header.font_numbers[slot]);
    }
    for (const int number : document::MissingFonts(message)) sources.Add(FontPath(font_directory, number), number);
    return sources.Take();
}

bool AreUnchanged(const std::vector<library::SourceFile>& sources, const std::string& font_directory,
                  FileDigests& digests) {
    return !sources.empty() && std::ranges::all_of(sources, [&](const library::SourceFile& source) {
        // First the size, since a checksum of other bytes is made for nothing.
        if (SizeOf(source.path) != source.size || (source.sha256.empty() && source.size != 0)) return false;
        if (digests.Of(source.path).sha256 != source.sha256) return false;
        // A font from another directory is outdated if the font directory contains one by now.
        const std::string expected = source.font_number ? FontPath(font_directory, *source.font_number) : source.path;
        std::error_code error;
        return expected == source.path || !std::filesystem::is_regular_file(expected, error);
    });
}

}  // namespace zel::recorder
