#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <string_view>

#include "samples/font_writer.h"
#include "samples/message_writer.h"

/// A disk for one benchmark, with MESSAGES and MACHINE, that goes with the object.
class ScratchDisk {
  public:
    ScratchDisk();
    ~ScratchDisk();
    ScratchDisk(const ScratchDisk&) = delete;
    ScratchDisk& operator=(const ScratchDisk&) = delete;

    std::string Path(std::string_view name = "") const { return (m_directory / name).string(); }
    void Write(std::string_view name, std::span<const std::uint8_t> bytes) const;
    void WriteMessage(unsigned number, const zel::samples::MessageFile& message) const;
    void WriteFont(unsigned number, const zel::samples::FontFile& font) const;

  private:
    std::filesystem::path m_directory;
};

/// Run codes of an anti-aliased glyph: round shapes, whose edges are pixels of every level.
zel::samples::RunCodes SmoothGlyph(int width, int height);

/// Pixels of the same shape as a stored glyph: alpha, blue, green, red.
zel::samples::Bytes SmoothPixels(int width, int height);

/// A font whose printable characters are all run-coded, of 28 by 36 pixels.
zel::samples::FontFile RunCodedFont(std::string_view name);

/// A message of full rows in the first `fonts` slots, which name the fonts 1, 2 and so on.
zel::samples::MessageFile FullMessage(unsigned rows, unsigned characters, unsigned fonts);

/// One plain pass over a file's bytes: open, fstat, one read, close.
/// @param buffer  grows to the file's size.
/// @return bytes that came.
std::size_t ReadWholeFile(const char* path, std::string& buffer);
