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
    const char* messages;
};

TEST(OrderChecker, FindsNoBreachInAGoodOrder) {
    for (const Sequence& row : {
             Sequence{"a message", "1212 1157 c c 1181 1180 1213 15 return"},
             {"a message with tabs", "1212 1157 c 1181 1158 1180 1213 15 return"},
             {"a message without characters", "1212 1157 1181 1180 1213 15 return"},
             {"a picture", "1212 1211 1213 15 return"},
             {"a picture whose choice was cancelled", "1212 15 return"},
             {"an import that failed", "1212 return"},
             {"two imports of one dialog", "1212 1157 1181 1180 1213 15 1157 c 1181 1180 1213 15 return"},
             {"an import after one that an exception ended", "1157 c exception 1157 c 1181 1180 1213 15 return"},
             {"a batch", "1212 1161 1161 1157 1181 1180 1213 15 1160 1211 1213 15 1160 1161 return"},
             {"an export", "1125 1125 1168 1189 1125 1190 1189 return"},
         }) {
        EXPECT_THAT(Check(row.messages), IsEmpty()) << row.name;
    }
}

TEST(OrderChecker, FindsOneBreachInABadOrder) {
    for (const Sequence& row : {
             Sequence{"a character before the fonts", "c 1157 1181 1180 1213 15"},
             {"a character after the last", "1157 1181 c 1180 1213 15"},
             {"tabs after the message", "1157 1181 1180 1158 1180 1213 15"},
             {"tabs before the rows", "1157 1158 1180 1213 15"},
             {"the fonts twice", "1157 1157 1181 1180 1213 15"},
             {"no end of rows", "1157 c 1180 1213 15"},
             {"no end of message", "1157 1181 1213 15"},
             {"no end of import", "1157 1181 1180 15"},
             {"no paint", "1157 1181 1180 1213 return"},
             {"a picture inside a message", "1157 1211 1213 15"},
             {"a record without an import", "1160"},
             {"a dialog inside a message", "1157 1212 1181 1180 1213 15"},
             {"an export that was not asked for", "1168 1189"},
             {"the end of an export alone", "1125 1189"},
         }) {
        EXPECT_EQ(Check(row.messages).size(), 1U) << row.name;
    }
}

TEST(OrderChecker, ReportsAMessageAtTheWrongWindowOrTime) {
    host::OrderChecker checker;
    for (const UINT message : {kMsgDialogReady, kMsgFonts, kMsgRowsDone, kMsgTabs}) {
        checker.OnEvent(EventOf(message, 0), host::Target::kHost);
    }
    EXPECT_THAT(checker.Breaches(), ElementsAre(HasSubstr("1212 arrived at the host window"),
                                                HasSubstr("1158 arrived out of order, after 1181")));
}

}  // namespace

}  // namespace zel::test
