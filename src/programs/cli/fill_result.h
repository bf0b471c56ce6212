#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace zel::cli {

/// What is said about a field of a record, or about the record.
struct FillRemark {
    /// Empty for the record.
    std::string field;
    std::string text;
};

/// What has become of a record of the table, or of a message of a table of texts.
struct FillResult {
    /// In texts: "record 3 (line 4)", "message .0013".
    std::string where;
    /// 0 without one.
    std::uint64_t record = 0, line = 0;
    /// Of its outputs; may be empty if it has faults.
    std::string name;
    /// The files that were written, with their directories.
    std::vector<std::string> files;
    /// It is in the library.
    bool is_recorded = false;
    /// Why there is no output, or not each one that was asked for.
    std::vector<FillRemark> faults;
    std::vector<FillRemark> notes;
};

}  // namespace zel::cli
