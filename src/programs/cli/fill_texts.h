#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "fill/data/data_record.h"
#include "fill/fill_fields.h"
#include "programs/cli/fill_form.h"
#include "programs/cli/fill_outputs.h"
#include "programs/cli/fill_report.h"

namespace zel::cli {

/// Sets the texts of a table that "library texts" has written, and that was edited, into the messages they are from.
/// A message whose texts have not changed gets no output.
class FillTexts {
  public:
    /// Whether a table has the columns of such a table.
    static bool IsTable(const std::vector<std::string>& columns);

    /// Of a disk: the directories of its messages and of its fonts; this system's paths.
    static std::vector<std::string> DirectoriesOf(const FillArguments& arguments);

    /// @param arguments, outputs, report  kept alive by the caller.
    FillTexts(const FillArguments& arguments, FillOutputs& outputs, FillReport& report);

    /// Takes a line. The lines of a message follow each other.
    void Take(const fill::DataRecord& record);
    /// Sets the texts of the last message.
    void Finish();

  private:
    struct Line {
        std::uint64_t number = 0;
        std::string row, field, name, text;
    };
    /// The lines of a message.
    struct Message {
        std::string disk, number;
        std::vector<Line> lines;
    };

    bool IsSelected(const Message& message);
    void SetTexts();
    void SetTexts(const run::ImportRequest& request, FilledMessage& filled);
    void CheckRows(const files::MessageFile& message, const std::vector<fill::Field>& fields, FillResult& result) const;
    std::vector<fill::FieldValue> ChangesOf(const files::MessageFile& message, const std::vector<fill::Field>& fields,
                                            FillResult& result) const;

    const FillArguments& m_arguments;
    FillOutputs& m_outputs;
    FillReport& m_report;
    std::optional<Message> m_message;
    /// The disk of the table that is meant.
    const std::string m_disk;
    std::unordered_set<std::string> m_done;
    /// Messages of the table that are passed over.
    std::uint64_t m_other_disks = 0, m_other_messages = 0;
};

}  // namespace zel::cli
