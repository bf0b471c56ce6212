#include "programs/desktop/windows/box.h"

#include "programs/desktop/common/line_breaks.h"

namespace zel::desktop {

QMessageBox::StandardButton RunBox(QWidget* parent, QMessageBox::Icon icon, const QString& title, const QString& text,
                                   QMessageBox::StandardButtons buttons, QMessageBox::StandardButton standard) {
    QMessageBox box(icon, title, QString(), buttons, parent);
    box.setTextFormat(Qt::PlainText);
    box.setText(WithBreaks(text));
    box.setDefaultButton(standard);
    return static_cast<QMessageBox::StandardButton>(box.exec());
}

}  // namespace zel::desktop
