// Fetching over FTP with the program's dialog and with the module's.
#include <QElapsedTimer>
#include <QFileInfo>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>

#include <gmock/gmock.h>

#include "host/ftp/test_server.h"
#include "module/contract/dialog_ids.h"
#include "module/contract/zel_trans_dlg.h"
#include "module/contract/zel_trans_ftp.h"
#include "programs/desktop/host_window_fixture.h"

namespace zel::screen_test {

namespace {

using testing::HasSubstr;

class HostFetch : public HostWindow {
  protected:
    void Serve(std::vector<std::string> options = {}) { ServeDisk(Disk(), std::move(options)); }
    void ServeDisk(const QString& disk, std::vector<std::string> options = {}) {
        options.insert(options.begin(), {"hostile_server.py", disk.toStdString()});
        server = std::make_unique<test::TestServer>(options);
    }

    /// Fills in the program's dialog and presses Enter. The fetch continues after the call.
    void Fetch(const QString& messages) {
        InNextWindow([&, messages] {
            QWidget& dialog = *QApplication::activeModalWidget();
            const auto type = [&](const char* line, const QString& text) {
                dialog.findChild<QLineEdit*>(QLatin1String(line))->setText(text);
            };
            type("url", QString::fromStdString(server->Url("")));
            type("selection", messages);
            type("directory", In("fetched"));
            Key(dialog, Qt::Key_Return);
        });
        Trigger("fetch");
    }

    /// Waits for the fetch and for the import that follows.
    void FinishBoth() {
        Finish();
        Finish();
    }

    /// Of the server's disk.
    QString Folder() const { return In("fetched/127.0.0.1_") + QString::number(server->Port()); }

