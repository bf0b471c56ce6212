#pragma once

#include <QFrame>

class QLabel;
class QLineEdit;

namespace zel::desktop {

/// A line in which the text of a tab field is changed, in the picture. Below it stands why the text is not taken.
class FieldEditor : public QFrame {
    Q_OBJECT

  public:
    explicit FieldEditor(QWidget* parent);

    /// Shows the editor with the text of a field, selected.
    void Open(const QString& field, const QString& text);
    /// Shows why the text was not taken. It stays until the text is changed.
    void ShowFault(const QString& fault);
    QString Text() const;
    /// The text differs from that of the field.
    bool IsChanged() const;

  Q_SIGNALS:
    /// The user confirms the text.
    /// @param step  to another field that is opened then: 1 or -1; 0 for none.
    void applied(int step);
    /// The user closes the editor without the text.
    void cancelled();
    /// The user has changed the text.
    void edited();
    /// Its size has changed.
    void resized();

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    bool HandleKey(int key);

    QLabel* m_name;
    QLineEdit* m_text;
    QLabel* m_fault;
    QString m_before;
};

}  // namespace zel::desktop
