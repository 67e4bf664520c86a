#include "mainwindow/ZLPostListCellView.h"

#include "mainwindow/ZLPostListModel.h"
#include "widgets/ZLIcons.h"
#include "widgets/ZLPlainText.h"
#include "widgets/ZLTheme.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QPainter>
#include <QTextLayout>
#include <QToolTip>

namespace {

constexpr int margin = 2 * ZLTheme::spacing; // of the texts, from the row's sides
constexpr int padding = 12; // above and below the texts
constexpr int iconSide = 16;
constexpr int detailLines = 2;

QRect textRect(const QRect &row)
{
    return row.adjusted(margin, padding, -margin, -padding);
}

QRect iconRect(const QRect &row, int titleHeight)
{
    const QRect texts = textRect(row);
    return {texts.right() - iconSide + 1, texts.top() + (titleHeight - iconSide) / 2, iconSide, iconSide};
}

/// Up to two lines, the last one elided.
void drawLines(QPainter *painter, const QRect &rect, const QFont &font, const QString &text, const QColor &color)
{
    const QFontMetrics metrics(font);
    QTextLayout layout(text, font);
    layout.beginLayout();
    painter->setFont(font);
    painter->setPen(color);
    for (int number = 0; number < detailLines; ++number) {
        QTextLine line = layout.createLine();
        if (!line.isValid())
            break;
        line.setLineWidth(rect.width());
        const QPoint baseline(rect.left(), rect.top() + number * metrics.lineSpacing() + metrics.ascent());
        const bool last = number == detailLines - 1;
        const QString shown = last ? metrics.elidedText(text.mid(line.textStart()), Qt::ElideRight, rect.width())
                                   : text.mid(line.textStart(), line.textLength());
        painter->drawText(baseline, shown);
    }
    layout.endLayout();
}

/// Solid only while the list has the focus: otherwise the text is what counts.
bool isSolid(const QStyleOptionViewItem &option)
{
    return option.state.testFlag(QStyle::State_Selected) && option.widget && option.widget->hasFocus();
}

void drawBackground(QPainter *painter, const QStyleOptionViewItem &option)
{
    const bool selected = option.state.testFlag(QStyle::State_Selected);
    const bool over = option.state.testFlag(QStyle::State_MouseOver);
    const QRect line(option.rect.left() + margin, option.rect.bottom(), option.rect.width() - 2 * margin, 1);
    painter->fillRect(line, ZLTheme::separator(option.palette));
    if (!selected && !over)
        return;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    const QColor accent = option.palette.color(QPalette::Active, QPalette::Highlight);
    QColor tint = ZLTheme::accent(option.palette);
    tint.setAlphaF(0.12F);
    painter->setBrush(isSolid(option) ? accent : selected ? tint : ZLTheme::hover(option.palette));
    const QRect box = option.rect.adjusted(6, 2, -6, -3);
    painter->drawRoundedRect(box, ZLTheme::radius, ZLTheme::radius);
    if (selected && !isSolid(option))
        painter->fillRect(QStyle::visualRect(option.direction, box, {box.left(), box.top() + 4, 3, box.height() - 8}),
            ZLTheme::accent(option.palette));
    painter->restore();
}

QString imageNamed(const QString &word, bool darkBackground)
{
    return u"postlist_%1_icon%2"_qs.arg(word, darkBackground ? QString() : u"_selected"_qs);
}

} // namespace

