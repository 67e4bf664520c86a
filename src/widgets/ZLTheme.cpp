#include "widgets/ZLTheme.h"

#include "widgets/ZLStyle.h"

#include <QApplication>

namespace {

struct Colors {
    QRgb window, base, list, text, secondary, separator, hover, button, accent, accentText, disabled, toolTip;
};

constexpr Colors light{0xffeff1f4, 0xffffffff, 0xfff8f9fa, 0xff1c2026, 0xff636873, 0xffdcdfe4, 0xffe3e6eb, 0xffffffff,
    0xff3b5bdb, 0xffffffff, 0xffa3a8b1, 0xff2a2e36};
constexpr Colors dark{0xff24272c, 0xff17191c, 0xff1d1f23, 0xffe6e8eb, 0xff9ba1ac, 0xff34383f, 0xff30343b, 0xff2e3238,
    0xff4a68e8, 0xffffffff, 0xff636974, 0xff3a3f47};

QPalette makePalette(const Colors &colors)
{
    QPalette palette;
    const auto set = [&palette](
                         QPalette::ColorRole role, QRgb color) { palette.setColor(role, QColor::fromRgb(color)); };
    set(QPalette::Window, colors.window);
    set(QPalette::WindowText, colors.text);
    set(QPalette::Base, colors.base);
    set(QPalette::AlternateBase, colors.list);
    set(QPalette::Text, colors.text);
    set(QPalette::PlaceholderText, colors.secondary);
    set(QPalette::Button, colors.button);
    set(QPalette::ButtonText, colors.text);
    set(QPalette::BrightText, colors.accentText);
    set(QPalette::Highlight, colors.accent);
    set(QPalette::HighlightedText, colors.accentText);
    set(QPalette::Mid, colors.separator);
    set(QPalette::Midlight, colors.hover);
    set(QPalette::Light, colors.base);
    set(QPalette::Dark, colors.separator);
    set(QPalette::Shadow, 0xff000000);
    set(QPalette::ToolTipBase, colors.toolTip);
    set(QPalette::ToolTipText, 0xffffffff);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor::fromRgb(colors.disabled));
    // The accent as text: on dark ground that is lighter than the one that white text stands on.
    for (const QPalette::ColorRole role : {QPalette::Link, QPalette::LinkVisited})
        palette.setColor(role, ZLTheme::accent(palette));
    palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor::fromRgb(colors.separator));
    return palette;
}

QColor byScheme(const QPalette &palette, QRgb onLight, QRgb onDark)
{
    return QColor::fromRgb(ZLTheme::isDark(palette) ? onDark : onLight);
}

} // namespace

void ZLTheme::apply(QApplication &app, Scheme scheme)
{
    if (scheme == Scheme::System) {
        app.setPalette(QPalette()); // what the desktop has, below what was applied before
        scheme = isDark(QGuiApplication::palette()) ? Scheme::Dark : Scheme::Light;
    }
    if (!qobject_cast<ZLStyle *>(QApplication::style()))
        QApplication::setStyle(new ZLStyle);
    app.setPalette(palette(scheme));
}

void ZLTheme::applyOnce(QApplication &app)
{
    if (!qobject_cast<ZLStyle *>(QApplication::style()))
        apply(app);
}

QPalette ZLTheme::palette(Scheme scheme)
{
    return makePalette(scheme == Scheme::Dark ? dark : light);
}

bool ZLTheme::isDark(const QPalette &palette)
{
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

QColor ZLTheme::accent(const QPalette &palette)
{
    return byScheme(palette, 0xff3b5bdb, 0xff8aa0ff);
}
QColor ZLTheme::separator(const QPalette &palette)
{
    return palette.color(QPalette::Mid);
}
QColor ZLTheme::hover(const QPalette &palette)
{
    return palette.color(QPalette::Midlight);
}
QColor ZLTheme::secondaryText(const QPalette &palette)
{
    return palette.color(QPalette::PlaceholderText);
}
QColor ZLTheme::listBackground(const QPalette &palette)
{
    return palette.color(QPalette::AlternateBase);
}
QColor ZLTheme::raised(const QPalette &palette)
{
    // On dark ground what lies above is lighter.
    return palette.color(isDark(palette) ? QPalette::Window : QPalette::Base);
}
QColor ZLTheme::edge(const QPalette &palette)
{
    return byScheme(palette, 0xffb9bec7, 0xff4d535d);
}
QColor ZLTheme::good(const QPalette &palette)
{
    return byScheme(palette, 0xff2b8a4b, 0xff63c788);
}
QColor ZLTheme::warning(const QPalette &palette)
{
    return byScheme(palette, 0xffb56a00, 0xffe8a94a);
}
QColor ZLTheme::danger(const QPalette &palette)
{
    return byScheme(palette, 0xffc92a2a, 0xffff7b7b);
}

QFont ZLTheme::font(const QFont &base, int step, QFont::Weight weight)
{
    static constexpr double factors[] = {0.9, 1.0, 1.3, 2.6};
    QFont font(base);
    const double factor = factors[qBound(-1, step, 2) + 1];
    if (base.pointSizeF() > 0)
        font.setPointSizeF(base.pointSizeF() * factor);
    else
        font.setPixelSize(qRound(base.pixelSize() * factor));
    font.setWeight(weight);
    return font;
}
