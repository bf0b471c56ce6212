#include "host/export/export_formats.h"

#include <algorithm>

#include "host/export/clip_exporter.h"
#include "host/export/contact_sheet_exporter.h"
#include "host/export/html_exporter.h"
#include "host/export/json_exporter.h"
#include "host/export/key_fill_exporter.h"
#include "host/export/ograf_exporter.h"
#include "host/export/png_exporter.h"
#include "host/export/site_exporter.h"
#include "host/export/square_exporter.h"
#include "host/export/template_exporter.h"
#include "host/export/tga_exporter.h"

namespace zel::exporter {

const std::vector<ExportFormat>& ExportFormats() {
    static const std::vector<ExportFormat> formats = {
        {.name = "png",
         .description = "NAME.png, 720x486 or 720x576 with alpha",
         .make = MakePngExporter,
         .options = {"premultiplied", "small", "frame", "fit", "pixel-shape", "clear-colour"},
         .files = {"*.png"},
         .has_alpha = true},
        {.name = "key-fill",
         .description = "NAME.png opaque with the colours, NAME_A.png grey with the key",
         .make = MakeKeyFillExporter,
         .options = {"premultiplied", "small", "frame", "fit", "pixel-shape", "clear-colour", "key-names"},
         .files = {"*.png", "*_A.png", "*_fill.png", "*_key.png"},
         .is_single_file = false},
        {.name = "tga",
         .description = "NAME.tga, 720x486 or 720x576, 32 bits with alpha",
         .make = MakeTgaExporter,
         .options = {"premultiplied", "frame", "fit", "clear-colour", "run-lengths"},
         .files = {"*.tga"},
         .has_alpha = true},
        {.name = "square",
         .description = "NAME_square.png, 655x486 or 785x576 with square pixels and alpha",
         .make = MakeSquareExporter,
         .options = {"premultiplied", "small", "pixel-shape", "clear-colour"},
         .files = {"*_square.png"},
         .has_alpha = true},
        {.name = "clip",
         .description = "NAME_qtrle_straight.mov and the like, the picture as a clip with fades, by ffmpeg",
         .make = MakeClipExporter,
         .options = {"premultiplied", "frame", "fit", "clear-colour", "codec", "fade-in", "hold", "fade-out"},
         .files = {"*_qtrle_straight.mov", "*_qtrle_premultiplied.mov", "*_prores_straight.mov",
                   "*_prores_premultiplied.mov", "*_qtrle_straight.txt", "*_qtrle_premultiplied.txt",
                   "*_prores_straight.txt", "*_prores_premultiplied.txt"},
         .has_alpha = true,
         .is_single_file = false,
         .names_tell_alpha = true},
        {.name = "json",
         .description = "NAME.json, the message with rows, characters, fields, fonts and sources",
         .make = MakeJsonExporter,
         .files = {"*.json"},
         .is_text = true},
        {.name = "html",
         .description = "NAME.html, the picture with selectable text in place, and index.html",
         .make = MakeHtmlExporter,
         .files = {"*.html", "index.html"},
         .is_text = true},
        {.name = "site",
         .description =
             "index.html and folders: a site to open from its folder, with search, and a page for each message",
         .make = MakeSiteExporter,
         .options = {"small"},
         .files = {"index.html", "pages/*.html", "pictures/*.png", "thumbnails/*.png"},
         .is_single_file = false,
         .needs_manifest = true},
        {.name = "template",
         .description = "NAME.html, a page for CasparCG, SPX and browsers that fills the message's fields",
         .make = MakeTemplateExporter,
         .options = {"fit", "fade-in", "fade-out"},
         .files = {"*.html", "*_template.html"},
         .is_text = true},
        {.name = "ograf",
         .description = "NAME/, an OGraf graphic in a folder and in NAME.zip, which fills the message's fields",
         .make = MakeOgrafExporter,
         .options = {"fit", "fade-in", "fade-out", "small"},
         .files = {"*/graphic.mjs", "*/thumbnail.png", "*.zip"},
         .is_single_file = false},
        {.name = "sheet",
         .description = "contact-sheet-001.png and following, 30 messages per page with number and first line",
         .make = MakeContactSheetExporter,
         .options = {"small"},
         .files = {"contact-sheet-*.png"},
         .is_single_file = false},
    };
    return formats;
}

const ExportFormat* FindExportFormat(std::string_view name) {
    const auto& formats = ExportFormats();
    const auto found = std::ranges::find(formats, name, &ExportFormat::name);
    return found != formats.end() ? &*found : nullptr;
}

std::string FormatsWith(std::string_view option) {
    std::vector<std::string_view> names;
    for (const ExportFormat& format : ExportFormats()) {
        if (format.Takes(option)) names.push_back(format.name);
    }
    std::string text;
    for (std::size_t n = 0; n < names.size(); ++n)
        text.append(n == 0 ? "" : n + 1 < names.size() ? ", " : " or ").append(names[n]);
    return text;
}

}  // namespace zel::exporter
