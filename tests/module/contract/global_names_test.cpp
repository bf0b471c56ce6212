// What including the contract adds to the global namespace, compared with the checked-in list.
//
// The compiler judges: `namespace X {}` is an error if the global namespace has an X that is no namespace. So one file
// includes the headers and does that with each word that they contain. The words that fail without the headers, too,
// are names of the standard library.
#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <string_view>

#include <gmock/gmock.h>

#include "samples/scratch_directory.h"

namespace zel {

namespace {

using testing::ContainerEq;
using testing::IsEmpty;
using testing::Not;

using Names = std::set<std::string>;

const std::filesystem::path kSources = ZELTRANS_SOURCES;
const std::string kContract = "module/contract/zeltrans.h";

// Not probed: the compiler does not recover from each of them.
constexpr std::string_view kKeywords =
    " alignas alignof and and_eq asm auto bitand bitor bool break case catch char char8_t char16_t char32_t class "
    "compl "
    "concept const const_cast consteval constexpr constinit continue co_await co_return co_yield decltype default "
    "delete do double dynamic_cast else enum explicit export extern false float for friend goto if inline int long "
    "mutable namespace new noexcept not not_eq nullptr operator or or_eq private protected public register "
    "reinterpret_cast requires return short signed sizeof static static_assert static_cast struct switch template this "
    "thread_local throw true try typedef typeid typename union unsigned using virtual void volatile wchar_t while xor "
    "xor_eq ";

std::string TextOf(const std::filesystem::path& file) {
    std::ifstream in(file);
    EXPECT_TRUE(in) << file;
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

/// What the includes of `text` and of the files that they name have between these two quotes.
void AddIncludes(const std::string& text, char open, char close, Names& found) {
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        const std::string directive = std::string("#include ") + open;
        if (line.starts_with(directive))
            found.insert(line.substr(directive.size(), line.rfind(close) - directive.size()));
    }
}

/// A header and those that it includes, directly or not, below kSources.
Names HeadersReachedFrom(const std::string& header) {
    Names reached, open = {header};
    while (!open.empty()) {
        const std::string next = open.extract(open.begin()).value();
        if (!reached.insert(next).second) continue;
        AddIncludes(TextOf(kSources / next), '"', '"', open);
    }
    return reached;
}

/// Every word of a text that may be a name, also those in comments.
Names WordsOf(const std::string& text) {
    const auto is_word = [](unsigned char c) { return std::isalnum(c) != 0 || c == '_'; };
    Names words;
    for (auto begin = text.begin(); begin != text.end();) {
        begin = std::find_if(begin, text.end(), is_word);
        const auto end = std::find_if_not(begin, text.end(), is_word);
        const std::string word(begin, end);
        const bool is_name = !word.empty() && std::isdigit(static_cast<unsigned char>(word[0])) == 0;
        if (is_name && kKeywords.find(" " + word + " ") == std::string_view::npos) words.insert(word);
        begin = end;
    }
    return words;
}

/// Those of the words that are macros or names in the global namespace after `includes`.
Names TakenNames(const std::string& includes, const Names& words) {
    const samples_test::ScratchDirectory directory;
    const std::string source = (directory.Path() / "probe.cpp").string(), errors = source + ".errors";
    std::ofstream probe(source);
    probe << includes;
    for (const std::string& word : words) {
        const std::string line = "#line 1 \"" + word + "\"\n";
        probe << "#ifdef " << word << "\n"
              << line << "#error\n#else\n"
              << line << "namespace " << word << " {}\n#endif\n";
    }
    probe.close();
    const std::string command =
        "LC_ALL=C " SYNTAX_CHECK " -I '" + kSources.string() + "' '" + source + "' 2> '" + errors + "'";
    static_cast<void>(std::system(command.c_str()));
    Names taken;
    std::istringstream output(TextOf(errors));
    for (std::string line; std::getline(output, line);) {
        if (line.find(": error:") != std::string::npos) taken.insert(line.substr(0, line.find(':')));
    }
    return taken;
}

/// The global names that a header brings, of those in `text`.
Names NamesBroughtBy(const std::string& header, const std::string& text, const Names& system_headers) {
    std::string system_includes;
    for (const std::string& name : system_headers) system_includes += "#include <" + name + ">\n";
    const Names words = WordsOf(text);
    const Names without = TakenNames(system_includes, words);
    const Names with = TakenNames(system_includes + "#include \"" + header + "\"\n", words);
    Names brought;
    std::ranges::set_difference(with, without, std::inserter(brought, brought.end()));
    return brought;
}

/// The listed names; lines that begin with # are headings.
Names ListedNames() {
    Names names;
    std::istringstream list(TextOf(GLOBAL_NAMES_LIST));
    for (std::string line; std::getline(list, line);) {
        if (!line.empty() && line[0] != '#') names.insert(line);
    }
    return names;
}

TEST(GlobalNames, OfTheContractAreExactlyTheListedOnes) {
    std::string text;
    Names system_headers;
    for (const std::string& header : HeadersReachedFrom(kContract)) {
        const std::string header_text = TextOf(kSources / header);
        EXPECT_THAT(header_text, Not(testing::ContainsRegex("using namespace|namespace \\{"))) << header;
        AddIncludes(header_text, '<', '>', system_headers);
        text += header_text;
    }
    EXPECT_THAT(NamesBroughtBy(kContract, text, system_headers), ContainerEq(ListedNames()));
}

TEST(Contract, TheOneHeaderIncludesEveryOther) {
    Names missing;
    const Names headers = HeadersReachedFrom(kContract);
    for (const auto& entry : std::filesystem::recursive_directory_iterator(kSources / "module/contract")) {
        const std::string header = entry.path().lexically_relative(kSources).string();
        if (entry.is_regular_file() && !headers.contains(header)) missing.insert(header);
    }
    EXPECT_THAT(missing, IsEmpty());
}

}  // namespace

}  // namespace zel
