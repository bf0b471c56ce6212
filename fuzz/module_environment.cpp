#include "module_environment.h"

#include <algorithm>
#include <cstdlib>

#include <fcntl.h>
#include <unistd.h>

#include "module/font/format/font_blocks.h"
#include "module/state/module_state.h"
#include "platform/framework/cdialog.h"
#include "platform/system/drives.h"
#include "platform/system/files.h"

namespace zel::fuzz {

int SilentDesktop::ShowMessageBox(HWND, const std::string&, const std::string&, UINT style) {
    const UINT buttons = style & 0xF;
    return buttons == MB_YESNOCANCEL || buttons == MB_YESNO ? IDYES : IDOK;
}

int SilentDesktop::RunFileDialog(CFileDialog&, std::string& path) {
    path = "D:\\.0001";
    return IDOK;
}

void SilentDesktop::RunModal(CDialog& dialog) {
    dialog.EndDialog(IDCANCEL);
}

ModuleEnvironment::ModuleEnvironment() {
    std::error_code error;
    const std::filesystem::path memory("/dev/shm");
    std::string name =
        ((std::filesystem::is_directory(memory, error) ? memory : std::filesystem::temp_directory_path()) /
         "zel-fuzz-XXXXXX")
            .string();
    Require(mkdtemp(name.data()) != nullptr, "a scratch directory");
    m_directory = name;
    system::MountDrive('D', name);
    seam::SetDesktop(&m_desktop);
    seam::SetSettingsStore(&m_settings);
    char map_dir[MAX_PATH] = "D:\\";
    Register_GLV_OnChar(nullptr, map_dir);
}

ModuleEnvironment::~ModuleEnvironment() {
    seam::SetSettingsStore(nullptr);
    seam::SetDesktop(nullptr);
    std::error_code ignored;
    std::filesystem::remove_all(m_directory, ignored);
}

void ModuleEnvironment::Put(std::string_view name, Input bytes) const {
    const int file = ::open((m_directory / name).c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    Require(file >= 0 && ::write(file, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()),
            "a file on the scratch directory");
    ::close(file);
}

bool ModuleEnvironment::ReadFont(CZelFont& fonts, int number, int slot) {
    CString path("D:\\");
    if (fonts.ReadFont(path, number, slot, true) == 1) return true;
    CZelFont::ReleaseUnfinishedSlot(&fonts.m_Slots[slot]);
    return false;
}

void ModuleEnvironment::Release(tag_font_memory& slot) {
    delete slot.font_copy;
    font::ReleaseFontBlocks(slot);
    slot = tag_font_memory();
}

std::string AsText(Input bytes) {
    constexpr char kEndOfText = 26;
    std::string text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    text.resize(std::min(text.size(), text.find(kEndOfText)));
    for (std::size_t at = 0; (at = text.find("\r\n", at)) != std::string::npos;) text.erase(at, 1);
    return text;
}

}  // namespace zel::fuzz
