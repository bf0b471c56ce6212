#include "host/order_checker.h"

#include <cstddef>
#include <sstream>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "module/contract/host_messages.h"

namespace zel::test {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// The event of a message with this number. The order checker does not use its objects.
host::HostEvent EventOf(UINT message, WPARAM wParam) {
    alignas(std::max_align_t) static std::byte object[1 << 16];
    return host::DecodeHostEvent(message, wParam, reinterpret_cast<LPARAM>(object)).value();
}

/// Breaches of a sequence such as "1157 c c 1181 1180 1213 15"; "return" is the end of the call.
std::vector<std::string> Check(const std::string& sequence) {
    host::OrderChecker checker;
    std::istringstream words(sequence);
    for (std::string word; words >> word;) {
        if (word == "c") {
            checker.OnCharacter();
        } else if (word == "return") {
            checker.OnReturn();
        } else if (word == "exception") {
            checker.OnException();
        } else {
            const UINT message = static_cast<UINT>(std::stoul(word));
            const host::HostEvent event = EventOf(message, message == kMsgTabs ? 2 : 0);
            checker.OnEvent(event, ContractTargetOf(event));
        }
    }
    return checker.Breaches();
}

struct Sequence {
    const char* name;
    const char* words;
};
void PrintTo(const Sequence& sequence, std::ostream* out) {
    *out << sequence.name;
}
const auto kNameOf = [](const auto& each) { return std::string(each.param.name); };

class GoodOrder : public testing::TestWithParam<Sequence> {};
TEST_P(GoodOrder, HasNoBreach) {
    EXPECT_THAT(Check(GetParam().words), IsEmpty());
}
INSTANTIATE_TEST_SUITE_P(
    Each, GoodOrder,
    testing::Values(
        Sequence{"a_message", "1212 1157 c c 1181 1180 1213 15 return"},
        Sequence{"a_message_with_tabs", "1212 1157 c 1181 1158 1180 1213 15 return"},
        Sequence{"a_message_without_characters", "1212 1157 1181 1180 1213 15 return"},
        Sequence{"a_picture", "1212 1211 1213 15 return"},
        Sequence{"a_picture_whose_choice_was_cancelled", "1212 15 return"},
        Sequence{"an_import_that_failed", "1212 return"},
        Sequence{"two_imports_of_one_dialog", "1212 1157 1181 1180 1213 15 1157 c 1181 1180 1213 15 return"},
        Sequence{"an_import_after_one_that_an_exception_ended", "1157 c exception 1157 c 1181 1180 1213 15 return"},
        Sequence{"a_batch", "1212 1161 1161 1157 1181 1180 1213 15 1160 1211 1213 15 1160 1161 return"},
        Sequence{"an_export", "1125 1125 1168 1189 1125 1190 1189 return"}),
    kNameOf);

class BadOrder : public testing::TestWithParam<Sequence> {};
TEST_P(BadOrder, IsABreach) {
    EXPECT_EQ(Check(GetParam().words).size(), 1U);
}
INSTANTIATE_TEST_SUITE_P(Each, BadOrder,
                         testing::Values(Sequence{"a_character_before_the_fonts", "c 1157 1181 1180 1213 15"},
                                         Sequence{"a_character_after_the_last", "1157 1181 c 1180 1213 15"},
                                         Sequence{"tabs_after_the_message", "1157 1181 1180 1158 1180 1213 15"},
                                         Sequence{"tabs_before_the_rows", "1157 1158 1180 1213 15"},
                                         Sequence{"the_fonts_twice", "1157 1157 1181 1180 1213 15"},
                                         Sequence{"no_end_of_rows", "1157 c 1180 1213 15"},
                                         Sequence{"no_end_of_message", "1157 1181 1213 15"},
                                         Sequence{"no_end_of_import", "1157 1181 1180 15"},
                                         Sequence{"no_paint", "1157 1181 1180 1213 return"},
                                         Sequence{"a_picture_inside_a_message", "1157 1211 1213 15"},
                                         Sequence{"a_record_without_an_import", "1160"},
                                         Sequence{"a_dialog_inside_a_message", "1157 1212 1181 1180 1213 15"},
                                         Sequence{"an_export_that_was_not_asked_for", "1168 1189"},
                                         Sequence{"the_end_of_an_export_alone", "1125 1189"}),
                         kNameOf);

TEST(OrderChecker, ReportsAMessageAtTheWrongWindow) {
    host::OrderChecker checker;
    checker.OnEvent(EventOf(kMsgDialogReady, 0), host::Target::kHost);
    EXPECT_THAT(checker.Breaches(), ElementsAre(HasSubstr("1212 arrived at the host window")));
}

TEST(OrderChecker, ReportsATabTableWithoutTabs) {
    host::OrderChecker checker;
    for (const UINT message : {kMsgFonts, kMsgRowsDone, kMsgTabs}) {
        checker.OnEvent(EventOf(message, 0), host::Target::kHost);
    }
    EXPECT_THAT(checker.Breaches(), ElementsAre(HasSubstr("1158 arrived out of order, after 1181")));
}

}  // namespace

}  // namespace zel::test
