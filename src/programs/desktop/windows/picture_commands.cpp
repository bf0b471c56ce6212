#include "programs/desktop/windows/picture_commands.h"

#include <QApplication>
#include <QClipboard>
#include <QDesktopServices>
#include <QDrag>
#include <QFile>
#include <QFileInfo>
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

const QString kSaveSetting = QStringLiteral("save/directory");
/// Pictures and documents of the messages that can be restored are kept in memory up to this size.
constexpr std::size_t kMostUndoBytes = 256 << 20;

QString FileNameOf(const library::RecordingKey& key, PictureForm form = PictureForm::kStraight) {
    return FileNameFrom(TitleOf(key)) + FileEnding(form);
}

library::RecordingKey RecordingKeyOf(const library::Recording& recording) {
    return {recording.disk, recording.number};
}

QString TitleOfSave(PictureForm form) {
    return form == PictureForm::kKey             ? PictureCommands::tr("Save key")
           : form == PictureForm::kPremultiplied ? PictureCommands::tr("Save picture multiplied by its alpha")
                                                 : PictureCommands::tr("Save picture");
}

/// Names of the files in a folder that would be replaced by the pictures of these messages.
QStringList FilesPresent(const std::vector<library::RecordingKey>& keys, PictureForm form, const QString& folder) {
    QStringList names;
    for (const library::RecordingKey& key : keys) {
        const QString name = FileNameOf(key, form);
        if (QFileInfo::exists(folder + u'/' + name)) names.append(name);
    }
    return names;
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
    const QString file = m_dragged.filePath(FileNameOf(RecordingKeyOf(*m_workspace.current)));
    try {
        base::WriteWholeFile(QFile::encodeName(file).toStdString(), m_workspace.current->picture);
        data->setUrls({QUrl::fromLocalFile(file)});
    } catch (const std::runtime_error& error) {
        m_workspace.notice.Warn(
            Text(error.what()),
            tr("The picture can be dragged into programs that accept pictures, but not as a file."));
    }
    StartDrag(std::move(data));
}

void PictureCommands::StartDrag(std::unique_ptr<QMimeData> data) {
    auto* const drag = new QDrag(&m_view);
    drag->setMimeData(data.release());
    if (!m_view.Shown().isNull())
        drag->setPixmap(QPixmap::fromImage(m_view.Shown().scaled(160, 120, Qt::KeepAspectRatio)));
    drag->exec(Qt::CopyAction);
}

void PictureCommands::DragSelected() {
    const std::vector<library::RecordingKey> keys = m_workspace.library.Selected();
    if (keys.size() == 1) return Drag();
    try {
        QList<QUrl> urls;
        for (const QString& file : WritePictures(keys, PictureForm::kStraight, m_dragged.path()))
            urls.append(QUrl::fromLocalFile(file));
        if (urls.isEmpty()) return;
        auto data = std::make_unique<QMimeData>();
        data->setUrls(urls);
        StartDrag(std::move(data));
    } catch (const std::runtime_error& error) {
        m_workspace.notice.Warn(Text(error.what()), tr("Nothing was dragged."));
    }
}

/// Writes the pictures of these messages, under names that differ. A message without a picture is left out.
/// @return the files.
QStringList PictureCommands::WritePictures(const std::vector<library::RecordingKey>& keys, PictureForm form,
                                           const QString& folder) const {
    library::Library library(m_workspace.places.library, library::Access::kRead, kLibraryWait);
    QStringList files;
    for (const library::RecordingKey& key : keys) {
        const std::string picture = library.Picture(key);
        if (picture.empty()) continue;
        const QString stem = folder + u'/' + FileNameFrom(TitleOf(key));
        QString file = stem + FileEnding(form);
        for (int count = 2; files.contains(file, Qt::CaseInsensitive); ++count)
            file = stem + QStringLiteral(" (%1)").arg(count) + FileEnding(form);
        WriteNewFile(file, PngIn(form, picture));
        files.append(file);
    }
    return files;
}

void PictureCommands::CopyText() {
    QStringList texts = m_workspace.library.SelectedTexts();
    // The texts of tab fields may have been changed.
    if (texts.size() == 1 && m_workspace.window.isWindowModified()) texts = {Text(m_workspace.current->text)};
    if (texts.isEmpty()) return;
    QApplication::clipboard()->setText(texts.join(QStringLiteral("\n\n")));
    m_workspace.status.ShowResult(
        tr("text of %1 copied").arg(Counted(static_cast<std::size_t>(texts.size()), "message", "messages")));
}

void PictureCommands::Save(PictureForm form) {
    const std::vector<library::RecordingKey> keys = m_workspace.library.Selected();
    if (keys.size() > 1) {
        SaveSelected(keys, form);
    } else {
        SaveOne(form);
    }
}

QString PictureCommands::SaveFolder() const {
    const QString pictures = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    return m_workspace.settings.value(kSaveSetting, pictures).toString();
}

