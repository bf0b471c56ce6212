#include "programs/version/version_report.h"

#include <zeltrans_revision.h>

namespace zel::version {

std::string_view ProjectVersion() noexcept {
    return ZELTRANS_VERSION;
}

std::string VersionReport(std::string_view program, std::span<const LibraryVersion> libraries) {
    std::string report(program);
    report += " " ZELTRANS_VERSION "\nrevision " ZELTRANS_REVISION "\ncompiler " ZELTRANS_COMPILER "\nlibraries ";
    bool first = true;
    for (const LibraryVersion& library : libraries) {
        report += (first ? "" : ", ") + library.name + " " + library.version;
        first = false;
    }
    return report;
}

}  // namespace zel::version
