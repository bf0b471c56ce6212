#pragma once

#include <QColor>
#include <QPoint>
#include <QRect>
#include <QString>
#include <string>
#include <utility>
#include <vector>

#include "host/library/recording.h"

namespace zel::desktop {

// The contents of a recording, for the widgets. Rectangles are in pixels of the picture.

struct RowDetail {
    int index = 0;
    /// As wide as the picture.
    QRect band;
    QString text;
};

struct CharacterDetail {
    QString text;
    int code = 0;
    int row = 0;
    /// From the character to the next one, as high as the row.
    QRect area;
    /// Name of the font, or of the typeface of a character in text form.
    QString font;
    int font_number = 0;
    /// In bitmap form; false: in text form.
    bool bitmap = true;

    /// “A”   code 65   font 0012 Harbour   row 3   at 120, 80
    QString Description() const;
};

struct FontDetail {
    int slot = 0;
    int number = 0;
    QString name;
    /// In pixels.
    int height = 0;
    /// Path in this system's form.
    std::string file;
};

struct FieldDetail {
    /// "f" and the field's number, from 0, if it has no name: so a table names it.
    QString name;
    int row = 0;
    QRect frame;
    QColor colour;
};

struct MessageDetails {
    /// Disk and number.
    QString title;
    /// "NTSC, 486 lines"
    QString standard;
    std::vector<RowDetail> rows;
    std::vector<CharacterDetail> characters;
    std::vector<FontDetail> fonts;
    std::vector<FieldDetail> fields;
    /// Colour sets of a message, 8 of 32 colours; empty for a picture.
    std::vector<std::vector<QColor>> palette;
    /// Names and values.
    std::vector<std::pair<QString, QString>> properties;

    /// The index of the character at a point of the picture, the last one if several overlap; -1 for none.
    int CharacterAt(QPoint point) const;
    /// The index of the tab field at a point of the picture, the smallest one if several overlap; -1 for none.
    int FieldAt(QPoint point) const;
};

/// From a malformed document, returns whatever could be read.
MessageDetails DetailsOf(const library::Recording& recording);

/// The disk's name, or "(without a name)".
QString NameOfDisk(const std::string& disk);

/// "NEWS 0012", or the number alone for a disk without a name.
QString TitleOf(const library::RecordingKey& key);

}  // namespace zel::desktop