void PictureCommands::SaveOne(PictureForm form) {
    if (!HasPicture()) return;
    const QString file = PickNewPicture(&m_workspace.window, TitleOfSave(form),
                                        SaveFolder() + u'/' + FileNameOf(RecordingKeyOf(*m_workspace.current), form));
    if (file.isEmpty()) return;
    m_workspace.settings.setValue(kSaveSetting, QFileInfo(file).absolutePath());
    m_workspace.BeginAction();
    try {
        WriteNewFile(file, PngIn(form, m_workspace.current->picture));
        m_workspace.status.ShowResult(tr("%1 saved").arg(file));
    } catch (const std::runtime_error& error) {
        m_workspace.notice.Warn(Text(error.what()), tr("Choose another folder or free disk space, then save again."));
    }
}

void PictureCommands::SaveSelected(const std::vector<library::RecordingKey>& keys, PictureForm form) {
    const QString folder = PickFolder(&m_workspace.window, tr("Folder for %1 pictures").arg(keys.size()), SaveFolder());
    if (folder.isEmpty()) return;
    m_workspace.settings.setValue(kSaveSetting, folder);
    m_workspace.BeginAction();
    const QStringList present = FilesPresent(keys, form, folder);
    if (!present.isEmpty() && RunBox(&m_workspace.window, QMessageBox::Question, tr("Save pictures"),
                                     tr("Replace these files in %1?\n%2").arg(folder, FirstLines(present)),
                                     QMessageBox::Yes | QMessageBox::Cancel, QMessageBox::Cancel) != QMessageBox::Yes)
        return;
    try {
        const qsizetype count = WritePictures(keys, form, folder).size();
        m_workspace.status.ShowResult(
            tr("%1 saved in %2").arg(Counted(static_cast<std::size_t>(count), "picture", "pictures"), folder));
    } catch (const std::runtime_error& error) {
        m_workspace.notice.Warn(Text(error.what()), tr("Choose another folder or free disk space, then save again."));
    }
}

void PictureCommands::ShowInFolder() {
    const QString file = m_workspace.library.CurrentSource();
    const QString folder = QFileInfo(file).absolutePath();
    m_workspace.BeginAction();
    if (file.isEmpty() || !QFileInfo(folder).isDir())
        return m_workspace.notice.Warn(tr("The folder of this message, %1, does not exist any more.").arg(folder));
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(folder)))
        m_workspace.notice.Warn(tr("There is no program that shows %1.").arg(folder));
}

void PictureCommands::RemoveSelected() {
    const std::vector<library::RecordingKey> keys = m_workspace.library.Selected();
    if (keys.empty()) return;
    m_workspace.BeginAction();
    try {
        Remove(keys);
    } catch (const std::runtime_error& error) {
        m_workspace.notice.Warn(Text(error.what()), tr("Close the program that is using the library, then try again."));
    }
    m_workspace.library.Reload();
    Q_EMIT undoChanged();
}

void PictureCommands::Remove(const std::vector<library::RecordingKey>& keys) {
    library::Library library(m_workspace.places.library, library::Access::kWrite, kLibraryWait);
    std::vector<library::Recording> removed;
    std::size_t bytes = 0;
    for (const library::RecordingKey& key : keys) {
        std::optional<library::Recording> recording = library.Find(key);
        if (!recording || bytes > kMostUndoBytes) continue;
        bytes += recording->picture.size() + recording->document.size();
        removed.push_back(std::move(*recording));
    }
    const bool can_undo = bytes <= kMostUndoBytes;
    if (!can_undo &&
        RunBox(&m_workspace.window, QMessageBox::Question, tr("Remove from library"),
               tr("Remove %1 messages from the library? They are too many to be restored. The files of the "
                  "disk are not changed.")
                   .arg(keys.size()),
               QMessageBox::Yes | QMessageBox::Cancel, QMessageBox::Cancel) != QMessageBox::Yes)
        return;
    m_removed = can_undo ? std::move(removed) : std::vector<library::Recording>();
    m_removed_from = m_workspace.places.library;
    for (const library::RecordingKey& key : keys) library.Remove(key);
    const QString text = Counted(keys.size(), "message removed", "messages removed");
    m_workspace.status.ShowResult(can_undo ? tr("%1; Ctrl+Z restores").arg(text) : text);
}

void PictureCommands::UndoRemoval() {
    if (m_removed.empty()) return;
    m_workspace.BeginAction();
    try {
        library::Library library(m_removed_from, library::Access::kWrite, kLibraryWait);
        std::erase_if(m_removed, [&](const library::Recording& recording) {
            return library.Has({recording.disk, recording.number});
        });
        library.Record(m_removed);
        m_workspace.status.ShowResult(Counted(m_removed.size(), "message restored", "messages restored"));
        if (!m_removed.empty()) m_workspace.library.SelectSoon({m_removed.front().disk, m_removed.front().number});
        m_removed.clear();
    } catch (const library::LibraryError& error) {
        m_workspace.notice.Warn(Text(error.what()), tr("Close the program that is using the library, then try again."));
    }
    m_workspace.library.Reload();
    Q_EMIT undoChanged();
}

}  // namespace zel::desktop
