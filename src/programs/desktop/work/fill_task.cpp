#include "programs/desktop/work/fill_task.h"

#include <QTimer>
#include <string_view>
#include <utility>

#include "host/picture/png_writer.h"
#include "programs/desktop/common/text.h"
#include "programs/desktop/work/new_file.h"

namespace zel::desktop {

QString FillItem::MessageFile() const {
    return is_numbered ? u'.' + name : name;
}

QString FillItem::PictureFile() const {
    return name + QStringLiteral(".png");
}

FillTask::FillTask(const TableFiller& filler, MessagePreview& preview, QObject* parent)
    : QObject(parent), m_filler(filler), m_preview(preview), m_timer(new QTimer(this)) {
    m_timer->setInterval(0);
    connect(m_timer, &QTimer::timeout, this, &FillTask::Step);
}

bool FillTask::IsRunning() const {
    return m_timer->isActive();
}

void FillTask::Start(std::vector<FillItem> items, fill::Overflow overflow, FillOutputs outputs) {
    m_items = std::move(items);
    m_overflow = overflow;
    m_outputs = std::move(outputs);
    m_next = 0;
    m_result = {};
    m_timer->start();
}

void FillTask::Cancel() {
    if (!IsRunning()) return;
    m_result.cancelled = m_next < m_items.size();
    Finish();
}

void FillTask::Step() {
    if (m_next == m_items.size()) return Finish();
    Q_EMIT progressed(static_cast<int>(m_next), static_cast<int>(m_items.size()));
    const FillItem& item = m_items[m_next++];
    try {
        Write(item);
    } catch (const std::exception& error) {
        m_result.failures.append(item.name + QStringLiteral(": ") + Text(error.what()));
    }
}

void FillTask::Write(const FillItem& item) {
    const TableFiller::Result filled = m_filler.Fill(item.values, m_overflow);
    if (!filled.faults.isEmpty()) {
        m_result.failures.append(item.name + QStringLiteral(": ") + filled.faults.front());
        return;
    }
    std::string png;
    if (m_outputs.pictures) {
        const MessagePreview::Result shown = m_preview.Import(filled.bytes);
        if (!shown.arrived || !shown.arrived->picture) {
            m_result.failures.append(item.name + QStringLiteral(": ") + Text(shown.failure));
            return;
        }
        png = picture::EncodePng(*shown.arrived->picture);
    }
    if (m_outputs.messages) {
        WriteNewFile(m_outputs.directory + u'/' + item.MessageFile(),
                     {reinterpret_cast<const char*>(filled.bytes.data()), filled.bytes.size()});
        ++m_result.files;
    }
    if (m_outputs.pictures) {
        WriteNewFile(m_outputs.directory + u'/' + item.PictureFile(), png);
        ++m_result.files;
    }
    ++m_result.records;
}

void FillTask::Finish() {
    m_timer->stop();
    Q_EMIT finished(m_result);
}

}  // namespace zel::desktop
