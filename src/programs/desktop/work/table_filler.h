#pragma once

#include <QStringList>
#include <optional>
#include <vector>

#include "files/byte_writer.h"
#include "fill/fill_fields.h"
#include "fill/form.h"

namespace zel::desktop {

/// Fills a form with the records of a table.
class TableFiller {
  public:
    explicit TableFiller(fill::Form form) : m_form(std::move(form)) {}

    /// Matches the columns of a table with the fields.
    /// @param name_column  index of a column with names of outputs, which fills no field; -1 for none.
    /// @return for each column why it fills no field; empty if it does, and for the column of names.
    QStringList Match(const QStringList& columns, int name_column);
    /// Names of the fields that no column fills.
    QStringList UnfilledFields() const;

    struct Result {
        /// The message file; with faults, that of the texts without faults.
        files::Bytes bytes;
        QStringList faults;
        /// What a user should know, such as a text that was cut.
        QStringList notes;
    };
    /// @param values  one for each column of Match; a null one leaves its field as it is, an empty one empties it.
    Result Fill(const QStringList& values, fill::Overflow overflow) const;

  private:
    QStringList TextsOf(const std::vector<fill::FieldNote>& notes) const;

    fill::Form m_form;
    /// For each column.
    std::vector<std::optional<std::size_t>> m_fields;
};

}  // namespace zel::desktop
