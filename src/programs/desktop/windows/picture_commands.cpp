#include "programs/desktop/windows/picture_commands.h"

#include <QApplication>
#include <QClipboard>
#include <QDrag>
#include <QFile>
#include <QMainWindow>
#include <QMimeData>
#include <QSettings>
#include <QStandardPaths>
#include <QUrl>

#include "base/whole_file.h"
#include "host/library/library.h"
#include "programs/desktop/common/library_wait.h"
#include "programs/desktop/common/plain_text.h"
#include "programs/desktop/common/text.h"
#include "programs/desktop/models/message_details.h"
#include "programs/desktop/models/picture_image.h"
#include "programs/desktop/widgets/notice_bar.h"
#include "programs/desktop/widgets/picture_view.h"
#include "programs/desktop/widgets/status_line.h"
#include "programs/desktop/windows/box.h"
#include "programs/desktop/windows/library_panel.h"
#include "programs/desktop/windows/pick.h"
#include "programs/desktop/work/new_file.h"

namespace zel::desktop {

namespace {

QString FileNameOf(const library::Recording& recording) {
    return FileNameFrom(TitleOf({recording.disk, recording.number})) + QStringLiteral(".png");
}

}  // namespace

bool PictureCommands::HasPicture() const {
    return m_workspace.current && !m_workspace.current->picture.empty();
}

/// The picture with its alpha: the recorded PNG file and, for other programs, an image.
std::unique_ptr<QMimeData> PictureCommands::Data() const {
    const std::string& png = m_workspace.current->picture;
    auto data = std::make_unique<QMimeData>();
    data->setData(QStringLiteral("image/png"), QByteArray(png.data(), static_cast<qsizetype>(png.size())));
    data->setImageData(ImageOfPng(png));
    return data;
}

void PictureCommands::Copy() {
    if (!HasPicture()) return;
    QApplication::clipboard()->setMimeData(Data().release());
    m_workspace.status.ShowResult(tr("picture copied"));
}

void PictureCommands::Drag() {
    if (!HasPicture()) return;
    auto data = Data();
    const QString file = m_dragged.filePath(FileNameOf(*m_workspace.current));
    try {
        base::WriteWholeFile(QFile::encodeName(file).toStdString(), m_workspace.current->picture);
        data->setUrls({QUrl::fromLocalFile(file)});
    } catch (const std::runtime_error& error) {
        m_workspace.notice.Warn(
            Text(error.what()),
            tr("The picture can be dragged into programs that accept pictures, but not as a file."));
    }
    auto* const drag = new QDrag(&m_view);
    drag->setMimeData(data.release());
    drag->setPixmap(QPixmap::fromImage(m_view.Shown().scaled(160, 120, Qt::KeepAspectRatio)));
    drag->exec(Qt::CopyAction);
}

void PictureCommands::Save() {
    if (!HasPicture()) return;
    const QString setting = QStringLiteral("save/directory");
    const QString pictures = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    const QString folder = m_workspace.settings.value(setting, pictures).toString();
    const QString file =
        PickNewPicture(&m_workspace.window, tr("Save picture"), folder + u'/' + FileNameOf(*m_workspace.current));
    if (file.isEmpty()) return;
    m_workspace.settings.setValue(setting, file.section(u'/', 0, -2));
    m_workspace.BeginAction();
    try {
        WriteNewFile(file, m_workspace.current->picture);
        m_workspace.status.ShowResult(tr("%1 saved").arg(file));
    } catch (const std::runtime_error& error) {
        m_workspace.notice.Warn(Text(error.what()), tr("Choose another folder or free disk space, then save again."));
    }
}

void PictureCommands::RemoveSelected() {
    const std::vector<library::RecordingKey> keys = m_workspace.library.Selected();
    if (keys.empty()) return;
    const QString what = keys.size() == 1 ? TitleOf(keys.front()) : tr("%1 messages").arg(keys.size());
    if (RunBox(&m_workspace.window, QMessageBox::Question, tr("Remove from library"),
               tr("Remove %1 from the library? The files of the disk are not changed.").arg(what),
               QMessageBox::Yes | QMessageBox::Cancel, QMessageBox::Cancel) != QMessageBox::Yes)
        return;
    m_workspace.BeginAction();
    try {
        library::Library library(m_workspace.places.library, library::Access::kWrite, kLibraryWait);
        for (const library::RecordingKey& key : keys) library.Remove(key);
        m_workspace.status.ShowResult(Counted(keys.size(), "message removed", "messages removed"));
    } catch (const library::LibraryError& error) {
        m_workspace.notice.Warn(Text(error.what()), tr("Close the program that is using the library, then try again."));
    }
    m_workspace.library.Reload();
}

}  // namespace zel::desktop
