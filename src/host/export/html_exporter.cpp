#include "host/export/html_exporter.h"

#include <algorithm>
#include <string_view>

#include "host/export/index_page.h"
#include "host/export/message_page.h"

namespace zel::exporter {

namespace {

constexpr std::string_view kExtension = ".html";

class HtmlExporter : public Exporter {
  public:
    std::vector<ExportedFile> Export(ExportSubject& message) const override {
        return {{message.Stem() + std::string(kExtension), MessagePage(message)}};
    }

    std::vector<ExportedFile> Finish(const Manifest& manifest) override {
        // A site has an index of its own.
        if (std::ranges::find(manifest.formats, "site") != manifest.formats.end()) return {};
        std::vector<IndexEntry> pages;
        for (const ManifestMessage& message : manifest.messages) {
            for (const ManifestFile& file : message.files) {
                const std::string_view name = file.name;
                if (!name.ends_with(kExtension) || name.ends_with("_template.html")) continue;
                pages.push_back({std::string(name.substr(0, name.size() - kExtension.size())), message.title});
            }
        }
        return {{"index.html", IndexPage(pages)}};
    }
};

}  // namespace

std::unique_ptr<Exporter> MakeHtmlExporter(const ExportOptions& /*options*/) {
    return std::make_unique<HtmlExporter>();
}

}  // namespace zel::exporter
