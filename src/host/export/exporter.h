#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "host/export/export_options.h"
#include "host/export/export_subject.h"
#include "host/export/exported_file.h"
#include "host/export/manifest.h"
#include "host/picture/picture.h"

namespace zel::exporter {

/// A message whose own files have been written, for the files of the whole range.
struct ExportedMessage {
    std::string stem;
    std::string disk;
    /// Negative for one that is named by its stem.
    int number = 0;
    /// UTF-8, see TitleOf.
    std::string title;
    /// Straight alpha and square pixels; empty without a picture.
    std::optional<picture::Picture> thumbnail;
    /// Names of the files that were written.
    std::vector<std::string> files;
};

/// Makes the files of one format.
class Exporter {
  public:
    virtual ~Exporter() = default;

    /// Called once, first.
    /// @param directory  of the files.
    /// @param earlier    what earlier exports have left in it.
    /// @throws std::runtime_error with the reason, when the files can't be added to these.
    virtual void Begin(const std::filesystem::path& /*directory*/, const Manifest& /*earlier*/) {}

    /// The files of one message; may be none. Several threads call it at once, each with its own message.
    /// @throws std::runtime_error with the reason, when this message can't be exported.
    virtual std::vector<ExportedFile> Export(ExportSubject& /*message*/) const { return {}; }

    /// Whether Export uses the names of the message's other files.
    virtual bool WantsFilesBeside() const { return false; }

    /// Whether Export uses the contents of the files that the message was made from.
    virtual bool WantsSources() const { return false; }

    /// Whether Collect uses thumbnails.
    virtual bool WantsThumbnails() const { return false; }

    /// Files of the whole range that are complete with this message. Called for each message in order, also for one
    /// that failed.
    virtual std::vector<ExportedFile> Collect(const ExportedMessage& /*message*/) { return {}; }

    /// The remaining files of the whole range.
    /// @param manifest  all messages with their files, including those of earlier exports into the directory.
    virtual std::vector<ExportedFile> Finish(const Manifest& /*manifest*/) { return {}; }
};

}  // namespace zel::exporter
