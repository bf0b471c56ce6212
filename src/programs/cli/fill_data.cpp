#include "programs/cli/fill_data.h"

#include <cerrno>
#include <filesystem>
#include <optional>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

#include "base/file_descriptor.h"
#include "base/fold_case.h"
#include "programs/cli/command.h"
#include "programs/cli/standard_input.h"

namespace zel::cli {

namespace {

std::optional<fill::DataFormat> FormatOf(const std::string& path) {
    const std::string extension = std::filesystem::path(path).extension().string();
    const auto is = [&](std::string_view name) { return base::EqualsFolded(extension, name); };
    if (is(".csv") || is(".tsv")) return fill::DataFormat::kCsv;
    if (is(".json") || is(".jsonl") || is(".ndjson")) return fill::DataFormat::kJson;
    return std::nullopt;
}

[[noreturn]] void FailErrno(const std::string& name) {
    throw CommandError(name + ": " + std::generic_category().message(errno));
}

}  // namespace

void ReadDataFile(const std::string& path, const fill::TakeRecord& take) {
    const bool is_standard = IsStandardInput(path);
    const std::string name = is_standard ? kStandardInput : path;
    // A pipe is no trouble: the table is read once, from its beginning to its end.
    const base::FileDescriptor file(is_standard ? -1 : open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!is_standard && !file.IsOpen()) FailErrno(name);
    const int descriptor = is_standard ? STDIN_FILENO : file.Get();
    const fill::ReadBytes read = [&](std::span<char> out) {
        const ssize_t count = base::RetryInterrupted([&] { return ::read(descriptor, out.data(), out.size()); });
        if (count < 0) FailErrno(name);
        return static_cast<std::size_t>(count);
    };
    fill::ReadData(read, is_standard ? std::nullopt : FormatOf(path), take);
}

}  // namespace zel::cli
