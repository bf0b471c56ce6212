#pragma once

#include <map>
#include <string>
#include <vector>

#include "host/export/exporter.h"
#include "host/picture/png_reader.h"
#include "host/picture/png_writer.h"

/// A picture in which colours and alpha take all values, clear pixels with a colour among them.
inline Picture Colourful(int width = 720, int height = 486) {
    Picture picture{width, height, {}};
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            for (const int value : {x * 7 + y, x + y * 3, x * y, y < 40 ? 0 : x}) {
                picture.rgba.push_back(static_cast<std::uint8_t>(value));
            }
        }
    }
    return picture;
}

/// A message with that picture.
inline Recording Recorded(int number = 12, const Picture& picture = Colourful()) {
    Recording recording;
    recording.number = number;
    recording.document = R"({"kind":"message"})";
    recording.lines = picture.height == 576 ? 576 : 486;
    recording.width = picture.width;
    recording.height = picture.height;
    recording.picture = EncodePng(picture);
    return recording;
}

/// The files of a format for one message, by their names.
inline std::map<std::string, std::string> Exported(std::string_view format, const Recording& recording,
                                                   const ExportOptions& options = {}) {
    ExportSubject subject(recording);
    std::map<std::string, std::string> files;
    for (const ExportFormat& entry : ExportFormats()) {
        if (entry.name != format) continue;
        for (ExportedFile& file : entry.make(options)->Export(subject)) files[file.name] = std::move(file.bytes);
    }
    return files;
}
