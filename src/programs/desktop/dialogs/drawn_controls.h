#pragma once

#include <QLabel>
#include <QPushButton>
#include <QWidget>

namespace zel::desktop {

// Controls of the module's dialogs for which Qt has no suitable widget.

/// A frame with a title in its upper edge. It is drawn behind the controls, is not their parent, and takes no input.
class GroupFrame : public QWidget {
  public:
    explicit GroupFrame(QWidget* parent);
    void SetTitle(const QString& title);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QString m_title;
};

/// A push button whose text is broken at blanks.
class MultiLineButton : public QPushButton {
  public:
    using QPushButton::QPushButton;

  protected:
    void paintEvent(QPaintEvent* event) override;
};

/// One line of text. A text that is too long is elided and is the tool tip.
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
