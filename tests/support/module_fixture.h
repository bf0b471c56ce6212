#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "files/font_writer.h"
#include "files/message_writer.h"
#include "module/contract/records/char_inf.h"
#include "module/contract/zel_font.h"
#include "module/contract/zel_trans_dlg.h"
#include "platform/script/headless_desktop.h"
#include "platform/script/memory_settings_store.h"
#include "samples/scratch_directory.h"

namespace zel::module_test {

/// A font set that releases its slots, as a host does.
class FontSet : public CZelFont {
  public:
    FontSet() = default;
    ~FontSet() { Clear(); }
    void Clear();
};

/// The import dialog with some protected members made public.
class OpenDialog : public CZelTransDlg {
  public:
    using CZelTransDlg::CZelTransDlg;
    using CZelTransDlg::M_sNextMessage;
    using CZelTransDlg::ReportError;
};

/// A call of the host's callback. The LOGFONT is copied, as it is only valid during the call.
struct CharCall {
    tag_CharInf info;
    LOGFONT log_font;
    unsigned character;
};

struct WindowMessage {
    char target;  // 'h' host, 'm' main, 'e' export
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
};

/// Creates the desktop of every test. A program with a screen sets another function before the tests run.
extern std::unique_ptr<script::HeadlessDesktop> (*make_desktop)();

/// The module in its initial state: no settings, no user, and a host that only records. Drive D: is an empty disk with
/// the directories MESSAGES, MACHINE and MAPS. MAPS is registered for the name lists.
class ModuleTest : public testing::Test {
  protected:
    ModuleTest();
    ~ModuleTest() override;

    /// This system's path of a name on the disk.
    std::filesystem::path Native(std::string_view name) const { return m_disk.Path() / name; }
    void WriteFile(std::string_view name, std::span<const std::uint8_t> bytes) const;
    void WriteFile(std::string_view name, std::string_view text) const;
    void WriteMessage(const files::MessageFile& message, const std::string& name = ".0001") const;
    void WriteFont(unsigned number, const files::FontFile& font) const;

    /// Imports D:\MESSAGES\<name> without a dialog.
    void Import(const std::string& name = ".0001");
    /// Runs the import dialog, with D:\MACHINE and D:\MESSAGES in its boxes; `user` operates it.
    void RunDialog(std::function<void(script::DialogDriver&, CZelTransDlg&)> user);

    /// Window messages and characters in order, such as "1157 char*3 1181".
    std::string Order() const;
    /// "caption|text" for each message box.
    std::vector<std::string> Boxes() const;
    /// The boxes since the last call.
    std::vector<std::string> NewBoxes();

  private:
    const std::unique_ptr<script::HeadlessDesktop> m_desktop = make_desktop();

  protected:
    script::HeadlessDesktop& desktop = *m_desktop;
    script::MemorySettingsStore settings;
    std::vector<WindowMessage> messages;
    std::vector<CharCall> chars;
    /// Called after a message is recorded.
    std::function<void(const WindowMessage&)> on_message;
    virtual LRESULT Answer(const WindowMessage& /*sent*/) { return 0; }
    CWnd& Host() { return m_host; }

  private:
    class Window : public CWnd {
      public:
        Window(ModuleTest& test, char target) : m_test(test), m_target(target) {}

      protected:
        LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

      private:
        ModuleTest& m_test;
        const char m_target;
    };
    static void OnChar(CWnd* host, tag_CharInf* info, unsigned character);
    LRESULT Record(const WindowMessage& message);

    const samples_test::ScratchDirectory m_disk;
    Window m_host{*this, 'h'};
    Window m_main{*this, 'm'};
    std::vector<std::string> m_order;
    // What the host received, released at the end.
    std::vector<tag_font_memory> m_fonts;
    std::size_t m_boxes_seen = 0;
};

/// The texts in one, in their order.
std::string Joined(const std::vector<std::string>& texts);

/// A plain font, 40 pixels high, named `name`. The codes of `characters` have run-coded glyphs, 4 pixels wide and 2
/// high, with top 10 and metric 5.
files::FontFile PlainFont(std::string_view name = "Plain", std::string_view characters = "ABC");

/// A stored glyph of one colour.
files::StoredGlyph SolidGlyph(unsigned width, unsigned height, unsigned flags_word = 0);

/// A message of these rows, with font 1 in slot 0.
files::MessageFile MessageOf(std::vector<files::RowText> rows);

}  // namespace zel::module_test
