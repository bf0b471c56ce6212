#include "programs/cli/output_file.h"

#include <array>
#include <cerrno>
#include <filesystem>
#include <iostream>
#include <optional>
#include <streambuf>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

#include "base/file_descriptor.h"
#include "base/whole_file.h"
#include "programs/cli/command.h"

namespace zel::cli {

namespace {

namespace fs = std::filesystem;

[[noreturn]] void Fail(const std::string& path, const std::string& reason) {
    throw CommandError(path + ": can't be written: " + reason);
}

[[noreturn]] void FailErrno(const std::string& path) {
    Fail(path, std::generic_category().message(errno != 0 ? errno : EIO));
}

bool IsStandardOutput(const std::string& path) {
    return path == "-";
}

void CheckStandardOutput(OutputContent content) {
    if (content == OutputContent::kBinary && isatty(STDOUT_FILENO) == 1)
        Fail("standard output", "it is a terminal, and the output is not text; redirect it or name a file");
}

// The target of a link, so that the link remains a link.
std::string TargetOf(const std::string& path) {
    std::error_code error;
    const fs::path target = LinkTarget(path, error);
    if (error) Fail(path, error.message());
    return target.string();
}

}  // namespace

/// The device, or the unfinished file, that the stream writes to.
class OutputFile::Target : public std::streambuf {
  public:
    explicit Target(const std::string& path) {
        const std::string target = TargetOf(path);
        std::error_code error;
        const fs::file_status status = fs::status(target, error);
        // A name that ends in a slash can't become a file.
        if (fs::is_directory(status) || fs::path(target).filename().empty()) Fail(path, "it is a directory");
        if (status.type() == fs::file_type::none) Fail(path, error.message());
        if (fs::exists(status) && !fs::is_regular_file(status)) {
            m_device = base::FileDescriptor(open(target.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC));
            if (!m_device.IsOpen()) FailErrno(path);
        } else {
            if (error = base::MakeDirectoriesTo(target); error)
                Fail(path, "its directory can't be made: " + error.message());
            if (!m_file.emplace(target).IsOpen()) FailErrno(path);
        }
        setp(m_buffer.data(), m_buffer.data() + m_buffer.size());
    }

    /// Writes the buffer.
    /// @return false with errno set.
    bool Flush() {
        const std::string_view bytes(pbase(), static_cast<std::size_t>(pptr() - pbase()));
        setp(m_buffer.data(), m_buffer.data() + m_buffer.size());
        return base::WriteFully(m_file ? m_file->Descriptor() : m_device.Get(), bytes);
    }

    bool Commit() { return Flush() && (!m_file || (m_file->Sync() && m_file->Commit())); }

  private:
    int_type overflow(int_type c) override {
        if (!Flush()) return traits_type::eof();
        return traits_type::eq_int_type(c, traits_type::eof()) ? traits_type::not_eof(c)
                                                               : sputc(traits_type::to_char_type(c));
    }
    int sync() override { return Flush() ? 0 : -1; }

    std::optional<base::UnfinishedFile> m_file;
    base::FileDescriptor m_device;
    std::array<char, 1 << 14> m_buffer;
};

OutputFile::OutputFile(const std::string& path, OutputContent content)
    : m_path(IsStandardOutput(path) ? "standard output" : path),
      m_target(IsStandardOutput(path) ? nullptr : std::make_unique<Target>(path)),
      m_stream(m_target ? static_cast<std::streambuf*>(m_target.get()) : std::cout.rdbuf()) {
    if (!m_target) CheckStandardOutput(content);
}

OutputFile::~OutputFile() = default;

void OutputFile::Write(std::string_view text) {
    errno = 0;
    m_stream.write(text.data(), static_cast<std::streamsize>(text.size())).flush();
    if (!m_stream) FailErrno(m_path);
}

void OutputFile::Commit() {
    // errno of a write that failed earlier is lost.
    if (!m_stream) Fail(m_path, "not everything could be written");
    errno = 0;
    if (!m_target) {
        if (!m_stream.flush()) FailErrno(m_path);
    } else if (!m_target->Commit()) {
        FailErrno(m_path);
    }
}

std::filesystem::path LinkTarget(const std::string& path, std::error_code& error) {
    constexpr int kMaxLinks = 40;  // the system's own limit
    fs::path target = path;
    error.clear();
    std::error_code missing;  // no failure
    for (int links = 0; fs::is_symlink(fs::symlink_status(target, missing)); ++links) {
        if (links == kMaxLinks) {
            error = std::make_error_code(std::errc::too_many_symbolic_link_levels);
            return target;
        }
        const fs::path next = fs::read_symlink(target, error);
        if (error) return target;
        target = target.parent_path() / next;
    }
    return target;
}

std::string CheckRegularOutput(const std::string& path) {
    if (IsStandardOutput(path)) {
        CheckStandardOutput(OutputContent::kBinary);
        return path;
    }
    std::string target = TargetOf(path);
    std::error_code error;
    const fs::file_status status = fs::status(target, error);
    // A directory has its own message below. Others are not opened, since a pipe would wait for its reader.
    if (fs::exists(status) && !fs::is_regular_file(status) && !fs::is_directory(status))
        Fail(path, "it is not a regular file");
    const OutputFile probe(path);
    return target;
}

void WriteBinaryOutput(const std::string& path, std::string_view bytes) {
    OutputFile file(path, OutputContent::kBinary);
    file.Write(bytes);
    file.Commit();
}

}  // namespace zel::cli
