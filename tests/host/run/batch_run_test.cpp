#include "host/run/batch_run.h"

#include <fstream>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/host_disk.h"
#include "host/run/export_run.h"
#include "host/trace.h"
#include "module/contract/host_messages.h"
#include "platform/framework/exceptions.h"

namespace zel::test {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

/// Collects the result for each number, such as "5 recorded", and each failure's reason.
class ItemRecorder : public host::HostObserver {
  public:
    void OnBatchItem(const host::BatchItem& item) override {
        static constexpr const char* kWords[] = {"recorded", "not inserted", "missing", "failed"};
        items.push_back(std::to_string(item.number) + " " + kWords[static_cast<int>(item.outcome)]);
        if (!item.reason.empty()) reasons.push_back(item.reason);
    }

    std::vector<std::string> items, reasons;
};

class BatchRun : public HostDisk {
  protected:
    BatchRun() {
        WriteFont(BlockFont());
        m_batch.disk = m_scratch.Path().string();
        m_batch.ranges = {{"1", "4"}};
        m_batch.host.maps = m_batch.disk;
    }

    run::BatchOutcome Run(host::HostObserver* also = nullptr) {
        m_items = ItemRecorder();
        std::vector<host::HostObserver*> observers{&m_items};
        if (also != nullptr) observers.push_back(also);
        return run::RunBatch(m_batch, observers);
    }

    run::BatchRequest m_batch;
    ItemRecorder m_items;
};

TEST_F(BatchRun, ReportsTheResultForEachNumber) {
    WriteMessage(OneRow("A"), ".0001");
    samples::WriteWholeFile(Path("MESSAGES/.0003"), std::string_view("not a message at all, though long enough"));
    const files::StoredGlyph picture{.width = 4, .height = 4, .pixels = files::Bytes(64, 9)};
    samples::WriteWholeFile(Path("MESSAGES/0004"), files::WriteRgbaFile(714, picture));
    struct {
        bool warnings;
        run::RgbaAnswer rgba;
        const char* last;
    } const cases[] = {{false, run::RgbaAnswer::kObject, "4 recorded"},
                       {true, run::RgbaAnswer::kBackground, "4 recorded"},
                       {false, run::RgbaAnswer::kCancel, "4 not inserted"}};
    for (const auto& row : cases) {
        m_batch.warnings = row.warnings;
        m_batch.rgba = row.rgba;
        const run::BatchOutcome outcome = Run();
        EXPECT_EQ(outcome.end, run::BatchEnd::kCompleted);
        EXPECT_THAT(m_items.items, ElementsAre("1 recorded", "2 missing", "3 failed", row.last));
        EXPECT_THAT(m_items.reasons, ElementsAre(StartsWith(Path("MESSAGES/.0003") + ": ")));
        EXPECT_THAT(outcome.order_breaches, IsEmpty());
        EXPECT_EQ(outcome.status, 0);
    }
}

TEST_F(BatchRun, FailsEveryNumberOfADiskWithoutMessages) {
    std::filesystem::remove(Path("MESSAGES"));
    Run();
    EXPECT_EQ(m_items.items.size(), 4U);
    EXPECT_THAT(m_items.reasons.at(3), HasSubstr("MESSAGES does not exist"));
}

TEST_F(BatchRun, RunsSeveralRangesInOneDialog) {
    for (const char* name : {".0001", ".0003", ".0009"}) WriteMessage(OneRow("A"), name);
    m_batch.ranges = {{"1", "1"}, {"0003", ".0003"}, {"9", "9"}};
    OrderRecorder order;
    Run(&order);
    EXPECT_THAT(m_items.items, ElementsAre("1 recorded", "3 recorded", "9 recorded"));
    EXPECT_EQ(order.order.find("1212"), order.order.rfind("1212"));
}

TEST_F(BatchRun, ReportsWhyTheModuleRefusesARange) {
    m_batch.ranges = {{"1", "x"}, {"1", "2"}};
    const run::BatchOutcome outcome = Run();
    EXPECT_EQ(outcome.end, run::BatchEnd::kRefused);
    EXPECT_THAT(outcome.failure, StartsWith("Non-numeric End ID: x"));
    EXPECT_THAT(m_items.items, IsEmpty());
}

TEST_F(BatchRun, StopsAtEachCheckOfTheEscapeKey) {
    for (const char* name : {".0001", ".0002", ".0003", ".0004"}) WriteMessage(OneRow("A"), name);
    for (const int asking : {1, 2, 3, 6}) {
        int asked = 0;
        m_batch.stop = [&] { return ++asked >= asking; };
        EXPECT_EQ(Run().end, run::BatchEnd::kStopped);
        EXPECT_EQ(m_items.items.size(), static_cast<std::size_t>((asking - 1) / 2)) << asking;
        EXPECT_EQ(asked, asking);
    }
}

/// Throws a memory exception at the second character.
class OutOfMemoryOnce : public host::HostObserver {
  public:
    void OnChar(const host::SentCharacter& /*character*/) override {
        if (++m_count == 2) AfxThrowMemoryException();
    }

