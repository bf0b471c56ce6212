#include <cstdio>
#include <cstring>
#include <memory>

#include "module/contract/records/effpar.h"
#include "module/contract/stored_settings.h"
#include "module/contract/zel_font.h"
#include "module/contract/zel_message.h"
#include "module/font/format/font_loader.h"
#include "module/font/format/samples.h"
#include "module/message/cfile_bytes.h"
#include "module/state/recent_entry.h"
#include "platform/framework/cfile.h"
#include "platform/framework/cfiledialog.h"
#include "platform/framework/cwinapp.h"
#include "platform/framework/exceptions.h"
#include "platform/framework/message_box.h"
#include "platform/system/c_runtime.h"

using namespace zel;

namespace {

constexpr int kNotLoaded = 0;
constexpr int kLoaded = 1;
constexpr int kCancelled = -1;

void EndInBackslash(CString& path) {
    if (!path.IsEmpty() && path[path.GetLength() - 1] != '\\') path += "\\";
}

// "D:\f\.0012": the name of a font file consists of a dot and the number.
CString LongName(const CString& directory, int number) {
    CString name;
    name.Format("%s.%04d", static_cast<const char*>(directory), number);
    return name;
}

CString ShortName(const CString& directory, int number) {
    CString name;
    name.Format("%s.%d", static_cast<const char*>(directory), number);
    return name;
}

bool Open(CFile& file, CString& opened, const CString& name) {
    if (!file.Open(name, CFile::modeRead | CFile::shareDenyNone)) return false;
    opened = name;
    return true;
}

}  // namespace

// Tries the font directory, the newest directory of the stored list, and the directory that the user last browsed to.
bool CZelFont::FindFontFile(CFile& file, CString& name, CString& path, int font_number) {
    EndInBackslash(path);
    if (Open(file, name, LongName(path, font_number)) || Open(file, name, ShortName(path, font_number))) return true;
    char stored[MAX_PATH];
    if (state::ReadRecentEntry(stored::kFontDirList, 0, stored)) {
        CString directory(stored);
        EndInBackslash(directory);
        if (Open(file, name, LongName(directory, font_number)) || Open(file, name, ShortName(directory, font_number)))
            return true;
    }
    if (m_SFontBrowseDir.IsEmpty()) return false;
    CString directory(m_SFontBrowseDir);
    EndInBackslash(directory);
    return Open(file, name, LongName(directory, font_number));
}

/// @param wanted  the name in the prompt.
/// @return kLoaded with the file open, else the result of ReadFont.
int CZelFont::BrowseForFontFile(CFile& file, CString& name, CString& path, int font_number, const CString& wanted) {
    constexpr UINT kTopmost = 0x40000;
    CString text;
    text.Format("Couldn't Find Zelmara! Font File: %s\nWould you like to browse for this file?",
                static_cast<const char*>(wanted));
    const int answer =
        MessageBoxA(nullptr, text, "Couldn't Find Font File ", MB_YESNOCANCEL | MB_ICONEXCLAMATION | kTopmost);
    if (answer == IDCANCEL) {
        m_bCancelFontBrowse = true;
        return kCancelled;
    }
    if (answer != IDYES) return kNotLoaded;

    char directory[crt::_MAX_DIR] = {}, initial_name[MAX_PATH] = {};
    static_assert(sizeof initial_name >= crt::_MAX_EXT);
    crt::_splitpath(path, nullptr, directory, nullptr, initial_name);
    if (initial_name[0] == '\0') std::snprintf(initial_name, sizeof initial_name, ".%04d", font_number);
    CWinThread* const thread = AfxGetThread();
    CFileDialog dialog(TRUE, nullptr, nullptr, 0, nullptr, thread != nullptr ? thread->m_pMainWnd : nullptr);
    dialog.m_ofn.lpstrInitialDir = directory;
    dialog.m_ofn.lpstrFile = initial_name;
    dialog.m_ofn.nMaxFile = sizeof initial_name;
    dialog.m_ofn.lpstrTitle = "Browse for Font File";
    dialog.m_ofn.lpstrFilter = ".*";
    if (dialog.DoModal() != IDOK || !Open(file, name, dialog.GetPathName())) return kNotLoaded;
    const int last_backslash = name.ReverseFind('\\');
    if (!dialog.GetFileTitle().IsEmpty() && last_backslash >= 0) {
        path = name.Left(last_backslash);
        m_SFontBrowseDir = path;
    }
    return kLoaded;
}

int CZelFont::ReadFont(CString& path, int font_number, int slot, bool make_description) {
    if (font_number == -1) return kNotLoaded;
    CFile file;
    CString name;
    if (!FindFontFile(file, name, path, font_number)) {
        if (m_bIgnoreErrors != 0 || m_bCancelFontBrowse) return kNotLoaded;
        const int browsed = BrowseForFontFile(file, name, path, font_number, LongName(path, font_number));
        if (browsed != kLoaded) return browsed;
    }
    return LoadFontFile(file, name, path, slot, make_description);
}

