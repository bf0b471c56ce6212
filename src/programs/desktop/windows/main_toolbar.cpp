#include "programs/desktop/windows/main_toolbar.h"

#include <QAction>
#include <QMainWindow>
#include <QStyle>
#include <QToolBar>

namespace zel::desktop {

namespace {

struct Tool {
    /// Object name; null for a separator.
    const char* action;
    /// Shorter than in the menu.
    const char* text;
    /// Name in the icon theme; null for none.
    const char* icon;
    /// If the theme has no such icon.
    QStyle::StandardPixmap fallback = QStyle::SP_CustomBase;
};

constexpr Tool kTools[] = {
    {"import_folder", QT_TR_NOOP("Import"), "document-open", QStyle::SP_DirOpenIcon},
    {"fetch", QT_TR_NOOP("Fetch"), "folder-remote", QStyle::SP_DriveNetIcon},
    {nullptr, nullptr, nullptr},
    {"save_picture", QT_TR_NOOP("Save"), "document-save-as", QStyle::SP_DialogSaveButton},
    {"export", QT_TR_NOOP("Export"), "document-export", QStyle::SP_ArrowForward},
    {nullptr, nullptr, nullptr},
    {"fit", QT_TR_NOOP("Fit"), "zoom-fit-best"},
    {"actual_pixels", QT_TR_NOOP("Actual pixels"), "zoom-original"},
    {nullptr, nullptr, nullptr},
    {"key", QT_TR_NOOP("Key"), nullptr},
    {"field_frames", QT_TR_NOOP("Tab fields"), nullptr},
    {"safe_areas", QT_TR_NOOP("Safe areas"), nullptr},
};

QIcon IconOf(const Tool& tool, const QStyle& style) {
    if (tool.icon == nullptr) return {};
    const QString name = QLatin1String(tool.icon);
    if (tool.fallback == QStyle::SP_CustomBase) return QIcon::fromTheme(name);
    return QIcon::fromTheme(name, style.standardIcon(tool.fallback));
}

QString ToolTipOf(const QAction& action) {
    const QString text = action.text().remove(u'&').remove(u'…');
    const QString keys = action.shortcut().toString(QKeySequence::NativeText);
    return keys.isEmpty() ? text : text + QStringLiteral(" (") + keys + u')';
}

}  // namespace

QToolBar* AddMainToolbar(QMainWindow& window) {
    QToolBar* const bar = window.addToolBar(QMainWindow::tr("Toolbar"));
    bar->setObjectName(QStringLiteral("toolbar"));
    bar->setMovable(false);
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    const int side = window.style()->pixelMetric(QStyle::PM_SmallIconSize);
    bar->setIconSize({side, side});
    for (const Tool& tool : kTools) {
        if (tool.action == nullptr) {
            bar->addSeparator();
            continue;
        }
        QAction* const action = window.findChild<QAction*>(QLatin1String(tool.action));
        action->setIcon(IconOf(tool, *window.style()));
        action->setIconVisibleInMenu(false);
        action->setIconText(QMainWindow::tr(tool.text));
        action->setToolTip(ToolTipOf(*action));
        bar->addAction(action);
    }
    return bar;
}

}  // namespace zel::desktop
