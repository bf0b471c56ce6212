#include "host/export/tga_exporter.h"

#include <algorithm>
#include <cstring>
#include <span>
#include <utility>

#include "host/export/premultiplied.h"
#include "module/contract/records/video_standard.h"

namespace zel::exporter {

namespace {

/// Kinds of alpha in the extension area; stored values.
enum class AlphaType : std::uint8_t { kStraight = 3, kPremultiplied = 4 };

/// Sizes in bytes of the parts of the file beside the pixels.
constexpr std::size_t kHeaderSize = 18, kExtensionSize = 495, kFooterSize = 26;

void Put16(std::string& bytes, std::size_t offset, unsigned value) {
    bytes[offset] = static_cast<char>(value & 0xFF);
    bytes[offset + 1] = static_cast<char>(value >> 8 & 0xFF);
}

void Put32(std::string& bytes, std::size_t offset, std::size_t value) {
    Put16(bytes, offset, value & 0xFFFF);
    Put16(bytes, offset + 2, value >> 16 & 0xFFFF);
}

std::string Header(const picture::Picture& picture, bool run_lengths) {
    std::string header(kHeaderSize, '\0');
    header[2] = run_lengths ? 10 : 2;  // true colour, compressed or not
    Put16(header, 12, static_cast<unsigned>(picture.width));
    Put16(header, 14, static_cast<unsigned>(picture.height));
    header[16] = 32;        // bits a pixel
    header[17] = 0x20 | 8;  // first pixel at the upper left; 8 of the bits are alpha
    return header;
}

/// Appends the pixels as blue, green, red and alpha.
void AppendPixels(std::string& bytes, const picture::Picture& picture) {
    const std::size_t begin = bytes.size();
    bytes.append(picture.rgba.begin(), picture.rgba.end());
    for (std::size_t n = begin; n + 3 < bytes.size(); n += 4) std::swap(bytes[n], bytes[n + 2]);
}

/// Pixels of the longest packet, and the bit of a packet's first byte that marks a run. The other bits are the number
/// of pixels less one.
constexpr std::size_t kLongestPacket = 128;
constexpr unsigned kRunPacket = 0x80;

void AppendPixel(std::string& bytes, picture::Rgba pixel) {
    for (const std::uint8_t sample : {pixel.blue, pixel.green, pixel.red, pixel.alpha})
        bytes += static_cast<char>(sample);
}

/// Pixels from the beginning of `row` that are equal, at most kLongestPacket.
std::size_t RunLength(std::span<const picture::Rgba> row) {
    std::size_t length = 1;
    while (length < std::min(row.size(), kLongestPacket) && row[length] == row[0]) ++length;
    return length;
}

/// Appends a row in packets, each a run of one pixel or pixels as they are. No packet continues in another row.
void AppendPackets(std::string& bytes, std::span<const picture::Rgba> row) {
    while (!row.empty()) {
        std::size_t length = RunLength(row);
        if (length > 1) {
            bytes += static_cast<char>(kRunPacket | (length - 1));
            AppendPixel(bytes, row[0]);
        } else {
            while (length < std::min(row.size(), kLongestPacket) && RunLength(row.subspan(length)) == 1) ++length;
            bytes += static_cast<char>(length - 1);
            for (const picture::Rgba pixel : row.first(length)) AppendPixel(bytes, pixel);
        }
        row = row.subspan(length);
    }
}

void AppendCompressed(std::string& bytes, const picture::Picture& picture) {
    for (int y = 0; y < picture.height; ++y) AppendPackets(bytes, picture.View().Row(y));
}

std::string Extension(PixelAspect aspect, AlphaType alpha) {
    std::string extension(kExtensionSize, '\0');
    Put16(extension, 0, kExtensionSize);
    std::memcpy(&extension[426], "ZelTrans", 8);  // software
    extension[469] = ' ';                         // letter of its version: none
    Put16(extension, 474, static_cast<unsigned>(aspect.width));
    Put16(extension, 476, static_cast<unsigned>(aspect.height));
    extension[494] = static_cast<char>(alpha);
    return extension;
}

std::string Footer(std::size_t extension_offset) {
    std::string footer(kFooterSize, '\0');
    Put32(footer, 0, extension_offset);
    std::memcpy(&footer[8], "TRUEVISION-XFILE.", 17);
    return footer;
}

class TgaExporter : public Exporter {
  public:
    explicit TgaExporter(const ExportOptions& options) : m_options(options) {}

    std::vector<ExportedFile> Export(ExportSubject& message) const override {
        const picture::Picture& frame = message.Output();
        std::string bytes = Header(frame, m_options.run_lengths);
        const auto append = m_options.run_lengths ? AppendCompressed : AppendPixels;
        if (m_options.premultiplied) {
            append(bytes, Premultiplied(frame));
        } else {
            append(bytes, frame);
        }
        const std::size_t extension = bytes.size();
        bytes += Extension(m_options.frame ? PixelAspect() : PixelAspectOf(message.Source().standard),
                           m_options.premultiplied ? AlphaType::kPremultiplied : AlphaType::kStraight);
        bytes += Footer(extension);
        return {{message.Stem() + ".tga", std::move(bytes)}};
    }

  private:
    const ExportOptions m_options;
};

}  // namespace

std::unique_ptr<Exporter> MakeTgaExporter(const ExportOptions& options) {
    return std::make_unique<TgaExporter>(options);
}

}  // namespace zel::exporter
