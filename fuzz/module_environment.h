#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "fuzz_target.h"
#include "module/contract/zel_font.h"
#include "module/contract/zel_trans_dlg.h"
#include "platform/script/memory_settings_store.h"
#include "platform/seam/desktop.h"

namespace zel::fuzz {

/// A user who answers OK or Yes and chooses the file D:\.0001. Records nothing.
class SilentDesktop : public seam::Desktop {
  public:
    int ShowMessageBox(HWND owner, const std::string& text, const std::string& caption, UINT style) override;
    void RunModal(CDialog& dialog) override;
    int RunFileDialog(CFileDialog& dialog, std::string& path) override;
    bool IsKeyDown(int) override { return false; }
    void SetWaitCursor(bool) override {}
    bool RunCommand(const std::string&) override { return false; }
};

/// The environment in which the module reads files: a silent desktop, settings in memory, and drive D:, a directory in
/// memory.
class ModuleEnvironment {
  public:
    ModuleEnvironment();
    ~ModuleEnvironment();
    ModuleEnvironment(const ModuleEnvironment&) = delete;
    ModuleEnvironment& operator=(const ModuleEnvironment&) = delete;

    /// Writes a file to the drive; replaces one of the same name.
    void Put(std::string_view name, Input bytes) const;
    void PutText(std::string_view name, std::string_view text) const {
        Put(name, {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
    }
    const std::filesystem::path& Directory() const noexcept { return m_directory; }

    /// Loads D:\.<number> into a slot. @return whether the slot was filled.
    static bool ReadFont(CZelFont& fonts, int number, int slot);
    static void Release(tag_font_memory& slot);

  private:
    SilentDesktop m_desktop;
    script::MemorySettingsStore m_settings;
    std::filesystem::path m_directory;
};

/// The text of a file with these bytes: up to the end-of-text character, with CR LF as LF.
std::string AsText(Input bytes);

}  // namespace zel::fuzz
