#include "host/recorder/source_files.h"

#include <algorithm>
#include <filesystem>
#include <limits>
#include <stdexcept>
#include <system_error>

#include <sys/stat.h>

#include "base/regular_file.h"
#include "base/sha256.h"
#include "base/text.h"
#include "host/document/message_warnings.h"
#include "platform/system/files.h"

namespace zel::recorder {

namespace {

/// Largest number of cached files, so that a long batch needs no more memory than a short one.
constexpr std::size_t kMaxKnown = 256;

/// Bytes of cached contents, compressed.
constexpr std::uint64_t kMostContents = std::uint64_t{32} << 20;

/// Bytes of all files of a message that get a checksum, before the next one.
constexpr std::uint64_t kMaxHashed = std::uint64_t{128} << 20;

std::string FontPath(const std::string& directory, int number) {
    return directory + "/" + base::NumberedName(number);
}

/// The files of one message. A file that exceeds kMaxHashed has no checksum, so that 16 large fonts don't take long.
class SourceList {
  public:
    SourceList(FileDigests& digests, std::vector<library::SharedFile>* contents)
        : m_digests(digests), m_contents(contents) {}

    void Add(const std::string& path, std::optional<int> font_number) {
        const auto same = std::ranges::find(m_files, path, &library::SourceFile::path);
        library::SourceFile file = same != m_files.end() ? *same : Make(path);
        file.font_number = font_number;
        m_files.push_back(std::move(file));
    }
    std::vector<library::SourceFile> Take() noexcept { return std::move(m_files); }

  private:
    library::SourceFile Make(const std::string& path) {
        ReadSource source =
            m_contents != nullptr ? m_digests.Read(path, m_left) : ReadSource{m_digests.OfSize(path, {}, m_left)};
        if (source.file.size <= m_left) m_left -= source.file.size;
        if (source.contents) m_contents->push_back(std::move(source.contents));
        return std::move(source.file);
    }

    FileDigests& m_digests;
    std::vector<library::SharedFile>* const m_contents;
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
    if (std::optional<Known> known = Find(path, state)) {
        file.sha256 = std::move(known->sha256);
        return file;
    }
    try {
        file.sha256 = base::Sha256OfFile(path, m_stop);
    } catch (const std::runtime_error&) {
        return file;
    }
    Keep(path, {state, file.sha256});
    return file;
}

ReadSource FileDigests::Read(const std::string& path, std::uint64_t most) {
    const std::optional<State> state = StateOf(path);
    if (!state || state->size > std::min(most, library::kLargestKeptFile)) return {OfSize(path, std::nullopt, most)};
    ReadSource source{{path, std::nullopt, state->size, {}}};
    if (std::optional<Known> known = Find(path, *state); known && known->contents) {
        source.file.sha256 = std::move(known->sha256);
        source.contents = std::move(known->contents);
        return source;
    }
    if (m_stop && m_stop()) return source;
    try {
        const std::vector<std::uint8_t> bytes = base::ReadFileBytes(path, static_cast<std::size_t>(state->size));
        source.contents = library::PackFile({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    } catch (const std::runtime_error&) {
        return source;
    }
    source.file.sha256 = source.contents->sha256;
    Keep(path, {*state, source.file.sha256, source.contents});
    return source;
}

std::optional<FileDigests::Known> FileDigests::Find(const std::string& path, const State& state) {
    const std::lock_guard lock(m_mutex);
    const auto found = m_known.find(path);
    if (found == m_known.end() || found->second.state != state) return std::nullopt;
    found->second.is_shared = true;
    return found->second;
}

void FileDigests::Keep(const std::string& path, Known known) {
    const std::lock_guard lock(m_mutex);
    if (m_known.size() >= kMaxKnown) {
        // Messages are needed once, their fonts again and again.
        DropContents(false);
        std::erase_if(m_known, [](const auto& entry) { return !entry.second.is_shared; });
        if (m_known.size() >= kMaxKnown) {
            m_known.clear();
            m_contents = 0;
        }
    }
    Known& place = m_known[path];
    if (place.contents) m_contents -= place.contents->stream.size();
    if (known.contents) m_contents += known.contents->stream.size();
    place = std::move(known);
    if (m_contents > kMostContents) DropContents(false);
    if (m_contents > kMostContents) DropContents(true);
}

void FileDigests::DropContents(bool also_shared) noexcept {
    for (auto& [path, known] : m_known) {
        if (!known.contents || (known.is_shared && !also_shared)) continue;
        m_contents -= known.contents->stream.size();
        known.contents.reset();
    }
}

std::vector<library::SourceFile> SourcesOf(const document::MessageRecord& message, const std::string& font_directory,
                                           FileDigests& digests, std::vector<library::SharedFile>* contents) {
    SourceList sources(digests, contents);
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
