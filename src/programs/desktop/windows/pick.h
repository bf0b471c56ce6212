#pragma once

#include <QString>
#include <QStringList>

class QWidget;

namespace zel::desktop {

// Let the user pick files and folders. Files whose names begin with a dot, as those of messages and fonts do, are shown
// too. The result is empty if the user cancels.

QStringList PickFiles(QWidget* parent, const QString& title, const QString& start, bool many);
QString PickFolder(QWidget* parent, const QString& title, const QString& start);
/// Picks a file to write, and asks before an existing one is overwritten.
/// @param suffix  added to a name without one.
QString PickNewFile(QWidget* parent, const QString& title, const QString& start, const QString& suffix);

}  // namespace zel::desktop
