#pragma once

#include <cstdint>
#include <mutex>
#include <string>

#include "programs/cli/fill_result.h"

namespace zel::cli {

/// Prints what becomes of records, and counts it. May be used by several threads.
class FillReport {
  public:
    /// @param data  the table as the user named it; empty for --field alone.
    /// @param json  print a JSON object for each record.
    FillReport(std::string data, bool json) : m_data(std::move(data)), m_json(json) {}

    void Add(const FillResult& result);
    /// A fault of the table, or of the run.
    void AddFault(const std::string& fault);
    /// Files of the whole run.
    void AddFiles(int count);
    /// A message of a table of texts whose texts are those of the table.
    void AddUnchanged();

    /// Prints the counts.
    /// @param things  what is counted, in the singular: "record", "message".
    void PrintSummary(const std::string& things) const;

    bool HasFaults() const;
    std::uint64_t Count() const;

  private:
    std::string Where(const FillResult& result, const FillRemark& remark) const;

    const std::string m_data;
    const bool m_json;
    mutable std::mutex m_mutex;
    std::uint64_t m_done = 0, m_failed = 0, m_unchanged = 0, m_files = 0, m_recorded = 0, m_faults = 0;
};

}  // namespace zel::cli
