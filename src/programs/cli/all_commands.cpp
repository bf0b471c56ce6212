#include <cstdio>
#include <type_traits>

#include "programs/cli/batch_command.h"
#include "programs/cli/command_description.h"
#include "programs/cli/diff_command.h"
#include "programs/cli/export_command.h"
#include "programs/cli/fetch_command.h"
#include "programs/cli/fill_command.h"
#include "programs/cli/font_command.h"
#include "programs/cli/import_command.h"
#include "programs/cli/info_command.h"
#include "programs/cli/library_command.h"
#include "programs/cli/run_program.h"
#include "programs/cli/sample_command.h"
#include "programs/cli/settings_command.h"
#include "programs/cli/thumbnail_command.h"
#include "programs/cli/verify_command.h"
#include "programs/cli/write_command.h"
#include "programs/version/library_versions.h"
#include "programs/version/version_report.h"

namespace zel::cli {

namespace {

// In the order in which the help lists them.
constexpr NamedCommand kCommands[] = {
    {"import", AddImportCommand},     {"batch", AddBatchCommand},         {"export", AddExportCommand},
    {"font", AddFontCommand},         {"info", AddInfoCommand},           {"library", AddLibraryCommand},
    {"diff", AddDiffCommand},         {"fetch", AddFetchCommand},         {"sample", AddSampleCommand},
    {"settings", AddSettingsCommand}, {"thumbnail", AddThumbnailCommand}, {"fill", AddFillCommand},
    {"verify", AddVerifyCommand},     {"write", AddWriteCommand},
};

}  // namespace

extern "C" __attribute__((visibility("default"))) int RunAnyCommand(int argc, char** argv) {
    static_assert(std::is_same_v<decltype(&RunAnyCommand), RunAnyCommandFunction>);
    return RunProgram(argc, argv, kCommands,
                      [] { return version::VersionReport("zeltrans", version::HostLibraries()); });
}

extern "C" __attribute__((visibility("default"))) void DescribeAllCommands(std::FILE* out) {
    static_assert(std::is_same_v<decltype(&DescribeAllCommands), DescribeAllCommandsFunction>);
    std::fputs(DescribeCommands(kCommands).c_str(), out);
}

}  // namespace zel::cli
