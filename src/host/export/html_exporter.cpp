#include <algorithm>

#include "host/export/export_formats.h"
#include "host/export/html_page.h"

namespace zel::exporter {

namespace {

class HtmlExporter : public Exporter {
  public:
    std::vector<ExportedFile> Export(ExportSubject& message) const override {
        return {{message.Stem() + ".html", MessagePage(message)}};
    }

    std::vector<ExportedFile> Collect(const ExportedMessage& message) override {
        const auto& files = message.files;
        if (std::find(files.begin(), files.end(), message.stem + ".html") != files.end()) {
            m_messages.emplace_back(message.stem, message.title);
        }
        return {};
    }

    std::vector<ExportedFile> Finish() override { return {{"index.html", IndexPage(m_messages)}}; }

  private:
    std::vector<std::pair<std::string, std::string>> m_messages;  ///< stems and titles.
};

}  // namespace

std::unique_ptr<Exporter> MakeHtmlExporter(const ExportOptions& /*options*/) {
    return std::make_unique<HtmlExporter>();
}

}  // namespace zel::exporter
