#pragma once

#include <QDialog>

class QMenuBar;
class QTextBrowser;

namespace zel::desktop {

/// A short guide, or the keys of the program. It does not block the other windows.
class HelpWindow : public QDialog {
    Q_OBJECT

  public:
    explicit HelpWindow(QWidget* parent);

    void ShowGuide();
    /// @param menus  their actions and shortcuts are listed.
    void ShowKeys(const QMenuBar& menus);

  private:
    void ShowPage(const QString& title, const QString& html);

    QTextBrowser* m_page;
};

}  // namespace zel::desktop
