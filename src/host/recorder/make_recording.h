#pragma once

#include <optional>
#include <string>

#include "host/library/recording.h"
#include "host/picture/picture.h"
#include "host/picture/png_writer.h"
#include "host/recorder/relocation.h"
#include "host/recorder/source_files.h"
#include "host/reference_host.h"

namespace zel::recorder {

/// What all recordings of one run share.
struct RecordingContext {
    /// As in Recording.
    std::string disk;
    /// This system's path.
    std::string font_directory;
    /// As in Recording.
    std::string options;
    picture::PngEffort png_effort = picture::PngEffort::kFast;
    Relocation relocation{};
    /// Recordings of messages have the contents of their files.
    bool with_files = false;
};

/// What the host received of one message.
struct ArrivedMessage {
    int number = 0;
    document::MessageRecord message;
    std::optional<picture::Picture> picture;
    /// Why an RGBA file has no picture; empty if it has.
    std::string picture_error{};
};

/// Makes the recording of a message, with the current time, its picture as PNG, its document and the checksums of its
/// files. May be called on any thread.
library::Recording MakeRecording(const ArrivedMessage& arrived, const RecordingContext& context, FileDigests& digests);

/// The host's options as text, for Recording::options. Options that change the result change the text.
std::string DescribeOptions(const host::HostOptions& options, FileDigests& digests);

}  // namespace zel::recorder
