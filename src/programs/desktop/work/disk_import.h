#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <memory>
#include <string>
#include <vector>

#include "host/reference_host.h"
#include "programs/desktop/work/message_files.h"

class QTimer;

namespace zel::desktop {

class LibraryWriter;

/// What an import came to.
struct ImportSummary {
    int recorded = 0;
    int unchanged = 0;     ///< recorded before, from files that are still the same.
    QStringList failures;  ///< a line for each message that couldn't be imported.
    QString stopped_by;    ///< what ended it before its end, such as a full disk.
    bool cancelled = false;

    /// "12 messages imported, 3 unchanged"
    QString Text() const;
};

/// Imports messages without a dialog, one in a turn of the event loop, so that the windows live on, and records them.
/// The module runs on this thread, pictures are encoded and recorded on others.
class DiskImport : public QObject {
    Q_OBJECT

  public:
    explicit DiskImport(std::string library, QObject* parent = nullptr);
    ~DiskImport() override;

    /// Begins, or goes on behind what is under way. @throws LibraryError
    void Add(const MessageSource& source, const host::HostOptions& options);

    bool IsRunning() const noexcept { return m_writer != nullptr; }
    /// While the module is busy with something else.
    void SetPaused(bool paused);
    /// Ends the import; what has arrived is recorded.
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

    const std::string m_library_file;
    QTimer* m_timer;
    std::vector<Item> m_items;
    std::size_t m_next = 0;
    ImportSummary m_summary;
    std::unique_ptr<library::Library> m_library;
    std::unique_ptr<LibraryWriter> m_writer;
};

}  // namespace zel::desktop
