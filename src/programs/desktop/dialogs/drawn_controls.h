#pragma once

#include <QLabel>
#include <QPushButton>
#include <QWidget>

namespace zel::desktop {

/// Controls that no widget shows as the module's dialogs have them.

/// A frame with a title in its upper line. It lies behind the controls, is nobody's parent, and takes no input.
class GroupFrame : public QWidget {
  public:
    explicit GroupFrame(QWidget* parent);
    void SetTitle(const QString& title);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QString m_title;
};

/// A push button whose text breaks at blanks.
class MultiLineButton : public QPushButton {
  public:
    using QPushButton::QPushButton;

  protected:
    void paintEvent(QPaintEvent* event) override;
};

/// A line of text; one that is too long ends in dots, and is told whole by the tool tip.
class LineLabel : public QLabel {
  public:
    explicit LineLabel(QWidget* parent);
    void SetLine(const QString& line);

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    void Fit();

    QString m_line;
};

}  // namespace zel::desktop
