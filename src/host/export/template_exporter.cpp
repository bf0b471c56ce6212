#include "host/export/template_exporter.h"

#include "host/export/live_subject.h"
#include "host/live/template_page.h"

namespace zel::exporter {

namespace {

class TemplateExporter : public Exporter {
  public:
    explicit TemplateExporter(const ExportOptions& options) : m_options(options) {}

    std::vector<ExportedFile> Export(ExportSubject& message) const override {
        const char* const suffix = m_options.template_beside_html ? "_template.html" : ".html";
        const live::LiveForm form = LiveFormOf(message);
        return {{message.Stem() + suffix, live::TemplatePage(form, LiveLookOf(message, m_options))}};
    }
    bool WantsSources() const override { return true; }

  private:
    const ExportOptions m_options;
};

}  // namespace

std::unique_ptr<Exporter> MakeTemplateExporter(const ExportOptions& options) {
    return std::make_unique<TemplateExporter>(options);
}

}  // namespace zel::exporter
