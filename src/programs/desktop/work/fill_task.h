#pragma once

#include <QObject>
#include <QStringList>
#include <vector>

#include "programs/desktop/work/message_preview.h"
#include "programs/desktop/work/table_filler.h"

class QTimer;

namespace zel::desktop {

/// What a fill writes for each record.
struct FillOutputs {
    QString directory;
    /// Message files.
    bool messages = false;
    /// PNG files with straight alpha.
    bool pictures = false;
};

/// A record to be written.
struct FillItem {
    /// Of its files, without an ending.
    QString name;
    /// The name is its number, so that the message file's is too, as on a disk: ".0012".
    bool is_numbered = false;
    QStringList values;

    QString MessageFile() const;
    QString PictureFile() const;
};

/// The result of a fill.
struct FillResult {
    int records = 0, files = 0;
    /// Records that were not written, with the reason.
    QStringList failures;
    bool cancelled = false;
};

/// Writes filled messages and their pictures, one record per iteration of the event loop: the module has the
/// user-interface thread.
class FillTask : public QObject {
    Q_OBJECT

  public:
    /// @param filler, preview  outlive the task.
    FillTask(const TableFiller& filler, MessagePreview& preview, QObject* parent);

    void Start(std::vector<FillItem> items, fill::Overflow overflow, FillOutputs outputs);
    /// Emits `finished` after the present record.
    void Cancel();
    bool IsRunning() const;

  Q_SIGNALS:
    void progressed(int done, int total);
    void finished(const desktop::FillResult& result);

  private:
    void Step();
    void Write(const FillItem& item);
    void Finish();

    const TableFiller& m_filler;
    MessagePreview& m_preview;
    QTimer* m_timer;
    std::vector<FillItem> m_items;
    std::size_t m_next = 0;
    fill::Overflow m_overflow = fill::Overflow::kError;
    FillOutputs m_outputs;
    FillResult m_result;
};

}  // namespace zel::desktop
