#include "support/module_fixture.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

#include "base/text.h"
#include "module/contract/dialog_ids.h"
#include "module/contract/stored_settings.h"
#include "module/contract/zel_trans_export.h"
#include "module/font/format/font_blocks.h"
#include "module/state/module_state.h"
#include "platform/framework/cwinapp.h"
#include "platform/system/drives.h"
#include "platform/system/files.h"
#include "samples/write_file.h"

namespace zel::module_test {

namespace {

ModuleTest* g_test = nullptr;

/// Every setting of the profile that the module stores is in the table of settings.
void ExpectListedSettings(seam::SettingsStore& settings) {
    for (const seam::ProfileEntry& entry : settings.ProfileEntries()) {
        const bool is_number = std::holds_alternative<int>(entry.value);
        EXPECT_TRUE(std::ranges::any_of(stored::kSettings,
                                        [&](const stored::Setting& setting) {
                                            return setting.section == entry.section && setting.entry == entry.entry &&
                                                   (setting.kind == stored::SettingKind::kNumber) == is_number;
                                        }))
            << entry.section << " " << entry.entry;
    }
}

bool IsForHost(UINT message) {
    return message == WM_PAINT || message > 1100;
}

}  // namespace

std::unique_ptr<script::HeadlessDesktop> (*make_desktop)() = [] { return std::make_unique<script::HeadlessDesktop>(); };

void FontSet::Clear() {
    for (tag_font_memory& slot : m_Slots) {
        ReleaseFontData(&slot);
        delete slot.font_copy;
        slot = tag_font_memory();
    }
}

LRESULT ModuleTest::Window::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (IsForHost(message)) return m_test.Record({m_target, message, wParam, lParam});
    return CWnd::WindowProc(message, wParam, lParam);
}

ModuleTest::ModuleTest() {
    for (const char* directory : {"MESSAGES", "MACHINE", "MAPS"}) std::filesystem::create_directory(Native(directory));
    system::MountDrive('D', m_disk.Path().string());
    seam::SetDesktop(&desktop);
    seam::SetSettingsStore(&settings);
    m_host.CreateHostWindow("host");
    m_main.CreateHostWindow("main");
    AfxGetThread()->m_pMainWnd = &m_main;
    AfxGetModuleState()->m_hCurrentResourceHandle = g_hZelResource;
    g_test = this;
    char map_dir[MAX_PATH] = "D:\\MAPS\\";
    Register_GLV_OnChar(&ModuleTest::OnChar, map_dir);
    CZelFont::m_bIgnoreErrors = 0;
    CZelFont::m_bCancelFontBrowse = false;
    CZelFont::m_iZelYOffset = 0;
    CZelFont::m_SFontBrowseDir.Empty();
    OpenDialog::M_sNextMessage.Empty();
}

ModuleTest::~ModuleTest() {
    for (tag_font_memory& font : m_fonts) {
        delete font.font_copy;
        font::ReleaseFontBlocks(font);
    }
    CZelFont::m_SFontBrowseDir.Empty();
    OpenDialog::M_sNextMessage.Empty();
    ExpectListedSettings(settings);
    g_test = nullptr;
    g_pfnOnChar = nullptr;
    AfxGetThread()->m_pMainWnd = nullptr;
    seam::SetSettingsStore(nullptr);
    seam::SetDesktop(nullptr);
    system::MountDrive('D', "");
}

void ModuleTest::WriteFile(std::string_view name, std::span<const std::uint8_t> bytes) const {
    samples::WriteWholeFile(Native(name), bytes);
}

void ModuleTest::WriteFile(std::string_view name, std::string_view text) const {
    samples::WriteWholeFile(Native(name), text);
}

void ModuleTest::WriteMessage(const files::MessageFile& message, const std::string& name) const {
    WriteFile("MESSAGES/" + name, files::WriteMessage(message));
}

