#include "programs/desktop/work/import_options.h"

#include <QFile>
#include <QSettings>
#include <string>
#include <vector>

#include "programs/desktop/work/name_lists.h"

namespace zel::desktop {

namespace {

// Names of settings.
const QString kLines = QStringLiteral("import/lines");
const QString kNameLists = QStringLiteral("import/maps");
const QString kTypefaces = QStringLiteral("import/typefaces");
const QString kBaseline = QStringLiteral("import/baseline");

std::string NativeName(const QString& path) {
    return QFile::encodeName(path).toStdString();
}

}  // namespace

ImportOptions ImportOptions::Load(const QSettings& settings) {
    ImportOptions options;
    options.standard = VideoStandardOf(settings.value(kLines).toInt()).value_or(options.standard);
    options.name_lists = settings.value(kNameLists).toString();
    options.typefaces = settings.value(kTypefaces, options.typefaces).toBool();
    options.baseline = settings.value(kBaseline, options.baseline).toBool();
    return options;
}

void ImportOptions::Save(QSettings& settings) const {
    settings.setValue(kLines, ActiveLines(standard));
    settings.setValue(kNameLists, name_lists);
    settings.setValue(kTypefaces, typefaces);
    settings.setValue(kBaseline, baseline);
}

host::HostOptions HostOptionsOf(const ImportOptions& options, const QStringList& near, const QString& own_lists) {
    host::HostOptions result;
    result.standard = options.standard;
    result.tt_convert = options.typefaces;
    result.baseline_align = options.baseline;
    std::vector<std::string> directories;
    for (const QString& directory : near) directories.push_back(NativeName(directory));
    const std::string maps = NameListsFor(NativeName(options.name_lists), directories, NativeName(own_lists));
    if (!maps.empty()) result.maps = maps;
    return result;
}

}  // namespace zel::desktop
