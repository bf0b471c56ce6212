#include "host/export/contact_sheet_exporter.h"

#include <algorithm>

#include "host/export/contact_sheet.h"
#include "host/picture/png_writer.h"

namespace zel::exporter {

namespace {

class ContactSheetExporter : public Exporter {
  public:
    explicit ContactSheetExporter(const ExportOptions& options) : m_effort(options.effort) {}

    bool WantsThumbnails() const override { return true; }

    std::vector<ExportedFile> Collect(const ExportedMessage& message) override {
        m_sheet.Add(message, m_renderer);
        return m_sheet.Count() == ContactSheet::kCells ? TakePage() : std::vector<ExportedFile>{};
    }

    std::vector<ExportedFile> Finish(const Manifest& /*manifest*/) override {
        return m_sheet.Count() > 0 ? TakePage() : std::vector<ExportedFile>{};
    }

  private:
    std::vector<ExportedFile> TakePage() {
        std::string number = std::to_string(++m_pages);
        number.insert(0, 3 - std::min<std::size_t>(number.size(), 3), '0');
        const picture::Picture page = m_sheet.Page();
        m_sheet = ContactSheet();
        return {{"contact-sheet-" + number + ".png",
                 picture::EncodePng(page, {picture::PngChannels::kColour, picture::PixelShape::kSquare, m_effort})}};
    }

    const picture::PngEffort m_effort;
    ContactSheet m_sheet;
    picture::TextRenderer m_renderer;
    int m_pages = 0;
};

}  // namespace

std::unique_ptr<Exporter> MakeContactSheetExporter(const ExportOptions& options) {
    return std::make_unique<ContactSheetExporter>(options);
}

}  // namespace zel::exporter
