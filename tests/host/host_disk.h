#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "base/text.h"
#include "files/font_writer.h"
#include "files/message_writer.h"
#include "host/run/import_run.h"
#include "platform/script/memory_settings_store.h"
#include "samples/name_lists.h"
#include "samples/scratch_directory.h"
#include "samples/write_file.h"

namespace zel::test {

/// A disk with MESSAGES, MACHINE and empty name lists, settings of its own, and a request to import its message 1.
class HostDisk : public testing::Test {
  protected:
    HostDisk() : m_previous(seam::SetSettingsStore(&m_settings)) {
        std::filesystem::create_directories(m_scratch.Path() / "MESSAGES");
        std::filesystem::create_directories(m_scratch.Path() / "MACHINE");
        samples::WriteWholeFile(Path(std::string(samples::kBitstreamListName)), samples::BitstreamList().Written());
        samples::WriteWholeFile(Path(std::string(samples::kTypefaceListName)), samples::TypefaceList().Written());
        m_request.message = Path("MESSAGES/.0001");
        m_request.host.maps = m_scratch.Path().string();
    }
    ~HostDisk() override { seam::SetSettingsStore(m_previous); }

    std::string Path(const std::string& name) const { return (m_scratch.Path() / name).string(); }

    void WriteMessage(const files::MessageFile& message, const std::string& name = ".0001") const {
        samples::WriteWholeFile(Path("MESSAGES/" + name), files::WriteMessage(message));
    }
    void WriteFont(const files::FontFile& font, unsigned number = 1) const {
        samples::WriteWholeFile(Path("MACHINE/" + base::NumberedName(static_cast<int>(number))),
                                files::WriteFont(font));
    }

    run::ImportOutcome Import(std::vector<host::HostObserver*> observers = {}) {
        return run::RunImport(m_request, observers);
    }

    /// A font whose characters A to C are blocks of the face colour on the baseline: 4 x 2 pixels, with a blank line
    /// above and below.
    static files::FontFile BlockFont() {
        files::FontFile font;
        font.header.font_name = "Block";
        font.header.font_id_text = "0001";
        font.header.font_height = 20;
        const files::RunCodes codes{files::ColourRun(1, 255, 4), files::EndOfLine(), files::ColourRun(1, 255, 4),
                                    files::EndOfLine(), files::EndOfGlyph()};
        for (const unsigned code : {65U, 66U, 67U}) font.AddRunCoded(code, codes, 3, 4);
        return font;
    }

    /// A font whose character A is a stored glyph of 2 x 2 opaque red pixels.
    static files::FontFile StoredFont() {
        files::FontFile font;
        font.header.font_name = "Stored";
        font.header.font_height = 20;
        files::Bytes pixels;
        for (int pixel = 0; pixel < 4; ++pixel) pixels.insert(pixels.end(), {255, 0, 0, 255});
        font.AddStored('A', {.width = 2, .height = 2, .pixels = pixels}, 2, 2);
        return font;
    }

    /// Writes StoredFont as font 1. The glyph's record is cut short by `missing` bytes.
    void WriteStoredFont(std::size_t missing) const {
        const files::Bytes bytes = files::WriteFont(StoredFont());
        samples::WriteWholeFile(Path("MACHINE/.0001"), std::span(bytes).first(bytes.size() - missing));
    }

    /// An NTSC message with `text` in font 1 as its only row, 100 pixels below the top of the picture.
    static files::MessageFile OneRow(std::string_view text) {
        files::MessageFile message;
        message.header.font_numbers[0] = 1;
        files::CharCell like;
        like.char_y = 10;
        like.colour_set = 2;
        message.rows.push_back(files::RowFromText(120, text, 50, 10, like));
        message.rows.back().row_bottom = 20;
        return message;
    }

    samples_test::ScratchDirectory m_scratch;
    script::MemorySettingsStore m_settings;
    seam::SettingsStore* m_previous;
    run::ImportRequest m_request;
};

/// Records the events as text: "1157 char 1181".
class OrderRecorder : public host::HostObserver {
  public:
    void OnBox(const script::HeadlessDesktop::Box& box) override { Add("box:" + box.caption); }
    void OnSend(const host::SentMessage& sent) override { Add(std::to_string(MessageOf(sent.event))); }
    void OnChar(const host::SentCharacter& /*character*/) override { Add("char"); }
    void OnMessage(const document::MessageRecord& /*message*/) override { Add("message"); }
    void OnException(const std::string& /*text*/) override { Add("exception"); }
    void OnEnd(const host::RunEnd& /*end*/) override { Add("end"); }

    std::string order;

  private:
    void Add(const std::string& event) { order += order.empty() ? event : " " + event; }
};

}  // namespace zel::test
