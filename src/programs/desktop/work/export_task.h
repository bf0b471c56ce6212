#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "host/export/export_options.h"
#include "host/library/recording.h"

namespace zel::desktop {

/// How messages are exported.
struct ExportSettings {
    QString directory;
    /// Names in exporter::ExportFormats.
    QStringList formats;
    exporter::ExportOptions options;
};

/// The result of an export.
struct ExportResult {
    int messages = 0, files = 0;
    QStringList failures;
    /// The error that prevented or ended the export; else empty.
    QString stopped_by;
    bool cancelled = false;

    /// "12 messages exported, 26 files in DIRECTORY"
    QString Text(const QString& directory) const;
};

/// Exports messages of a library on its own thread.
class ExportTask : public QObject {
    Q_OBJECT

  public:
    ExportTask(std::string library, std::vector<library::RecordingKey> keys, ExportSettings settings,
               QObject* parent = nullptr);
    /// Cancels the export and waits for the current message.
    ~ExportTask() override;

    void Start();
    void Cancel() { m_cancelled = true; }

    // Emitted from the thread.
  Q_SIGNALS:
    void progressed(int done, int total);
    void finished(const desktop::ExportResult& result);

  private:
    ExportResult Run();

    const std::string m_library;
    const std::vector<library::RecordingKey> m_keys;
    const ExportSettings m_settings;
    std::atomic<bool> m_cancelled = false;
    std::thread m_thread;
};

/// Runs the module's batch export dialog until the user closes it. The host offers the messages of one disk of a
/// library.
ExportResult ExportByDialog(const std::string& library, const std::string& disk, const ExportSettings& settings);

}  // namespace zel::desktop
