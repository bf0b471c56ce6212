#include "programs/desktop/models/message_details.h"

#include <QDateTime>
#include <QFile>
#include <cstdint>

#include "host/document/document_reader.h"
#include "programs/desktop/common/text.h"

namespace zel::desktop {

namespace {

std::vector<RowDetail> RowsOf(const document::DocumentContents& contents, int width) {
    std::vector<RowDetail> details;
    for (const document::DocumentRow& row : contents.rows) {
        const int index = static_cast<int>(details.size());
        details.push_back({index, QRect(0, row.top, width, row.height), Text(row.text)});
    }
    return details;
}

std::vector<CharacterDetail> CharactersOf(const document::DocumentContents& contents) {
    std::vector<CharacterDetail> details;
    for (const document::DocumentCharacter& character : contents.characters) {
        const document::DocumentRow& row = contents.rows[character.row];
        CharacterDetail& detail = details.emplace_back();
        detail.text = Text(character.text);
        detail.code = character.code;
        detail.row = static_cast<int>(character.row);
        detail.area = QRect(character.x, row.top, character.width, row.height);
        detail.font = Text(character.bitmap ? character.font_name : character.typeface);
        detail.font_number = character.font_number;
        detail.bitmap = character.bitmap;
    }
    return details;
}

std::vector<FontDetail> FontsOf(const document::DocumentContents& contents) {
    std::vector<FontDetail> details;
    for (const document::DocumentFont& font : contents.fonts) {
        details.push_back({font.slot, font.number, Text(font.name), font.height, font.file});
    }
    return details;
}

std::vector<FieldDetail> FieldsOf(const document::DocumentContents& contents) {
    std::vector<FieldDetail> details;
    for (const document::DocumentField& field : contents.fields) {
        const QRect frame(field.left, field.top, field.right - field.left, field.bottom - field.top);
        const QString name = field.name.empty() ? QStringLiteral("f%1").arg(details.size()) : Text(field.name);
        details.push_back({name, field.row, frame, QColor(Text(field.colour))});
    }
    return details;
}

std::vector<std::vector<QColor>> PaletteOf(const document::DocumentContents& contents) {
    std::vector<std::vector<QColor>> palette;
    for (const std::vector<std::string>& set : contents.palette) {
        std::vector<QColor>& colours = palette.emplace_back();
        for (const std::string& colour : set) colours.emplace_back(Text(colour));
    }
    return palette;
}

QString KindText(library::RecordingKind kind) {
    switch (kind) {
        case library::RecordingKind::kMessage:
            return QStringLiteral("message");
        case library::RecordingKind::kRgbaObject:
            return QStringLiteral("picture, inserted as object");
        case library::RecordingKind::kRgbaBackground:
            return QStringLiteral("picture, inserted as background");
    }
    return {};
}

/// A UTC time of a recording, in the user's time zone. Any other text is unchanged.
QString LocalTime(const std::string& utc) {
    const QDateTime time = QDateTime::fromString(Text(utc), Qt::ISODate);
    return time.isValid() ? time.toLocalTime().toString(QStringLiteral("yyyy-MM-dd hh:mm:ss t")) : Text(utc);
}

void AddProperties(const library::Recording& recording, MessageDetails& details) {
    const auto add = [&](const char* name, const QString& value) {
        if (!value.isEmpty()) details.properties.emplace_back(QLatin1String(name), value);
    };
    add("Disk", Text(recording.disk));
    add("Number", QStringLiteral("%1").arg(recording.number, 4, 10, QLatin1Char('0')));
    add("Kind", KindText(recording.kind));
    add("Standard", details.standard);
    add("Picture", recording.picture.empty()
                       ? QStringLiteral("none")
                       : QStringLiteral("%1 x %2 pixels").arg(recording.width).arg(recording.height));
    add("Imported", LocalTime(recording.recorded_at));
    add("Options", Text(recording.options));
    for (const std::string& warning : recording.warnings) add("Warning", Text(warning));
    for (const library::SourceFile& source : recording.sources) {
        add(source.font_number ? "Font file" : "File", QFile::decodeName(source.path.c_str()));
        add("Bytes",
            source.sha256.empty() && source.size == 0 ? QStringLiteral("not found") : QString::number(source.size));
        add("SHA-256", Text(source.sha256));
    }
}

}  // namespace

QString CharacterDetail::Description() const {
    const QString what = text.trimmed().isEmpty() ? QStringLiteral("blank") : QStringLiteral("“%1”").arg(text);
    const QString from = bitmap ? QStringLiteral("font %1 %2").arg(font_number, 4, 10, QLatin1Char('0')).arg(font)
                                : QStringLiteral("typeface %1").arg(font);
    return QStringLiteral("%1   code %2   %3   row %4   at %5, %6")
        .arg(what)
        .arg(code)
        .arg(from.trimmed())
        .arg(row)
        .arg(area.left())
        .arg(area.top());
}

int MessageDetails::CharacterAt(QPoint point) const {
    for (std::size_t i = characters.size(); i-- > 0;) {
        if (characters[i].area.contains(point)) return static_cast<int>(i);
    }
    return -1;
}

int MessageDetails::FieldAt(QPoint point) const {
    const auto area = [](const QRect& frame) { return std::int64_t{frame.width()} * frame.height(); };
    int found = -1;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (!fields[i].frame.contains(point)) continue;
        if (found < 0 || area(fields[i].frame) < area(fields[static_cast<std::size_t>(found)].frame))
            found = static_cast<int>(i);
    }
    return found;
}

QString NameOfDisk(const std::string& disk) {
    return disk.empty() ? QStringLiteral("(without a name)") : Text(disk);
}

QString TitleOf(const library::RecordingKey& key) {
    const QString number = QStringLiteral("%1").arg(key.number, 4, 10, QLatin1Char('0'));
    return key.disk.empty() ? number : Text(key.disk) + u' ' + number;
}

MessageDetails DetailsOf(const library::Recording& recording) {
    MessageDetails details;
    details.title = TitleOf({recording.disk, recording.number});
    details.standard = QStringLiteral("%1, %2 lines")
                           .arg(QLatin1String(NameOf(recording.standard)))
                           .arg(ActiveLines(recording.standard));
    const document::DocumentContents contents = document::ReadDocumentText(recording.document);
    details.rows = RowsOf(contents, recording.width);
    details.characters = CharactersOf(contents);
    details.fonts = FontsOf(contents);
    details.fields = FieldsOf(contents);
    details.palette = PaletteOf(contents);
    AddProperties(recording, details);
    return details;
}

}  // namespace zel::desktop
