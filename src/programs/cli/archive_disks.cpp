#include "programs/cli/archive_disks.h"

#include <filesystem>
#include <system_error>

#include "host/archive/archived_disks.h"
#include "host/native_path.h"
#include "programs/cli/archive_faults.h"
#include "programs/cli/command.h"
#include "programs/cli/interrupt.h"

namespace zel::cli {

namespace {

archive::UnpackedArchive Unpacked(const std::string& path) {
    try {
        return archive::UnpackedArchive(path, archive::Wanted::kDisks, WasInterrupted);
    } catch (const std::runtime_error& error) {
        throw CommandError(path + ": " + error.what());
    }
}

}  // namespace

bool ArchiveDisks::MayBeArchive(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::is_regular_file(path, ignored);
}

ArchiveDisks::ArchiveDisks(const std::string& path) : m_unpacked(Unpacked(path)) {
    PrintArchiveFaults(path, m_unpacked);
    const std::string absolute = host::AbsolutePath(path);
    for (const archive::ArchivedDisk& found : archive::DisksIn(m_unpacked.Root(), path)) {
        const std::string inner = found.folder.empty() ? "" : "/" + found.folder;
        m_disks.push_back({path + inner,
                           m_unpacked.Root().string() + inner,
                           {m_unpacked.Root().string(), absolute},
                           inner.empty() ? found.name : std::string()});
    }
    if (m_disks.empty() && !m_unpacked.WasStopped())
        throw CommandError(path + ": no disk: the archive contains no folder MESSAGES");
}

}  // namespace zel::cli
