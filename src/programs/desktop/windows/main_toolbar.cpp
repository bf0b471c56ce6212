#include <QAction>
#include <QMenu>
#include <QStyle>
#include <QToolBar>

#include "programs/desktop/widgets/start_page.h"
#include "programs/desktop/windows/main_window.h"

namespace zel::desktop {

namespace {

struct Tool {
    const char* action;  // null parts groups
    const char* text;    // shorter than in the menu
    const char* icon;    // by the platform's names; null for none
    QStyle::StandardPixmap otherwise = QStyle::SP_CustomBase;
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
    if (tool.otherwise == QStyle::SP_CustomBase) return QIcon::fromTheme(name);
    return QIcon::fromTheme(name, style.standardIcon(tool.otherwise));
}

QString ToolTipOf(const QAction& action) {
    const QString text = action.text().remove(u'&').remove(u'…');
    const QString keys = action.shortcut().toString(QKeySequence::NativeText);
    return keys.isEmpty() ? text : text + QStringLiteral(" (") + keys + u')';
}

}  // namespace

/// The few actions that matter; all of them are in the menus too.
void MainWindow::MakeToolbar() {
    QToolBar* const bar = addToolBar(tr("Toolbar"));
    bar->setObjectName(QStringLiteral("toolbar"));
    bar->setMovable(false);
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    const int side = style()->pixelMetric(QStyle::PM_SmallIconSize);
    bar->setIconSize({side, side});
    for (const Tool& tool : kTools) {
        if (tool.action == nullptr) {
            bar->addSeparator();
            continue;
        }
        QAction* const action = findChild<QAction*>(QLatin1String(tool.action));
        action->setIcon(IconOf(tool, *style()));
        action->setIconVisibleInMenu(false);
        action->setIconText(tr(tool.text));
        action->setToolTip(ToolTipOf(*action));
        bar->addAction(action);
    }
    m_panels->addSeparator();
    m_panels->addAction(bar->toggleViewAction());
    const auto way = [this](const char* name) { return findChild<QAction*>(QLatin1String(name)); };
    m_start->Offer({{way("import_folder"), tr("Every message in it, with its fonts")},
                    {way("import"), tr("One message or a range, in the module's dialog")},
                    {way("fetch"), tr("Messages and the fonts that they name")}});
}

}  // namespace zel::desktop
