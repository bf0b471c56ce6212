#include "host/recorder/source_files.h"

#include <algorithm>
#include <filesystem>
#include <limits>
#include <stdexcept>
#include <system_error>

#include <sys/stat.h>

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
        library::SourceFile file = m_digests.OfSize(path, std::nullopt, m_left);
        if (file.size <= m_left) m_left -= file.size;
        return file;
    }

    FileDigests& m_digests;
    std::uint64_t m_left = kMaxHashed;
    std::vector<library::SourceFile> m_files;
};

}  // namespace

std::optional<FileDigests::State> FileDigests::StateOf(const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
    return State{static_cast<std::uint64_t>(status.st_size), {status.st_mtim.tv_sec, status.st_mtim.tv_nsec}};
}

library::SourceFile FileDigests::Of(const std::string& path) {
    return OfSize(path, std::nullopt, std::numeric_limits<std::uint64_t>::max());
}

library::SourceFile FileDigests::OfSize(const std::string& path, std::optional<std::uint64_t> size,
                                        std::uint64_t most) {
    const std::optional<State> state = StateOf(path);
    if (!state) return {path, std::nullopt, 0, {}};
    if (state->size > most || size.value_or(state->size) != state->size) return {path, std::nullopt, state->size, {}};
    return Digested(path, *state);
}

library::SourceFile FileDigests::Digested(const std::string& path, const State& state) {
    library::SourceFile file{path, std::nullopt, state.size, {}};
    {
        const std::lock_guard lock(m_mutex);
        const auto found = m_known.find(path);
        if (found != m_known.end() && found->second.state == state) {
            found->second.is_shared = true;
            file.sha256 = found->second.sha256;
            return file;
        }
    }
    try {
        file.sha256 = base::Sha256OfFile(path, m_stop);
    } catch (const std::runtime_error&) {
        return file;
    }
    Keep(path, {state, file.sha256});
    return file;
}

void FileDigests::Keep(const std::string& path, Known known) {
    const std::lock_guard lock(m_mutex);
    if (m_known.size() >= kMaxKnown) {
        // Messages are needed once, their fonts again and again.
        std::erase_if(m_known, [](const auto& entry) { return !entry.second.is_shared; });
        if (m_known.size() >= kMaxKnown) m_known.clear();
    }
    m_known.insert_or_assign(path, std::move(known));
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
        if (source.sha256.empty() && source.size != 0) return false;
        const library::SourceFile file =
            digests.OfSize(source.path, source.size, std::numeric_limits<std::uint64_t>::max());
        if (file.size != source.size || file.sha256 != source.sha256) return false;
        // A font from another directory is outdated if the font directory contains one by now.
        const std::string expected = source.font_number ? FontPath(font_directory, *source.font_number) : source.path;
        std::error_code error;
        return expected == source.path || !std::filesystem::is_regular_file(expected, error);
    });
}

}  // namespace zel::recorder
