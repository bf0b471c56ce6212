#include "programs/desktop/windows/export_option_form.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <algorithm>

#include "host/export/export_formats.h"
#include "programs/desktop/common/text.h"

namespace zel::desktop {

namespace {

using exporter::ExportOption;
using exporter::OptionKind;

QString Sentence(std::string_view help) {
    QString text = Text(help);
    if (!text.isEmpty()) text[0] = text[0].toUpper();
    return text + QStringLiteral(".");
}

/// A list of the choices; of a text with its examples, which can be written over.
QComboBox* MakeList(const ExportOption& option, QWidget* parent) {
    auto* const list = new QComboBox(parent);
    for (const ExportOption::Choice& choice : option.choices) list->addItem(Text(choice.label), Text(choice.name));
    if (option.kind != OptionKind::kText) return list;
    list->setEditable(true);
    list->setInsertPolicy(QComboBox::NoInsert);
    list->setCurrentIndex(std::max(0, list->findData(Text(option.default_text))));
    return list;
}

/// What is chosen or written.
QString ValueOfList(const QComboBox& list) {
    const int labelled = list.findText(list.currentText().trimmed());
    return labelled >= 0 ? list.itemData(labelled).toString() : list.currentText().trimmed();
}

}  // namespace

ExportOptionForm::ExportOptionForm(QWidget* parent) : QWidget(parent) {
    auto* const layout = new QFormLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    for (const ExportOption& option : exporter::ExportOptionTable()) Add(option, *layout);
}

void ExportOptionForm::Add(const ExportOption& option, QFormLayout& layout) {
    const QString name = Text(option.name);
    Row row{&option, nullptr, nullptr};
    if (option.kind == OptionKind::kFlag) {
        auto* const box = new QCheckBox(Text(option.label), this);
        connect(box, &QCheckBox::toggled, this, &ExportOptionForm::Update);
        row.editor = box;
        layout.addRow(box);
    } else {
        QComboBox* const list = MakeList(option, this);
        connect(list, &QComboBox::currentTextChanged, this, &ExportOptionForm::Update);
        row.editor = list;
        row.label = new QLabel(Text(option.label) + QStringLiteral(":"), this);
        row.label->setBuddy(list);
        layout.addRow(row.label, list);
    }
    row.editor->setObjectName(name);
    row.editor->setToolTip(Sentence(option.help));
    m_rows.push_back(row);
}

void ExportOptionForm::SetFormats(const QStringList& formats) {
    m_formats = formats;
    Update();
}

QString ExportOptionForm::ValueOf(const Row& row) {
    if (const auto* const box = qobject_cast<const QCheckBox*>(row.editor))
        return box->isChecked() ? QStringLiteral("on") : QString();
    const QString value = ValueOfList(*qobject_cast<const QComboBox*>(row.editor));
    const std::string_view usual =
        row.option->kind == OptionKind::kChoice ? row.option->choices.front().name : row.option->default_text;
    return value == Text(usual) ? QString() : value;
}

QMap<QString, QString> ExportOptionForm::Values() const {
    QMap<QString, QString> values;
    for (const Row& row : m_rows) {
        if (const QString value = ValueOf(row); !value.isEmpty()) values[Text(row.option->name)] = value;
    }
    return values;
}

void ExportOptionForm::SetValues(const QMap<QString, QString>& values) {
    for (const Row& row : m_rows) {
        const auto value = values.find(Text(row.option->name));
        if (value == values.end()) continue;
        if (auto* const box = qobject_cast<QCheckBox*>(row.editor)) {
            box->setChecked(true);
            continue;
        }
        auto* const list = qobject_cast<QComboBox*>(row.editor);
        const int place = list->findData(*value);
        if (place >= 0) {
            list->setCurrentIndex(place);
        } else if (row.option->kind == OptionKind::kText) {
            list->setEditText(*value);
        }
    }
}

bool ExportOptionForm::HasValue(std::string_view option) const {
    return std::ranges::any_of(m_rows,
                               [&](const Row& row) { return row.option->name == option && !ValueOf(row).isEmpty(); });
}

bool ExportOptionForm::IsEffective(const ExportOption& option) const {
    bool is_taken = false, is_alone = false;
    for (const QString& name : m_formats) {
        const exporter::ExportFormat* const format = exporter::FindExportFormat(name.toStdString());
        if (format == nullptr || !format->Takes(option.name)) continue;
        is_taken = true;
        is_alone = is_alone || !format->Takes(option.needs);
    }
    return is_taken && (is_alone || option.needs.empty() || HasValue(option.needs)) &&
           (option.excluded_by.empty() || !HasValue(option.excluded_by));
}

void ExportOptionForm::Update() {
    bool has_any = false;
    for (const Row& row : m_rows) {
        const bool is_effective = IsEffective(*row.option);
        row.editor->setVisible(is_effective);
        if (row.label != nullptr) row.label->setVisible(is_effective);
        has_any = has_any || is_effective;
    }
    setVisible(has_any);
    Q_EMIT changed();
}

exporter::ExportOptions ExportOptionForm::Options() const {
    exporter::ExportOptions options;
    for (const Row& row : m_rows) {
        const QString value = ValueOf(row);
        if (!value.isEmpty() && IsEffective(*row.option)) row.option->set(options, value.toStdString());
    }
    return options;
}

QString ExportOptionForm::Fault() const {
    exporter::ExportOptions unused;
    for (const Row& row : m_rows) {
        const QString value = ValueOf(row);
        if (value.isEmpty() || !IsEffective(*row.option)) continue;
        const std::string reason = row.option->set(unused, value.toStdString());
        if (!reason.empty()) return Text(row.option->label) + QStringLiteral(": ") + Text(reason);
    }
    return {};
}

}  // namespace zel::desktop
