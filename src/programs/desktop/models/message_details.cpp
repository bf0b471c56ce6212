#include "programs/desktop/models/message_details.h"

#include <QFile>
#include <algorithm>

#include <nlohmann/json.hpp>

#include "platform/system/files.h"
#include "programs/desktop/common/text.h"

namespace zel::desktop {

namespace {

using Json = nlohmann::ordered_json;

/// A member of an object, or the value that stands for a missing one or one of another kind.
template <class Value>
Value Get(const Json& object, const char* key, Value otherwise) {
    if (!object.is_object()) return otherwise;
    const auto found = object.find(key);
    if (found == object.end()) return otherwise;
    try {
        return found->get<Value>();
    } catch (const Json::exception&) {
        return otherwise;
    }
}
QString GetText(const Json& object, const char* key) {
    return Text(Get<std::string>(object, key, {}));
}
const Json& Child(const Json& object, const char* key) {
    static const Json kNone;
    const auto found = object.is_object() ? object.find(key) : object.end();
    return object.is_object() && found != object.end() ? *found : kNone;
}

std::vector<RowDetail> RowsOf(const Json& rows, int width) {
    std::vector<RowDetail> details;
    for (const Json& row : rows) {
        const int y = Get(row, "y", 0) + Get(row, "top", 0);
        details.push_back({Get(row, "row", 0), QRect(0, y, width, Get(row, "depth", 0)), GetText(row, "text")});
    }
    return details;
}

/// A character in text form has no step: it reaches to the next one of its row.
void MendSteps(std::vector<CharacterDetail>& characters) {
    constexpr int kUsualStep = 16;
    for (std::size_t i = 0; i < characters.size(); ++i) {
        QRect& place = characters[i].place;
        if (place.width() > 0) continue;
        const bool followed = i + 1 < characters.size() && characters[i + 1].row == characters[i].row &&
                              characters[i + 1].place.left() > place.left();
        place.setWidth(followed ? characters[i + 1].place.left() - place.left() : kUsualStep);
    }
}

std::vector<CharacterDetail> CharactersOf(const Json& characters, const std::vector<RowDetail>& rows) {
    std::vector<CharacterDetail> details;
    for (const Json& json : characters) {
        CharacterDetail character;
        character.text = GetText(json, "text");
        character.code = Get(json, "code", 0);
        character.row = Get(json, "row", 0);
        const auto row = std::ranges::find(rows, character.row, &RowDetail::index);
        const QRect band = row != rows.end() ? row->band : QRect(0, Get(json, "y", 0), 1, 1);
        character.place = QRect(Get(json, "x", 0), band.top(), Get(json, "step", 0), band.height());
        const Json& font = Child(json, "font");
        character.font = GetText(font, "name");
        character.font_number = Get(font, "number", 0);
        character.bitmap = GetText(json, "form") != QLatin1String("text");
        if (!character.bitmap) character.font = GetText(Child(json, "typeface"), "name");
        character.face = QColor(GetText(json, "face_colour"));
        details.push_back(std::move(character));
    }
    MendSteps(details);
    return details;
}

std::vector<FontDetail> FontsOf(const Json& fonts) {
    std::vector<FontDetail> details;
    for (const Json& font : fonts) {
        details.push_back({Get(font, "slot", 0), Get(font, "number", 0), GetText(font, "name"), Get(font, "height", 0),
                           system::NativePath(Get<std::string>(font, "file", {}).c_str())});
    }
    return details;
}

std::vector<FieldDetail> FieldsOf(const Json& fields) {
    std::vector<FieldDetail> details;
    for (const Json& field : fields) {
        const Json& frame = Child(field, "frame");
        const QPoint from(Get(frame, "left", 0), Get(frame, "top", 0));
        const QSize size(Get(frame, "right", 0) - from.x(), Get(frame, "bottom", 0) - from.y());
        QString name = GetText(field, "name");
        if (name.isEmpty()) name = QString::number(details.size() + 1);
        details.push_back({name, Get(field, "row", 0), QRect(from, size), QColor(GetText(field, "colour"))});
    }
    return details;
}

std::vector<std::vector<QColor>> PaletteOf(const Json& sets) {
    std::vector<std::vector<QColor>> palette;
    for (const Json& set : sets) {
        std::vector<QColor>& colours = palette.emplace_back();
        for (const Json& colour : set) {
            colours.emplace_back(colour.is_string() ? Text(colour.get<std::string>()) : QString());
        }
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

void AddFacts(const library::Recording& recording, MessageDetails& details) {
    const auto add = [&](const char* name, const QString& value) {
        if (!value.isEmpty()) details.facts.emplace_back(QLatin1String(name), value);
    };
    add("Disk", Text(recording.disk));
    add("Number", QStringLiteral("%1").arg(recording.number, 4, 10, QLatin1Char('0')));
    add("Kind", KindText(recording.kind));
    add("Standard", details.standard);
    add("Picture", recording.picture.empty()
                       ? QStringLiteral("none")
                       : QStringLiteral("%1 x %2 pixels").arg(recording.width).arg(recording.height));
    add("Imported", Text(recording.recorded_at));
    add("Options", Text(recording.options));
    for (const std::string& warning : recording.warnings) add("Warning", Text(warning));
    for (const library::SourceFile& source : recording.sources) {
        add(source.font_number ? "Font file" : "File", QFile::decodeName(source.path.c_str()));
        add("Bytes", source.sha256.empty() ? QStringLiteral("not found") : QString::number(source.size));
        add("SHA-256", Text(source.sha256));
    }
}

}  // namespace

QString CharacterDetail::Name() const {
    const QString what = text.trimmed().isEmpty() ? QStringLiteral("blank") : QStringLiteral("“%1”").arg(text);
    const QString of = bitmap ? QStringLiteral("font %1 %2").arg(font_number, 4, 10, QLatin1Char('0')).arg(font)
                              : QStringLiteral("typeface %1").arg(font);
    return QStringLiteral("%1   code %2   %3   row %4   at %5, %6")
        .arg(what)
        .arg(code)
        .arg(of.trimmed())
        .arg(row)
        .arg(place.left())
        .arg(place.top());
}

int MessageDetails::CharacterAt(QPoint place) const {
    for (std::size_t i = characters.size(); i-- > 0;) {
        if (characters[i].place.contains(place)) return static_cast<int>(i);
    }
    return -1;
}

QString TitleOf(const library::RecordingKey& key) {
    const QString number = QStringLiteral("%1").arg(key.number, 4, 10, QLatin1Char('0'));
    return key.disk.empty() ? number : Text(key.disk) + u' ' + number;
}

MessageDetails DetailsOf(const library::Recording& recording) {
    MessageDetails details;
    details.title = TitleOf({recording.disk, recording.number});
    details.lines = recording.lines;
    details.standard = recording.lines == 576 ? QStringLiteral("PAL, 576 lines") : QStringLiteral("NTSC, 486 lines");
    const Json document = Json::parse(recording.document, nullptr, false);
    details.rows = RowsOf(Child(document, "rows"), recording.width);
    details.characters = CharactersOf(Child(document, "characters"), details.rows);
    details.fonts = FontsOf(Child(document, "fonts"));
    details.fields = FieldsOf(Child(document, "tab_fields"));
    details.palette = PaletteOf(Child(document, "palette"));
    AddFacts(recording, details);
    return details;
}

}  // namespace zel::desktop
