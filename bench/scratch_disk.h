#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <string_view>

#include "files/font_writer.h"
#include "files/message_writer.h"

/// A temporary disk for one benchmark, with MESSAGES and MACHINE. The destructor deletes it.
class ScratchDisk {
  public:
    ScratchDisk();
    ~ScratchDisk();
    ScratchDisk(const ScratchDisk&) = delete;
    ScratchDisk& operator=(const ScratchDisk&) = delete;

    std::string Path(std::string_view name = "") const { return (m_directory / name).string(); }
    void Write(std::string_view name, std::span<const std::uint8_t> bytes) const;
    void WriteMessage(unsigned number, const zel::files::MessageFile& message) const;
    void WriteFont(unsigned number, const zel::files::FontFile& font) const;

  private:
    std::filesystem::path m_directory;
};

/// Run codes of an anti-aliased round glyph, whose edges have pixels of every level.
zel::files::RunCodes SmoothGlyph(int width, int height);

/// The same shape as the pixels of a stored glyph: alpha, blue, green, red.
zel::files::Bytes SmoothPixels(int width, int height);

/// A font with a run-coded glyph of 28 by 36 pixels for each printable character.
zel::files::FontFile RunCodedFont(std::string_view name);

/// A message of full rows that uses the first `fonts` slots, with the fonts 1, 2 and so on.
zel::files::MessageFile FullMessage(unsigned rows, unsigned characters, unsigned fonts);

/// Reads a file with open, fstat, one read and close.
/// @param buffer  enlarged to the size of the file if necessary.
/// @return the number of bytes read.
std::size_t ReadWholeFile(const char* path, std::string& buffer);
