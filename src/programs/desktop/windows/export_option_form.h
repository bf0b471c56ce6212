#pragma once

#include <QMap>
#include <QStringList>
#include <QWidget>
#include <string>
#include <vector>

#include "host/export/option_table.h"

class QFormLayout;
class QLabel;

namespace zel::desktop {

/// The options of the chosen formats, from the table of options. Those that would have no effect are hidden.
class ExportOptionForm : public QWidget {
    Q_OBJECT

  public:
    explicit ExportOptionForm(QWidget* parent = nullptr);

    /// @param formats  names in exporter::ExportFormats.
    void SetFormats(const QStringList& formats);

    /// What the user has chosen, by the names of options. A value that is the default is left out.
    QMap<QString, QString> Values() const;
    void SetValues(const QMap<QString, QString>& values);

    /// The options that have an effect. Meaningful without a Fault.
    exporter::ExportOptions Options() const;
    /// What is wrong with a value; empty if all are right.
    QString Fault() const;

  Q_SIGNALS:
    void changed();

  private:
    struct Row {
        const exporter::ExportOption* option;
        /// Null for a check box, which has its own text.
        QLabel* label;
        QWidget* editor;
    };

    void Add(const exporter::ExportOption& option, QFormLayout& layout);
    void Update();
    /// The value of a row, empty for the default. A check box has "on".
    static QString ValueOf(const Row& row);
    bool HasValue(std::string_view option) const;
    bool IsEffective(const exporter::ExportOption& option) const;

    std::vector<Row> m_rows;
    QStringList m_formats;
};

}  // namespace zel::desktop
