#pragma once

#include <cstdint>
#include <ctime>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include "base/file_descriptor.h"

namespace zel::archive {

enum class EntryKind {
    kFile,
    kDirectory,
    kSymbolicLink,
    kHardLink,
    /// A device, a pipe or a socket.
    kSpecial,
};

/// One entry of an archive, as the archive gives it: nothing is checked.
struct ArchiveEntry {
    /// Path with slashes; UTF-8 where the format says what its names are. In a tar file it ends before its first NUL.
    std::string name;
    EntryKind kind = EntryKind::kFile;
    /// In bytes; may be missing or wrong.
    std::optional<std::uint64_t> size;
    /// Modification time; may be missing.
    std::optional<std::timespec> modified;
    bool is_encrypted = false;
};

/// What a step in an archive gave.
enum class ReadStep {
    /// An entry, or bytes of its contents.
    kRead,
    /// The end of the archive, or of the contents.
    kEnd,
    /// The entry's contents can't be read; the next entry can. Reason has the reason.
    kBadEntry,
    /// The archive is cut short or damaged here; nothing more can be read. Reason has the reason.
    kBroken,
};

/// A piece of an entry's contents.
struct EntryPiece {
    /// Valid until the next call.
    std::span<const char> bytes;
    /// In the contents. What pieces leave out between them is zeros. At kEnd, the size of the contents if that is known
    /// to be larger than the last piece's end.
    std::uint64_t offset = 0;
};

/// Reads an archive from its beginning to its end. An interface, because the library that implements it is loaded on
/// first use.
class ArchiveStream {
  public:
    virtual ~ArchiveStream() = default;

    /// Goes on to the next entry.
    virtual ReadStep Next(ArchiveEntry& entry) = 0;
    /// Reads on in the entry's contents.
    virtual ReadStep Read(EntryPiece& piece) = 0;
    /// Whether contents that are not read are left out without being decompressed.
    virtual bool SkipsContents() const = 0;
    /// Whether the file is an archive of a kind that is read. Known after the first call of Next.
    virtual bool IsArchive() const = 0;
    /// Of the last step, in one line.
    virtual std::string Reason() const = 0;
};

/// The kinds of archives, for a message: "zip, tar, ISO 9660".
extern const char kArchiveKinds[];

/// Opens an archive. The first call loads the library, which stays loaded.
/// @param file  open for reading; must outlive the stream.
/// @throws std::runtime_error with the reason: this build or this machine reads no archives.
std::unique_ptr<ArchiveStream> OpenArchiveStream(const base::FileDescriptor& file);

/// The entry point of the library that OpenArchiveStream loads; the caller owns the stream.
inline constexpr char kMakeArchiveStream[] = "ZelTransMakeArchiveStream";
using MakeArchiveStream = ArchiveStream* (*)(int file);

}  // namespace zel::archive
