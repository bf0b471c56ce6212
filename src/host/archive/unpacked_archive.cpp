#include "host/archive/unpacked_archive.h"

#include <algorithm>
#include <cerrno>
#include <optional>
#include <stdexcept>
#include <system_error>

#include "base/regular_file.h"
#include "base/text.h"
#include "host/archive/entry_name.h"
#include "host/archive/unpack_target.h"

namespace zel::archive {

namespace {

constexpr std::size_t kMostNamed = 20;

std::string Mebibytes(std::uint64_t bytes) {
    return base::GroupedDigits(bytes >> 20) + " MiB";
}

/// Why an entry of this kind is refused; empty for files and folders.
std::string KindFault(const ArchiveEntry& entry) {
    switch (entry.kind) {
        case EntryKind::kFile:
        case EntryKind::kDirectory:
            break;
        case EntryKind::kSymbolicLink:
            return "it is a symbolic link";
        case EntryKind::kHardLink:
            return "it is a hard link";
        case EntryKind::kSpecial:
            return "it is neither a file nor a folder";
    }
    return {};
}

bool WriteAt(const base::FileDescriptor& file, const EntryPiece& piece) {
    return ::lseek(file.Get(), static_cast<off_t>(piece.offset), SEEK_SET) >= 0 &&
           base::WriteFully(file.Get(), {piece.bytes.data(), piece.bytes.size()});
}

}  // namespace

class UnpackedArchive::Reader {
  public:
    Reader(UnpackedArchive& result, const base::FileDescriptor& file, std::uint64_t size, Wanted wanted,
           const std::function<bool()>& stop, const UnpackLimits& limits)
        : m_result(result),
          m_stream(OpenArchiveStream(file)),
          m_target(result.Root()),
          m_wanted(wanted),
          m_stop(stop),
          m_limits(limits),
          m_most_bytes(std::min(limits.total, limits.free_of_ratio + size * limits.ratio)),
          m_by_ratio(m_most_bytes < limits.total) {}

    void ReadAll();

  private:
    bool IsWanted(const EntryName& name, EntryKind kind) const;
    void Unpack(const ArchiveEntry& entry);
    void UnpackFile(const ArchiveEntry& entry, const EntryName& name);
    /// Copies the contents, to nowhere without a file.
    /// @param size  receives the size of the contents.
    /// @return why they are refused; empty for complete contents, or if the reading has ended.
    std::string Copy(const ArchiveEntry& entry, const base::FileDescriptor* file, std::uint64_t& size);
    void Refuse(const std::string& name, const std::string& fault);
    /// @param name  of the entry at which the reading ends.
    void End(const std::string& name, const std::string& failure);
    std::string TotalLimit() const;
    bool HasEnded() const { return m_result.m_stopped || !m_result.m_failure.empty(); }

