#include "widgets/ZLIcons.h"

#include "platform/ZLLog.h"
#include "widgets/ZLTheme.h"

#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>
#include <optional>

static void registerResources()
{
    static const bool done = [] {
        Q_INIT_RESOURCE(zalmo_icons); // a static library's resources are linked only when they are named
        return true;
    }();
    Q_UNUSED(done)
}

namespace {

constexpr QLatin1String applicationMark("zalmo");

QByteArray drawing(const QString &name, const QColor &color)
{
    registerResources();
    QFile file(u":/icons/%1.svg"_qs.arg(name));
    if (!file.open(QIODevice::ReadOnly)) {
        ZLLog(u"no icon named %1"_qs.arg(name));
        return {};
    }
    QByteArray svg = file.readAll();
    svg.replace("currentColor", color.name().toLatin1());
    svg.replace("stroke-width=\"2\"", "stroke-width=\"1.75\"");
    return svg;
}

/// Draws from the resource whenever Qt asks for a size and state that it has not painted yet.
class PaletteIconEngine : public QIconEngine {
public:
    PaletteIconEngine(const QString &name, const std::optional<QPalette> &palette)
        : m_name(name)
        , m_palette(palette)
    {
    }

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override
    {
        const int side = qMin(rect.width(), rect.height());
        const QPoint corner(rect.x() + (rect.width() - side) / 2, rect.y() + (rect.height() - side) / 2);
        const qreal ratio = painter->device()->devicePixelRatioF();
        painter->drawPixmap(corner, ZLIcons::pixmap(m_name, side, color(mode, state), ratio));
    }

    /// `size` is in device pixels here; the caller sets the ratio.
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        return ZLIcons::pixmap(m_name, qMin(size.width(), size.height()), color(mode, state), 1.0);
    }

    QIconEngine *clone() const override { return new PaletteIconEngine(*this); }
    QString key() const override { return u"ZLIcons"_qs; }

private:
    QColor color(QIcon::Mode mode, QIcon::State state) const
    {
        const QPalette palette = m_palette.value_or(QGuiApplication::palette());
        if (mode == QIcon::Selected || mode == QIcon::Active) // the latter in the menu's item under the pointer
            return palette.color(QPalette::HighlightedText);
        if (mode == QIcon::Disabled)
            return palette.color(QPalette::Disabled, QPalette::ButtonText);
        if (state == QIcon::On)
            return ZLTheme::accent(palette);
        return ZLIcons::tone(m_name, palette);
    }

    QString m_name;
    std::optional<QPalette> m_palette;
};

} // namespace

QIcon ZLIcons::icon(const QString &name)
{
    return QIcon(new PaletteIconEngine(name, std::nullopt));
}

QIcon ZLIcons::icon(const QString &name, const QPalette &palette)
{
    return QIcon(new PaletteIconEngine(name, palette));
}

QPixmap ZLIcons::pixmap(const QString &name, int size, const QColor &color, qreal devicePixelRatio)
{
    const int side = qRound(size * devicePixelRatio);
    const QString key = u"ZLIcons/%1/%2/%3/%4"_qs.arg(name).arg(side).arg(color.rgba()).arg(devicePixelRatio);
    QPixmap pixmap;
    if (QPixmapCache::find(key, &pixmap))
        return pixmap;
    QSvgRenderer renderer(drawing(name, color));
    if (!renderer.isValid())
        return {};
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter);
    painter.end();
    pixmap = QPixmap::fromImage(image);
    pixmap.setDevicePixelRatio(devicePixelRatio);
    QPixmapCache::insert(key, pixmap);
    return pixmap;
}

QColor ZLIcons::tone(const QString &name, const QPalette &palette)
{
    struct Tone {
        QLatin1String name;
        QColor (*color)(const QPalette &);
    };
    static constexpr Tone tones[] = {
        {QLatin1String("postlist_published_icon"), ZLTheme::good},
        {QLatin1String("postlist_page_icon"), ZLTheme::good},
        {QLatin1String("postlist_private_icon"), ZLTheme::good},
        {QLatin1String("postlist_draft_icon"), ZLTheme::secondaryText},
        {QLatin1String("postlist_pending_icon"), ZLTheme::secondaryText},
        {QLatin1String("postlist_upload_icon"), ZLTheme::accent},
        {QLatin1String("postlist_active_icon"), ZLTheme::accent},
        {QLatin1String("postlist_pendent_icon"), ZLTheme::warning},
        {QLatin1String("postlist_conflict_icon"), ZLTheme::danger},
        {QLatin1String("postlist_evernote_icon"), ZLTheme::good},
        {QLatin1String("postlist_schedule_icon"), ZLTheme::accent},
        {QLatin1String("sidebar_icon_list_on"), ZLTheme::accent},
        {QLatin1String("editor_button_calendar_active"), ZLTheme::accent},
        {QLatin1String("wordpress_favicon"), ZLTheme::secondaryText},
    };
    if (name.endsWith(u"_selected"))
        return palette.color(QPalette::HighlightedText);
    for (const Tone &tone : tones) {
        if (name == tone.name)
            return tone.color(palette);
    }
    return palette.color(QPalette::ButtonText);
}

QIcon ZLIcons::application()
{
    return icon(applicationMark); // has colours of its own
}
