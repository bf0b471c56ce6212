#include "pictures/grab.h"

#include <QApplication>
#include <QStyleFactory>
#include <QWidget>
#include <iostream>

namespace zel::pictures {

namespace {

QPalette DarkPalette() {
    QPalette dark(QColor(45, 45, 48), QColor(45, 45, 48));
    dark.setColor(QPalette::Base, QColor(30, 30, 30));
    dark.setColor(QPalette::AlternateBase, QColor(38, 38, 40));
    dark.setColor(QPalette::Highlight, QColor(42, 130, 218));
    dark.setColor(QPalette::ToolTipBase, QColor(60, 60, 64));
    dark.setColor(QPalette::ToolTipText, Qt::white);
    return dark;
}

}  // namespace

void UsePalette(std::string_view palette) {
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    if (palette == "dark") QApplication::setPalette(DarkPalette());
}

void Grab(QWidget& window, const QString& directory, const QString& name) {
    const QString file = directory + u'/' + name + QStringLiteral(".png");
    if (!window.grab().save(file)) std::cerr << file.toStdString() << " cannot be written\n";
}

}  // namespace zel::pictures
