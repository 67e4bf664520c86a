#include "widgets/ZLFavicon.h"

#include "widgets/ZLIcons.h"

#include <QImageReader>

QIcon ZLFavicon::icon(const QString &path)
{
    constexpr int side = 16;
    constexpr int largest = 1024; // what a blog calls its favicon may be anything
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    const bool isDrawing = reader.format().startsWith("svg"); // which may name files of this computer
    if (path.isEmpty() || isDrawing || reader.size().width() > largest || reader.size().height() > largest)
        return ZLIcons::icon(u"wordpress_favicon"_qs);
    const QImage image = reader.read();
    if (image.isNull())
        return ZLIcons::icon(u"wordpress_favicon"_qs);
    QPixmap pixmap =
        QPixmap::fromImage(image.scaled(2 * side, 2 * side, Qt::KeepAspectRatio, Qt::SmoothTransformation));
    pixmap.setDevicePixelRatio(2);
    return QIcon(pixmap);
}