namespace {

constexpr char kSampleRowName[] = "Zelmara Font File";

/// How an outcome is reported.
struct FontReport {
    enum Kind : std::uint8_t { kSilent, kBox, kBoxUnlessSkipped, kFileError } kind;
    /// Text of a box, with %s for the name of the file; null without a box.
    const char* text;
    /// Caption of a box; null for the usual one.
    const char* caption;
    /// The slot's blocks are freed. Otherwise they remain for the caller, who clears the slot.
    bool releases;
};

// In the order of FontOutcome.
constexpr FontReport kReports[] = {
    {FontReport::kSilent, nullptr, nullptr, false},
    {FontReport::kBoxUnlessSkipped, "Couldn't Read Zelmara! Font File's Psos File Header: %s", nullptr, false},
    {FontReport::kBoxUnlessSkipped, "Not an Zelmara! Font File: %s", "Not an Zelmara Font File Type ", false},
    {FontReport::kBoxUnlessSkipped, "Couldn't Read Zelmara! Font File's Font Header: %s", nullptr, false},
    {FontReport::kBox, "Out Of Memory", "Couldn't Allocate Memory to Read Zelmara Font", false},
    {FontReport::kBox, "Couldn't Read Zelmara! Font File's Character Directory: %s", nullptr, false},
    {FontReport::kBox, "Couldn't Read Zelmara! Font File's Encoding Data: %s", nullptr, false},
    {FontReport::kFileError, nullptr, nullptr, true},
    {FontReport::kFileError, nullptr, nullptr, true},
    {FontReport::kFileError, nullptr, nullptr, true},
    {FontReport::kFileError, nullptr, nullptr, true},
    {FontReport::kSilent, nullptr, nullptr, true},
    {FontReport::kSilent, nullptr, nullptr, true},
};
static_assert(std::size(kReports) == static_cast<std::size_t>(font::FontOutcome::kTooLarge) + 1);
static_assert(kReports[static_cast<int>(font::FontOutcome::kShortEncoding)].kind == FontReport::kBox &&
              kReports[static_cast<int>(font::FontOutcome::kShortBlock)].kind == FontReport::kFileError);

// The name in a file error. For the blocks directly after the character directory it is the font directory, as in the
// legacy importer.
const char* ErrorName(font::FontOutcome outcome, const char* name, const char* path) {
    switch (outcome) {
        case font::FontOutcome::kShortLeadingEncoding:
        case font::FontOutcome::kShortLeadingSample:
            return path;
        case font::FontOutcome::kShortSampleRow:
            return kSampleRowName;
        default:
            return name;
    }
}

void Report(font::FontOutcome outcome, const char* name, const char* path) {
    const FontReport& report = kReports[static_cast<int>(outcome)];
    switch (report.kind) {
        case FontReport::kSilent:
            return;
        case FontReport::kFileError:
            CFileException(CFileException::genericException, -1, ErrorName(outcome, name, path)).ReportError(0, 0);
            return;
        case FontReport::kBoxUnlessSkipped:
            if (CZelFont::m_bIgnoreErrors != 0) return;
            break;
        case FontReport::kBox:
            break;
    }
    CString text;
    text.Format(report.text, name);
    MessageBoxA(nullptr, text, report.caption != nullptr ? report.caption : "Couldn't Read the Zelmara! Font File",
                MB_OK | MB_ICONEXCLAMATION);
}

// Fills log_font and effect_params of a font that is read without a message, through an empty message with the palette
// of the font set.
void DescribeAlone(CZelFont& fonts, tag_font_memory& slot, int slot_index) {
    tag_palete palette;
    static_assert(sizeof palette == sizeof fonts.m_Palette);
    std::memcpy(&palette, fonts.m_Palette, sizeof palette);
    CZelMessage empty(nullptr, nullptr, nullptr, nullptr);
    empty.MakeFontDescription(&slot, slot.log_font, slot_index);
    empty.m_pPalette = &palette;
    empty.ApplySlotEffects(&slot, slot.effect_params);
    empty.m_pPalette = nullptr;  // the message would free it
}

}  // namespace

int CZelFont::LoadFontFile(CFile& file, const CString& name, const CString& path, int slot_index,
                           bool make_description) {
    tag_font_memory& slot = m_Slots[slot_index];
    slot = tag_font_memory();  // the blocks of an earlier font belong to the holder of its font_copy
    font::FontOutcome outcome = font::FontOutcome::kNoMemory;
    font::LoadedFont loaded;
    try {
        message::CFileBytes file_bytes(file);
        message::ByteSource source(file_bytes);
        outcome = font::LoadFont(source, loaded);
        slot = loaded.Release();
        std::snprintf(slot.file_name, sizeof slot.file_name, "%s", static_cast<const char*>(name));
        if (outcome == font::FontOutcome::kRead) {
            slot.log_font = new LOGFONT();
            slot.effect_params = new EFFPAR();
            slot.font_copy = new tag_font_memory();
        }
    } catch (const std::bad_alloc&) {
        outcome = font::FontOutcome::kNoMemory;
    }
    file.Close();
    if (loaded.tessor) MessageBoxA(nullptr, "Tessor Encoded Data!", "ZELMARA Import", MB_OK);
    if (outcome != font::FontOutcome::kRead) {
        if (kReports[static_cast<int>(outcome)].releases) ReleaseFontData(&slot);
        Report(outcome, name, path);
        return kNotLoaded;
    }
    *slot.font_copy = slot;
    if (make_description) DescribeAlone(*this, slot, slot_index);
    return kLoaded;
}

void CZelFont::write_sample_data(std::FILE* file, tag_graphic_rectangle* first, tag_graphic_rectangle* second,
                                 tag_samp_struct samp) {
    const long position = std::ftell(file);
    std::uint64_t left = 0;
    if (position >= 0 && std::fseek(file, 0, SEEK_END) == 0) {
        const long size = std::ftell(file);
        left = size > position ? static_cast<std::uint64_t>(size - position) : 0;
        std::fseek(file, position, SEEK_SET);
    }
    const auto read_row = [file](std::uint8_t* row, std::size_t width) { return std::fread(row, width, 1, file) == 1; };
    switch (font::ReadSamples(samp, *first, *second, left, read_row)) {
        case font::SampleOutcome::kRead:
            return;
        case font::SampleOutcome::kNoMemory:
            AfxThrowMemoryException();
        case font::SampleOutcome::kShortRow:
            AfxThrowFileException(CFileException::genericException, -1, kSampleRowName);
    }
}
