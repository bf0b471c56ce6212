#include "programs/cli/archive_faults.h"

#include "programs/cli/diagnostics.h"

namespace zel::cli {

void PrintArchiveFaults(const std::string& path, const archive::UnpackedArchive& unpacked) {
    for (const std::string& refused : unpacked.Refused()) PrintError(path + ": refused: " + refused);
    const std::size_t more = unpacked.RefusedCount() - unpacked.Refused().size();
    if (more > 0) PrintError(path + ": refused: " + std::to_string(more) + " more");
    if (!unpacked.Failure().empty()) PrintError(path + ": " + unpacked.Failure());
}

}  // namespace zel::cli
