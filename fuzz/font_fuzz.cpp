// Font files: read, then each character measured and drawn.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

#include "files/font_writer.h"
#include "module/font/format/convert_font_header.h"
#include "module/font/format/font_blocks.h"
#include "module/font/format/font_loader.h"
#include "module_environment.h"
#include "platform/framework/exceptions.h"
#include "section_mutator.h"

using namespace zel;

namespace {

using fuzz::Require;

// Maximum number of pixels drawn for one font. A larger glyph is only measured.
constexpr std::uint32_t kMaxPixels = 65536;
// Number of bytes before and after a bitmap that must not change.
constexpr std::size_t kGuard = 64;

/// Draws into a bitmap of the size that GetMFRect returns.
/// @return its number of pixels.
std::uint32_t Draw(CZelFont& fonts, FontAddress font, DWORD code) {
    int top = 0;
    bool flag = false;
    const CRect rect = fonts.GetMFRect(font, 0, code, top, &flag);
    Require(rect.left == 0 && rect.top == 0, "the rectangle begins at 0");
    if (rect.right <= 0 || rect.bottom <= 0) return 0;
    const auto pixels = static_cast<std::uint64_t>(rect.right) * static_cast<std::uint64_t>(rect.bottom);
    if (pixels > kMaxPixels) {
        fonts.BuildMFData(font, nullptr, 0, code, 0);
        return 0;
    }
    constexpr std::uint8_t kUntouched = 0x5A;
    std::vector<std::uint8_t> memory(2 * kGuard + static_cast<std::size_t>(pixels) * 4, kUntouched);
    DIBSECTION dib{};
    dib.dsBm.bmBits = memory.data() + kGuard;
    dib.dsBmih.biWidth = rect.right;
    dib.dsBmih.biHeight = rect.bottom;
    fonts.BuildMFData(font, &dib, 0, code, static_cast<int>(code % 5) - 1);
    const auto untouched = [](std::uint8_t byte) { return byte == kUntouched; };
    Require(std::all_of(memory.begin(), memory.begin() + kGuard, untouched) &&
                std::all_of(memory.end() - kGuard, memory.end(), untouched),
            "pixels stay inside the rectangle");
    return static_cast<std::uint32_t>(pixels);
}

/// @return the number of pixels drawn for all codes.
std::uint32_t DrawAll(CZelFont& fonts, tag_font_memory* font) {
    std::uint32_t pixels = 0;
    for (DWORD code = 0; code < 256 && pixels < kMaxPixels; ++code) {
        try {
            pixels += Draw(fonts, reinterpret_cast<FontAddress>(font), code);
        } catch (CFileException* cut_short) {
            cut_short->Delete();
        }
    }
    return pixels;
}

/// Reads the rows of a sample block as a host may, from a file of its own.
void ReadSamples(fuzz::Input file) {
    constexpr std::size_t kHead = sizeof(tag_samp_struct);
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> stream(
        ::fmemopen(const_cast<std::uint8_t*>(file.data()), file.size(), "rb"), &std::fclose);
    if (stream == nullptr) return;
    std::fseek(stream.get(), kHead, SEEK_SET);
    tag_graphic_rectangle samples[2];
    try {
        CZelFont().write_sample_data(stream.get(), &samples[0], &samples[1], font::ConvertSampleHead(file));
    } catch (CException* short_row) {
        short_row->Delete();
    }
    for (const tag_graphic_rectangle& sample : samples) std::free(sample.data);
}

files::Bytes Describe(fuzz::Random& random) {
    const auto value = [&random] { return fuzz::HostileValue(random); };
    const auto any = [&random](std::size_t end) { return static_cast<unsigned>(fuzz::Below(random, end)); };
    files::FontFile font;
    font.header.font_flags = any(3) == 0 ? files::kSampleFirstFont : any(0x80);
    font.header.font_height = static_cast<int>(value() & 0xFFFF);
    if (any(8) == 0) font.header.encoding_size = value();
    for (unsigned glyph = any(6); glyph-- > 0;) {
        files::RunCodes codes(any(20));
        for (auto& code : codes) {
            code = files::RunCode(static_cast<files::RunOperation>(any(4)), any(40), any(256), any(33), any(8) == 0);
        }
        font.AddRunCoded(any(files::kFontCharCount), codes, any(1024), any(1024));
        if (any(4) == 0) font.directory[any(files::kFontCharCount)] = {.glyph_kind = any(256), .glyph_offset = value()};
    }
    for (unsigned glyph = any(3); glyph-- > 0;) {
        const unsigned width = 1 + any(6), height = 1 + any(6);
        files::StoredGlyph stored{.width = width, .height = height, .pixels = files::Bytes(width * height * 4, 200)};
        if (any(4) == 0) stored.width_word = value();
        if (any(4) == 0) stored.length = value();
        font.AddStored(any(files::kFontCharCount), stored, any(1024), any(1024));
    }
    font.aux_block.resize(any(2) * any(40));
    font.word_table.resize(any(2) * any(40));
    for (auto* sample : {&font.first_sample, &font.sample}) {
        if (any(2) == 0) continue;
        const int width = static_cast<int>(any(5)), height = static_cast<int>(any(5));
        sample->emplace().a = {width, height, files::Bytes(static_cast<std::size_t>(width * height), 1)};
        if (any(4) == 0) (*sample)->b.height = static_cast<int>(value() & 0xFFFF);
    }
    return files::WriteFont(font);
}

void Observe(fuzz::Input file, message::SectionObserver& sections) {
    font::LoadedFont font;
    font::LoadFont(file, font, &sections);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::ModuleEnvironment environment;
    CZelFont::m_bIgnoreErrors = static_cast<int>(size % 2);
    environment.Put(".0001", {data, size});
    if (size % 8 == 1) ReadSamples({data, size});
    CZelFont fonts;
    // Font 2 doesn't exist; the user chooses the file of font 1 for it.
    if (!fuzz::ModuleEnvironment::ReadFont(fonts, size % 16 == 2 ? 2 : 1, 0)) return 0;
    tag_font_memory& slot = fonts.m_Slots[0];
    DrawAll(fonts, slot.font_copy);
    if (size % 8 < 2) {  // the file no longer exists
        slot.font_copy->file_name[0] = '\0';
        DrawAll(fonts, slot.font_copy);
    }
    fuzz::ModuleEnvironment::Release(slot);
    return 0;
}

std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t max_size, unsigned seed) {
    return fuzz::MutateSections({&Observe, &Describe}, data, size, max_size, seed);
}
