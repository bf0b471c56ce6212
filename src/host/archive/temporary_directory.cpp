#include "host/archive/temporary_directory.h"

#include <cerrno>
#include <cstdlib>
#include <stdexcept>
#include <system_error>

namespace zel::archive {

namespace fs = std::filesystem;

TemporaryDirectory::TemporaryDirectory() {
    std::error_code error;
    fs::path parent = fs::temp_directory_path(error);
    if (!error) parent = fs::canonical(parent, error);
    std::string path = (parent / "zeltrans-XXXXXX").string();
    if (!error && ::mkdtemp(path.data()) == nullptr) error = {errno, std::generic_category()};
    if (error) {
        throw std::runtime_error("no temporary directory can be made" +
                                 (parent.empty() ? "" : " in " + parent.string()) + ": " + error.message());
    }
    m_path = path;
}

TemporaryDirectory::~TemporaryDirectory() {
    std::error_code ignored;
    fs::remove_all(m_path, ignored);
}

}  // namespace zel::archive
