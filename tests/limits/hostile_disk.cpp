#include "limits/hostile_disk.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>

#include "host/library/library.h"
#include "samples/write_file.h"

namespace zel::limits {

namespace {

std::string FileName(unsigned number) {
    char name[16];
    std::snprintf(name, sizeof name, ".%04u", number);
    return name;
}

}  // namespace

HostileDisk::HostileDisk() {
    std::string name = (std::filesystem::temp_directory_path() / "limits-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no scratch directory");
    m_path = name;
    for (const char* directory : {"MESSAGES", "MACHINE"}) std::filesystem::create_directory(m_path / directory);
}

HostileDisk::~HostileDisk() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

void HostileDisk::Write(const std::filesystem::path& name, const samples::Bytes& bytes, std::uintmax_t size) const {
    samples::WriteWholeFile(m_path / name, bytes);
    std::filesystem::resize_file(m_path / name, std::max<std::uintmax_t>(size, bytes.size()));
}

void HostileDisk::WriteMessage(const samples::MessageFile& message, std::uintmax_t size) const {
    WriteMessage(samples::WriteMessage(message), size);
}

void HostileDisk::WriteMessage(const samples::Bytes& bytes, std::uintmax_t size) const {
    Write("MESSAGES/.0001", bytes, size);
}

void HostileDisk::WriteFont(unsigned number, const samples::FontFile& font, std::uintmax_t size) const {
    Write("MACHINE/" + FileName(number), samples::WriteFont(font), size);
}

void HostileDisk::WriteList(std::string_view name, std::string_view text, std::uintmax_t size) const {
    Write(name, {text.begin(), text.end()}, size);
}

void HostileDisk::WriteLibrary(const std::string& document, const std::string& picture) const {
    library::Recording recording;
    recording.number = 1;
    recording.recorded_at = "2026-11-22T23:51:32Z";
    recording.document = document;
    recording.width = 720;
    recording.height = 486;
    recording.picture = picture;
    library::Library(m_path / "lib", library::Access::kWrite).Record({&recording, 1});
}

}  // namespace zel::limits
