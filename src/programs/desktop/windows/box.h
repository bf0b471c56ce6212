#pragma once

#include <QMessageBox>

namespace zel::desktop {

/// Shows a box whose text may contain texts from files: it is shown as plain text.
/// @param standard  pressed by Enter; NoButton for the first.
/// @return the pressed button; the escape button if the box was closed.
QMessageBox::StandardButton RunBox(QWidget* parent, QMessageBox::Icon icon, const QString& title, const QString& text,
                                   QMessageBox::StandardButtons buttons = QMessageBox::Ok,
                                   QMessageBox::StandardButton standard = QMessageBox::NoButton);

}  // namespace zel::desktop
