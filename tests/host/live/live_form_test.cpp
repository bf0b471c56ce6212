#include "host/live/live_form.h"

#include "base/text.h"
#include "host/host_disk.h"
#include "host/live/form_drawing.h"
#include "host/live/form_json.h"
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
        ++compared;
    }
    EXPECT_GE(compared, 18);
}

// Rows that run in circles, lead beyond their characters or to a font that is missing, and blended and stored glyphs.
TEST_F(LiveForms, HaveThePicturesOfDamagedMessages) {
    files::FontFile font = BlockFont();
    font.AddRunCoded('D',
                     {files::Stay(2, 200), files::BlendedRun(1, 100, 6), files::ColourRun(40, 90, 3),
                      files::EndOfLine(), files::EndOfGlyph()},
                     3, 4);
    WriteFont(font, 1);
    WriteFont(StoredFont(), 2);
    const auto change = [this](const auto& edit) {
        files::MessageFile message = OneRow("ADBA");
        message.header.font_numbers[3] = 2;
        message.rows[0].cells[3].char_font = 3;
        edit(message.rows[0]);
        return message;
    };
    const std::pair<const char*, files::MessageFile> cases[] = {
        {"good", change([](files::RowText&) {})},
        {"circle", change([](files::RowText& row) { row.cells[1].next_char = 0; })},
        {"beyond", change([](files::RowText& row) { row.cells[1].next_char = 9; })},
        {"ended", change([](files::RowText& row) { row.cells[1].next_char = 63; })},
        {"no_start", change([](files::RowText& row) { row.first_char = 63; })},
        {"missing_font", change([](files::RowText& row) { row.cells[2].char_font = 5; })},
        {"no_slot", change([](files::RowText& row) { row.cells[2].char_font = 40; })},
        {"large_code", change([](files::RowText& row) { row.cells[2].char_code = 256 + 'D'; })},
        {"high", change([](files::RowText& row) { row.cells[2].char_y = 0, row.row_top = 900; })},
        {"cut", change([](files::RowText& row) { row.char_count = 7; })},
    };
    for (const auto& [name, message] : cases) {
        WriteMessage(message);
        const std::optional<picture::Picture> picture = Imported(".0001");
        ASSERT_TRUE(picture) << name;
        EXPECT_TRUE(FormDrawing(live::FormJson(FormOf(".0001"), {})).Draw().rgba == picture->rgba) << name;
    }
}

TEST_F(LiveForms, OfTooManyPixelsAreRefused) {
    files::FontFile font = BlockFont();
    files::RunCodes codes;
    for (int run = 0; run < 250; ++run) codes.push_back(files::ColourRun(1, 255, 32));
    for (int line = 0; line < 499; ++line) codes.push_back(files::EndOfLine());
    codes.push_back(files::EndOfGlyph());
    for (const unsigned code : {65U, 66U, 67U, 68U}) font.AddRunCoded(code, codes, 3, 4);
    WriteFont(font);
    WriteMessage(OneRow("ABC"));
    EXPECT_NO_THROW(FormOf(".0001"));
    WriteMessage(OneRow("ABCD"));
    EXPECT_THROW(FormOf(".0001"), std::runtime_error);
}

}  // namespace

}  // namespace zel::test
