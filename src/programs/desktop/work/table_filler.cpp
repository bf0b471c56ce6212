#include "programs/desktop/work/table_filler.h"

#include <algorithm>

#include "files/message_writer.h"
#include "programs/desktop/common/text.h"

namespace zel::desktop {

QStringList TableFiller::Match(const QStringList& columns, int name_column) {
    m_fields.clear();
    QStringList reasons;
    for (const QString& column : columns) {
        const auto index = static_cast<int>(m_fields.size());
        std::optional<std::size_t> field;
        QString reason;
        if (index != name_column) {
            field = fill::FindField(m_form, column.toStdString());
            const auto earlier = field ? std::ranges::find(m_fields, field) : m_fields.end();
            if (!field) {
                reason = QStringLiteral("matches no tab field");
            } else if (earlier != m_fields.end()) {
                reason =
                    QStringLiteral("the column %1 fills the same tab field").arg(columns[earlier - m_fields.begin()]);
                field.reset();
            }
        }
        m_fields.push_back(field);
        reasons.append(reason);
    }
    return reasons;
}

QStringList TableFiller::UnfilledFields() const {
    QStringList names;
    for (std::size_t field = 0; field < m_form.fields.size(); ++field) {
        if (std::ranges::find(m_fields, std::optional(field)) == m_fields.end())
            names.append(Text(m_form.fields[field].address));
    }
    return names;
}

QStringList TableFiller::TextsOf(const std::vector<fill::FieldNote>& notes) const {
    QStringList texts;
    for (const fill::FieldNote& note : notes)
        texts.append(Text(m_form.fields[note.field].address) + QStringLiteral(": ") + Text(note.text));
    return texts;
}

TableFiller::Result TableFiller::Fill(const QStringList& values, fill::Overflow overflow) const {
    std::vector<fill::FieldValue> texts;
    for (std::size_t column = 0; column < m_fields.size(); ++column) {
        const QString& value = values[static_cast<qsizetype>(column)];
        if (m_fields[column] && !value.isNull()) texts.push_back({*m_fields[column], value.toStdString()});
    }
    const fill::Filled filled = fill::FillFields(m_form, texts, overflow);
    return {files::WriteMessage(filled.message), TextsOf(filled.faults), TextsOf(filled.notes)};
}

}  // namespace zel::desktop
