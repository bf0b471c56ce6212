#pragma once

#include "host/export/exporter.h"
#include "host/picture/picture.h"
#include "host/picture/text_renderer.h"

namespace zel::exporter {

/// One page of thumbnails, 5 across and 6 down, each on a checkerboard with the message's number and title below.
class ContactSheet {
  public:
    static constexpr int kCells = 30;

    ContactSheet();

    /// Draws a message into the next cell. @pre fewer than kCells are in use.
    void Add(const ExportedMessage& message, picture::TextRenderer& renderer);

    /// Number of cells in use.
    int Count() const noexcept { return m_count; }

    /// The page, opaque, with as many rows of cells as are in use.
    picture::Picture Page() const;

  private:
    picture::Picture m_page;
    int m_count = 0;
};

}  // namespace zel::exporter
