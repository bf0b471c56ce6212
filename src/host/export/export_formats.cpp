#include "host/export/export_formats.h"

#include <algorithm>

#include "host/export/contact_sheet_exporter.h"
#include "host/export/html_exporter.h"
#include "host/export/json_exporter.h"
#include "host/export/key_fill_exporter.h"
#include "host/export/png_exporter.h"
#include "host/export/square_exporter.h"
#include "host/export/tga_exporter.h"

namespace zel::exporter {

const std::vector<ExportFormat>& ExportFormats() {
    static const std::vector<ExportFormat> formats = {
        {"png", "NAME.png, 720x486 or 720x576 with alpha", MakePngExporter, true},
        {"key-fill", "NAME.png opaque with the colours, NAME_A.png grey with the key", MakeKeyFillExporter},
        {"tga", "NAME.tga, 720x486 or 720x576, 32 bits with alpha", MakeTgaExporter, true},
        {"square", "NAME_square.png, 655x486 or 785x576 with square pixels and alpha", MakeSquareExporter, true},
        {"json", "NAME.json, the message with rows, characters, fields, fonts and sources", MakeJsonExporter},
        {"html", "NAME.html, the picture with selectable text in place, and index.html", MakeHtmlExporter},
        {"sheet", "contact-sheet-001.png and following, 30 messages per page with number and first line",
         MakeContactSheetExporter},
    };
    return formats;
}

const ExportFormat* FindExportFormat(std::string_view name) {
    const auto& formats = ExportFormats();
    const auto found = std::ranges::find(formats, name, &ExportFormat::name);
    return found != formats.end() ? &*found : nullptr;
}

std::string_view ConflictOf(const std::vector<std::string>& formats) {
    const auto has = [&](std::string_view name) { return std::ranges::find(formats, name) != formats.end(); };
    if (!has("png") || !has("key-fill")) return {};
    return "png and key-fill write files of the same name: export them to two directories";
}

}  // namespace zel::exporter