void ZLPostListCellView::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const bool solid = isSolid(option);
    const QFont titleFont = ZLTheme::font(option.font, 0, QFont::DemiBold);
    const QFont detailFont = ZLTheme::font(option.font, -1);
    const QFontMetrics titleMetrics(titleFont);
    const QRect texts = textRect(option.rect);

    drawBackground(painter, option);
    painter->setFont(titleFont);
    painter->setPen(option.palette.color(solid ? QPalette::HighlightedText : QPalette::Text));
    const QRect title(texts.topLeft(), QSize(texts.width() - iconSide - ZLTheme::spacing, titleMetrics.height()));
    const QString text = index.data(Qt::DisplayRole).toString().simplified();
    painter->drawText(title, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
        titleMetrics.elidedText(text, Qt::ElideRight, title.width()));

    QColor detailColor = ZLTheme::secondaryText(option.palette);
    if (solid) {
        detailColor = option.palette.color(QPalette::HighlightedText);
        detailColor.setAlphaF(0.85F);
    }
    drawLines(painter, texts.adjusted(0, titleMetrics.height() + 4, 0, 0), detailFont,
        index.data(ZLPostListModel::DetailRole).toString().simplified(), detailColor);

    const QString mark = index.data(ZLPostListModel::MarkRole).toString();
    const QString icon = mark.isEmpty()
        ? statusImageForPostStatus(index.data(ZLPostListModel::StatusRole).toInt(), !solid)
        : imageNamed(mark, !solid);
    const QRect box = iconRect(option.rect, titleMetrics.height());
    painter->drawPixmap(box.topLeft(),
        ZLIcons::pixmap(icon, iconSide, ZLIcons::tone(icon, option.palette), painter->device()->devicePixelRatioF()));
}

QSize ZLPostListCellView::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &) const
{
    const QFontMetrics title(ZLTheme::font(option.font, 0, QFont::DemiBold));
    const QFontMetrics detail(ZLTheme::font(option.font, -1));
    return {ZLTheme::toolViewWidth, 2 * padding + title.height() + 4 + detailLines * detail.lineSpacing()};
}

using Row = ZLLocalPostRepresentation;

QString ZLPostListCellView::statusImageForPostStatus(int status, bool darkBackground)
{
    static const QHash<int, QString> words{
        {Row::Published, u"published"_qs},
        {Row::Draft, u"draft"_qs},
        {Row::PublishedPage, u"page"_qs},
        {Row::New, u"active"_qs},
        {Row::Conflict, u"conflict"_qs},
        {Row::ConflictSolved, u"conflict"_qs},
        {Row::EvernoteNote, u"evernote"_qs},
        {Row::Scheduled, u"schedule"_qs},
    };
    return imageNamed(words.value(status, u"pendent"_qs), darkBackground);
}

QString ZLPostListCellView::wordForPostStatus(int status, const QString &mark)
{
    static const QHash<QString, QString> marks{
        {u"private"_qs, tr("Private")},
        {u"pending"_qs, tr("Pending review")},
        {u"upload"_qs, tr("On its way to the blog")},
    };
    if (!mark.isEmpty())
        return marks.value(mark);
    static const QHash<int, QString> words{
        {Row::Published, tr("Published")},
        {Row::Draft, tr("Draft")},
        {Row::PublishedPage, tr("Published page")},
        {Row::New, tr("Not on the blog yet")},
        {Row::Conflict, tr("Changed here and on the blog")},
        {Row::ConflictSolved, tr("Kept copy of a conflict")},
        {Row::EvernoteNote, tr("Evernote note")},
        {Row::Scheduled, tr("Scheduled")},
    };
    return words.value(status, tr("Changed since it was sent to the blog"));
}

bool ZLPostListCellView::helpEvent(
    QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option, const QModelIndex &index)
{
    if (event->type() != QEvent::ToolTip || !index.isValid())
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    const QRect icon = iconRect(option.rect, QFontMetrics(option.font).height()).adjusted(-6, -6, 6, 6);
    const QString text = icon.contains(event->pos())
        ? wordForPostStatus(
            index.data(ZLPostListModel::StatusRole).toInt(), index.data(ZLPostListModel::MarkRole).toString())
        : index.data(Qt::DisplayRole).toString();
    QToolTip::showText(event->globalPos(), ZLPlainText::toolTip(text), view);
    return true;
}
