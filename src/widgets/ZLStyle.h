#pragma once

#include <QProxyStyle>

/// Fusion with flat, rounded fields and buttons, thin scroll bars and one focus ring, all from the palette. A default
/// push button carries the accent; tool buttons show nothing but their icon until the pointer or the focus is on them.
class ZLStyle : public QProxyStyle {
    Q_OBJECT
public:
    ZLStyle();

    void drawPrimitive(
        PrimitiveElement element, const QStyleOption *option, QPainter *painter, const QWidget *widget) const override;
    void drawControl(
        ControlElement element, const QStyleOption *option, QPainter *painter, const QWidget *widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex *option, QPainter *painter,
        const QWidget *widget) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex *option, SubControl part,
        const QWidget *widget) const override;
    QRect subElementRect(SubElement element, const QStyleOption *option, const QWidget *widget) const override;
    QSize sizeFromContents(
        ContentsType type, const QStyleOption *option, const QSize &contents, const QWidget *widget) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const override;
    QIcon standardIcon(StandardPixmap name, const QStyleOption *option, const QWidget *widget) const override;
    int styleHint(
        StyleHint hint, const QStyleOption *option, const QWidget *widget, QStyleHintReturn *returnData) const override;
};
