#include "host/export/export_formats.h"

namespace zel::exporter {

const std::vector<ExportFormat>& ExportFormats() {
    static const std::vector<ExportFormat> formats = {
        {"png", "NAME.png, 720x486 or 720x576 with alpha", MakePngExporter},
        {"key-fill", "NAME.png opaque with the colours, NAME_A.png grey with the key", MakeKeyFillExporter},
        {"tga", "NAME.tga, 720x486 or 720x576, 32 bits with alpha", MakeTgaExporter},
        {"square", "NAME_square.png, 655x486 or 785x576 with square pixels and alpha", MakeSquareExporter},
        {"json", "NAME.json, the message with rows, characters, fields, fonts and sources", MakeJsonExporter},
        {"html", "NAME.html, the picture with its text to be selected in place, and index.html", MakeHtmlExporter},
        {"sheet", "contact-sheet-001.png and on, 30 messages a page with number and first line",
         MakeContactSheetExporter},
    };
    return formats;
}

}  // namespace zel::exporter