    UnpackedArchive& m_result;
    const std::unique_ptr<ArchiveStream> m_stream;
    UnpackTarget m_target;
    const Wanted m_wanted;
    const std::function<bool()>& m_stop;
    const UnpackLimits& m_limits;
    const std::uint64_t m_most_bytes;
    const bool m_by_ratio;
    std::uint64_t m_bytes = 0;
};

bool UnpackedArchive::Reader::IsWanted(const EntryName& name, EntryKind kind) const {
    if (m_wanted == Wanted::kAll) return true;
    // The folders themselves, so that a disk without messages is one.
    EntryName inner = name;
    if (kind == EntryKind::kDirectory) inner.parts.emplace_back();
    return inner.IsIn("MESSAGES") || inner.IsIn("MACHINE");
}

void UnpackedArchive::Reader::Refuse(const std::string& name, const std::string& fault) {
    ++m_result.m_refused_count;
    if (m_result.m_refused.size() < kMostNamed) m_result.m_refused.push_back(name + ": " + fault);
}

void UnpackedArchive::Reader::End(const std::string& name, const std::string& failure) {
    m_result.m_failure = name.empty() ? failure : name + ": " + failure;
}

std::string UnpackedArchive::Reader::TotalLimit() const {
    return "the archive is read no further: " +
           (m_by_ratio ? "unpacked, it is more than " + base::GroupedDigits(m_limits.ratio) + " times as large"
                       : "it has more than " + Mebibytes(m_limits.total)) +
           ", which is the limit";
}

std::string UnpackedArchive::Reader::Copy(const ArchiveEntry& entry, const base::FileDescriptor* file,
                                          std::uint64_t& size) {
    EntryPiece piece;
    std::string fault;
    size = 0;
    for (;;) {
        const ReadStep step = m_stream->Read(piece);
        if (step == ReadStep::kBroken) {
            End(entry.name, "the archive is cut short or damaged here: " + m_stream->Reason());
            return fault;
        }
        if (step == ReadStep::kBadEntry) return m_stream->Reason();
        // What the library says of holes is checked like everything else from the archive.
        const std::uint64_t end = piece.offset + piece.bytes.size();
        if (end < piece.offset || end > m_limits.file) {
            if (file != nullptr) return "it is larger than " + Mebibytes(m_limits.file) + ", which is the limit";
        } else {
            size = std::max(size, end);
        }
        m_bytes += piece.bytes.size();
        if (m_bytes > m_most_bytes) {
            End(entry.name, TotalLimit());
            return fault;
        }
        if (m_stop && m_stop()) {
            m_result.m_stopped = true;
            return fault;
        }
        if (step == ReadStep::kEnd) return fault;
        if (file != nullptr && !WriteAt(*file, piece)) {
            throw std::runtime_error("it can't be unpacked into " + m_result.Root().string() + ": " +
                                     std::generic_category().message(errno));
        }
    }
}

void UnpackedArchive::Reader::UnpackFile(const ArchiveEntry& entry, const EntryName& name) {
    if (entry.is_encrypted) return Refuse(entry.name, "it is encrypted");
    if (entry.size.value_or(0) > m_limits.file)
        return Refuse(entry.name, "it is larger than " + Mebibytes(m_limits.file) + ", which is the limit");
    std::string fault;
    const base::FileDescriptor file = m_target.MakeFile(name, fault);
    if (!file.IsOpen()) return Refuse(entry.name, fault);
    std::uint64_t size = 0;
    fault = Copy(entry, &file, size);
    if (fault.empty() && !HasEnded()) fault = UnpackTarget::FinishFile(file, size, entry.modified);
    if (fault.empty() && !HasEnded()) return;
    m_target.RemoveFile(name);
    if (!HasEnded()) Refuse(entry.name, fault);
}

void UnpackedArchive::Reader::Unpack(const ArchiveEntry& entry) {
    const EntryName name = ParseEntryName(entry.name);
    const std::string fault = name.fault.empty() ? KindFault(entry) : name.fault;
    if (!fault.empty()) {
        Refuse(entry.name, fault);
    } else if (IsWanted(name, entry.kind)) {
        if (entry.kind == EntryKind::kFile) return UnpackFile(entry, name);
        const std::string refusal = m_target.MakeDirectory(name);
        if (!refusal.empty()) Refuse(entry.name, refusal);
    }
}

void UnpackedArchive::Reader::ReadAll() {
    ArchiveEntry entry;
    for (std::size_t count = 0; !HasEnded(); ++count) {
        const ReadStep step = m_stream->Next(entry);
        if (!m_stream->IsArchive())
            throw std::runtime_error("it is neither a directory nor an archive that can be read (" +
                                     std::string(kArchiveKinds) + ")");
        if (step == ReadStep::kEnd) return;
        if (step != ReadStep::kRead) return End({}, "the archive is cut short or damaged: " + m_stream->Reason());
        if (count == m_limits.entries) {
            return End(entry.name, "the archive is read no further: it has more than " +
                                       base::GroupedDigits(m_limits.entries) + " entries, which is the limit");
        }
        Unpack(entry);
        // Where contents must be decompressed to be passed over, that is limited too.
        std::uint64_t ignored = 0;
        if (!HasEnded() && !m_stream->SkipsContents()) Copy(entry, nullptr, ignored);
        if (m_stop && m_stop()) m_result.m_stopped = true;
    }
}

UnpackedArchive::UnpackedArchive(const std::filesystem::path& file, Wanted wanted, const std::function<bool()>& stop,
                                 const UnpackLimits& limits) {
    const base::FileDescriptor descriptor = base::OpenRegularFile(file);
    Reader(*this, descriptor, std::filesystem::file_size(file), wanted, stop, limits).ReadAll();
}

}  // namespace zel::archive
