#pragma once

#include <QRect>
#include <QString>
#include <vector>

#include "host/library/recording.h"
#include "host/picture/picture.h"
#include "host/reference_host.h"

namespace zel::desktop {

/// A message to be compared, and how it is called.
struct ComparedMessage {
    QString title;
    library::Recording recording;
};

/// A difference of two messages.
struct DifferenceLine {
    /// One line.
    QString text;
    /// Its place in the picture of each; empty for none.
    QRect a, b;
};

struct Comparison {
    std::vector<DifferenceLine> lines;
    /// The picture of the first message in greys, with the pixels that differ in colours. 0 x 0 without pictures.
    picture::Picture marked;
};

/// Compares what two messages contain, and their pictures.
Comparison Compare(const library::Recording& a, const library::Recording& b);

/// A message file as an import would record it; nothing is stored. To be called by the module's thread.
/// @throws std::runtime_error with the file's name and the reason.
ComparedMessage ReadComparedFile(const QString& file, const host::HostOptions& options);

}  // namespace zel::desktop
