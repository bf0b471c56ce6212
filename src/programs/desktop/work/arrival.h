#pragma once

#include <optional>

#include "host/host_observer.h"
#include "host/picture/picture_composer.h"
#include "host/recorder/make_recording.h"

namespace zel::desktop {

/// Receives the message that arrives, and its picture.
class Arrival : public host::HostObserver {
  public:
    /// @param pictures  observes the same host, before this object.
    explicit Arrival(picture::PictureComposer& pictures) : m_pictures(pictures) {}

    void OnMessage(const document::MessageRecord& message) override {
        arrived = recorder::ArrivedMessage{0, message, m_pictures.TakePicture(), m_pictures.RgbaError()};
    }

    std::optional<recorder::ArrivedMessage> arrived;

  private:
    picture::PictureComposer& m_pictures;
};

}  // namespace zel::desktop
