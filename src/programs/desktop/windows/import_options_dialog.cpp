#include "programs/desktop/windows/import_options_dialog.h"

#include <QSettings>
#include <optional>

#include "module/contract/records/video_standard.h"
#include "programs/desktop/windows/pick.h"
#include "ui_import_options_dialog.h"

namespace zel::desktop {

namespace {

/// The combo box has an item for each standard, in the order of the enumeration. An unknown value in the settings
/// selects the default.
int StandardIndex(const QSettings& settings) {
    const std::optional<VideoStandard> standard =
        VideoStandardOf(settings.value(QStringLiteral("import/lines")).toInt());
    return static_cast<int>(standard.value_or(VideoStandard::kNtsc));
}

}  // namespace

ImportOptionsDialog::ImportOptionsDialog(QSettings& settings, QWidget* parent) : QDialog(parent) {
    Ui::ImportOptionsDialog ui;
    ui.setupUi(this);
    ui.lines->setCurrentIndex(StandardIndex(settings));
    ui.maps->setText(settings.value(QStringLiteral("import/maps")).toString());
    ui.typefaces->setChecked(settings.value(QStringLiteral("import/typefaces"), false).toBool());
    ui.baseline->setChecked(settings.value(QStringLiteral("import/baseline"), true).toBool());
    connect(ui.browse, &QPushButton::clicked, this, [this, ui] {
        const QString folder = PickFolder(this, tr("Folder of the name lists"), ui.maps->text());
        if (!folder.isEmpty()) ui.maps->setText(folder);
    });
    connect(ui.buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(ui.buttons, &QDialogButtonBox::accepted, this, [this, ui, &settings] {
        settings.setValue(QStringLiteral("import/lines"), ActiveLines(VideoStandard(ui.lines->currentIndex())));
        settings.setValue(QStringLiteral("import/maps"), ui.maps->text().trimmed());
        settings.setValue(QStringLiteral("import/typefaces"), ui.typefaces->isChecked());
        settings.setValue(QStringLiteral("import/baseline"), ui.baseline->isChecked());
        accept();
    });
}

}  // namespace zel::desktop
