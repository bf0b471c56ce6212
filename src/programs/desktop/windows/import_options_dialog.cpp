#include "programs/desktop/windows/import_options_dialog.h"

#include "programs/desktop/windows/pick.h"
#include "programs/desktop/work/import_options.h"
#include "ui_import_options_dialog.h"

namespace zel::desktop {

ImportOptionsDialog::ImportOptionsDialog(QSettings& settings, QWidget* parent) : QDialog(parent) {
    Ui::ImportOptionsDialog ui;
    ui.setupUi(this);
    for (const VideoStandard standard : {VideoStandard::kNtsc, VideoStandard::kPal}) {
        ui.lines->addItem(tr("%1, %2 lines").arg(QLatin1String(NameOf(standard))).arg(ActiveLines(standard)),
                          ActiveLines(standard));
    }
    const ImportOptions options = ImportOptions::Load(settings);
    ui.lines->setCurrentIndex(ui.lines->findData(ActiveLines(options.standard)));
    ui.maps->setText(options.name_lists);
    ui.typefaces->setChecked(options.typefaces);
    ui.baseline->setChecked(options.baseline);
    connect(ui.browse, &QPushButton::clicked, this, [this, ui] {
        const QString folder = PickFolder(this, tr("Folder of the name lists"), ui.maps->text());
        if (!folder.isEmpty()) ui.maps->setText(folder);
    });
    connect(ui.buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(ui.buttons, &QDialogButtonBox::accepted, this, [this, ui, &settings] {
        ImportOptions chosen;
        chosen.standard = VideoStandardOf(ui.lines->currentData().toInt()).value_or(chosen.standard);
        chosen.name_lists = ui.maps->text().trimmed();
        chosen.typefaces = ui.typefaces->isChecked();
        chosen.baseline = ui.baseline->isChecked();
        chosen.Save(settings);
        accept();
    });
}

}  // namespace zel::desktop
