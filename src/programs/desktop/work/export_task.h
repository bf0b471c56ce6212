#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "host/library/recording.h"

namespace zel::desktop {

/// How messages are exported.
struct ExportOrder {
    QString directory;
    QStringList formats;  ///< names of the table of formats.
    bool premultiplied = false;
};

/// What an export came to.
struct ExportResult {
    int messages = 0, files = 0;
    QStringList failures;
    QString stopped_by;  ///< why there is no export; empty when there is one.
    bool cancelled = false;

    /// "12 messages exported, 26 files in DIRECTORY"
    QString Text(const QString& directory) const;
};

/// Exports messages of a library on a thread of its own.
class ExportTask : public QObject {
    Q_OBJECT

  public:
    ExportTask(std::string library, std::vector<library::RecordingKey> keys, ExportOrder order,
               QObject* parent = nullptr);
    /// Stops the work and waits for the message under way.
    ~ExportTask() override;

    void Start();
    void Cancel() { m_cancelled = true; }
    const ExportOrder& Order() const noexcept { return m_order; }

  Q_SIGNALS:  // sent from the thread
    void progressed(int done, int total);
    void finished(const desktop::ExportResult& result);

  private:
    ExportResult Work();

    const std::string m_library;
    const std::vector<library::RecordingKey> m_keys;
    const ExportOrder m_order;
    std::atomic<bool> m_cancelled = false;
    std::thread m_thread;
};

/// Runs the module's dialog of a batch export, with one disk of a library as what the host holds, until the user closes
/// it.
ExportResult ExportByDialog(const std::string& library, const std::string& disk, const ExportOrder& order);

}  // namespace zel::desktop
