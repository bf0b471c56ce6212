#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

/// The local side of a fetch: everything is opened by name in a directory that is held open, and no link is followed.
namespace zel::ftp {

/// A file or directory can't be used; what() is the reason, in words that follow its name and a colon.
class LocalError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Owns a descriptor.
class Descriptor {
  public:
    explicit Descriptor(int value = -1) noexcept : m_value(value) {}
    Descriptor(Descriptor&& other) noexcept;
    Descriptor& operator=(Descriptor&& other) noexcept;
    ~Descriptor();

    int Get() const noexcept { return m_value; }

  private:
    int m_value;
};

/// Which remote file the first bytes of a part belong to; two keys are equal only when all they are made of is.
struct PartKey {
    std::string source;  ///< server and directory.
    std::string name;
    std::uint64_t size = 0;
    std::string modified;
};

/// A file that is being fetched, NAME.KEY.part until it is whole. Locked against a second fetch.
class PartFile {
  public:
    /// Bytes that are there already, from an earlier fetch of the very same remote file.
    std::uint64_t Size() const noexcept { return m_size; }

    /// @throws LocalError with the system's reason.
    void Append(std::span<const std::uint8_t> bytes);
    void Reset();
    /// The last bytes that are there, at most `count`.
    std::vector<std::uint8_t> Tail(std::size_t count) const;

    /// Brings the bytes to the disk, and the file to its name.
    /// @param overwrite  false: a file of that name that has come meanwhile stays, and that is an error.
    void Finish(bool overwrite);
    /// Removes the file.
    void Discard() noexcept;

  private:
    friend class SafeDirectory;
    PartFile(int directory, std::string name, std::string part_name);

    int m_directory;  // not owned
    std::string m_name, m_part_name;
    Descriptor m_file;
    std::uint64_t m_size = 0;
};

/// A directory, held open.
class SafeDirectory {
  public:
    enum class Has { kNothing, kFile, kOther };

    /// Opens the directory that a user names, whose own path may hold links; makes it, and what of its path is missing.
    explicit SafeDirectory(const std::filesystem::path& path);
    /// A directory below, of that name in whatever case; made if it is missing. A link isn't taken.
    SafeDirectory Below(const std::string& name) const;

    /// What has a name; a link is kOther, whatever it leads to.
    Has Look(const std::string& name) const;
    /// A plain file's bytes; nothing when it isn't one or has more than `limit`.
    std::optional<std::vector<std::uint8_t>> Read(const std::string& name, std::uint64_t limit) const;

    /// Opens the part of a remote file. Parts of the same name with another key are removed.
    /// @param key  without it, the part is begun anew, and can't be continued by a later fetch.
    /// @throws LocalError  when another fetch is writing it, among others.
    std::unique_ptr<PartFile> OpenPart(const std::string& name, const std::optional<PartKey>& key) const;

  private:
    explicit SafeDirectory(Descriptor directory) : m_directory(std::move(directory)) {}
    std::vector<std::string> Names() const;

    Descriptor m_directory;
};

}  // namespace zel::ftp