  private:
    int m_count = 0;
};

TEST_F(BatchRun, ContinuesAfterAMessageThatEndsInAnException) {
    for (const char* name : {".0001", ".0002", ".0003"}) WriteMessage(OneRow("A"), name);
    OutOfMemoryOnce out_of_memory;
    std::ostringstream text;
    host::TraceWriter trace(text, host::TracePixels::kNo);
    ItemRecorder items;
    std::vector<host::HostObserver*> observers{&items, &trace, &out_of_memory};
    const run::BatchOutcome outcome = run::RunBatch(m_batch, observers);
    EXPECT_THAT(items.items, ElementsAre("1 recorded", "2 failed", "3 recorded", "4 missing"));
    EXPECT_EQ(items.reasons.at(0), Path("MESSAGES/.0002") + ": reading stopped: Out of memory.");
    EXPECT_TRUE(outcome.exception.has_value());
    EXPECT_THAT(text.str(), testing::EndsWith(R"({"event":"exception","text":"Out of memory."})"
                                              "\n"));
}

/// Throws a memory exception at the message of a number and kind that the host receives.
template <class Event>
class OutOfMemoryAt : public host::HostObserver {
  public:
    explicit OutOfMemoryAt(int nth) : m_left(nth) {}
    void OnSend(const host::SentMessage& sent) override {
        if (std::holds_alternative<Event>(sent.event) && m_left-- == 0) AfxThrowMemoryException();
    }

  private:
    int m_left;
};

TEST_F(BatchRun, LosesNoNumberToAnExceptionBetweenTwo) {
    for (const char* name : {".0001", ".0002", ".0003"}) WriteMessage(OneRow("A"), name);
    OutOfMemoryAt<host::RecordMessage> at_second(1);
    EXPECT_EQ(Run(&at_second).end, run::BatchEnd::kCompleted);
    EXPECT_THAT(m_items.items, ElementsAre("1 recorded", "2 failed", "3 recorded", "4 missing"));
    OutOfMemoryAt<host::DialogReady> before_the_first(0);
    const run::BatchOutcome outcome = Run(&before_the_first);
    EXPECT_EQ(outcome.end, run::BatchEnd::kRefused);
    EXPECT_EQ(outcome.failure, "Out of memory.");
    EXPECT_THAT(m_items.items, IsEmpty());
}

/// A host that has the messages in `held`.
class ExportRecorder : public host::ExportService {
  public:
    bool Has(int number) override { return held.contains(number); }
    void Begin(int number) override { done.push_back("begin " + std::to_string(number)); }
    void Complete(int number, const std::string& path) override {
        done.push_back("complete " + std::to_string(number) + " " + path);
    }

    std::set<int> held{2, 4};
    std::vector<std::string> done;
};

TEST_F(BatchRun, ExportsTheHostsMessages) {
    for (const bool flag : {false, true}) {
        ExportRecorder service;
        OrderRecorder order;
        std::vector<host::HostObserver*> observers{&order};
        const run::ExportOutcome outcome = run::RunExport({{"1", "4"}, "/out", &service, flag, {}}, observers);
        EXPECT_EQ(outcome.end, run::BatchEnd::kCompleted);
        EXPECT_THAT(service.done, ElementsAre("begin 2", "complete 2 \\out", "begin 4", "complete 4 \\out"));
        const std::string first = flag ? "1168" : "1190";
        EXPECT_EQ(order.order, "1125 1125 " + first + " 1189 1125 1125 " + first + " 1189 end");
        EXPECT_THAT(outcome.order_breaches, IsEmpty());
    }
    ExportRecorder service;
    EXPECT_EQ(run::RunExport({{"5", "4"}, "/out", &service, false, {}}, {}).failure, "Invalid Range: 0005 - 0004 ");
    int asked = 0;
    EXPECT_EQ(run::RunExport({{"1", "4"}, "/out", &service, false, [&] { return ++asked == 3; }}, {}).end,
              run::BatchEnd::kStopped);
    EXPECT_THAT(service.done, ElementsAre("begin 2", "complete 2 \\out"));
}

}  // namespace

}  // namespace zel::test
