#pragma once

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

namespace zel::samples_test {

/// A temporary directory, removed with the object.
class ScratchDirectory {
  public:
    ScratchDirectory() {
        std::string name = (std::filesystem::temp_directory_path() / "samples-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no scratch directory");
        m_path = name;
    }
    ~ScratchDirectory() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    ScratchDirectory(const ScratchDirectory&) = delete;
    ScratchDirectory& operator=(const ScratchDirectory&) = delete;

    const std::filesystem::path& Path() const { return m_path; }

  private:
    std::filesystem::path m_path;
};

inline std::string ReadAll(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

/// The names in a directory, sorted.
inline std::vector<std::string> NamesIn(const std::filesystem::path& directory) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(directory))
        names.push_back(entry.path().filename().string());
    std::ranges::sort(names);
    return names;
}

}  // namespace zel::samples_test
