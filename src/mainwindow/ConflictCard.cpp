#include "mainwindow/ConflictCard.h"

#include "widgets/ZLPlainText.h"
#include "widgets/ZLTheme.h"

#include <QLabel>
#include <QLocale>
#include <QPainter>
#include <QVBoxLayout>

namespace {
constexpr int textWidth = 208;
constexpr qsizetype mostLines = 3;
} // namespace

ConflictCard::ConflictCard(const QString &place, const ConflictSides::Side &side, QWidget *parent)
    : QAbstractButton(parent)
{
    setCheckable(true);
    setFocusPolicy(Qt::StrongFocus);
    setEnabled(side.isThere);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::MinimumExpanding);
    const QString date = side.isThere ? dateText(side.date) : tr("This version cannot be read.");
    const QString title = side.title.simplified();
    setAccessibleName(place);
    setAccessibleDescription(QStringList{date, title, side.differingLines.join(u' ')}.join(u". "));

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(16, 12, 16, 12);
    column->setSpacing(ZLTheme::spacing / 2);
    QLabel *heading = ZLPlainText::label(this, place);
    heading->setFont(ZLTheme::font(font(), 0, QFont::DemiBold));
    column->addWidget(heading);
    addLines(column, {date}, QPalette::PlaceholderText);
    if (side.isThere) {
        column->addSpacing(ZLTheme::spacing);
        addLines(column, {title.isEmpty() ? tr("No title") : title}, QPalette::Text);
        addLines(column, side.firstLines, QPalette::PlaceholderText);
    }
    if (!side.differingLines.isEmpty()) {
        column->addSpacing(ZLTheme::spacing);
        addLines(column, {tr("Only in this version:")}, QPalette::PlaceholderText);
        addLines(column, side.differingLines, QPalette::Text);
    }
    column->addStretch();
    for (QLabel *label : findChildren<QLabel *>())
        label->setAttribute(Qt::WA_TransparentForMouseEvents);
}

QString ConflictCard::dateText(const QDateTime &date) const
{
    if (!date.isValid())
        return tr("Date unknown");
    const QDateTime local = date.toLocalTime();
    const QLocale locale;
    const QString time = locale.toString(local.time(), QLocale::ShortFormat);
    if (local.date() == QDate::currentDate())
        return tr("Today, %1").arg(time);
    return u"%1, %2"_qs.arg(locale.toString(local.date(), QLocale::LongFormat), time);
}

void ConflictCard::addLines(QVBoxLayout *column, const QStringList &lines, QPalette::ColorRole role)
{
    for (const QString &line : lines.mid(0, mostLines)) {
        QLabel *label = ZLPlainText::label(this);
        label->setFont(ZLTheme::font(font(), -1));
        label->setForegroundRole(role);
        label->setText(label->fontMetrics().elidedText(line, Qt::ElideRight, textWidth));
        column->addWidget(label);
    }
}

QSize ConflictCard::sizeHint() const
{
    return layout()->sizeHint().expandedTo({textWidth + 32, 0});
}

void ConflictCard::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor accent = ZLTheme::accent(palette());
    QColor fill = underMouse() && isEnabled() ? ZLTheme::hover(palette()) : QColor(Qt::transparent);
    if (isChecked()) {
        fill = accent;
        fill.setAlphaF(0.12F);
    }
    painter.setBrush(fill);
    const qreal width = isChecked() ? 2 : 1;
    painter.setPen(QPen(isChecked() ? accent : ZLTheme::edge(palette()), width));
    const QRectF box = QRectF(rect()).adjusted(2, 2, -2, -2);
    painter.drawRoundedRect(box, ZLTheme::cardRadius, ZLTheme::cardRadius);
    if (!hasFocus())
        return;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(accent, 1, Qt::DotLine));
    painter.drawRoundedRect(box.adjusted(4, 4, -4, -4), ZLTheme::radius, ZLTheme::radius);
}
