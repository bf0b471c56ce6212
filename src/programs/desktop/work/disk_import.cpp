#include "programs/desktop/work/disk_import.h"

#include <QFile>
#include <QTimer>
#include <filesystem>

#include "host/picture/picture_composer.h"
#include "host/run/import_run.h"
#include "programs/desktop/common/library_wait.h"
#include "programs/desktop/common/text.h"
#include "programs/desktop/work/arrival.h"
#include "programs/desktop/work/library_writer.h"
#include "programs/desktop/work/temporary_settings.h"

namespace zel::desktop {

QString ImportSummary::Text() const {
    QString text = Counted(static_cast<std::size_t>(recorded), "message imported", "messages imported");
    if (unchanged != 0) text += QStringLiteral(", %1 unchanged").arg(unchanged);
    if (!failures.isEmpty()) text += QStringLiteral(", %1 failed").arg(failures.size());
    if (cancelled) text += QStringLiteral("; stopped");
    return text;
}

DiskImport::DiskImport(QObject* parent) : QObject(parent), m_timer(new QTimer(this)) {
    m_timer->setInterval(0);
    connect(m_timer, &QTimer::timeout, this, &DiskImport::Step);
}

DiskImport::~DiskImport() {
    disconnect();
    Cancel();
}

void DiskImport::Add(const std::string& file, const MessageSource& source, const host::HostOptions& options) {
    if (!m_writer) {
        const auto on_recorded = [this](const library::RecordingKey&) { Q_EMIT recorded(); };
        auto writer = std::make_unique<LibraryWriter>(file, on_recorded, [](const std::string&) {});
        m_library = std::make_unique<library::Library>(file, library::Access::kRead, kLibraryWait);
        m_items.clear();
        m_next = 0;
        m_summary = {};
        // Last, since an import that has a writer is running.
        m_writer = std::move(writer);
    }
    for (const MessageFile& message : source.messages) m_items.push_back({message, source.font_directory, options});
    m_timer->start();
    Q_EMIT progressed(static_cast<int>(m_next), static_cast<int>(m_items.size()),
                      QFile::decodeName(source.path.c_str()));
}

void DiskImport::SetPaused(bool paused) {
    if (paused) {
        m_timer->stop();
    } else if (IsRunning()) {
        m_timer->start();
    }
}

void DiskImport::Cancel() {
    if (!IsRunning()) return;
    m_summary.cancelled = m_next < m_items.size();
    Finish();
}

void DiskImport::Step() {
    if (m_next == m_items.size()) return Finish();
    const Item item = m_items[m_next++];
    Q_EMIT progressed(static_cast<int>(m_next) - 1, static_cast<int>(m_items.size()),
                      QFile::decodeName(item.message.path.c_str()));
    try {
        Import(item);
    } catch (const std::exception& error) {
        m_summary.stopped_by = Text(error.what());
        Finish();
    }
}

bool DiskImport::IsUnchanged(const Item& item, const std::string& options) {
    const std::optional<library::RecordingOrigin> origin = m_library->Origin(item.message.key);
    return origin && origin->options == options && !origin->sources.empty() &&
           origin->sources.front().path == item.message.path &&
           recorder::AreUnchanged(origin->sources, item.font_directory, m_writer->Digests());
}

void DiskImport::Import(const Item& item) {
    const recorder::RecordingContext context{item.message.key.disk, item.font_directory,
                                             recorder::DescribeOptions(item.options, m_writer->Digests())};
    if (IsUnchanged(item, context.options)) {
        ++m_summary.unchanged;
        return;
    }
    picture::PictureComposer pictures;
    Arrival arrival(pictures);
    run::ImportRequest request;
    request.message = item.message.path;
    request.fonts = item.font_directory;
    request.host = item.options;
    host::HostObserver* const observers[] = {&pictures, &arrival};
    const TemporarySettings settings;
    const run::ImportOutcome outcome = run::RunImport(request, observers);
    if (!outcome.Done() || !arrival.arrived) {
        m_summary.failures.append(Text(outcome.failure));
        return;
    }
    arrival.arrived->number = item.message.key.number;
    if (!m_writer->Record(std::move(*arrival.arrived), context)) Finish();
}

void DiskImport::Finish() {
    m_timer->stop();
    const std::string failure = m_writer->Finish();
    m_summary.recorded = m_writer->Count();
    m_summary.warnings = m_writer->TakeWarnings();
    if (!failure.empty()) m_summary.stopped_by = Text(failure);
    m_writer.reset();
    m_library.reset();
    Q_EMIT finished(m_summary);
}

}  // namespace zel::desktop
