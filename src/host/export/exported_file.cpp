#include "host/export/exported_file.h"

#include <cerrno>
#include <limits>
#include <stdexcept>

#include "base/sha256.h"

namespace zel::exporter {

std::error_code TryWriteExported(const std::filesystem::path& file, const ExportedFile& contents,
                                 base::UnfinishedFile::Existing existing) {
    if (contents.name.find('/') != std::string::npos) {
        if (const std::error_code failure = base::MakeDirectoriesTo(file)) return failure;
    }
    base::UnfinishedFile unfinished(file);
    const auto write = [&] {
        if (!contents.write) return unfinished.Write(contents.bytes);
        contents.write(unfinished.Descriptor());
        return true;
    };
    if (unfinished.IsOpen() && write() && unfinished.Sync() && unfinished.Commit(existing)) return {};
    return {errno, std::generic_category()};
}

ManifestFile DescribeFile(const std::filesystem::path& directory, const std::string& name) {
    const std::filesystem::path file = directory / name;
    std::string sum = base::Sha256OfFile(file, {}, std::numeric_limits<std::uint64_t>::max());
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(file, error);
    if (error) throw std::runtime_error(file.string() + ": could not be read: " + error.message());
    return {name, size, std::move(sum)};
}

ManifestFile WriteExported(const std::filesystem::path& directory, const ExportedFile& file) {
    const std::filesystem::path path = directory / file.name;
    const std::error_code error = TryWriteExported(path, file, base::UnfinishedFile::Existing::kReplace);
    if (error) throw std::runtime_error(path.string() + ": could not be written: " + error.message());
    if (file.write) return DescribeFile(directory, file.name);
    return {file.name, file.bytes.size(), base::Sha256(file.bytes)};
}

}  // namespace zel::exporter
