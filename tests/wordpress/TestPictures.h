#pragma once

#include <QString>

/// Small pictures made on the spot.
namespace TestPictures {
QByteArray png(int width, int height);
/// With the camera's data in it; `orientation` as EXIF counts.
QByteArray jpeg(int width, int height, int orientation = 1);
QByteArray gif(); ///< two frames

/// What a picture is: "png 4x3", "jpeg 4x3 with camera data"; empty when it is none.
QString facts(const QByteArray &picture);
} // namespace TestPictures