void ModuleTest::WriteFont(unsigned number, const files::FontFile& font) const {
    WriteFile("MACHINE/" + base::NumberedName(static_cast<int>(number)), files::WriteFont(font));
}

void ModuleTest::Import(const std::string& name) {
    CString path(("D:\\MESSAGES\\" + name).c_str()), font_dir;
    CZelTransExport().ReadZelmaraMessage(&m_host, path, font_dir);
}

void ModuleTest::RunDialog(std::function<void(script::DialogDriver&, CZelTransDlg&)> user) {
    desktop.HandleDialog(kImportDialog, [&user](CDialog& dialog) {
        script::DialogDriver driver(dialog);
        driver.Type(ImportControl::kFontDirBox, "D:\\MACHINE");
        driver.Type(ImportControl::kMessageDirBox, "D:\\MESSAGES");
        user(driver, static_cast<CZelTransDlg&>(dialog));
    });
    CZelTransExport().ZelTranslation(&m_host);
}

void ModuleTest::OnChar(CWnd* host, tag_CharInf* info, unsigned character) {
    EXPECT_EQ(host, &g_test->m_host);
    g_test->chars.push_back({*info, *info->log_font, character});
    g_test->m_order.emplace_back("char");
}

LRESULT ModuleTest::Record(const WindowMessage& message) {
    messages.push_back(message);
    m_order.push_back(std::to_string(message.message));
    if (message.message == 1157) {
        for (const tag_font_memory& slot : reinterpret_cast<CZelFont*>(message.lParam)->m_Slots) {
            if (slot.font_header != nullptr) m_fonts.push_back(slot);
        }
    }
    if (on_message) on_message(message);
    return Answer(message);
}

std::string ModuleTest::Order() const {
    std::string order;
    for (std::size_t i = 0; i < m_order.size();) {
        std::size_t end = i + 1;
        while (end < m_order.size() && m_order[i] == "char" && m_order[end] == "char") ++end;
        order += (order.empty() ? "" : " ") + m_order[i] + (m_order[i] == "char" ? "*" + std::to_string(end - i) : "");
        i = end;
    }
    return order;
}

std::vector<std::string> ModuleTest::Boxes() const {
    std::vector<std::string> boxes;
    for (const script::HeadlessDesktop::Box& box : desktop.Boxes()) boxes.push_back(box.caption + "|" + box.text);
    return boxes;
}

std::vector<std::string> ModuleTest::NewBoxes() {
    std::vector<std::string> boxes = Boxes();
    boxes.erase(boxes.begin(), boxes.begin() + static_cast<std::ptrdiff_t>(m_boxes_seen));
    m_boxes_seen += boxes.size();
    return boxes;
}

std::string Joined(const std::vector<std::string>& texts) {
    std::string all;
    for (const std::string& text : texts) all += text;
    return all;
}

files::FontFile PlainFont(std::string_view name, std::string_view characters) {
    files::FontFile font;
    font.header.font_name = name;
    font.header.font_height = 40;
    for (const char c : characters) {
        font.AddRunCoded(static_cast<unsigned char>(c),
                         {files::ColourRun(1, 255, 4), files::EndOfLine(), files::ColourRun(2, 255, 3),
                          files::EndOfLine(), files::EndOfGlyph()},
                         10, 5);
    }
    return font;
}

files::StoredGlyph SolidGlyph(unsigned width, unsigned height, unsigned flags_word) {
    files::StoredGlyph glyph;
    glyph.width = width;
    glyph.height = height;
    glyph.flags_word = flags_word;
    for (unsigned i = 0; i < width * height; ++i) glyph.pixels.insert(glyph.pixels.end(), {255, 10, 20, 30});
    return glyph;
}

files::MessageFile MessageOf(std::vector<files::RowText> rows) {
    files::MessageFile message;
    message.header.font_numbers[0] = 1;
    message.rows = std::move(rows);
    return message;
}

}  // namespace zel::module_test