    std::unique_ptr<test::TestServer> server;
};

TEST_F(HostFetch, ImportsFetchedFilesAndKeepsDisksOfTwoServersApart) {
    Serve();
    Fetch(QStringLiteral("2-4"));
    EXPECT_TRUE(Find("stop").isVisible());
    FinishBoth();
    EXPECT_EQ(Notice(), "");
    EXPECT_EQ(LibraryList().rowCount(), 3);
    EXPECT_TRUE(QFileInfo::exists(Folder() + QStringLiteral("/MACHINE/.0012")));
    Fetch(QStringLiteral("3"));
    FinishBoth();
    EXPECT_THAT(Notice(), AllOf(HasSubstr(".0003"), HasSubstr("left as they were")));
    Fetch(QStringLiteral("7000"));
    Finish();
    EXPECT_THAT(Notice(), HasSubstr("none of the requested files exists"));

    const QString first = Folder();
    const std::string other = In("other").toStdString();
    std::filesystem::create_directories(other + "/MESSAGES");
    std::filesystem::copy(Disk().toStdString() + "/MESSAGES/.0004", other + "/MESSAGES/.0003");
    std::filesystem::copy(Disk().toStdString() + "/MACHINE", other + "/MACHINE");
    ServeDisk(In("other"));
    Fetch(QStringLiteral("3"));
    FinishBoth();
    EXPECT_NE(Folder(), first);
    EXPECT_EQ(Recorded().size(), 4U) << Notice();
    EXPECT_EQ(library::Library(LibraryFile(), library::Access::kRead).Disks().size(), 2U);
}

struct Address {
    const char* url;
    const char* user;
    /// In the chosen folder.
    const char* folder;
};

TEST(FetchFolder, IsDifferentForEachAddress) {
    for (const Address& row : {Address{"ftp://News.example/disks/NEWS", "", "news.example/disks/NEWS"},
                               {"ftp://news.example:21/disks//NEWS/", "anonymous", "news.example/disks/NEWS"},
                               {"ftp://news.example:2121/NEWS", "", "news.example_2121/NEWS"},
                               {"ftp://news_2121.example", "", "news%5F2121.example"},
                               {"ftps://news.example:990/NEWS", "editor", "editor@news.example/NEWS"},
                               {"ftp://news.example/NEWS", "a/b", "a%2Fb@news.example/NEWS"},
                               {"ftp://news.example/%2Fdisks/NEWS", "", "news.example/%2F/disks/NEWS"},
                               {"ftp://news.example/../NEWS", "", "news.example/%2E%2E/NEWS"},
                               {"ftp://news.example/A%20B (2)", "", "news.example/A B (2)"}}) {
        desktop::FetchSettings settings;
        settings.url = QLatin1String(row.url);
        settings.user = QLatin1String(row.user);
        settings.directory = QStringLiteral("/to");
        EXPECT_EQ(settings.Folder().toStdString(), std::string("/to/") + row.folder) << row.url;
    }
}

TEST(FetchFolder, OfALongAddressIsShort) {
    desktop::FetchSettings one, other;
    one.directory = other.directory = QStringLiteral("/to");
    one.url = QStringLiteral("ftp://news.example/") + QStringLiteral("deep/").repeated(60) + QStringLiteral("NEWS");
    other.url = QStringLiteral("ftp://news.example/") + QStringLiteral("deep/").repeated(61) + QStringLiteral("NEWS");
    EXPECT_LT(one.Folder().size(), 128);
    EXPECT_TRUE(one.Folder().endsWith(QStringLiteral("/NEWS")));
    EXPECT_NE(one.Folder(), other.Folder());
}

TEST_F(HostFetch, StopsAtOnceWhenTheWindowIsClosed) {
    Serve({"--stall", "data", "--log", In("commands").toStdString()});
    Fetch(QStringLiteral("1-9999"));
    EXPECT_TRUE(window->IsBusy());
    const auto waits_for_data = [&] {
        QFile commands(In("commands"));
        return commands.open(QIODevice::ReadOnly) && commands.readAll().contains("EPSV");
    };
    EXPECT_TRUE(QTest::qWaitFor(waits_for_data, kTimeout_ms));
    QElapsedTimer elapsed;
    elapsed.start();
    window->close();
    Start();
    EXPECT_LT(elapsed.elapsed(), 5000);
    EXPECT_FALSE(window->IsBusy());
}

/// Calls `user` with the modal window, repeatedly, until it returns true: the server needs some time.
void WhenOpen(const std::function<bool(QWidget&)>& user) {
    QTimer::singleShot(5, [user] {
        QWidget* const front = QApplication::activeModalWidget();
        if (front == nullptr || !front->isVisible() || !user(*front)) WhenOpen(user);
    });
}

/// Selects a name in the chooser as soon as it shows a directory with this name.
void Choose(const QString& name) {
    WhenOpen([name](QWidget& box) {
        auto* const list = box.objectName() == QLatin1String("remote") ? box.findChild<QListWidget*>() : nullptr;
        if (list == nullptr || list->findItems(name, Qt::MatchExactly).isEmpty()) return false;
        list->setCurrentItem(list->findItems(name, Qt::MatchExactly).front());
        Key(box, Qt::Key_Return);
        return true;
    });
}

/// Operates the module's FTP dialog, which is open.
void CopyOne(QWidget& dialog, const std::string& address, const QString& to) {
    const auto at = [&](int control) -> QWidget& { return *dialog.findChild<QWidget*>(QString::number(control)); };
    Click(at(FtpControl::kAddressBox));
    TypeText(dialog, QString::fromStdString(address));
    Click(at(FtpControl::kLocalDirBox));
    TypeText(dialog, to);
    Click(at(FtpControl::kPassiveCheck));
    Choose(QStringLiteral("MESSAGES"));
    Choose(QStringLiteral(".0003"));
    Click(at(FtpControl::kBrowseRemoteButton));
    EXPECT_EQ(dialog.findChild<QLineEdit*>(QString::number(FtpControl::kFileEdit))->text(), QStringLiteral(".0003"));

    WhenOpen([](QWidget& box) {
        if (box.objectName() != QLatin1String("message_box")) return false;
        EXPECT_THAT(static_cast<QMessageBox&>(box).text().toStdString(), HasSubstr("fetched"));
        Key(box, Qt::Key_Return);
        return true;
    });
    Click(at(FtpControl::kExecuteButton));
    dialog.close();
}

TEST_F(HostFetch, ServesTheModulesDialog) {
    Serve();
    InNextWindow([&] {
        QWidget& dialog = *QApplication::activeModalWidget();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
        InNextWindow([&] {
            QWidget& copy = *QApplication::activeModalWidget();
            EXPECT_TRUE(QTest::qWaitForWindowActive(&copy));
            CopyOne(copy, "127.0.0.1:" + std::to_string(server->Port()), In("copied"));
        });
        Click(*dialog.findChild<QWidget*>(QString::number(ImportControl::kFtpButton)));
        dialog.close();
    });
    Trigger("import");
    EXPECT_TRUE(QFileInfo::exists(In("copied/MESSAGES/.0003")));
}

}  // namespace

}  // namespace zel::screen_test
