#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <memory>
#include <string>
#include <vector>

#include "host/reference_host.h"
#include "programs/desktop/work/message_files.h"
#include "programs/desktop/work/message_warnings.h"

class QTimer;

namespace zel::desktop {

class LibraryWriter;

/// The result of an import.
struct ImportSummary {
    int recorded = 0;
    /// Messages skipped, since they were recorded from the same files with the same options.
    int unchanged = 0;
    /// One line for each message that could not be imported.
    QStringList failures;
    /// Of the recorded messages that have any.
    std::vector<MessageWarnings> warnings;
    /// The error that ended the import early, such as a full disk; else empty.
    QString stopped_by;
    bool cancelled = false;

    /// "12 messages imported, 3 unchanged"
    QString Text() const;
};

/// Imports messages without a dialog and records them, one message per iteration of the event loop, so that the windows
/// stay responsive. The module runs on this thread; pictures are encoded and recorded on others.
class DiskImport : public QObject {
    Q_OBJECT

  public:
    explicit DiskImport(QObject* parent = nullptr);
    /// Cancels the import without a signal.
    ~DiskImport() override;

    /// Starts an import, or appends to the running one.
    /// @param file  library; the same one while an import is running.
    /// @throws LibraryError
    void Add(const std::string& file, const MessageSource& source, const host::HostOptions& options);

    bool IsRunning() const noexcept { return m_writer != nullptr; }
    /// Pauses the import while the module is used otherwise.
    void SetPaused(bool paused);
    /// Ends the import. Messages that have arrived are recorded.
    void Cancel();

  Q_SIGNALS:
    void progressed(int done, int total, const QString& name);
    void recorded();
    void finished(const desktop::ImportSummary& summary);

  private:
    struct Item {
        MessageFile message;
        std::string font_directory;
        host::HostOptions options;
    };

    void Step();
    void Import(const Item& item);
    bool IsUnchanged(const Item& item, const std::string& options);
    void Finish();

    QTimer* m_timer;
    std::vector<Item> m_items;
    std::size_t m_next = 0;
    ImportSummary m_summary;
    std::unique_ptr<library::Library> m_library;
    std::unique_ptr<LibraryWriter> m_writer;
};

}  // namespace zel::desktop
