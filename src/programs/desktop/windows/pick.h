#pragma once

#include <QString>
#include <QStringList>

class QWidget;

namespace zel::desktop {

// Let the user pick files and folders. Files whose names begin with a dot, as those of messages and fonts do, are shown
// too. The result is empty if the user cancels.

/// @param filters  such as "Libraries (*.zellib)"; none: all files.
QStringList PickFiles(QWidget* parent, const QString& title, const QString& start, bool many,
                      const QStringList& filters = {});
QString PickFolder(QWidget* parent, const QString& title, const QString& start);

/// The kind of a file to write.
struct NewFileKind {
    /// Added to a name without one.
    QString suffix;
    /// Such as "PNG pictures (*.png)".
    QString filter;
    /// Asks before an existing file is chosen.
    bool asks_to_replace = true;
};
/// Picks a file to write.
QString PickNewFile(QWidget* parent, const QString& title, const QString& start, const NewFileKind& kind);
/// Picks a PNG file to write.
QString PickNewPicture(QWidget* parent, const QString& title, const QString& start);

}  // namespace zel::desktop
