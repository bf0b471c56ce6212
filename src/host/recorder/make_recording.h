#pragma once

#include <optional>
#include <string>

#include "host/library/recording.h"
#include "host/picture/picture.h"
#include "host/recorder/source_files.h"
#include "host/reference_host.h"

namespace zel::recorder {

/// What the recordings of one run have in common.
struct RecordingContext {
    std::string disk;            ///< as in Recording.
    std::string font_directory;  ///< this system's.
    std::string options;         ///< as in Recording.
};

/// What arrived of one message.
struct ArrivedMessage {
    int number = 0;
    document::MessageRecord message;
    std::optional<picture::Picture> picture;
    std::string picture_trouble{};  ///< why an RGBA file has none; empty when it has.
};

/// The recording of a message, with its picture as PNG, its document and the checksums of its files, dated now.
/// Independent of other threads.
library::Recording MakeRecording(const ArrivedMessage& arrived, const RecordingContext& context, FileDigests& digests);

/// The host's options as a text; options that give another picture give another text.
std::string DescribeOptions(const host::HostOptions& options, FileDigests& digests);

}  // namespace zel::recorder
