#include "scratch_disk.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <stdexcept>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "base/text.h"
#include "samples/write_file.h"

using namespace zel;

namespace {

// The share of a pixel that a ring covers, 0 to 255: the shape of a round letter.
unsigned RingLevel(int x, int y, int width, int height) {
    const double across = (x + 0.5) / width * 2 - 1, down = (y + 0.5) / height * 2 - 1;
    const double from_ring = std::abs(std::hypot(across, down) - 0.7) * std::min(width, height) / 2;
    return static_cast<unsigned>(std::clamp(3.0 - from_ring, 0.0, 1.0) * 255);
}

}  // namespace

ScratchDisk::ScratchDisk() {
    std::string name = (std::filesystem::temp_directory_path() / "zel-bench-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no scratch directory");
    m_directory = name;
    for (const char* directory : {"MESSAGES", "MACHINE"}) std::filesystem::create_directory(m_directory / directory);
}

ScratchDisk::~ScratchDisk() {
    std::error_code ignored;
    std::filesystem::remove_all(m_directory, ignored);
}

void ScratchDisk::Write(std::string_view name, std::span<const std::uint8_t> bytes) const {
    samples::WriteWholeFile(m_directory / name, bytes);
}

void ScratchDisk::WriteMessage(unsigned number, const files::MessageFile& message) const {
    Write("MESSAGES/" + base::NumberedName(number), files::WriteMessage(message));
}

void ScratchDisk::WriteFont(unsigned number, const files::FontFile& font) const {
    Write("MACHINE/" + base::NumberedName(number), files::WriteFont(font));
}

files::RunCodes SmoothGlyph(int width, int height) {
    files::RunCodes codes;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width;) {
            const unsigned level = RingLevel(x, y, width, height);
            unsigned count = 1;
            while (count < files::kLongestRun && x + static_cast<int>(count) < width &&
                   RingLevel(x + static_cast<int>(count), y, width, height) == level)
                ++count;
            codes.push_back(level == 0 ? files::BackgroundRun(count)
                                       : files::ColourRun(files::kFaceIndex, level, count));
            x += static_cast<int>(count);
        }
        codes.push_back(files::EndOfLine());
    }
    codes.push_back(files::EndOfGlyph());
    return codes;
}

files::Bytes SmoothPixels(int width, int height) {
    files::Bytes pixels;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const unsigned level = RingLevel(x, y, width, height);
            for (const unsigned part : {255U, 40U, 120U, 200U})
                pixels.push_back(static_cast<std::uint8_t>(level * part / 255));
        }
    }
    return pixels;
}

files::FontFile RunCodedFont(std::string_view name) {
    files::FontFile font;
    font.header.font_name = name;
    font.header.font_id_text = "5001";
    font.header.font_height = 40;
    const files::RunCodes glyph = SmoothGlyph(28, 36);
    for (unsigned code = '!'; code <= '~'; ++code) font.AddRunCoded(code, glyph, 10, 28);
    return font;
}

files::MessageFile FullMessage(unsigned rows, unsigned characters, unsigned fonts) {
    files::MessageFile message;
    for (unsigned slot = 0; slot < fonts; ++slot)
        message.header.font_numbers[slot] = static_cast<std::uint16_t>(slot + 1);
    for (unsigned r = 0; r < rows; ++r) {
        constexpr std::string_view kWords = "The mayor opens the new bridge tonight at 8, live from the east bank. ";
        std::string text;
        for (unsigned k = 0; k < characters; ++k) text += kWords[(r * 17 + k) % kWords.size()];
        files::CharCell like;
        like.char_font = r % fonts;
        like.colour_set = r % 8;
        files::RowText row = files::RowFromText(40 * r + 20, text, 20, 680 / characters, like);
        row.row_top = 10;
        row.row_bottom = 48;
        message.rows.push_back(row);
    }
    return message;
}

std::size_t ReadWholeFile(const char* path, std::string& buffer) {
    const int file = ::open(path, O_RDONLY | O_CLOEXEC);
    if (file < 0) throw std::runtime_error(std::string(path) + ": cannot be read");
    struct stat status {};
    ::fstat(file, &status);
    const std::size_t size = static_cast<std::size_t>(status.st_size);
    if (buffer.size() < size) buffer.resize(size);
    const ssize_t read = ::read(file, buffer.data(), size);
    ::close(file);
    return read > 0 ? static_cast<std::size_t>(read) : 0;
}
