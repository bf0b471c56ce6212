#include "programs/cli/output_file.h"

#include <cerrno>
#include <filesystem>
#include <system_error>

#include <unistd.h>

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

// What the path leads to: the file behind a link, which need not be there yet, so that the link stays a link.
std::string TargetOf(const std::string& path) {
    constexpr int kMostLinks = 40;  // as the system follows
    fs::path target = path;
    std::error_code error;
    for (int links = 0; fs::is_symlink(fs::symlink_status(target, error)); ++links) {
        if (links == kMostLinks) Fail(path, std::generic_category().message(ELOOP));
        const fs::path next = fs::read_symlink(target, error);
        if (error) Fail(path, error.message());
        target = target.parent_path() / next;
    }
    return target.string();
}

}  // namespace

OutputFile::OutputFile(const std::string& path) : m_path(path), m_target(TargetOf(path)) {
    std::error_code error;
    const fs::file_status status = fs::status(m_target, error);
    if (fs::is_directory(status)) Fail(path, "it is a directory");
    // A device has no name beside it that could take its place.
    if (!fs::exists(status) || fs::is_regular_file(status)) m_draft = m_target + ".part-" + std::to_string(getpid());
    errno = 0;
    m_stream.open(m_draft.empty() ? m_target : m_draft, std::ios::binary | std::ios::trunc);
    if (!m_stream) FailErrno(path);
}

OutputFile::~OutputFile() {
    if (m_draft.empty()) return;
    m_stream.close();
    std::error_code ignored;
    fs::remove(m_draft, ignored);
}

void OutputFile::Write(std::string_view text) {
    errno = 0;
    m_stream.write(text.data(), static_cast<std::streamsize>(text.size())).flush();
    if (!m_stream) FailErrno(m_path);
}

void OutputFile::Commit() {
    // What failed while the module ran has left no reason behind.
    if (!m_stream) Fail(m_path, "not everything could be written");
    errno = 0;
    m_stream.close();
    if (!m_stream) FailErrno(m_path);
    if (m_draft.empty()) return;
    std::error_code error;
    fs::rename(m_draft, m_target, error);
    if (error) Fail(m_path, error.message());
    m_draft.clear();
}

std::string CheckPlainOutput(const std::string& path) {
    const OutputFile probe(path);
    std::string target = TargetOf(path);
    std::error_code error;
    const fs::file_status status = fs::status(target, error);
    if (fs::exists(status) && !fs::is_regular_file(status)) Fail(path, "it is no plain file");
    return target;
}

}  // namespace zel::cli
