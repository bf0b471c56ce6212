#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/filejson/fault.h"

/// The key `file` of a document: everything that a message or font file holds, so that the file can be made again.
namespace zel::filejson {

/// The value of `file`.
struct FileKey {
    std::string json{};
    /// Bytes that nothing reads and that it doesn't contain.
    std::uint64_t left_out = 0;
};

/// The value of `file` for the bytes of a message or a font.
/// @param exact  keep all bytes that nothing reads, however many there are.
/// @return empty if the bytes are no such file.
std::optional<FileKey> FileJson(std::span<const std::uint8_t> bytes, bool exact);

/// Reads a regular file of this system and gives its `file`.
/// @throws std::runtime_error  with the reason, to follow the file's name.
FileKey FileJsonOf(const std::filesystem::path& file, bool exact);

/// A line about bytes that were left out, to follow the document's name; empty if there are none.
std::string LeftOutNote(std::uint64_t left_out);

/// A document, one JSON object without a final line feed, with the key `file` added.
std::string WithFile(std::string document, std::string_view file_json);

/// A document of a font: its version, its source and its file.
/// @param source  in UTF-8 or not.
std::string FontDocument(std::string_view source, std::string_view file_json);

/// What a document makes.
struct DocumentFile {
    /// "message" or "font"; empty if the document doesn't say.
    std::string type{};
    /// The file; empty if there are faults.
    std::vector<std::uint8_t> bytes{};
    /// SHA-256 of the file that the document was made of, if it says so.
    std::optional<std::string> sha256{};
    Faults faults{};
};

/// Makes the file of a document. Nothing but `version` and `file` is read. The memory it takes is bounded by the size
/// of the text.
/// @throws std::runtime_error  with the reason, to follow the document's name: the text is no JSON object, or goes
///                             beyond a limit.
DocumentFile FileOfDocument(std::string_view document);

/// Largest document that is read, in bytes.
inline constexpr std::size_t kLargestDocument = std::size_t{256} << 20;

}  // namespace zel::filejson
