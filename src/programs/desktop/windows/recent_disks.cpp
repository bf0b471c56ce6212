#include "programs/desktop/windows/recent_disks.h"

#include <QDir>
#include <QSettings>
#include <algorithm>

namespace zel::desktop {

namespace {

constexpr int kMaxDisks = 10;

}  // namespace

QStringList RecentDisks::List() const {
    return m_settings.value(QStringLiteral("recent/disks")).toStringList();
}

void RecentDisks::Add(const QString& disk) {
    QStringList disks = List();
    disks.removeAll(disk);
    disks.prepend(disk);
    m_settings.setValue(QStringLiteral("recent/disks"), disks.mid(0, kMaxDisks));
}

QString RecentDisks::StartFolder(const QString& setting, const QString& in_disk) const {
    QStringList folders{m_settings.value(setting).toString()};
    for (const QString& disk : List()) folders << QDir::cleanPath(disk + u'/' + in_disk) << disk;
    const auto found = std::find_if(folders.cbegin(), folders.cend(),
                                    [](const QString& folder) { return !folder.isEmpty() && QDir(folder).exists(); });
    return found != folders.cend() ? *found : QDir::homePath();
}

}  // namespace zel::desktop
