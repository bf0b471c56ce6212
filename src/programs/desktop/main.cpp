#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "base/process.h"
#include "host/settings/sqlite_settings_store.h"
#include "programs/desktop/widgets/program_icon.h"
#include "programs/desktop/widgets/readable_colours.h"
#include "programs/desktop/windows/main_window.h"
#include "programs/version/library_versions.h"
#include "programs/version/version_report.h"

using namespace zel;

namespace {

const QString kSettingsFile = QStringLiteral("/desktop.ini");

struct Arguments {
    /// Empty: the library that was open last.
    QString library, settings;
    QStringList files;
};

QString UserSettings() {
    return QString::fromStdString(settings::SqliteSettingsStore::UserDirectory().string());
}

QString UserLibrary() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
           QStringLiteral("/zeltrans/library.zellib");
}

/// The library that was open last, or the user's own if that does not exist any more.
QString LastLibrary(const QString& settings_file) {
    const QString last = QSettings(settings_file, QSettings::IniFormat).value(desktop::kLastLibrarySetting).toString();
    return QFileInfo::exists(last) ? last : UserLibrary();
}

[[noreturn]] void PrintVersionAndExit() {
    std::vector<version::LibraryVersion> libraries = version::HostLibraries();
    libraries.insert(libraries.begin(), {"Qt", qVersion()});
    std::puts(version::VersionReport("zeltrans-desktop", libraries).c_str());
    std::exit(std::fflush(stdout) == 0 ? EXIT_SUCCESS : EXIT_FAILURE);
}

Arguments Parse(const QCoreApplication& application) {
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Imports and shows Zelmara! messages."));
    parser.addHelpOption();
    const QCommandLineOption library(
        QStringLiteral("library"),
        QStringLiteral("Library file, created if it is missing [the last one, else %1].").arg(UserLibrary()),
        QStringLiteral("FILE"));
    const QCommandLineOption settings(QStringLiteral("settings"),
                                      QStringLiteral("Directory of the settings [%1].").arg(UserSettings()),
                                      QStringLiteral("DIR"));
    const QCommandLineOption version({QStringLiteral("v"), QStringLiteral("version")},
                                     QStringLiteral("Displays version information."));
    parser.addOptions({version, library, settings});
    parser.addPositionalArgument(QStringLiteral("FILE"),
                                 QStringLiteral("Disks, folders and message files to import, fonts to show."),
                                 QStringLiteral("[FILE...]"));
    parser.process(application);
    if (parser.isSet(version)) PrintVersionAndExit();
    Arguments arguments{QString(), UserSettings(), parser.positionalArguments()};
    if (parser.isSet(library)) arguments.library = parser.value(library);
    if (parser.isSet(settings)) arguments.settings = parser.value(settings);
    return arguments;
}

/// Creates the directory of a file. A failure is reported when the file is opened.
void MakeParent(const QString& file) {
    QDir().mkpath(QFileInfo(file).absolutePath());
}

/// Help and version work without a screen.
std::unique_ptr<QCoreApplication> MakeApplication(int& argc, char** argv) {
    const bool prints_only = std::any_of(argv + 1, argv + argc, [](std::string_view argument) {
        return argument == "--help" || argument == "-h" || argument == "--version" || argument == "-v";
    });
    if (prints_only) return std::make_unique<QCoreApplication>(argc, argv);
    return std::make_unique<QApplication>(argc, argv);
}

}  // namespace

int main(int argc, char** argv) {
    base::PrepareProcess();
    const std::unique_ptr<QCoreApplication> application = MakeApplication(argc, argv);
    QApplication::setApplicationName(QStringLiteral("zeltrans-desktop"));
    QApplication::setApplicationVersion(QString::fromUtf8(version::ProjectVersion()));
    Arguments arguments = Parse(*application);
    // Without a directory of the user, settings are stored for as long as the program runs.
    std::optional<QTemporaryDir> passing_settings;
    if (arguments.settings.isEmpty()) arguments.settings = passing_settings.emplace().path();
    if (arguments.library.isEmpty()) arguments.library = LastLibrary(arguments.settings + kSettingsFile);
    MakeParent(arguments.library);
    settings::SqliteSettingsStore store(QFile::encodeName(arguments.settings).toStdString());
    seam::SetSettingsStore(&store);
    int exit_code = 0;
    {
        QGuiApplication::setDesktopFileName(QStringLiteral("zeltrans-desktop"));  // whose icon a desktop shows
        QGuiApplication::setWindowIcon(desktop::ProgramIcon());
        desktop::UseReadableColours();
        desktop::MainWindow window({QFile::encodeName(QFileInfo(arguments.library).absoluteFilePath()).toStdString(),
                                    arguments.settings + kSettingsFile});
        window.show();
        store.IsUsable();
        if (!store.Note().empty()) window.ShowNotice(QString::fromStdString(store.Note()));
        window.Open(arguments.files);
        exit_code = QApplication::exec();
    }
    seam::SetSettingsStore(nullptr);
    return exit_code;
}
