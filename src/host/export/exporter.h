#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/export/export_subject.h"
#include "host/picture/picture.h"

namespace zel::exporter {

struct ExportOptions {
    /// Colours multiplied by their alpha, in the formats with an alpha of their own: PNG, square-pixel PNG and TGA.
    bool premultiplied = false;
};

/// A file to be written into the export's directory.
struct ExportedFile {
    std::string name;
    std::string bytes;
};

/// What is known of a message when its own files have been written.
struct ExportedMessage {
    std::string stem;
    std::string disk;
    int number = 0;
    std::string title;                          ///< UTF-8, see TitleOf.
    std::optional<picture::Picture> thumbnail;  ///< straight alpha and square pixels; nothing without a picture.
    std::vector<std::string> files;             ///< names of those that were written.
};

/// Makes the files of one format.
class Exporter {
  public:
    virtual ~Exporter() = default;

    /// The files of one message, which may be none. Called for several messages at once, each from a thread of its own.
    /// @throws std::runtime_error with the reason, when this message can't be exported.
    virtual std::vector<ExportedFile> Export(ExportSubject& /*message*/) const { return {}; }

    /// Whether Collect looks at thumbnails.
    virtual bool WantsThumbnails() const { return false; }

    /// Files of the whole range that became complete with this message. Called for each message in order, also for one
    /// that failed.
    virtual std::vector<ExportedFile> Collect(const ExportedMessage& /*message*/) { return {}; }

    /// Files of the whole range that are still to be written.
    virtual std::vector<ExportedFile> Finish() { return {}; }
};

/// One format of the table of formats.
struct ExportFormat {
    std::string_view name;         ///< what a user asks for.
    std::string_view description;  ///< one line for a user.
    std::unique_ptr<Exporter> (*make)(const ExportOptions& options);
};

/// All formats, in the order in which they are listed.
const std::vector<ExportFormat>& ExportFormats();

}  // namespace zel::exporter
