// The two name lists and the three maps that they fill.
#include <gmock/gmock.h>

#include "module/fontmap/format/text_lines.h"
#include "module/state/module_state.h"
#include "support/module_fixture.h"

namespace zel::test {

namespace {

using module_test::Joined;
using module_test::ModuleTest;
using module_test::OpenDialog;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kHeadings[] = "one\ntwo\t9\n";

struct BitstreamCase {
    const char* name;
    const char* lines;
    std::vector<std::pair<WORD, const char*>> ids;
    std::vector<std::pair<const char*, const char*>> families = {};
};

class NameLists : public ModuleTest {};

TEST_F(NameLists, BitstreamListFillsItsMaps) {
    const BitstreamCase kCases[] = {
        {"headings only", "", {}},
        {"indented entry of a family",
         "Swiss 721 =Helvetica\t\n\troman\t\t7\n",
         {{7, "Swiss 721 roman BT"}},
         {{"Swiss", "Swiss 721 roman BT"}}},
        {"family may end in a digit", "Swiss 721\n\tbold\t8\n", {{8, "Swiss 721 bold BT"}}},
        {"annotation of a style", "F\n\tbold =Heavy = x\t9\n", {{9, "F bold BT"}}},
        {"character before the equals sign is removed", "Fam=x\n\ts=y\t1\n", {{1, "Fa  BT"}}},
        {"plain entry keeps the family",
         "F\n\ta\t1\nPlain One\t2\n\tb\t3\n",
         {{1, "F a BT"}, {2, "Plain One BT"}, {3, "F b BT"}},
         {{"F", "F a BT"}, {"Plain", "Plain One BT"}}},
        {"blank after the number makes a heading", "F\n\ta\t1 \n\tb\t2\n", {{2, "\ta\t1  b BT"}}},
        {"empty line empties the family", "F\n\n\ta\t1\n", {{1, " a BT"}}, {{"", " a BT"}}},
        {"tabs at the end of a heading, except the first two, are removed", "\t\t\t\n\ta\t1\n", {{1, "\t\t a BT"}}},
        {"only four digits count", "A\t12345\n", {{1234, "A BT"}}},
        {"text before and after the number", "A\tno. 12ab 34\n", {{12, "A BT"}}},
        {"last number and first family count",
         "A x\t5\nA y\t5\nA z\t6\n",
         {{5, "A y BT"}, {6, "A z BT"}},
         {{"A", "A x BT"}}},
        {"indented line without a second tab", "F\n\ta1\n\tb\t2\n", {{2, "F b BT"}}},
        {"carriage returns", "F\r\n\ta\t1\r\n", {{1, "F a BT"}}},
        {"carriage return alone and the end of text",
         "A\rB\t1\r\r\nC\t2\n\x1A"
         "D\t3\n",
         {{2, "C BT"}}},
        {"annotation that begins a field", "F\n\t=x\t1\n=y\t2\n", {{1, "F  BT"}, {2, " BT"}}},
        {"number 0", "A\t0000\n", {{0, "A BT"}}},
    };
    for (const BitstreamCase& row : kCases) {
        SCOPED_TRACE(row.name);
        WriteFile("MAPS/bitstream_fontlist.txt", std::string(kHeadings) + row.lines);
        OpenDialog dialog(nullptr);
        EXPECT_TRUE(dialog.MapBitStreamFont());
        CString found;
        for (const auto& [id, name] : row.ids) {
            EXPECT_TRUE(dialog.m_mapBitStreamId.Lookup(id, found)) << id;
            EXPECT_EQ(found, name);
        }
        EXPECT_EQ(dialog.m_mapBitStreamId.GetCount(), static_cast<int>(row.ids.size()));
        for (const auto& [word, name] : row.families) {
            EXPECT_TRUE(dialog.m_mapBitStreamFamily.Lookup(word, found)) << word;
            EXPECT_EQ(found, name);
        }
    }
    EXPECT_THAT(Boxes(), IsEmpty());
}

constexpr int kKeys = 5000;

std::string KeyOf(int n) {
    return std::string(static_cast<std::size_t>(n % 40), 'k') + std::to_string(n);
}

/// Maps of names that are parts of a list, each key added twice.
struct ListedMaps {
    ListedMaps() {
        std::string list;
        std::vector<TextSlice> slices;
        for (int n = 0; n <= kKeys; ++n) {
            const std::string key = KeyOf(n);
            slices.push_back({static_cast<std::uint32_t>(list.size()), static_cast<std::uint16_t>(key.size())});
            list += key;
        }
        const auto text = std::make_shared<NameText>(list);
        names.UseText(text, 10);
        numbers.UseText(text, 10);
        for (std::size_t n = 0; n < kKeys; ++n) {
            const NameParts next{NameParts::Form::kWhole, slices[n + 1]}, own{NameParts::Form::kWhole, slices[n]};
            names.Add(slices[n], own, NamedNames::IfPresent::kKeep);
            names.Add(slices[n], next, NamedNames::IfPresent::kReplace);
            names.Add(slices[n], own, NamedNames::IfPresent::kKeep);
            numbers.Add(static_cast<WORD>(n * 13), next);
            numbers.Add(static_cast<WORD>(n * 13), own);
        }
    }
    NamedNames names{10};
    NumberedNames numbers{10};
};

/// Compares the maps with what ListedMaps has added, by the members of the map types given.
template <class Names, class Numbers>
void ExpectAll(const Names& names, const Numbers& numbers) {
    EXPECT_EQ(names.GetCount(), kKeys);
    EXPECT_EQ(numbers.GetCount(), kKeys);
    EXPECT_FALSE(names.IsEmpty());
    CString found;
    for (int n = 0; n < kKeys; ++n) {
        ASSERT_TRUE(names.Lookup(KeyOf(n).c_str(), found));
        ASSERT_EQ(found, KeyOf(n + 1).c_str());
        ASSERT_TRUE(numbers.Lookup(static_cast<WORD>(n * 13), found));
        ASSERT_EQ(found, KeyOf(n).c_str());
    }
    EXPECT_FALSE(names.Lookup("", found));
    EXPECT_FALSE(numbers.Lookup(12, found));
}

TEST(NameMaps, AreMapsOfTheFramework) {
    ListedMaps maps;
    const NamedNames::Map& names = maps.names;
    const NumberedNames::Map& numbers = maps.numbers;
    ExpectAll(maps.names, maps.numbers);
    ExpectAll(names, numbers);
    ExpectAll(maps.names, maps.numbers);
    int walked = 0;
    WORD number = 0;
    CString name;
    for (POSITION position = numbers.GetStartPosition(); position != nullptr;) {
        numbers.GetNextAssoc(position, number, name);
        EXPECT_EQ(name, KeyOf(number / 13).c_str());
        ++walked;
    }
    EXPECT_EQ(walked, kKeys);
}

TEST(NameMaps, CanBeChangedAfterAListWasRead) {
    using Change = void (*)(ListedMaps&);
    const std::pair<Change, int> changes[] = {
        {[](ListedMaps& maps) { maps.names["new"] = "value"; }, kKeys + 1},
        {[](ListedMaps& maps) { maps.names.SetAt("new", "value"); }, kKeys + 1},
        {[](ListedMaps& maps) { EXPECT_EQ(maps.names[KeyOf(3).c_str()], KeyOf(4).c_str()); }, kKeys},
        {[](ListedMaps& maps) { EXPECT_TRUE(maps.names.RemoveKey(KeyOf(7).c_str())); }, kKeys - 1},
        {[](ListedMaps& maps) { EXPECT_FALSE(maps.names.RemoveKey("none")); }, kKeys},
        {[](ListedMaps& maps) { maps.names.InitHashTable(5); }, kKeys},
        {[](ListedMaps& maps) { maps.names.RemoveAll(); }, 0},
    };
    for (std::size_t n = 0; n < std::size(changes); ++n) {
        ListedMaps maps;
        changes[n].first(maps);
        EXPECT_EQ(maps.names.GetCount(), changes[n].second) << n;
        EXPECT_EQ(maps.names.IsEmpty() != FALSE, changes[n].second == 0) << n;
        // A further list adds to what is there.
        const auto text = std::make_shared<NameText>("new=old");
        const NameParts old{NameParts::Form::kPlain, {4, 3}};
        maps.names.UseText(text, 1);
        maps.names.Add({0, 3}, old, NamedNames::IfPresent::kKeep);
        CString found;
        EXPECT_TRUE(maps.names.Lookup("new", found));
        EXPECT_EQ(found, changes[n].second > kKeys ? "value" : "old BT") << n;
        EXPECT_EQ(maps.names.GetCount(), changes[n].second > kKeys ? changes[n].second : changes[n].second + 1) << n;
    }
}

TEST(TextLines, LineOfMoreThan199CharactersIsSplit) {
    const std::string text = std::string(198, 'a') + "\n" + std::string(199, 'b') + "\n" + std::string(200, 'c');
    fontmap::TextLines lines(text);
    std::vector<std::size_t> lengths;
    while (const auto line = lines.Next()) lengths.push_back(line->size());
    EXPECT_THAT(lengths, ElementsAre(198, 199, 0, 199, 1));
}

TEST_F(NameLists, TypefacesAreMappedByTheirBitstreamNames) {
    WriteFile("MAPS/typeface_list.txt", std::string(kHeadings) +
                                            "Arial\t\tSwiss BT\n\tNo Face BT\nno tab BT\nEnds\t\t\n\nA =x\tB =y\n"
                                            "Blank\tTrailing BT \nFirst\tTwice BT\nSecond\tTwice BT\nT\ta\tb\n");
    OpenDialog dialog(nullptr);
    EXPECT_TRUE(dialog.MapTypeFace());
    EXPECT_EQ(dialog.m_mapTypeFace.GetCount(), 6);
    for (const auto& [key, value] : {std::pair("Swiss BT", "Arial"),
                                     {"No Face BT", ""},
                                     {"B =y", "A =x"},
                                     {"Trailing BT ", "Blank"},
                                     {"Twice BT", "Second"},
                                     {"a\tb", "T"}}) {
        CString found("?");
        EXPECT_TRUE(dialog.m_mapTypeFace.Lookup(key, found)) << key;
        EXPECT_EQ(found, value);
    }
    CString found("untouched");
    EXPECT_FALSE(dialog.m_mapTypeFace.Lookup("swiss BT", found));
    EXPECT_EQ(found, "untouched");
}

TEST_F(NameLists, MissingListsShowABoxUnlessTheirSettingSuppressesIt) {
    const auto box = [](const std::string& text) {
        return "Zelmara! Import Error|Couldn't " + text + "\n           The system cannot find the file specified.\r\n";
    };
    const std::string fonts = box("Open BitStream Font Mapping File: D:\\MAPS\\bitstream_fontlist.txt"),
                      typefaces = box("Find Typeface Mapping File: D:\\MAPS\\typeface_list.txt");
    for (const auto& [import_skip, ignore_errors] : {std::pair(0, 0), {1, 0}, {0, 1}, {1, 1}}) {
        OpenDialog dialog(nullptr);
        dialog.m_bImportSkip = import_skip;
        CZelFont::m_bIgnoreErrors = ignore_errors;
        EXPECT_FALSE(dialog.MapBitStreamFont());
        EXPECT_FALSE(dialog.MapTypeFace());
        EXPECT_EQ(Joined(NewBoxes()), (import_skip == 0 ? fonts : "") + (ignore_errors == 0 ? typefaces : ""));
    }
}

TEST_F(NameLists, WithoutADirectoryTheCurrentOneIsUsed) {
    char nothing[MAX_PATH] = {};
    Register_GLV_OnChar(nullptr, nothing);
    OpenDialog dialog(nullptr);
    EXPECT_FALSE(dialog.MapTypeFace());
    EXPECT_THAT(Boxes(), ElementsAre(testing::HasSubstr("File: typeface_list.txt\n")));
}

}  // namespace

}  // namespace zel::test
