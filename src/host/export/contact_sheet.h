#pragma once

#include "host/export/exporter.h"
#include "host/picture/picture.h"
#include "host/picture/text_face.h"

namespace zel::exporter {

/// One page of thumbnails, 5 across and 6 down, each over a checkerboard with the message's number and title below.
class ContactSheet {
  public:
    static constexpr int kCells = 30;

    ContactSheet();

    /// Draws a message into the next cell. @pre fewer than kCells are taken.
    void Add(const ExportedMessage& message, picture::TextFaces& faces);

    int Count() const noexcept { return m_count; }

    /// The page, opaque, as high as its cells want.
    picture::Picture Page() const;

  private:
    picture::Picture m_page;
    int m_count = 0;
};

}  // namespace zel::exporter
