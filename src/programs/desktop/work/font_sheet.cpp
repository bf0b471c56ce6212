#include "programs/desktop/work/font_sheet.h"

#include "base/utf8.h"
#include "host/module_text.h"
#include "host/picture/glyph_sheet.h"
#include "host/run/font_run.h"
#include "module/contract/zel_font.h"
#include "programs/desktop/work/temporary_settings.h"

namespace zel::desktop {

namespace {

std::string NoteOn(const picture::GlyphSheet& sheet) {
    std::string note;
    if (!sheet.failures.empty()) {
        note = std::to_string(sheet.failures.size()) +
               " glyphs could not be drawn and are red, the first: " + sheet.failures.front();
    }
    if (sheet.cut != 0) {
        note += (note.empty() ? "" : "; ") + std::to_string(sheet.cut) + " glyphs are larger than " +
                std::to_string(picture::kLargestGlyphCell) + " pixels and cut off";
    }
    return note;
}

}  // namespace

FontSheet MakeFontSheet(const std::string& file) {
    FontSheet result;
    result.file = file;
    const TemporarySettings settings;
    run::FontRunRequest request;
    request.file = file;
    const run::FontRunOutcome outcome = run::RunFont(request, {}, [&](CZelFont& fonts) {
        const tag_font_header& header = *fonts.m_Slots[0].font_header;
        result.name = base::Utf8FromLatin1(header.Name());
        result.height = header.font_height;
        picture::GlyphSheet sheet = picture::DrawGlyphSheet(fonts);
        result.glyphs = sheet.glyphs;
        result.note = NoteOn(sheet);
        result.picture = std::move(sheet.picture);
    });
    result.failure = outcome.failure;
    if (outcome.read_from) result.file = *outcome.read_from;
    return result;
}

}  // namespace zel::desktop
