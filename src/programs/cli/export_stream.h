#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "host/export/export_formats.h"
#include "host/export_service.h"
#include "host/library/library.h"

namespace zel::cli {

/// Keeps the only recording that an export selects.
class SingleExportService : public host::ExportService {
  public:
    /// @param library  kept alive by the caller.
    SingleExportService(library::Library& library, std::string disk) : m_library(library), m_disk(std::move(disk)) {}

    bool Has(int number) override { return m_library.Has({m_disk, number}); }
    void Begin(int number) override;
    void Complete(int /*number*/, const std::string& /*path*/) override {}

    int Count() const noexcept { return m_count; }
    /// The first one.
    const std::optional<library::Recording>& Recording() const noexcept { return m_recording; }

  private:
    library::Library& m_library;
    const std::string m_disk;
    int m_count = 0;
    std::optional<library::Recording> m_recording;
};

/// The file of a recording in a format for which IsSingleFile is true.
/// @throws std::runtime_error with the reason, such as a picture that is missing.
std::string ExportedFileOf(const library::Recording& recording, const std::string& format,
                           const exporter::ExportOptions& options);

}  // namespace zel::cli
