#include "programs/cli/library_texts.h"

#include <vector>

#include <nlohmann/json.hpp>

#include "base/csv_text.h"
#include "base/text.h"
#include "host/document/document_reader.h"
#include "host/document/json_version.h"
#include "host/document/message_texts.h"
#include "host/library/library.h"
#include "programs/cli/diagnostics.h"
#include "programs/cli/json_output.h"
#include "programs/cli/output_check.h"
#include "programs/cli/output_file.h"

namespace zel::cli {

namespace {

/// Recordings that are listed at once.
constexpr std::size_t kPart = 256;

/// Line ends of CSV.
constexpr const char* kLineEnd = "\r\n";

std::string FieldName(const document::MessageText& text) {
    return text.field ? "f" + std::to_string(*text.field) : std::string();
}

void AppendCsv(std::string& lines, const library::LibraryEntry& entry, const document::MessageText& text) {
    const auto append_text = [&](const std::string& value) {
        base::AppendCsvValue(lines, base::WithFormulaGuard(value));
    };
    append_text(entry.key.disk);
    lines += ',' + std::to_string(entry.key.number) + ',';
    append_text(entry.source);
    lines += ',' + std::to_string(text.row) + ',' + FieldName(text) + ',';
    append_text(text.name);
    lines += ',';
    append_text(text.text);
    lines += kLineEnd;
}

void AppendJson(std::string& lines, const library::LibraryEntry& entry, const document::MessageText& text) {
    lines += JsonText({{"version", document::kJsonVersion},
                       {"disk", entry.key.disk},
                       {"message", entry.key.number},
                       {"source", entry.source},
                       {"row", text.row},
                       {"field", TextOrNull(FieldName(text))},
                       {"name", text.field ? nlohmann::ordered_json(text.name) : nlohmann::ordered_json()},
                       {"text", text.text}});
    lines += '\n';
}

class TextsWriter {
  public:
    explicit TextsWriter(const TextsRequest& request)
        : m_request(request), m_library(request.library, library::Access::kRead), m_out(request.out) {}

    ExitCode Run();

  private:
    void Write(const library::LibraryEntry& entry);

    const TextsRequest& m_request;
    library::Library m_library;
    OutputFile m_out;
    std::size_t m_texts = 0, m_recordings = 0, m_unreadable = 0;
};

void TextsWriter::Write(const library::LibraryEntry& entry) {
    ++m_recordings;
    std::vector<document::MessageText> texts;
    try {
        texts = document::TextsOf(document::ReadDocument(document::ParseDocument(m_library.Document(entry.key))));
    } catch (const library::LibraryError&) {
        throw;
    } catch (const std::runtime_error& error) {
        PrintError(m_request.library + ": message " + base::NumberedName(entry.key.number) +
                   (entry.key.disk.empty() ? "" : " from \"" + entry.key.disk + '"') + ": " + error.what());
        ++m_unreadable;
        return;
    }
    m_texts += texts.size();
    std::string lines;
    for (const document::MessageText& text : texts) {
        if (m_request.format == TextsFormat::kCsv) {
            AppendCsv(lines, entry, text);
        } else {
            AppendJson(lines, entry, text);
        }
    }
    m_out.Write(lines);
}

ExitCode TextsWriter::Run() {
    if (m_request.format == TextsFormat::kCsv)
        m_out.Write(std::string("disk,message,source,row,field,name,text") + kLineEnd);
    std::vector<library::LibraryEntry> entries;
    std::optional<library::RecordingKey> last;
    do {
        entries = m_library.List(m_request.disk, {last, kPart});
        for (const library::LibraryEntry& entry : entries) Write(entry);
        if (!entries.empty()) last = entries.back().key;
    } while (entries.size() == kPart);
    m_out.Commit();
    if (m_request.out != "-") {
        PrintLine(m_request.library + ": " + base::Counted(m_texts, "text") + " of " +
                  base::Counted(m_recordings, "recording") + "; wrote " + m_request.out);
    }
    return m_unreadable == 0 ? ExitCode::kDone : ExitCode::kNotDone;
}

}  // namespace

ExitCode WriteLibraryTexts(const TextsRequest& request) {
    CommandFiles files;
    files.ReadLibrary(request.library);
    files.Write(request.out, "--out");
    CheckOutputs(files);
    return TextsWriter(request).Run();
}

}  // namespace zel::cli
