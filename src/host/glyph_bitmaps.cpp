#include "host/glyph_bitmaps.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <new>
#include <system_error>

#include "host/crc32.h"
#include "host/module_text.h"
#include "platform/framework/exceptions.h"
#include "platform/system/errors.h"
#include "platform/system/files.h"

namespace zel::host {

namespace {

/// Limit of the cache, which contains the glyphs of any message and those kept from earlier ones.
constexpr std::size_t kKeptBytes = std::size_t{56} << 20;
/// Largest glyph, 2048 x 2048 pixels or ten pictures.
constexpr std::uint64_t kMaxGlyphBytes = std::uint64_t{16} << 20;
/// Run codes of all glyphs of a font set, 10,000 for each of the characters that fit a screen. Codes that don't advance
/// take time, but no pixels.
constexpr std::size_t kMaxCodes = std::size_t{16} << 20;
/// Most lines in Failures.
constexpr std::size_t kMostFailures = 1000;
/// Limit of the run-coded glyphs and fonts that are kept for the next message.
constexpr std::size_t kKeptForNextMessage = std::size_t{4} << 20;
/// Run codes of a font whose glyphs are kept, in bytes: a sixteenth of the limit above, as a message has 16 fonts.
constexpr std::uint32_t kLargestKeptFont = std::uint32_t{256} << 10;
/// Bitmaps up to this size, more than a screen, are allocated without a check of the font file's size.
constexpr std::uint64_t kUncheckedBytes = 4 << 20;

constexpr char kNotOpened[] = "its font file can't be opened again";

bool IsRunCoded(const tag_font_memory& font, unsigned character) noexcept {
    const tag_char_entry* entry = font.Entry(character);
    return entry != nullptr && entry->IsRunCoded() && font.encoding_data != nullptr && font.font_header != nullptr;
}

/// Whether a glyph is kept for the following messages.
bool IsKept(const tag_font_memory& font, unsigned character) noexcept {
    return IsRunCoded(font, character) && font.font_header->encoding_size <= kLargestKeptFont;
}

/// Number of a glyph's run codes, of which the last is 0.
std::size_t CountCodes(const tag_font_memory& font, unsigned character) noexcept {
    std::size_t count = 0;
    for (std::size_t end = std::size_t{font.Entry(character)->glyph_offset} + 4; end <= font.font_header->encoding_size;
         end += 4, ++count) {
        std::uint32_t code = 0;
        std::memcpy(&code, font.encoding_data + end - 4, sizeof code);
        if (code == 0) break;
    }
    return count;
}

/// Whether a font file is large enough to contain a stored glyph of this size. The module relies on the size in a
/// glyph's record and reads the pixels afterwards.
bool MayContain(const tag_font_memory& font, std::uint64_t bytes) {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(system::NativePath(font.file_name), error);
    return !error && size >= bytes;
}

DIBSECTION BitmapOver(std::vector<std::uint8_t>& pixels, const CRect& rect) noexcept {
    DIBSECTION dib{};
    dib.dsBm.bmWidth = rect.Width();
    dib.dsBm.bmHeight = rect.Height();
    dib.dsBm.bmWidthBytes = rect.Width() * 4;
    dib.dsBm.bmPlanes = 1;
    dib.dsBm.bmBitsPixel = 32;
    dib.dsBm.bmBits = pixels.data();
    dib.dsBmih.biSize = sizeof dib.dsBmih;
    dib.dsBmih.biWidth = rect.Width();
    dib.dsBmih.biHeight = rect.Height();
    dib.dsBmih.biPlanes = 1;
    dib.dsBmih.biBitCount = 32;
    return dib;
}

}  // namespace

void GlyphBitmaps::SetFonts(CZelFont* fonts) {
    m_fonts = fonts;
    m_left = m_budget;
    m_codes_left = kMaxCodes;
    m_numbers.clear();
    DropOwn();
    // Drop failed glyphs, so that they are reported again.
    std::erase_if(m_run_coded, [](const auto& glyph) { return glyph.second.pixels.empty(); });
    if (m_run_coded_bytes > kKeptForNextMessage) DropRunCoded();
}

void GlyphBitmaps::DropOwn() {
    m_own.clear();
    m_own_bytes = 0;
}

void GlyphBitmaps::DropRunCoded() {
    m_run_coded.clear();
    m_run_coded_fonts.clear();
    m_numbers.clear();
    m_run_coded_bytes = 0;
}

void GlyphBitmaps::Drop() {
    DropOwn();
    DropRunCoded();
}

void GlyphBitmaps::UseColours() {
    Colours colours{{}, m_fonts->m_FaceColor, m_fonts->m_EdgeColor, m_fonts->m_BackColor};
    std::copy(std::begin(m_fonts->m_Palette), std::end(m_fonts->m_Palette), colours.palette.begin());
    if (colours != m_colours) DropRunCoded();
    m_colours = colours;
}

std::size_t GlyphBitmaps::NumberOf(const tag_font_memory& font) {
    if (m_numbers.empty()) UseColours();
    const auto numbered = std::ranges::find(m_numbers, &font, &decltype(m_numbers)::value_type::first);
    if (numbered != m_numbers.end()) return numbered->second;
    const std::size_t number = FindOrAdd(font);
    m_numbers.emplace_back(&font, number);
    return number;
}

std::size_t GlyphBitmaps::FindOrAdd(const tag_font_memory& font) {
    const std::span codes(font.encoding_data, font.font_header->encoding_size);
    const std::span directory(font.char_directory, std::size_t{kDirectoryEntries});
    const auto is_same = [&](const RunCodedFont& known) {
        return known.codes.size() == codes.size() &&
               std::memcmp(known.directory.data(), directory.data(), directory.size_bytes()) == 0 &&
               std::memcmp(known.codes.data(), codes.data(), codes.size()) == 0;
    };
    const auto found = std::ranges::find_if(m_run_coded_fonts, is_same);
    const auto number = static_cast<std::size_t>(found - m_run_coded_fonts.begin());
    if (found == m_run_coded_fonts.end()) {
        m_run_coded_fonts.push_back({{codes.begin(), codes.end()}, {directory.begin(), directory.end()}});
        m_run_coded_bytes += codes.size() + directory.size_bytes();
    }
    return number;
}

const GlyphBitmap& GlyphBitmaps::Get(const tag_CharInf& info, unsigned character) {
    return Find(info, character);
}

const GlyphBitmap& GlyphBitmaps::GetOrThrow(const tag_CharInf& info, unsigned character) {
    const GlyphBitmap& glyph = Find(info, character);
    if (glyph.truncated) AfxThrowFileException(CFileException::genericException, -1, info.font_copy->file_name);
    return glyph;
}

std::optional<std::uint32_t> GlyphBitmaps::Checksum(const tag_CharInf& info, unsigned character) {
    GlyphBitmap& glyph = Find(info, character);
    if (!glyph.crc32 && !glyph.pixels.empty()) glyph.crc32 = Crc32(glyph.pixels);
    return glyph.crc32;
}

GlyphBitmap& GlyphBitmaps::Find(const tag_CharInf& info, unsigned character) {
    const tag_font_memory* const font = m_fonts != nullptr ? info.font_copy : nullptr;
    const bool kept = font != nullptr && IsKept(*font, character);
    if (m_own_bytes + m_run_coded_bytes > kKeptBytes) Drop();
    Glyphs& glyphs = kept ? m_run_coded : m_own;
    const Key key(kept ? NumberOf(*font) : reinterpret_cast<std::uintptr_t>(info.font_copy), character,
                  info.colour_set);
    const auto [found, is_new] = glyphs.try_emplace(key);
    GlyphBitmap& glyph = found->second;
    if (!is_new) return glyph;
    if (font != nullptr) Fetch(info, character, glyph);
    (kept ? m_run_coded_bytes : m_own_bytes) += glyph.pixels.size();
    return glyph;
}

void GlyphBitmaps::Fetch(const tag_CharInf& info, unsigned character, GlyphBitmap& glyph) {
    std::string failure;
    try {
        failure = Draw(info, character, glyph);
    } catch (CFileException* error) {
        glyph.truncated = true;
        failure = TakeText(error);
    } catch (CException* error) {
        failure = TakeText(error);
    } catch (const std::bad_alloc&) {
        failure = "too large for the memory available";
    }
    if (!failure.empty()) AddFailure(info, character, failure);
}

void GlyphBitmaps::AddFailure(const tag_CharInf& info, unsigned character, const std::string& reason) {
    if (m_failures.size() == kMostFailures) return;
    const std::string font = info.font_copy != nullptr ? std::string(" of ") + info.font_copy->file_name : "";
    m_failures.push_back("character " + std::to_string(character) + font + ": " + reason);
}

bool GlyphBitmaps::TakeCodes(const tag_font_memory& font, unsigned character) noexcept {
    const std::size_t codes = m_codes_left != 0 ? CountCodes(font, character) : 0;
    if (codes >= m_codes_left) {
        m_codes_left = 0;
        return false;
    }
    m_codes_left -= codes;
    return true;
}

std::string GlyphBitmaps::Draw(const tag_CharInf& info, unsigned character, GlyphBitmap& glyph) {
    const bool run_coded = IsRunCoded(*info.font_copy, character);
    if (run_coded && !TakeCodes(*info.font_copy, character))
        return "beyond the " + std::to_string(kMaxCodes) + " run codes that all glyphs may have together";
    const auto address = reinterpret_cast<FontAddress>(info.font_copy);
    int top = 0;
    // A font file that can't be opened again is an empty rectangle, or no pixels, and leaves nothing but an error
    // number.
    SetLastError(ERROR_SUCCESS);
    glyph.rect = m_fonts->GetMFRect(address, info.slot, character, top, nullptr);
    if (GetLastError() != ERROR_SUCCESS) return kNotOpened;
    if (glyph.rect.IsRectEmpty()) return {};
    const std::uint64_t bytes =
        static_cast<std::uint64_t>(glyph.rect.Width()) * static_cast<std::uint64_t>(glyph.rect.Height()) * 4;
    if (bytes > kUncheckedBytes && !run_coded && !MayContain(*info.font_copy, bytes)) {
        return "larger than its font file";
    }
    if (bytes > kMaxGlyphBytes) {
        return std::to_string(glyph.rect.Width()) + " x " + std::to_string(glyph.rect.Height()) +
               " pixels are too many for one glyph";
    }
    if (bytes > m_left)
        return "beyond the " + std::to_string(m_budget >> 20) + " MiB that all glyphs may have together";
    m_left -= bytes;
    std::vector<std::uint8_t> pixels(static_cast<std::size_t>(bytes));
    DIBSECTION dib = BitmapOver(pixels, glyph.rect);
    m_fonts->BuildMFData(address, &dib, info.slot, character, info.colour_set);
    if (GetLastError() != ERROR_SUCCESS) return kNotOpened;
    glyph.pixels = std::move(pixels);
    return {};
}

}  // namespace zel::host
