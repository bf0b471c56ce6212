#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "module/contract/records/char_inf.h"
#include "module/contract/zel_font.h"
#include "module/contract/zel_trans_dlg.h"
#include "platform/script/headless_desktop.h"
#include "platform/script/memory_settings_store.h"
#include "samples/font_writer.h"
#include "samples/message_writer.h"

namespace zel::module_test {

/// A font set that gives its slots back when it goes.
class FontSet : public CZelFont {
  public:
    FontSet() = default;
    ~FontSet() { Clear(); }
    void Clear();
};

/// The main dialog with its protected members open.
class OpenDialog : public CZelTransDlg {
  public:
    using CZelTransDlg::CZelTransDlg;
    using CZelTransDlg::M_sNextMessage;
    using CZelTransDlg::ReportError;
};

/// A call of the host's callback, with what dies when it returns.
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

/// Makes the desktop of every test; a program that has a screen sets another maker before the tests run.
extern std::unique_ptr<script::HeadlessDesktop> (*make_desktop)();

/// A fresh module on a fresh machine: no settings, nobody at the screen, and a host that only records. The scratch disk
/// is drive D: with MESSAGES, MACHINE and MAPS, and MAPS is registered for the name lists.
class ModuleTest : public testing::Test {
  protected:
    ModuleTest();
    ~ModuleTest() override;

    /// This system's path of a name on the disk.
    std::filesystem::path Native(std::string_view name) const { return m_disk / name; }
    void WriteFile(std::string_view name, std::span<const std::uint8_t> bytes) const;
    void WriteFile(std::string_view name, std::string_view text) const;
    void WriteMessage(const samples::MessageFile& message, const std::string& name = ".0001") const;
    void WriteFont(unsigned number, const samples::FontFile& font) const;

    /// Imports D:\MESSAGES\<name> without a dialog.
    void Import(const std::string& name = ".0001");
    /// Runs the main dialog with a user who does `user`; the boxes name D:\MACHINE and D:\MESSAGES.
    void RunDialog(std::function<void(script::DialogDriver&, CZelTransDlg&)> user);

    /// Window messages and characters in order, such as "1157 char*3 1181".
    std::string Order() const;
    /// What the user saw: "caption|text" for each box.
    std::vector<std::string> Boxes() const;
    /// What the user saw since the last call.
    std::vector<std::string> NewBoxes();

  private:
    const std::unique_ptr<script::HeadlessDesktop> m_desktop = make_desktop();

  protected:
    script::HeadlessDesktop& desktop = *m_desktop;
    script::MemorySettingsStore settings;
    std::vector<WindowMessage> messages;
    std::vector<CharCall> chars;
    std::function<void(const WindowMessage&)> on_message;  // called once the message is recorded
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
    LRESULT Hear(const WindowMessage& message);

    std::filesystem::path m_disk;
    Window m_host{*this, 'h'};
    Window m_main{*this, 'm'};
    std::vector<std::string> m_order;
    std::vector<tag_font_memory> m_fonts;  // what the host was given, released at the end
    std::size_t m_boxes_seen = 0;
};

/// A plain font of 40 lines named `name`, with run-coded glyphs 4 pixels wide and two lines high for the codes of
/// `characters`. top 10, metric 5.
samples::FontFile PlainFont(std::string_view name = "Plain", std::string_view characters = "ABC");

/// A stored glyph of one colour.
samples::StoredGlyph SolidGlyph(unsigned width, unsigned height, unsigned flags_word = 0);

/// A message of these rows, with font 1 in slot 0.
samples::MessageFile MessageOf(std::vector<samples::RowText> rows);

}  // namespace zel::module_test
