#include "programs/cli/fill_report.h"

#include <vector>

#include <nlohmann/json.hpp>

#include "base/text.h"
#include "host/document/json_version.h"
#include "programs/cli/diagnostics.h"
#include "programs/cli/json_output.h"

namespace zel::cli {

namespace {

using Json = nlohmann::ordered_json;

Json NumberOrNull(std::uint64_t number) {
    return number == 0 ? Json() : Json(number);
}

Json RemarksJson(const std::vector<FillRemark>& remarks) {
    Json list = Json::array();
    for (const FillRemark& remark : remarks)
        list.push_back({{"field", TextOrNull(remark.field)}, {"text", remark.text}});
    return list;
}

Json ResultJson(const FillResult& result) {
    return {{"version", document::kJsonVersion},     {"type", "record"},
            {"record", NumberOrNull(result.record)}, {"line", NumberOrNull(result.line)},
            {"name", TextOrNull(result.name)},       {"files", result.files},
            {"recorded", result.is_recorded},        {"faults", RemarksJson(result.faults)},
            {"notes", RemarksJson(result.notes)}};
}

}  // namespace

std::string FillReport::Where(const FillResult& result, const FillRemark& remark) const {
    std::string text = m_data;
    for (const std::string& part : {result.where, remark.field}) {
        if (!part.empty()) text += (text.empty() ? "" : ": ") + part;
    }
    return (text.empty() ? "" : text + ": ") + remark.text;
}

void FillReport::Add(const FillResult& result) {
    const std::lock_guard lock(m_mutex);
    ++(result.faults.empty() ? m_done : m_failed);
    m_files += result.files.size();
    m_recorded += result.is_recorded ? 1 : 0;
    for (const FillRemark& fault : result.faults) PrintError(Where(result, fault));
    for (const FillRemark& note : result.notes) PrintWarning(Where(result, note));
    for (const std::string& file : result.files) PrintDetail((result.where.empty() ? "" : result.where + ": ") + file);
    if (m_json) PrintJson(ResultJson(result));
}

void FillReport::AddFault(const std::string& fault) {
    const std::lock_guard lock(m_mutex);
    ++m_faults;
    PrintError(m_data.empty() ? fault : m_data + ": " + fault);
}

void FillReport::AddFiles(int count) {
    const std::lock_guard lock(m_mutex);
    m_files += static_cast<std::uint64_t>(count);
}

void FillReport::AddUnchanged() {
    const std::lock_guard lock(m_mutex);
    ++m_unchanged;
}

void FillReport::PrintSummary(const std::string& things) const {
    const std::lock_guard lock(m_mutex);
    if (m_json) {
        PrintJson({{"version", document::kJsonVersion},
                   {"type", "summary"},
                   {"filled", m_done},
                   {"failed", m_failed},
                   {"unchanged", m_unchanged},
                   {"files", m_files},
                   {"recorded", m_recorded},
                   {"faults_of_table", m_faults}});
        return;
    }
    std::string line = base::Counted(m_done + m_failed, things) + ": " + std::to_string(m_done) + " filled";
    if (m_failed != 0) line += ", " + std::to_string(m_failed) + " not done";
    if (m_unchanged != 0) line += "; " + std::to_string(m_unchanged) + " without a change";
    if (m_files != 0) line += "; " + base::Counted(m_files, "file");
    if (m_recorded != 0) line += "; " + base::Counted(m_recorded, "recording");
    PrintLine(line);
}

bool FillReport::HasFaults() const {
    const std::lock_guard lock(m_mutex);
    return m_failed != 0 || m_faults != 0;
}

std::uint64_t FillReport::Count() const {
    const std::lock_guard lock(m_mutex);
    return m_done + m_failed + m_unchanged;
}

}  // namespace zel::cli
