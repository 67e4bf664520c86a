#pragma once

#include <QByteArray>

/// Small pictures made on the spot.
namespace TestPictures {
QByteArray png(int width, int height);
/// With the camera's data in it; `orientation` as EXIF counts.
QByteArray jpeg(int width, int height, int orientation = 1);
QByteArray gif(); ///< two frames

struct Facts {
    QByteArray loader; ///< "pngload_buffer", "jpegload_buffer"; empty when it is no picture
    int width = 0;
    int height = 0;
    bool hasCameraData = false;
    bool operator==(const Facts &) const = default;
};
Facts facts(const QByteArray &picture);
} // namespace TestPictures
