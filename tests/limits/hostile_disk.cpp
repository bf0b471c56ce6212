#include "limits/hostile_disk.h"

#include <algorithm>

#include "base/text.h"
#include "host/library/library.h"
#include "samples/write_file.h"

namespace zel::limits {

HostileDisk::HostileDisk() {
    for (const char* directory : {"MESSAGES", "MACHINE"}) std::filesystem::create_directory(Path() / directory);
}

void HostileDisk::Write(const std::filesystem::path& name, const files::Bytes& bytes, std::uintmax_t size) const {
    samples::WriteWholeFile(Path() / name, bytes);
    std::filesystem::resize_file(Path() / name, std::max<std::uintmax_t>(size, bytes.size()));
}

void HostileDisk::WriteMessage(const files::MessageFile& message, std::uintmax_t size) const {
    Write("MESSAGES/.0001", files::WriteMessage(message), size);
}

void HostileDisk::WriteFont(unsigned number, const files::FontFile& font, std::uintmax_t size) const {
    Write("MACHINE/" + base::NumberedName(static_cast<int>(number)), files::WriteFont(font), size);
}

void HostileDisk::WriteLibrary(const std::string& document, const std::string& picture) const {
    library::Recording recording;
    recording.number = 1;
    recording.recorded_at = "2026-11-22T23:51:32Z";
    recording.document = document;
    recording.width = 720;
    recording.height = 486;
    recording.picture = picture;
    library::Library(Path() / "lib", library::Access::kWrite).Record({&recording, 1});
}

}  // namespace zel::limits
