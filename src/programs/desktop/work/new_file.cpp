#include "programs/desktop/work/new_file.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "base/whole_file.h"

namespace zel::desktop {

void WriteNewFile(const QString& file, std::string_view bytes) {
    // A failure is reported when the file is opened.
    QDir().mkpath(QFileInfo(file).absolutePath());
    base::WriteWholeFile(QFile::encodeName(file).toStdString(), bytes);
}

}  // namespace zel::desktop
