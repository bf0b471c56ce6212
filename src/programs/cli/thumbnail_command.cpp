#include "programs/cli/thumbnail_command.h"

#include <cerrno>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>

#include <CLI/App.hpp>
#include <fcntl.h>
#include <unistd.h>

#include "base/file_descriptor.h"
#include "host/picture/png_writer.h"
#include "host/thumbnail/thumbnail.h"
#include "programs/cli/options.h"
#include "programs/cli/output_check.h"
#include "programs/cli/output_file.h"

namespace zel::cli {

namespace {

struct ThumbnailArguments {
    std::string input, output;
    int side = 128;
};

/// Where the PNG goes.
struct Output {
    std::string file;
    /// Into the file that is there, as a sandbox may allow nothing but that: neither another file in its directory nor
    /// a new one in its place.
    bool in_place = false;
};

Output CheckOutput(const std::string& path) {
    try {
        return {CheckRegularOutput(path)};
    } catch (const CommandError&) {
        std::error_code error;
        if (!std::filesystem::is_regular_file(path, error) || ::access(path.c_str(), W_OK) != 0) throw;
        return {path, true};
    }
}

void Write(const Output& output, const picture::Picture& picture) {
    constexpr picture::PngForm kForm{.channels = picture::PngChannels::kColour, .shape = picture::PixelShape::kSquare};
    if (!output.in_place) return picture::WritePng(output.file, picture, kForm);
    const std::string bytes = picture::EncodePng(picture, kForm);
    const base::FileDescriptor file(::open(output.file.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC | O_NONBLOCK));
    if (!file.IsOpen() || !base::WriteFully(file.Get(), bytes)) {
        throw CommandError(output.file + ": can't be written: " + std::generic_category().message(errno));
    }
}

ExitCode RunThumbnailCommand(const ThumbnailArguments& arguments) {
    CommandFiles files;
    files.Read(arguments.input, "the file to show");
    files.Write(arguments.output, "OUT");
    CheckOutputs(files);
    const Output output = CheckOutput(arguments.output);
    picture::Picture picture;
    try {
        picture = thumbnail::MakeThumbnail(arguments.input, arguments.side);
    } catch (const std::runtime_error& error) {
        throw CommandError(arguments.input + ": " + error.what());
    }
    Write(output, picture);
    return ExitCode::kDone;
}

}  // namespace

void AddThumbnailCommand(CLI::App& app, CommandRun& run) {
    const auto arguments = std::make_shared<ThumbnailArguments>();
    CLI::App& command =
        *app.add_subcommand("thumbnail",
                            "Writes a small picture of a message or a font, as file managers show it. A message "
                            "without its fonts is shown by bars in the places of its characters.");
    AddArgument(command, "IN", arguments->input, "the message or font, whatever its name");
    AddArgument(command, "OUT", arguments->output, "the PNG file to write");
    AddInteger(command, "-s,--size", arguments->side, thumbnail::kLargestSide, "SIZE",
               "the longer side of the picture in pixels [128]");
    AddExample(command, "zeltrans thumbnail -s 256 DISK/MESSAGES/.0012 0012.png");
    command.callback([arguments, &run] { run = [arguments] { return RunThumbnailCommand(*arguments); }; });
}

}  // namespace zel::cli
