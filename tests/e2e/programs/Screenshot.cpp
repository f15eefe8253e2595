#include "e2e/programs/Screenshot.h"

#include <QDir>
#include <QFileInfo>
#include <QImage>

namespace zarvy::e2e {

bool saveScreenshot(const XConnection& connection, const QString& path) {
  xcb_connection_t* server = connection.get();
  const xcb_screen_t& screen = *xcb_setup_roots_iterator(xcb_get_setup(server)).data;
  const auto reply =
      owned(xcb_get_image_reply(server,
                                xcb_get_image(server, XCB_IMAGE_FORMAT_Z_PIXMAP, screen.root, 0, 0,
                                              screen.width_in_pixels, screen.height_in_pixels, ~0U),
                                nullptr));
  // The private server's depth; four bytes a pixel.
  if (!reply || reply->depth != 24) return false;
  const QImage image(xcb_get_image_data(reply.get()), screen.width_in_pixels,
                     screen.height_in_pixels, QImage::Format_RGB32);
  return QDir().mkpath(QFileInfo(path).path()) && image.save(path, "PNG");
}

}  // namespace zarvy::e2e
