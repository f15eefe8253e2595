#include "e2e/programs/Screenshot.h"

#include <QDir>
#include <QFileInfo>

namespace zarvy::e2e {

QImage screenImage(const XConnection& connection) {
  xcb_connection_t* server = connection.get();
  const xcb_screen_t& screen = *xcb_setup_roots_iterator(xcb_get_setup(server)).data;
  const auto reply =
      owned(xcb_get_image_reply(server,
                                xcb_get_image(server, XCB_IMAGE_FORMAT_Z_PIXMAP, screen.root, 0, 0,
                                              screen.width_in_pixels, screen.height_in_pixels, ~0U),
                                nullptr));
  // The private server's depth; four bytes a pixel.
  if (!reply || reply->depth != 24) return {};
  return QImage(xcb_get_image_data(reply.get()), screen.width_in_pixels, screen.height_in_pixels,
                QImage::Format_RGB32)
      .copy();
}

bool savePicture(const QImage& image, const QString& path) {
  return QDir().mkpath(QFileInfo(path).path()) && image.save(path, "PNG");
}

}  // namespace zarvy::e2e
