#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QStandardPaths>
#include <iostream>

#include "desktop/windows/main_window.h"
#include "host/sqlite_settings_store.h"

namespace {

struct Arguments {
    QString library, settings;
    QStringList files;
};

QString UserSettings() {
    return QString::fromStdString(SqliteSettingsStore::UserDirectory().string());
}

QString UserLibrary() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
           QStringLiteral("/zeltrans/library.zellib");
}

Arguments Parse(const QApplication& application) {
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Imports Zelmara! messages and shows them."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption library(QStringLiteral("library"),
                                     QStringLiteral("The library, made when it is missing [%1].").arg(UserLibrary()),
                                     QStringLiteral("FILE"));
    const QCommandLineOption settings(QStringLiteral("settings"),
                                      QStringLiteral("Where settings are kept [%1].").arg(UserSettings()),
                                      QStringLiteral("DIR"));
    parser.addOptions({library, settings});
    parser.addPositionalArgument(QStringLiteral("FILE"),
                                 QStringLiteral("Disks, folders and message files to import, fonts to show."),
                                 QStringLiteral("[FILE...]"));
    parser.process(application);
    Arguments arguments{UserLibrary(), UserSettings(), parser.positionalArguments()};
    if (parser.isSet(library)) arguments.library = parser.value(library);
    if (parser.isSet(settings)) arguments.settings = parser.value(settings);
    return arguments;
}

/// The directory of a file, made if it is missing; whoever opens the file tells when that failed.
void MakeParent(const QString& file) {
    QDir().mkpath(QFileInfo(file).absolutePath());
}

}  // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("zeltrans-desktop"));
    QApplication::setApplicationDisplayName(QStringLiteral("ZelTrans"));
    QApplication::setApplicationVersion(QStringLiteral(ZELTRANS_VERSION));
    const Arguments arguments = Parse(application);
    MakeParent(arguments.library);
    SqliteSettingsStore store(QFile::encodeName(arguments.settings).toStdString());
    SetSettingsStore(&store);
    int exit_code = 0;
    {
        desktop::MainWindow window({QFile::encodeName(QFileInfo(arguments.library).absoluteFilePath()).toStdString(),
                                    arguments.settings + QStringLiteral("/desktop.ini")});
        window.show();
        store.IsUsable();
        if (!store.Note().empty()) window.Tell(QString::fromUtf8(store.Note().c_str()));
        window.Open(arguments.files);
        exit_code = QApplication::exec();
    }
    SetSettingsStore(nullptr);
    return exit_code;
}
