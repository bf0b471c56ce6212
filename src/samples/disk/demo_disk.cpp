#include "samples/disk/demo_disk.h"

#include "base/text.h"
#include "samples/disk/broadcast_messages.h"
#include "samples/disk/disk_fonts.h"
#include "samples/disk/format_messages.h"
#include "samples/write_file.h"

namespace zel::samples {

std::vector<std::filesystem::path> WriteDemonstrationDisk(const std::filesystem::path& directory) {
    const FontShelf fonts = MakeFontShelf();
    std::vector<std::filesystem::path> written;
    const auto write = [&](const std::filesystem::path& file, const auto& content) {
        WriteWholeFile(file, content);
        written.push_back(file);
    };
    for (const DiskFont* font : fonts.All())
        write(directory / "MACHINE" / base::NumberedName(static_cast<int>(font->number)), files::WriteFont(font->file));
    for (const auto& messages : {MakeBroadcastMessages(fonts), MakeFormatMessages(fonts)}) {
        for (const auto& message : messages)
            write(directory / "MESSAGES" / base::NumberedName(static_cast<int>(message.number)), message.bytes);
    }
    write(directory / kBitstreamListName, MakeBitstreamList().Written());
    write(directory / kTypefaceListName, MakeTypefaceList().Written());
    return written;
}

}  // namespace zel::samples
