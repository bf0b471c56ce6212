#include "programs/desktop/windows/export_dialog.h"

#include <QDir>
#include <QPushButton>
#include <QSettings>
#include <QStandardPaths>

#include "host/export/export_formats.h"
#include "programs/desktop/common/text.h"
#include "programs/desktop/models/message_details.h"
#include "programs/desktop/windows/pick.h"
#include "ui_export_dialog.h"

namespace zel::desktop {

namespace {

const QString kOptionGroup = QStringLiteral("export/options");

}  // namespace

ExportDialog::ExportDialog(Offer offer, QSettings& settings, QWidget* parent)
    : QDialog(parent), m_offer(std::move(offer)), m_settings(settings), m_ui(std::make_unique<Ui::ExportDialog>()) {
    m_ui->setupUi(this);
    m_ui->buttons->button(QDialogButtonBox::Ok)->setText(m_offer.asks_range ? tr("&Next…") : tr("&Export"));
    setWindowTitle(m_offer.asks_range ? tr("Batch export") : tr("Export"));
    m_ui->what->setVisible(!m_offer.asks_range);
    m_ui->selected->setText(m_ui->selected->text() + QStringLiteral(" (%1)").arg(m_offer.selected.size()));
    m_ui->shown->setText(m_ui->shown->text() + QStringLiteral(" (%1)").arg(m_offer.shown.size()));
    m_ui->selected->setEnabled(!m_offer.selected.empty());
    (m_offer.selected.empty() ? m_ui->shown : m_ui->selected)->setChecked(true);
    for (const std::string& disk : m_offer.disks) m_ui->disk->addItem(NameOfDisk(disk), Text(disk));
    m_ui->disk->setCurrentIndex(m_ui->disk->findData(Text(m_offer.disk)));
    const bool asks_disk = m_ui->disk->count() > 1;
    m_ui->disk->setVisible(asks_disk);
    m_ui->disk_label->setVisible(asks_disk);
    FillFormats();
    ReadOptions();
    const QString pictures = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    m_ui->directory->setText(m_settings.value(QStringLiteral("export/directory"), pictures).toString());
    connect(m_ui->browse, &QPushButton::clicked, this, [this] {
        const QString folder = PickFolder(this, tr("Folder to export to"), m_ui->directory->text());
        if (!folder.isEmpty()) m_ui->directory->setText(folder);
    });
    for (QRadioButton* const button : {m_ui->selected, m_ui->shown, m_ui->range})
        connect(button, &QRadioButton::toggled, this, &ExportDialog::Enable);
    connect(m_ui->formats, &QListWidget::itemChanged, this, [this] { m_ui->options->SetFormats(Checked()); });
    connect(m_ui->options, &ExportOptionForm::changed, this, &ExportDialog::Enable);
    connect(m_ui->directory, &QLineEdit::textChanged, this, &ExportDialog::Enable);
    connect(m_ui->buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_ui->buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    m_ui->options->SetFormats(Checked());
}

ExportDialog::~ExportDialog() = default;

void ExportDialog::FillFormats() {
    const QStringList chosen =
        m_settings.value(QStringLiteral("export/formats"), QStringList{QStringLiteral("png")}).toStringList();
    for (const exporter::ExportFormat& format : exporter::ExportFormats()) {
        auto* const item = new QListWidgetItem(Text(format.name) + QStringLiteral(" – ") + Text(format.description));
        item->setData(Qt::UserRole, Text(format.name));
        item->setFlags(Qt::ItemIsUserCheckable | Qt::ItemIsEnabled | Qt::ItemIsSelectable);
        item->setCheckState(chosen.contains(Text(format.name)) ? Qt::Checked : Qt::Unchecked);
        m_ui->formats->addItem(item);
    }
    m_ui->formats->setCurrentRow(0);
    // With all options the dialog is high; the list then gives way on a small screen.
    constexpr int kFrame = 8, kSpacing = 2, kLeastRows = 5;
    m_ui->formats->setSpacing(kSpacing);
    m_ui->formats->setMinimumHeight(kLeastRows * (m_ui->formats->sizeHintForRow(0) + 2 * kSpacing) + kFrame);
    m_ui->formats->setMinimumWidth(m_ui->formats->sizeHintForColumn(0) + 4 * kFrame);
}

void ExportDialog::ReadOptions() {
    QMap<QString, QString> values;
    m_settings.beginGroup(kOptionGroup);
    for (const QString& name : m_settings.childKeys()) values[name] = m_settings.value(name).toString();
    m_settings.endGroup();
    // As earlier releases have kept it.
    if (m_settings.value(QStringLiteral("export/premultiplied")).toBool())
        values[QStringLiteral("premultiplied")] = QStringLiteral("on");
    m_ui->options->SetValues(values);
    m_ui->bag->setChecked(m_settings.value(QStringLiteral("export/bag")).toBool());
}

void ExportDialog::KeepOptions() {
    m_settings.remove(QStringLiteral("export/premultiplied"));
    m_settings.remove(kOptionGroup);
    m_settings.beginGroup(kOptionGroup);
    const QMap<QString, QString> values = m_ui->options->Values();
    for (auto value = values.begin(); value != values.end(); ++value) m_settings.setValue(value.key(), value.value());
    m_settings.endGroup();
    m_settings.setValue(QStringLiteral("export/bag"), m_ui->bag->isChecked());
}

QStringList ExportDialog::Checked() const {
    QStringList names;
    for (int row = 0; row < m_ui->formats->count(); ++row) {
        const QListWidgetItem& item = *m_ui->formats->item(row);
        if (item.checkState() == Qt::Checked) names.append(item.data(Qt::UserRole).toString());
    }
    return names;
}

void ExportDialog::Enable() {
    const bool range = m_ui->range->isChecked();
    m_ui->first->setEnabled(range);
    m_ui->last->setEnabled(range);
    m_ui->disk->setEnabled(range || m_offer.asks_range);
    const QString fault = m_ui->options->Fault();
    m_ui->fault->setText(fault);
    m_ui->fault->setVisible(!fault.isEmpty());
    m_ui->buttons->button(QDialogButtonBox::Ok)
        ->setEnabled(!Checked().isEmpty() && !m_ui->directory->text().trimmed().isEmpty() && fault.isEmpty());
}

void ExportDialog::done(int result) {
    if (result == QDialog::Accepted) {
        m_settings.setValue(QStringLiteral("export/formats"), Checked());
        KeepOptions();
        m_settings.setValue(QStringLiteral("export/directory"), m_ui->directory->text());
    }
    QDialog::done(result);
}

ExportSettings ExportDialog::Settings() const {
    exporter::ExportOptions options = m_ui->options->Options();
    options.bag = m_ui->bag->isChecked();
    return {QDir(m_ui->directory->text().trimmed()).absolutePath(), Checked(), options};
}

std::string ExportDialog::Disk() const {
    return m_ui->disk->currentData().toString().toStdString();
}

ExportDialog::Choice ExportDialog::Chosen() const {
    if (m_ui->range->isChecked()) return {{}, true, m_ui->first->value(), m_ui->last->value()};
    return {m_ui->selected->isChecked() ? m_offer.selected : m_offer.shown};
}

}  // namespace zel::desktop
