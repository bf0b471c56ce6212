#include "host/export/contact_sheet.h"

#include <algorithm>
#include <cstring>

#include "host/export/export_formats.h"
#include "host/export/resample.h"
#include "host/export/utf8.h"
#include "host/picture/composite.h"
#include "host/picture/png_writer.h"

namespace zel::exporter {

namespace {

constexpr int kColumns = 5;
constexpr int kRows = ContactSheet::kCells / kColumns;
constexpr int kMargin = 20;       // pixels and lines between the cells and around them
constexpr int kLabelHeight = 40;  // lines of a cell below its thumbnail
constexpr int kCellWidth = kThumbnailWidth + kMargin;
constexpr int kCellHeight = kThumbnailHeight + kLabelHeight + kMargin;
constexpr int kPageWidth = kMargin + kColumns * kCellWidth;
constexpr int kPageHeight = kMargin + kRows * kCellHeight;

constexpr picture::Rgba kGround{0x26, 0x2B, 0x33, 255};
constexpr picture::Rgba kSquares[] = {{0x5D, 0x66, 0x71, 255}, {0x6B, 0x74, 0x80, 255}};
constexpr picture::Rgba kNothing{0x36, 0x3C, 0x46, 255};
constexpr int kSquareSize = 8;  // pixels and lines
constexpr COLORREF kNumberColour = RGB(0xFF, 0xFF, 0xFF);
constexpr COLORREF kTitleColour = RGB(0xB4, 0xBC, 0xC8);

constexpr int kEm = 12;      // lines
constexpr int kAdvance = 7;  // pixels; the label's typeface has one width
constexpr std::size_t kLabelLength = kThumbnailWidth / kAdvance;

std::uint8_t* PixelAt(picture::Picture& picture, int x, int y) noexcept {
    const std::size_t line = static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.width);
    return picture.rgba.data() + (line + static_cast<std::size_t>(x)) * 4;
}

void Put(picture::Picture& picture, int x, int y, picture::Rgba colour) noexcept {
    std::memcpy(PixelAt(picture, x, y), &colour, 4);
}

picture::Rgba PixelOf(const picture::Picture& picture, int x, int y) noexcept {
    picture::Rgba pixel;
    const std::size_t line = static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.width);
    std::memcpy(&pixel, picture.rgba.data() + (line + static_cast<std::size_t>(x)) * 4, 4);
    return pixel;
}

void LayThumbnail(picture::Picture& page, int left, int top, const picture::Picture& thumbnail) {
    for (int y = 0; y < thumbnail.height; ++y) {
        for (int x = 0; x < thumbnail.width; ++x) {
            const picture::Rgba ground = kSquares[(x / kSquareSize + y / kSquareSize) % 2];
            Put(page, left + x, top + y, picture::Over(PixelOf(thumbnail, x, y), ground));
        }
    }
}

void FillEmptyCell(picture::Picture& page, int left, int top) {
    for (int y = 0; y < kThumbnailHeight; ++y) {
        for (int x = 0; x < kThumbnailWidth; ++x) Put(page, left + x, top + y, kNothing);
    }
}

/// @param text  UTF-8; what is longer than a cell ends in an ellipsis.
void DrawLabel(picture::Picture& page, picture::TextFaces& faces, int left, int baseline, std::string_view text,
               COLORREF colour) {
    constexpr char32_t kEllipsis = 0x2026;
    std::vector<char32_t> codes = CodePoints(text);
    if (codes.size() > kLabelLength) {
        codes.resize(kLabelLength);
        codes.back() = kEllipsis;
    }
    LOGFONT font{};
    font.lfHeight = -kEm;
    font.lfWeight = 400;
    std::strcpy(font.lfFaceName, "DejaVu Sans Mono");
    const picture::Canvas canvas{page.width, page.height, page.rgba};
    for (const char32_t code : codes) {
        if (const picture::TextGlyph* glyph = faces.Get(font, tag_CharInf{}, code)) {
            const picture::Coverage& face = glyph->face;
            picture::LayColour(canvas, left + face.left, baseline - face.top, face.width, face.height, face.bytes,
                               colour);
        }
        left += kAdvance;
    }
}

std::string NumberText(const ExportedMessage& message) {
    const std::string number = FourDigits(message.number);
    return message.disk.empty() ? number : number + "  " + message.disk;
}

class ContactSheetExporter : public Exporter {
  public:
    bool WantsThumbnails() const override { return true; }

    std::vector<ExportedFile> Collect(const ExportedMessage& message) override {
        m_sheet.Add(message, m_faces);
        return m_sheet.Count() == ContactSheet::kCells ? TakePage() : std::vector<ExportedFile>{};
    }

    std::vector<ExportedFile> Finish() override {
        return m_sheet.Count() > 0 ? TakePage() : std::vector<ExportedFile>{};
    }

  private:
    std::vector<ExportedFile> TakePage() {
        std::string number = std::to_string(++m_pages);
        number.insert(0, 3 - std::min<std::size_t>(number.size(), 3), '0');
        const picture::Picture page = m_sheet.Page();
        m_sheet = ContactSheet();
        return {{"contact-sheet-" + number + ".png",
                 picture::EncodePng(page, {picture::PngChannels::kColour, picture::PixelShape::kSquare})}};
    }

    ContactSheet m_sheet;
    picture::TextFaces m_faces;
    int m_pages = 0;
};

}  // namespace

ContactSheet::ContactSheet() : m_page{kPageWidth, kPageHeight, {}} {
    m_page.rgba.resize(std::size_t{kPageWidth} * kPageHeight * 4);
    for (std::size_t n = 0; n < m_page.rgba.size(); n += 4) std::memcpy(&m_page.rgba[n], &kGround, 4);
}

void ContactSheet::Add(const ExportedMessage& message, picture::TextFaces& faces) {
    const int left = kMargin + m_count % kColumns * kCellWidth;
    const int top = kMargin + m_count / kColumns * kCellHeight;
    const int below = top + kThumbnailHeight;
    ++m_count;
    if (message.thumbnail) {
        // A PAL thumbnail is two lines lower than an NTSC one.
        LayThumbnail(m_page, left, below - message.thumbnail->height, *message.thumbnail);
    } else {
        FillEmptyCell(m_page, left, top);
        DrawLabel(m_page, faces, left + 88, top + kThumbnailHeight / 2, "no picture", kTitleColour);
    }
    DrawLabel(m_page, faces, left, below + 16, NumberText(message), kNumberColour);
    DrawLabel(m_page, faces, left, below + 32, message.title, kTitleColour);
}

picture::Picture ContactSheet::Page() const {
    picture::Picture page = m_page;
    page.height = kMargin + (m_count + kColumns - 1) / kColumns * kCellHeight;
    page.rgba.resize(static_cast<std::size_t>(page.width) * static_cast<std::size_t>(page.height) * 4);
    return page;
}

std::unique_ptr<Exporter> MakeContactSheetExporter(const ExportOptions& /*options*/) {
    return std::make_unique<ContactSheetExporter>();
}

}  // namespace zel::exporter
