#pragma once

#include <QString>
#include <QStringList>

#include "host/reference_host.h"
#include "module/contract/records/video_standard.h"

class QSettings;

namespace zel::desktop {

/// The user's choices for imports.
struct ImportOptions {
    /// Of the host.
    VideoStandard standard = VideoStandard::kNtsc;
    /// Directory of the name lists; empty for the default.
    QString name_lists;
    /// Installed typefaces instead of bitmap fonts.
    bool typefaces = false;
    bool baseline = true;

    /// Reads the choices from the settings of the windows. A missing or invalid one has its default.
    static ImportOptions Load(const QSettings& settings);
    void Save(QSettings& settings) const;
};

/// The options of the host for an import. May create the program's own name lists.
/// @param near       directories beside which name lists are looked for.
/// @param own_lists  directory of the program's own name lists.
host::HostOptions HostOptionsOf(const ImportOptions& options, const QStringList& near, const QString& own_lists);

}  // namespace zel::desktop
