#include "host/export/contact_sheet.h"

#include <string_view>

#include "host/export/file_names.h"
#include "host/export/thumbnail.h"
#include "host/export/utf8.h"
#include "host/picture/composite.h"
#include "host/picture/label.h"

namespace zel::exporter {

namespace {

constexpr int kColumns = 5;
constexpr int kRows = ContactSheet::kCells / kColumns;
/// Between the cells and around them.
constexpr int kMargin = 20;
/// Of the part of a cell below its thumbnail.
constexpr int kLabelHeight = 40;
constexpr int kCellWidth = kThumbnailWidth + kMargin;
constexpr int kCellHeight = kThumbnailHeight + kLabelHeight + kMargin;
constexpr int kPageWidth = kMargin + kColumns * kCellWidth;

constexpr picture::Rgba kGround{0x26, 0x2B, 0x33, 255};
constexpr picture::Rgba kDarkSquare{0x5D, 0x66, 0x71, 255};
constexpr picture::Rgba kLightSquare{0x6B, 0x74, 0x80, 255};
constexpr picture::Rgba kEmptyCell{0x36, 0x3C, 0x46, 255};
/// Side of a square of the checkerboard.
constexpr int kSquare = 8;

constexpr COLORREF kNumberColour = RGB(0xFF, 0xFF, 0xFF);
constexpr COLORREF kTitleColour = RGB(0xB4, 0xBC, 0xC8);
/// Baselines below the thumbnail.
constexpr int kNumberBaseline = 16;
constexpr int kTitleBaseline = 32;
/// Left edge of "no picture", which centres it.
constexpr int kNoPictureLeft = 88;
constexpr std::size_t kLabelLength = kThumbnailWidth / picture::kLabelAdvance;

constexpr int PageHeight(int rows) noexcept {
    return kMargin + rows * kCellHeight;
}

/// @param text  UTF-8; a text longer than a cell is cut and ends in an ellipsis.
std::vector<char32_t> LabelText(std::string_view text) {
    constexpr char32_t kEllipsis = 0x2026;
    std::vector<char32_t> codes = CodePoints(text);
    if (codes.size() > kLabelLength) {
        codes.resize(kLabelLength);
        codes.back() = kEllipsis;
    }
    return codes;
}

std::string NumberText(const ExportedMessage& message) {
    if (message.number < 0) return message.stem;
    const std::string number = FileNumber(message.number);
    return message.disk.empty() ? number : number + "  " + message.disk;
}

}  // namespace

ContactSheet::ContactSheet() : m_page(picture::ClearPicture(kPageWidth, PageHeight(kRows))) {
    picture::Fill(m_page.View(), kGround);
}

void ContactSheet::Add(const ExportedMessage& message, picture::TextRenderer& renderer) {
    const picture::PixelView page = m_page.View();
    const int left = kMargin + m_count % kColumns * kCellWidth;
    const int top = kMargin + m_count / kColumns * kCellHeight;
    const int bottom = top + kThumbnailHeight;
    const auto label = [&](int x, int baseline, std::string_view text, COLORREF colour) {
        picture::DrawLabel(page, renderer, x, baseline, LabelText(text), colour);
    };
    ++m_count;
    if (message.thumbnail) {
        // A PAL thumbnail is two pixels lower than an NTSC one.
        const picture::ConstPixelView thumbnail = message.thumbnail->View();
        const int thumbnail_top = bottom - thumbnail.Height();
        picture::FillCheckerboard(page.Part({left, thumbnail_top, left + thumbnail.Width(), bottom}), kSquare,
                                  kDarkSquare, kLightSquare);
        picture::BlendPixels(page, left, thumbnail_top, thumbnail);
    } else {
        picture::Fill(page.Part({left, top, left + kThumbnailWidth, bottom}), kEmptyCell);
        label(left + kNoPictureLeft, top + kThumbnailHeight / 2, "no picture", kTitleColour);
    }
    label(left, bottom + kNumberBaseline, NumberText(message), kNumberColour);
    label(left, bottom + kTitleBaseline, message.title, kTitleColour);
}

picture::Picture ContactSheet::Page() const {
    picture::Picture page = m_page;
    page.height = PageHeight((m_count + kColumns - 1) / kColumns);
    page.rgba.resize(picture::PixelBytes(page.width, page.height));
    return page;
}

}  // namespace zel::exporter
