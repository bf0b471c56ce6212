#pragma once

#include <QColor>
#include <QRect>
#include <QString>
#include <QStringList>
#include <array>
#include <string>
#include <vector>

#include "host/library/recording.h"

namespace zel::desktop {

struct RowDetail {
    int index = 0;
    QRect band;  ///< pixels and lines of the picture; as wide as the picture.
    QString text;
};

struct CharacterDetail {
    QString text;
    int code = 0;
    int row = 0;
    QRect place;  ///< its step and its row's lines, in the picture.
    QString font;
    int font_number = 0;
    bool bitmap = true;
    QColor face;

    /// "'A', code 65, font 12 "Harbour", row 3, at 120, 80"
    QString Name() const;
};

struct FontDetail {
    int slot = 0;
    int number = 0;
    QString name;
    int height = 0;    ///< lines
    std::string file;  ///< this system's path.
};

struct FieldDetail {
    QString name;  ///< its number, from 1, when it has none.
    int row = 0;
    QRect frame;
    QColor colour;
};

/// What a recording tells beside its picture.
struct MessageDetails {
    QString title;     ///< disk and number.
    QString standard;  ///< "NTSC, 486 lines"
    std::vector<RowDetail> rows;
    std::vector<CharacterDetail> characters;
    std::vector<FontDetail> fonts;
    std::vector<FieldDetail> fields;
    std::vector<std::vector<QColor>> palette;  ///< 8 sets of 32; none of a picture.
    std::vector<std::pair<QString, QString>> facts;

    /// The character at a place of the picture, the last one where several lie; -1 without one.
    int CharacterAt(QPoint place) const;
};

/// From a malformed document, returns whatever could be read.
MessageDetails DetailsOf(const library::Recording& recording);

/// "NEWS 0012", or the number alone of a disk without a name.
QString TitleOf(const library::RecordingKey& key);

}  // namespace zel::desktop
