#pragma once

#include <optional>
#include <string>
#include <vector>

#include <CLI/App.hpp>

#include "host/picture/png_writer.h"
#include "host/reference_host.h"
#include "host/run/dialog_script.h"
#include "host/trace.h"
#include "host/user_desktop.h"
#include "programs/cli/number_selection.h"

/// Options that several commands share which run the module.
namespace zel::cli {

/// NUMBERS: up to two words for NumberSelection::Parse.
/// @param all  what is selected without any, such as "the whole disk".
CLI::Option& AddNumbers(CLI::App& command, std::vector<std::string>& words, const std::string& all);

/// Parses the words of NUMBERS.
/// @throws CLI::ValidationError
void ParseNumbers(const std::vector<std::string>& words, NumberSelection& numbers);

/// --jobs.
/// @param what  is done in parallel.
void AddJobs(CLI::App& command, int& jobs, const std::string& what);
/// The default of --jobs: one per processor core.
int DefaultJobs();

/// --small.
void AddSmall(CLI::App& command, picture::PngEffort& effort);

/// --maps: the directory of the name lists.
void AddMaps(CLI::App& command, std::optional<std::string>& directory);

/// Prints a note for a directory of --maps that is none, and for one of --fonts that is a file: the module finds
/// nothing there, and continues.
void PrintDirectoryNotes(const std::optional<std::string>& maps, const std::optional<std::string>& fonts);

/// --answer and --browse: the answers when a font is missing.
void AddFontPrompt(CLI::App& command, host::BoxAnswer& answer, std::optional<std::string>& browse);

/// Checks that --answer and --browse can have an effect.
/// @param warnings  whether the module may prompt.
void RequireFontPrompt(const CLI::App& command, bool warnings, host::BoxAnswer answer);

/// --rgba, --lines, --tt-convert and --no-baseline-align: what the host sets in the module's dialog, and the answer to
/// the choice for an RGBA picture.
void AddHostOptions(CLI::App& command, host::HostOptions& options, run::RgbaAnswer& rgba);

/// --tt-convert and --no-baseline-align alone.
void AddTextOptions(CLI::App& command, host::HostOptions& options);

/// --settings: the directory of the stored settings.
void AddSettings(CLI::App& command, std::optional<std::string>& directory);

/// --trace.
void AddTrace(CLI::App& command, std::optional<std::string>& path);
/// --pixels.
void AddTracePixels(CLI::App& command, host::TracePixels& pixels);

}  // namespace zel::cli
