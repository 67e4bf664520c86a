#include "widgets/ZLPlainText.h"

#include <QLabel>

namespace {
QString oneLine(const QString &text, qsizetype longest)
{
    const bool isLong = text.size() > longest;
    return text.left(longest).simplified() + (isLong ? u"…"_qs : QString());
}
} // namespace

QString ZLPlainText::toolTip(const QString &text, const QKeySequence &keys)
{
    constexpr int longest = 400;
    constexpr int longestLine = 60; // plain tool tips do not wrap
    const QString hint = keys.isEmpty() ? QString() : u" (%1)"_qs.arg(keys.toString(QKeySequence::NativeText));
    const QString shown = oneLine(text, longest) + hint;
    if (shown.size() <= longestLine && !Qt::mightBeRichText(shown))
        return shown;
    return u"<span>%1</span>"_qs.arg(shown.toHtmlEscaped());
}

QString ZLPlainText::menuTitle(const QString &text)
{
    constexpr int longest = 60;
    return oneLine(text, longest).replace(u'&', u"&&"_qs);
}

QLabel *ZLPlainText::label(QWidget *parent, const QString &text)
{
    auto *label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText); // before the text, which would be guessed at
    label->setText(text);
    return label;
}
