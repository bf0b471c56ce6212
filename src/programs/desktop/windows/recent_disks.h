#pragma once

#include <QString>
#include <QStringList>

class QSettings;

namespace zel::desktop {

/// The disks that were imported recently, kept in the settings.
class RecentDisks {
  public:
    /// @param settings  not owned.
    explicit RecentDisks(QSettings& settings) : m_settings(settings) {}

    /// The latest first.
    QStringList List() const;
    void Add(const QString& disk);

    /// The folder in which a file dialog opens: the one stored in a setting, else one of the latest disk, else the home
    /// folder. A folder that does not exist is skipped.
    /// @param setting  name of the setting.
    /// @param in_disk  path relative to a disk.
    QString StartFolder(const QString& setting, const QString& in_disk) const;

  private:
    QSettings& m_settings;
};

}  // namespace zel::desktop
