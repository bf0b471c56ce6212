#include "programs/desktop/work/record_file.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <algorithm>
#include <cstring>
#include <memory>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "base/regular_file.h"
#include "fill/data/data_record.h"
#include "programs/desktop/common/text.h"

namespace zel::desktop {

namespace {

constexpr std::size_t kMostRecords = 100'000;
constexpr std::size_t kMostBytes = std::size_t{64} << 20;
/// Of all records together, so that records without a column in common do not need its square.
constexpr qsizetype kMostColumns = 1000;

/// Collects records, whose columns may differ.
class Collector {
  public:
    bool Take(const fill::DataRecord& record) {
        if (file.records.size() == kMostRecords)
            throw std::runtime_error("the table has more than 100,000 records; zeltrans fill takes any number");
        FileRecord& added = file.records.emplace_back();
        added.number = QString::number(record.number);
        for (const std::string& fault : record.faults) added.faults.append(Text(fault));
        if (record.columns != m_columns) Find(record.columns);
        for (std::size_t at = 0; at < record.values.size() && at < m_places.size(); ++at) {
            const qsizetype place = m_places[at];
            while (added.values.size() <= place) added.values.append(QString());
            if (record.values[at]) added.values[place] = NotNull(Text(*record.values[at]));
        }
        return true;
    }

    RecordFile file;

  private:
    /// An empty text is a value; a null one is none.
    static QString NotNull(const QString& text) { return text.isNull() ? QStringLiteral("") : text; }

    void Find(const std::shared_ptr<const std::vector<std::string>>& columns) {
        m_columns = columns;
        m_places.clear();
        if (!columns) return;
        QHash<QString, int> seen;
        for (const std::string& column : *columns) {
            // A name that a record has twice is two columns.
            const std::pair key(Text(column), ++seen[Text(column)]);
            auto place = m_place_of.find(key);
            if (place == m_place_of.end()) {
                if (file.columns.size() == kMostColumns)
                    throw std::runtime_error("the records have more than 1000 columns");
                place = m_place_of.insert(key, file.columns.size());
                file.columns.append(key.first);
            }
            m_places.push_back(*place);
        }
    }

    std::shared_ptr<const std::vector<std::string>> m_columns;
    /// By name, and how often the record has had it.
    QHash<std::pair<QString, int>, qsizetype> m_place_of;
    std::vector<qsizetype> m_places;
};

std::optional<fill::DataFormat> FormatOf(const QString& file) {
    const QString suffix = QFileInfo(file).suffix().toLower();
    if (suffix == QStringLiteral("csv")) return fill::DataFormat::kCsv;
    if (suffix == QStringLiteral("json")) return fill::DataFormat::kJson;
    return std::nullopt;
}

}  // namespace

RecordFile ReadRecordFile(const QString& file) try {
    const std::vector<std::uint8_t> bytes = base::ReadFileBytes(QFile::encodeName(file).toStdString(), kMostBytes + 1);
    if (bytes.size() > kMostBytes)
        throw std::runtime_error("the table has more than 64 MiB; zeltrans fill takes any size");
    Collector collector;
    std::span<const std::uint8_t> left(bytes);
    const fill::ReadBytes read = [&](std::span<char> out) {
        const std::size_t count = std::min(out.size(), left.size());
        std::memcpy(out.data(), left.data(), count);
        left = left.subspan(count);
        return count;
    };
    fill::ReadData(read, FormatOf(file), [&](const fill::DataRecord& record) { return collector.Take(record); });
    for (FileRecord& record : collector.file.records)
        while (record.values.size() < collector.file.columns.size()) record.values.append(QString());
    return std::move(collector.file);
} catch (const std::exception& error) {
    throw std::runtime_error(file.toStdString() + ": " + error.what());
}

}  // namespace zel::desktop
