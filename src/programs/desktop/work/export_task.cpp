#include "programs/desktop/work/export_task.h"

#include <QFile>
#include <algorithm>
#include <optional>

#include "host/export/export_job.h"
#include "host/export/library_export_service.h"
#include "host/export/source_files.h"
#include "host/library/library.h"
#include "host/module_call.h"
#include "host/native_path.h"
#include "host/reference_host.h"
#include "module/contract/zel_trans_export.h"
#include "platform/framework/cstring.h"
#include "platform/system/files.h"
#include "programs/desktop/common/text.h"

namespace zel::desktop {

namespace {

exporter::ExportJob MakeJob(const ExportSettings& settings) {
    std::vector<std::string> formats;
    for (const QString& format : settings.formats) formats.push_back(format.toStdString());
    const int jobs = static_cast<int>(std::max(1U, std::thread::hardware_concurrency()));
    return exporter::ExportJob(QFile::encodeName(settings.directory).toStdString(), formats, settings.options, jobs);
}

void AddSummary(const exporter::ExportSummary& summary, ExportResult& result) {
    result.messages = summary.messages;
    result.files = summary.files;
    for (const std::string& failure : summary.failures) result.failures.append(Text(failure));
}

}  // namespace

QString ExportResult::Text(const QString& directory) const {
    if (files == 0) return QStringLiteral("nothing exported");
    const QString text = QStringLiteral("%1 exported, %2 files in %3")
                             .arg(Counted(static_cast<std::size_t>(messages), "message", "messages"))
                             .arg(files)
                             .arg(directory);
    return cancelled ? text + QStringLiteral("; stopped") : text;
}

ExportTask::ExportTask(std::string library, std::vector<library::RecordingKey> keys, ExportSettings settings,
                       QObject* parent)
    : QObject(parent), m_library(std::move(library)), m_keys(std::move(keys)), m_settings(std::move(settings)) {}

ExportTask::~ExportTask() {
    Cancel();
    if (m_thread.joinable()) m_thread.join();
}

void ExportTask::Start() {
    m_thread = std::thread([this] { Q_EMIT finished(Run()); });
}

ExportResult ExportTask::Run() {
    ExportResult result;
    try {
        library::Library library(m_library, library::Access::kRead);
        exporter::ExportJob job = MakeJob(m_settings);
        exporter::SourceFiles files(library);
        int done = 0;
        for (const library::RecordingKey& key : m_keys) {
            if ((result.cancelled = m_cancelled)) break;
            if (auto recording = library.Find(key)) {
                if (job.WantsSources()) files.AddTo(*recording);
                job.Export(std::move(*recording));
            }
            Q_EMIT progressed(++done, static_cast<int>(m_keys.size()));
        }
        AddSummary(job.Finish(), result);
    } catch (const std::exception& error) {
        result.stopped_by = Text(error.what());
    }
    return result;
}

ExportResult ExportByDialog(const std::string& library_file, const std::string& disk, const ExportSettings& settings) {
    ExportResult result;
    try {
        library::Library library(library_file, library::Access::kRead);
        exporter::ExportJob job = MakeJob(settings);
        exporter::LibraryExportService service(library, disk, job);
        host::HostOptions options;
        options.exports = &service;
        host::ReferenceHost host(options);
        const std::optional<std::string> exception = host::CallInHost(host, [&] {
            CString path(
                system::ModulePath(host::AbsolutePath(QFile::encodeName(settings.directory).toStdString())).c_str());
            CZelTransExport().ZelBatchExport(host.HostWindow(), path, host.ExportWindow());
        });
        AddSummary(job.Finish(), result);
        for (const std::string& failure : service.Failures()) result.failures.append(Text(failure));
        if (exception) result.stopped_by = Text(*exception);
    } catch (const std::exception& error) {
        result.stopped_by = Text(error.what());
    }
    return result;
}

}  // namespace zel::desktop
