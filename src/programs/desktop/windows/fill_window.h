#pragma once

#include <QDialog>
#include <vector>

#include "programs/desktop/work/fill_task.h"
#include "programs/desktop/work/recorded_form.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QSettings;
class QTableView;
class QTimer;

namespace zel::desktop {

class PictureView;
class RecordTable;

/// Fills the tab fields of a message with the records of a table: shows each filled message, lets values be changed,
/// and writes the messages and their pictures. The file with the table is not changed.
class FillWindow : public QDialog {
    Q_OBJECT

  public:
    /// @param title     of the message.
    /// @param settings  not owned; keeps the choices.
    /// @throws std::runtime_error as ReadRecordFile.
    FillWindow(const RecordedForm& form, const host::HostOptions& options, const QString& title, const QString& table,
               QSettings& settings, QWidget* parent);
    ~FillWindow() override;

    void reject() override;

  private:
    void MakeControls();
    QLayout* MakeTableSide();
    QLayout* MakePictureSide();
    QLayout* MakeOutputs();
    void AddShortcuts();
    void Connect();
    void Match();
    void CheckAll();
    void CheckSome();
    void Check(int row);
    void CheckChanged(int row);
    QStringList NameFaults(int row) const;
    void FindSameNames();
    QString NameOf(int row) const;
    int CurrentRow() const;
    fill::Overflow Overflow() const;
    FillOutputs Outputs() const;
    void ShowSummary();
    void ShowRecord();
    void Step(int step);
    void GoToFault();
    void ChooseFolder();
    bool MayReplace(const std::vector<FillItem>& items, const FillOutputs& outputs);
    void Write();
    void ShowResult(const FillResult& result);
    void Enable();

    const RecordedForm m_form;
    const QString m_table_file;
    QSettings& m_settings;
    TableFiller m_filler;
    MessagePreview m_preview;
    FillTask* m_task;
    RecordTable* m_records;
    /// Faults of the file, by record.
    std::vector<QStringList> m_file_faults;
    /// For each record an earlier one with the same name; -1 for none.
    std::vector<int> m_same_name;
    /// The next record to be checked.
    int m_next_check = 0;
    QTimer* m_check_timer;

    QLabel* m_summary;
    QLabel* m_columns;
    QTableView* m_table;
    PictureView* m_picture;
    QLabel* m_faults;
    QComboBox* m_overflow;
    QComboBox* m_names;
    QCheckBox* m_messages;
    QCheckBox* m_pictures;
    QLineEdit* m_folder;
    QPushButton* m_browse;
    QPushButton* m_write;
    QPushButton* m_undo;
    QPushButton* m_redo;
    QPushButton* m_previous;
    QPushButton* m_next;
    QPushButton* m_next_fault;
    QProgressBar* m_progress;
    QLabel* m_result;
};

}  // namespace zel::desktop
