#include "programs/version/library_versions.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include <link.h>

#include "base/sqlite_database.h"
#include "host/ftp/ftp_session.h"
#include "host/picture/library_versions.h"

namespace zel::version {

namespace {

struct Search {
    std::string_view begin;
    std::filesystem::path found;
};

int CompareName(dl_phdr_info* info, std::size_t /*size*/, void* data) {
    Search& search = *static_cast<Search*>(data);
    const std::filesystem::path path(info->dlpi_name);
    if (!path.filename().native().starts_with(search.begin)) return 0;
    search.found = path;
    return 1;
}

/// The file's name of a loaded library, without links; nothing if none is loaded whose name begins like that.
std::optional<std::string> LoadedFile(std::string_view begin) {
    Search search{begin, {}};
    if (::dl_iterate_phdr(&CompareName, &search) == 0) return std::nullopt;
    std::error_code error;
    const std::filesystem::path file = std::filesystem::canonical(search.found, error);
    return (error ? search.found : file).filename().string();
}

}  // namespace

std::vector<LibraryVersion> HostLibraries() {
    std::vector<LibraryVersion> libraries = {{"SQLite", base::SqliteVersion()}};
    for (auto& [name, version] : picture::LibraryVersions()) libraries.push_back({name, version});
    // It has no function for its version.
    if (std::optional<std::string> isal = LoadedFile("libisal.so")) libraries.push_back({"ISA-L", *std::move(isal)});
    if (std::string curl = ftp::CurlVersion(); !curl.empty()) libraries.push_back({"libcurl", std::move(curl)});
    return libraries;
}

}  // namespace zel::version
