#include "programs/desktop/work/font_sheet.h"

#include "host/module_text.h"
#include "host/picture/glyph_sheet.h"
#include "host/run/font_run.h"
#include "module/contract/zel_font.h"
#include "programs/desktop/work/own_settings.h"

namespace zel::desktop {

namespace {

std::string Remark(const picture::GlyphSheet& sheet) {
    std::string remark;
    if (!sheet.failures.empty()) {
        remark = std::to_string(sheet.failures.size()) +
                 " couldn't be drawn and are red in the sheet, the first: " + sheet.failures.front();
    }
    if (sheet.cut != 0) {
        remark += (remark.empty() ? "" : "; ") + std::to_string(sheet.cut) + " are larger than " +
                  std::to_string(picture::kLargestGlyphCell) + " pixels and shown in part";
    }
    return remark;
}

}  // namespace

FontSheet MakeFontSheet(const std::string& file) {
    FontSheet result;
    result.file = file;
    const OwnSettings settings;
    run::FontRunRequest request;
    request.file = file;
    const run::FontRunOutcome outcome = run::RunFont(request, {}, [&](CZelFont& fonts) {
        const tag_font_header& header = *fonts.m_Slots[0].font_header;
        result.name = host::Utf8FromBytes(header.Name());
        result.height = header.font_height;
        picture::GlyphSheet sheet = picture::DrawGlyphSheet(fonts);
        result.glyphs = sheet.glyphs;
        result.remark = Remark(sheet);
        result.picture = std::move(sheet.picture);
    });
    result.failure = outcome.failure;
    if (outcome.read_from) result.file = *outcome.read_from;
    return result;
}

}  // namespace zel::desktop
