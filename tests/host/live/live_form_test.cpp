#include "host/live/live_form.h"

#include <fstream>

#include "base/text.h"
#include "host/host_disk.h"
#include "host/live/form_drawing.h"
#include "host/live/form_json.h"
#include "host/live/template_page.h"
#include "host/picture/picture_composer.h"
#include "samples/disk/demo_disk.h"

namespace zel::test {

namespace {

using live::LiveForm;

class LiveForms : public HostDisk {
  protected:
    std::string FileOf(const std::string& name) const { return samples_test::ReadAll(Path(name)); }

    LiveForm FormOf(const std::string& name) const {
        const std::string message = FileOf("MESSAGES/" + name);
        return live::MakeLiveForm(std::span(reinterpret_cast<const std::uint8_t*>(message.data()), message.size()),
                                  [&](int number) -> std::shared_ptr<const std::string> {
                                      const std::string font = "MACHINE/" + base::NumberedName(number);
                                      if (!std::filesystem::exists(Path(font))) return nullptr;
                                      return std::make_shared<const std::string>(FileOf(font));
                                  });
    }

    /// The picture of an import; none for an RGBA file.
    std::optional<picture::Picture> Imported(const std::string& name) {
        picture::PictureComposer composer;
        host::HostObserver* const observers[] = {&composer};
        m_request.message = Path("MESSAGES/" + name);
        const run::ImportOutcome outcome = run::RunImport(m_request, observers);
        EXPECT_EQ(outcome.failure, "");
        if (!outcome.message || outcome.message->rgba) return std::nullopt;
        return composer.TakePicture();
    }
};

TEST_F(LiveForms, HaveThePicturesOfTheDemonstrationDisk) {
    samples::WriteDemonstrationDisk(m_scratch.Path());
    int compared = 0;
    for (int number = 1; number <= 21; ++number) {
        const std::string name = base::NumberedName(number);
        const std::optional<picture::Picture> picture = Imported(name);
        if (!picture) continue;
        const LiveForm form = FormOf(name);
        const nlohmann::ordered_json json = live::FormJson(form, {name});
        EXPECT_TRUE(FormDrawing(json).Draw().rgba == picture->rgba) << name;
        if (const char* dump = std::getenv("LIVE_DUMP")) {
            std::ofstream(std::string(dump) + "/" + name.substr(1) + ".json") << live::ScriptText(json);
            std::ofstream(std::string(dump) + "/" + name.substr(1) + ".html") << live::TemplatePage(form, {name});
        }
        ++compared;
    }
    EXPECT_GE(compared, 18);
}

}  // namespace

}  // namespace zel::test
