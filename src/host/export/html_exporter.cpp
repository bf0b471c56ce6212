#include "host/export/html_exporter.h"

#include <algorithm>

#include "host/export/index_page.h"
#include "host/export/message_page.h"

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
            m_messages.push_back({message.stem, message.title});
        }
        return {};
    }

    std::vector<ExportedFile> Finish() override { return {{"index.html", IndexPage(m_messages)}}; }

  private:
    std::vector<IndexEntry> m_messages;
};

}  // namespace

std::unique_ptr<Exporter> MakeHtmlExporter(const ExportOptions& /*options*/) {
    return std::make_unique<HtmlExporter>();
}

}  // namespace zel::exporter
