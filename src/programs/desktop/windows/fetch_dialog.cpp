#include "programs/desktop/windows/fetch_dialog.h"

#include <QDir>
#include <QPushButton>
#include <QSettings>
#include <QStandardPaths>

#include "programs/desktop/windows/pick.h"
#include "ui_fetch_dialog.h"

namespace zel::desktop {

namespace {

QString DefaultFolder() {
    return QStandardPaths::writableLocation(QStandardPaths::DownloadLocation) + QStringLiteral("/ZelTrans");
}

}  // namespace

FetchDialog::FetchDialog(QSettings& settings, QWidget* parent)
    : QDialog(parent), m_settings(settings), m_ui(std::make_unique<Ui::FetchDialog>()) {
    m_ui->setupUi(this);
    m_ui->buttons->button(QDialogButtonBox::Ok)->setText(tr("Fe&tch"));
    m_ui->error->hide();
    m_settings.beginGroup(QStringLiteral("fetch"));
    m_ui->url->setText(m_settings.value(QStringLiteral("url")).toString());
    m_ui->user->setText(m_settings.value(QStringLiteral("user")).toString());
    m_ui->selection->setText(m_settings.value(QStringLiteral("selection"), m_ui->selection->text()).toString());
    m_ui->directory->setText(m_settings.value(QStringLiteral("directory"), DefaultFolder()).toString());
    m_ui->tls->setCurrentIndex(m_settings.value(QStringLiteral("tls"), 1).toInt());
    m_ui->passive->setChecked(m_settings.value(QStringLiteral("passive"), true).toBool());
    m_settings.endGroup();
    connect(m_ui->browse, &QPushButton::clicked, this, [this] {
        const QString folder = PickFolder(this, tr("Folder to fetch to"), m_ui->directory->text());
        if (!folder.isEmpty()) m_ui->directory->setText(folder);
    });
    connect(m_ui->buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_ui->buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

FetchDialog::~FetchDialog() = default;

FetchSettings FetchDialog::Settings() const {
    FetchSettings settings;
    settings.url = m_ui->url->text().trimmed();
    settings.user = m_ui->user->text();
    settings.password = m_ui->password->text();
    settings.selection = m_ui->selection->text();
    const QString directory = m_ui->directory->text().trimmed();
    if (!directory.isEmpty()) settings.directory = QDir(directory).absolutePath();
    settings.overwrite = m_ui->overwrite->isChecked();
    settings.fonts = m_ui->fonts->isChecked();
    settings.passive = m_ui->passive->isChecked();
    constexpr ftp::Tls kChoices[] = {ftp::Tls::kOff, ftp::Tls::kTry, ftp::Tls::kRequire};
    settings.tls = kChoices[qBound(0, m_ui->tls->currentIndex(), 2)];
    return settings;
}

bool FetchDialog::ImportsAfterwards() const {
    return m_ui->import->isChecked();
}

void FetchDialog::accept() {
    const FetchSettings settings = Settings();
    const QString error = settings.Error();
    m_ui->error->setVisible(!error.isEmpty());
    m_ui->error->setText(error);
    if (!error.isEmpty()) return;
    m_settings.beginGroup(QStringLiteral("fetch"));
    // A URL may contain a password, which is not stored.
    if (!settings.url.contains(u'@')) m_settings.setValue(QStringLiteral("url"), settings.url);
    m_settings.setValue(QStringLiteral("user"), settings.user);
    m_settings.setValue(QStringLiteral("selection"), settings.selection);
    m_settings.setValue(QStringLiteral("directory"), settings.directory);
    m_settings.setValue(QStringLiteral("tls"), m_ui->tls->currentIndex());
    m_settings.setValue(QStringLiteral("passive"), settings.passive);
    m_settings.endGroup();
    QDialog::accept();
}

}  // namespace zel::desktop
