#pragma once

#include <QDialog>
#include <vector>

#include "host/library/recording.h"
#include "programs/desktop/work/message_warnings.h"

namespace zel::desktop {

class DetailTable;

/// Lists the warnings of an import, one line each. It does not block the other windows.
class WarningsWindow : public QDialog {
    Q_OBJECT

  public:
    explicit WarningsWindow(QWidget* parent);

    void Show(const std::vector<MessageWarnings>& warnings);

  Q_SIGNALS:
    /// The user opens the message of a warning.
    void chosen(const library::RecordingKey& key);

  private:
    DetailTable* m_table;
    /// The message of each line.
    std::vector<library::RecordingKey> m_keys;
};

}  // namespace zel::desktop
