#include "programs/desktop/work/comparison.h"

#include <QFile>
#include <QFileInfo>
#include <optional>
#include <stdexcept>

#include <nlohmann/json.hpp>

#include "base/regular_file.h"
#include "host/compare/message_difference.h"
#include "host/compare/picture_difference.h"
#include "host/document/document_reader.h"
#include "host/picture/png_reader.h"
#include "programs/desktop/common/text.h"
#include "programs/desktop/work/message_files.h"
#include "programs/desktop/work/message_preview.h"

namespace zel::desktop {

namespace {

/// What is needed of one side: its contents, and where they are in its picture.
struct Side {
    explicit Side(const library::Recording& recording) {
        try {
            if (const nlohmann::ordered_json parsed = document::ParseDocument(recording.document); parsed.is_object()) {
                contents = compare::ContentsOf(parsed);
                places = document::ReadDocument(parsed);
            }
            if (!recording.picture.empty()) picture = picture::DecodePng(recording.picture);
        } catch (const std::runtime_error&) {
            // What can't be read counts as absent.
        }
        width = recording.width;
    }

    const picture::Picture* Picture() const { return picture ? &*picture : nullptr; }
    QRect PlaceOf(const compare::Difference& difference, const compare::DifferenceSide& side) const;

    compare::MessageContents contents;
    document::DocumentContents places;
    std::optional<picture::Picture> picture;
    int width = 0;
};

/// The row, the characters of a row or the field in which a difference is.
QRect Side::PlaceOf(const compare::Difference& difference, const compare::DifferenceSide& side) const {
    if (!side.index || *side.index < 0) return {};
    const auto index = static_cast<std::size_t>(*side.index);
    if (difference.part == "field" && index < places.fields.size()) {
        const document::DocumentField& field = places.fields[index];
        return {field.left, field.top, field.right - field.left, field.bottom - field.top};
    }
    if (difference.part != "row" || index >= places.rows.size()) return {};
    const document::DocumentRow& row = places.rows[index];
    QRect place;
    int number = 0;
    for (const document::DocumentCharacter& character : places.characters) {
        if (!side.run || character.row != index) continue;
        const bool is_in_run = number >= side.run->first && number - side.run->first < side.run->count;
        ++number;
        if (is_in_run) place |= QRect(character.x, row.top, character.width, row.height);
    }
    return place.isEmpty() ? QRect(0, row.top, width, row.height) : place;
}

}  // namespace

Comparison Compare(const library::Recording& a, const library::Recording& b) {
    const Side side_a(a), side_b(b);
    Comparison result;
    for (const compare::Difference& difference : compare::CompareContents(side_a.contents, side_b.contents)) {
        result.lines.push_back({Text(compare::TextOf(difference)), side_a.PlaceOf(difference, difference.a),
                                side_b.PlaceOf(difference, difference.b)});
    }
    const compare::PictureDifference pictures = compare::ComparePictures(side_a.Picture(), side_b.Picture());
    if (!pictures.IsNone()) {
        const picture::PixelBox& box = pictures.box;
        const QRect place(box.left, box.top, box.right - box.left, box.bottom - box.top);
        const QString text =
            pictures.width_a == pictures.width_b && pictures.height_a == pictures.height_b
                ? QStringLiteral("picture: %1")
                      .arg(Counted(static_cast<std::size_t>(pictures.pixels), "pixel differs", "pixels differ"))
                : QStringLiteral("picture: %1 x %2 and %3 x %4 pixels")
                      .arg(pictures.width_a)
                      .arg(pictures.height_a)
                      .arg(pictures.width_b)
                      .arg(pictures.height_b);
        result.lines.push_back({text, place, place});
    }
    result.marked = compare::MarkedPicture(side_a.Picture(), side_b.Picture(), pictures);
    return result;
}

ComparedMessage ReadComparedFile(const QString& file, const host::HostOptions& options) {
    const std::string path = QFile::encodeName(QFileInfo(file).absoluteFilePath()).toStdString();
    if (KindOf(path) != FileKind::kMessage) throw std::runtime_error(path + " is not a message.");
    constexpr std::size_t kLargestFile = std::size_t{80} << 20;
    std::vector<std::uint8_t> bytes;
    try {
        bytes = base::ReadFileBytes(path, kLargestFile);
    } catch (const std::runtime_error& error) {
        throw std::runtime_error(path + ": " + error.what());
    }
    MessagePreview preview(path, DirectoriesOf(path).fonts, options);
    MessagePreview::Result read = preview.Import(bytes);
    if (!read.arrived) throw std::runtime_error(read.failure);
    const library::RecordingKey key = KeyOf({}, QFileInfo(file).fileName().toStdString());
    return {file, preview.RecordingOf(std::move(*read.arrived), key)};
}

}  // namespace zel::desktop
