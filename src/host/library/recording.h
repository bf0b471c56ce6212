#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "module/contract/records/video_standard.h"

namespace zel::library {

/// What a recording shows.
enum class RecordingKind { kMessage, kRgbaObject, kRgbaBackground };

/// A file that a recording was made from. Its checksum tells whether the recording is still true.
struct SourceFile {
    std::string path;                ///< absolute, this system's.
    std::optional<int> font_number;  ///< of a font; without it the file is the message's own.
    std::uint64_t size = 0;          ///< bytes
    std::string sha256;              ///< 64 digits, lower case; empty for a font that wasn't there.
};

/// Name and place of a tab field, in pixels and lines of the picture.
struct RecordedField {
    std::string name;
    int left = 0, top = 0, right = 0, bottom = 0;
};

/// A message as the host keeps it: everything that can be shown or exported without the disk that it came from. Texts
/// are UTF-8.
struct Recording {
    std::string disk;  ///< tells messages of several disks apart; empty for the only one.
    int number = 0;    ///< 0 to 9999, what the message is recorded under.
    RecordingKind kind = RecordingKind::kMessage;
    std::string recorded_at;            ///< UTC, such as 2026-11-22T23:51:32Z.
    std::string options;                ///< what of the host's options shaped it; another text is another outcome.
    std::string document;               ///< the message as a JSON document; empty for an RGBA file.
    std::string text;                   ///< what can be searched: a line for each row.
    std::vector<std::string> fonts;     ///< names, in the order of their slots.
    std::vector<RecordedField> fields;  ///< tab fields.
    std::vector<std::string> warnings;  ///< what a person should know: missing fonts, glyphs that couldn't be drawn.
    std::vector<SourceFile> sources;    ///< the message's own file first; fonts that were found.
    VideoStandard standard = VideoStandard::kNtsc;  ///< the message's own.
    int width = 0, height = 0;                      ///< of the picture, pixels; 0 without one.
    std::string picture;                            ///< PNG with straight alpha; empty when there is none.
};

/// What a recording is known by.
struct RecordingKey {
    std::string disk;
    int number = 0;

    friend bool operator==(const RecordingKey&, const RecordingKey&) = default;
    friend auto operator<=>(const RecordingKey&, const RecordingKey&) = default;
};

}  // namespace zel::library
