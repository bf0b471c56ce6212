#include <QApplication>
#include <QClipboard>
#include <QDrag>
#include <QFile>
#include <QMessageBox>
#include <QMimeData>
#include <QStandardPaths>
#include <QUrl>

#include "base/whole_file.h"
#include "host/library/library.h"
#include "programs/desktop/common/library_wait.h"
#include "programs/desktop/models/picture_image.h"
#include "programs/desktop/widgets/picture_view.h"
#include "programs/desktop/windows/library_panel.h"
#include "programs/desktop/windows/main_window.h"
#include "programs/desktop/windows/pick.h"

namespace zel::desktop {

namespace {

QString FileNameOf(const library::Recording& recording) {
    QString name = TitleOf({recording.disk, recording.number});
    return name.replace(u'/', u'-') + QStringLiteral(".png");
}

}  // namespace

/// The picture with its alpha, as it is recorded.
std::unique_ptr<QMimeData> MainWindow::PictureData() const {
    auto data = std::make_unique<QMimeData>();
    data->setData(QStringLiteral("image/png"),
                  QByteArray(m_current->picture.data(), static_cast<qsizetype>(m_current->picture.size())));
    data->setImageData(ImageOfPng(m_current->picture));
    return data;
}

void MainWindow::CopyPicture() {
    if (!m_current || m_current->picture.empty()) return;
    QApplication::clipboard()->setMimeData(PictureData().release());
}

void MainWindow::DragPicture() {
    if (!m_current || m_current->picture.empty()) return;
    auto data = PictureData();
    const QString file = m_dragged.filePath(FileNameOf(*m_current));
    try {
        base::WriteWholeFile(QFile::encodeName(file).toStdString(), m_current->picture);
        data->setUrls({QUrl::fromLocalFile(file)});
    } catch (const std::runtime_error& error) {
        Warn(QString::fromUtf8(error.what()), tr("The picture can be dragged into programs that take pictures, but not "
                                                 "as a file."));
    }
    auto* const drag = new QDrag(m_picture);
    drag->setMimeData(data.release());
    drag->setPixmap(QPixmap::fromImage(m_picture->Shown().scaled(160, 120, Qt::KeepAspectRatio)));
    drag->exec(Qt::CopyAction);
}

void MainWindow::SavePicture() {
    if (!m_current || m_current->picture.empty()) return;
    const QString folder =
        m_settings
            .value(QStringLiteral("save/directory"), QStandardPaths::writableLocation(QStandardPaths::PicturesLocation))
            .toString();
    const QString file =
        PickNewFile(this, tr("Save picture"), folder + u'/' + FileNameOf(*m_current), QStringLiteral("png"));
    if (file.isEmpty()) return;
    m_settings.setValue(QStringLiteral("save/directory"), file.section(u'/', 0, -2));
    try {
        base::WriteWholeFile(QFile::encodeName(file).toStdString(), m_current->picture);
    } catch (const std::runtime_error& error) {
        Warn(QString::fromUtf8(error.what()), tr("Choose another folder, or free some space, and save it again."));
    }
}

void MainWindow::RemoveSelected() {
    const std::vector<library::RecordingKey> keys = m_library->Selected();
    if (keys.empty()) return;
    const QString what = keys.size() == 1 ? TitleOf(keys.front()) : tr("%1 messages").arg(keys.size());
    if (QMessageBox::question(this, tr("Remove from library"),
                              tr("Remove %1 from the library? The disk's own files stay as they are.").arg(what),
                              QMessageBox::Yes | QMessageBox::Cancel, QMessageBox::Cancel) != QMessageBox::Yes)
        return;
    try {
        library::Library library(m_places.library, library::Access::kWrite, kLibraryWait);
        for (const library::RecordingKey& key : keys) library.Remove(key);
    } catch (const library::LibraryError& error) {
        Warn(QString::fromUtf8(error.what()), tr("Close the program that holds the library, then try again."));
    }
    m_library->Reload();
}

}  // namespace zel::desktop
