#pragma once

#include <QString>
#include <QStringList>

class QWidget;

namespace zel::desktop {

/// Lets the user pick files; those whose name begins with a dot, as the names of messages and fonts do, are shown too.
/// @return none when the user would rather not.
QStringList PickFiles(QWidget* parent, const QString& title, const QString& start, bool many);
QString PickFolder(QWidget* parent, const QString& title, const QString& start);
/// A file to write; an existing one is asked for. @param suffix  added to a name without one.
QString PickNewFile(QWidget* parent, const QString& title, const QString& start, const QString& suffix);

}  // namespace zel::desktop
