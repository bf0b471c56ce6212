#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <unordered_set>
#include <vector>

#include "fill/data/data_record.h"
#include "fill/fill_fields.h"
#include "programs/cli/fill_form.h"
#include "programs/cli/fill_outputs.h"
#include "programs/cli/fill_report.h"

namespace zel::cli {

/// Fills a form with the records of a table, one message for each.
class FillRecords {
  public:
    /// @param arguments, form, outputs, report  kept alive by the caller.
    /// @throws CommandError for a --field that is none of the form.
    FillRecords(const FillArguments& arguments, const OpenedForm& form, FillOutputs& outputs, FillReport& report);

    /// Fills the form with a record, and gives it to the outputs or reports its faults.
    /// @throws CommandError for a table that has no column for a field.
    void Take(const fill::DataRecord& record);

    /// Fills the form with the texts of --field alone.
    /// @param name       of the outputs.
    /// @param file_name  of the message file.
    /// @return the message file, if there are no faults.
    std::optional<files::Bytes> FillOnce(const std::string& name, const std::string& file_name);

  private:
    struct Column {
        std::optional<std::size_t> field;
        bool is_name = false;
    };

    void UseColumns(const fill::DataRecord& record);
    /// Why no record with these columns can be filled; empty if one can.
    std::string FaultOfColumns() const;
    void ReportUnknown(const fill::DataRecord& record, std::string_view column);
    std::vector<fill::FieldValue> ValuesOf(const fill::DataRecord& record, FillResult& result) const;
    std::string NameOf(const fill::DataRecord& record, FillResult& result);
    std::optional<files::Bytes> Fill(std::vector<fill::FieldValue> values, FilledMessage message);

    const FillArguments& m_arguments;
    const OpenedForm& m_form;
    FillOutputs& m_outputs;
    FillReport& m_report;
    /// The texts of --field.
    std::vector<fill::FieldValue> m_constants;
    /// Those of the last record, and what they are.
    std::shared_ptr<const std::vector<std::string>> m_names;
    std::vector<Column> m_columns;
    std::set<std::string> m_unknown;
    /// Hashes of the names that outputs have, without regard to case.
    std::unordered_set<std::size_t> m_used_names;
};

}  // namespace zel::cli
