// The only file that needs libarchive.
#include <algorithm>
#include <clocale>
#include <new>

#include <archive.h>
#include <archive_entry.h>
#include <locale.h>

#include "host/archive/archive_stream.h"
#include "host/archive/zip_directory.h"

namespace zel::archive {

namespace {

constexpr std::size_t kBlock = 64 << 10;

/// libarchive converts the names of some formats to the character set of the thread's locale.
class Utf8Locale {
  public:
    Utf8Locale() : m_locale(::newlocale(LC_CTYPE_MASK, "C.UTF-8", locale_t{})) {
        if (m_locale != locale_t{}) m_before = ::uselocale(m_locale);
    }
    ~Utf8Locale() {
        if (m_locale == locale_t{}) return;
        ::uselocale(m_before);
        ::freelocale(m_locale);
    }
    Utf8Locale(const Utf8Locale&) = delete;
    Utf8Locale& operator=(const Utf8Locale&) = delete;

  private:
    locale_t m_locale;
    locale_t m_before{};
};

struct FreeArchive {
    void operator()(struct archive* archive) const noexcept { ::archive_read_free(archive); }
};

EntryKind KindOf(struct archive_entry* entry) {
    if (::archive_entry_hardlink(entry) != nullptr) return EntryKind::kHardLink;
    switch (::archive_entry_filetype(entry)) {
        case AE_IFREG:
            return EntryKind::kFile;
        case AE_IFDIR:
            return EntryKind::kDirectory;
        case AE_IFLNK:
            return EntryKind::kSymbolicLink;
        default:
            return EntryKind::kSpecial;
    }
}

ArchiveEntry EntryOf(struct archive_entry* stored) {
    ArchiveEntry entry;
    const char* name = ::archive_entry_pathname(stored);
    if (name == nullptr) name = ::archive_entry_pathname_utf8(stored);
    if (name != nullptr) entry.name = name;
    entry.kind = KindOf(stored);
    if (::archive_entry_size_is_set(stored) != 0)
        entry.size = static_cast<std::uint64_t>(std::max<la_int64_t>(::archive_entry_size(stored), 0));
    if (::archive_entry_mtime_is_set(stored) != 0)
        entry.modified = std::timespec{::archive_entry_mtime(stored), ::archive_entry_mtime_nsec(stored)};
    entry.is_encrypted = ::archive_entry_is_encrypted(stored) != 0;
    return entry;
}

class LibarchiveStream : public ArchiveStream {
  public:
    explicit LibarchiveStream(int file) : m_archive(::archive_read_new()), m_zip(ReadZipDirectory(file)) {
        if (!m_archive) throw std::bad_alloc();
        struct archive* const archive = m_archive.get();
        // No filter that runs a program, and no format that refers to other files.
        ::archive_read_support_filter_gzip(archive);
        ::archive_read_support_filter_bzip2(archive);
        ::archive_read_support_filter_compress(archive);
        ::archive_read_support_filter_lzma(archive);
        ::archive_read_support_filter_xz(archive);
        ::archive_read_support_filter_zstd(archive);
        ::archive_read_support_format_tar(archive);
        ::archive_read_support_format_zip(archive);
        ::archive_read_support_format_iso9660(archive);
        const Utf8Locale locale;
        m_opened = ::archive_read_open_fd(archive, file, kBlock);
    }

    ReadStep Next(ArchiveEntry& entry) override {
        if (m_opened != ARCHIVE_OK) return Broken();
        const Utf8Locale locale;
        struct archive_entry* stored = nullptr;
        const int result = ::archive_read_next_header(m_archive.get(), &stored);
        if (result == ARCHIVE_EOF) return End();
        if (result < ARCHIVE_WARN) return Broken();
        entry = EntryOf(stored);
        const auto with_nul = m_zip.names_with_nul.find(entry.name);
        if (with_nul != m_zip.names_with_nul.end()) entry.name = with_nul->second;
        m_position = Position();
        return ReadStep::kRead;
    }

    ReadStep Read(EntryPiece& piece) override {
        const void* bytes = nullptr;
        std::size_t size = 0;
        la_int64_t offset = 0;
        const int result = ::archive_read_data_block(m_archive.get(), &bytes, &size, &offset);
        m_position = Position();
        if (result < ARCHIVE_WARN) {
            m_reason = ReasonOfLibrary();
            return result == ARCHIVE_FATAL ? ReadStep::kBroken : ReadStep::kBadEntry;
        }
        if (result == ARCHIVE_WARN) {
            m_reason = ReasonOfLibrary();
            return ReadStep::kBadEntry;
        }
        piece = {{static_cast<const char*>(bytes), result == ARCHIVE_EOF ? 0 : size},
                 static_cast<std::uint64_t>(std::max<la_int64_t>(offset, 0))};
        return result == ARCHIVE_EOF ? ReadStep::kEnd : ReadStep::kRead;
    }

    bool SkipsContents() const override {
        const bool is_compressed = ::archive_filter_code(m_archive.get(), 0) != ARCHIVE_FILTER_NONE;
        return !is_compressed && !IsCutZip();
    }
    bool IsArchive() const override { return ::archive_format(m_archive.get()) != 0; }
    std::string Reason() const override { return m_reason; }

  private:
    int Format() const { return ::archive_format(m_archive.get()) & ARCHIVE_FORMAT_BASE_MASK; }
    bool IsCutZip() const { return Format() == ARCHIVE_FORMAT_ZIP && !m_zip.has_end; }
    /// In the decompressed archive.
    la_int64_t Position() const { return ::archive_filter_bytes(m_archive.get(), 0); }

    std::string ReasonOfLibrary() const {
        const char* const text = ::archive_error_string(m_archive.get());
        return text != nullptr ? text : "damaged";
    }
    ReadStep Broken() {
        m_reason = ReasonOfLibrary();
        return ReadStep::kBroken;
    }

    /// An archive that is cut between two entries looks complete to the library.
    ReadStep End() {
        const bool is_cut_tar = Format() == ARCHIVE_FORMAT_TAR && Position() - m_position < kTarBlock;
        if (!is_cut_tar && !IsCutZip()) return ReadStep::kEnd;
        m_reason = "the mark of its end is missing";
        return ReadStep::kBroken;
    }

    /// A tar file ends with two blocks of zeros, and what precedes them is filled up to a block.
    static constexpr la_int64_t kTarBlock = 512;

    const std::unique_ptr<struct archive, FreeArchive> m_archive;
    const ZipDirectory m_zip;
    int m_opened = ARCHIVE_FATAL;
    /// After the last header or piece.
    la_int64_t m_position = 0;
    std::string m_reason;
};

}  // namespace

extern "C" __attribute__((visibility("default"))) ArchiveStream* ZelTransMakeArchiveStream(int file) {
    static_assert(std::is_same_v<decltype(&ZelTransMakeArchiveStream), MakeArchiveStream>);
    return new LibarchiveStream(file);
}

}  // namespace zel::archive
