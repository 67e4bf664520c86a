#include "widgets/ZLTextViewWithPlaceHolder.h"

#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QTextBlock>
#include <QTextLayout>

namespace {
/// No title that somebody wrote is longer. One that is would take minutes to lay out.
constexpr qsizetype longestTitle = 2000;
} // namespace

ZLTextViewWithPlaceHolder::ZLTextViewWithPlaceHolder(const QString &placeHolder, QWidget *parent)
    : QTextEdit(parent)
    , m_placeHolder(placeHolder.trimmed()) // it stands where the text will
{
    setAcceptRichText(false);
    setFrameShape(QFrame::NoFrame);
    setAccessibleName(QStringLiteral("Title"));
    setTabChangesFocus(true);
    setLineWrapMode(QTextEdit::WidgetWidth);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    document()->setDocumentMargin(4);
    connect(this, &QTextEdit::textChanged, this, &ZLTextViewWithPlaceHolder::textDidChange);
}

QString ZLTextViewWithPlaceHolder::string() const
{
    if (m_isAsSet)
        return m_set;
    // toPlainText() would turn no-break spaces into plain ones.
    QString text = document()->toRawText();
    return text.replace(QChar::ParagraphSeparator, u'\n');
}

void ZLTextViewWithPlaceHolder::setString(const QString &string)
{
    const bool isTooLong = string.size() > longestTitle;
    m_isSetting = true;
    setPlainText(isTooLong ? string.left(longestTitle) + u'…' : string);
    setReadOnly(isTooLong);
    m_isSetting = false;
    m_set = string;
    m_isAsSet = true;
    m_isEditing = false;
    updateGeometry();
}

void ZLTextViewWithPlaceHolder::textDidChange()
{
    updateGeometry();
    if (m_isSetting)
        return;
    m_isAsSet = false;
    if (!std::exchange(m_isEditing, true))
        Q_EMIT didBeginEditing();
    Q_EMIT didChange();
}

bool ZLTextViewWithPlaceHolder::event(QEvent *event)
{
    if (event->type() == QEvent::KeyPress) {
        auto *key = static_cast<QKeyEvent *>(event);
        if (key->key() == Qt::Key_Tab && key->modifiers() == Qt::NoModifier) {
            Q_EMIT insertTab();
            return true;
        }
    }
    return QTextEdit::event(event);
}

void ZLTextViewWithPlaceHolder::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        const Qt::KeyboardModifiers held = event->modifiers() & ~Qt::KeypadModifier;
        event->setAccepted(held == Qt::NoModifier || held == Qt::ShiftModifier);
        if (event->isAccepted() && !event->isAutoRepeat())
            Q_EMIT insertTab(); // a title has one line; what follows is the text
        return;
    }
    QTextEdit::keyPressEvent(event);
}

/// QTextEdit would show the blanks of the placeholder, too.
void ZLTextViewWithPlaceHolder::paintEvent(QPaintEvent *event)
{
    QTextEdit::paintEvent(event);
    if (!document()->isEmpty() || !textCursor().block().layout()->preeditAreaText().isEmpty())
        return;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    const int margin = qRound(document()->documentMargin());
    painter.drawText(viewport()->rect().marginsRemoved({margin, margin, margin, margin}),
        Qt::AlignLeading | Qt::AlignTop | Qt::TextWordWrap, m_placeHolder);
}

void ZLTextViewWithPlaceHolder::focusInEvent(QFocusEvent *event)
{
    QTextEdit::focusInEvent(event);
    Q_EMIT didTakeFocus();
}

void ZLTextViewWithPlaceHolder::focusOutEvent(QFocusEvent *event)
{
    QTextEdit::focusOutEvent(event);
    const Qt::FocusReason reason = event->reason();
    if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason || reason == Qt::MenuBarFocusReason)
        return;
    m_isEditing = false;
    QTextCursor start = textCursor();
    start.movePosition(QTextCursor::Start);
    setTextCursor(start);
}

bool ZLTextViewWithPlaceHolder::canInsertFromMimeData(const QMimeData *source) const
{
    return source->hasText();
}

void ZLTextViewWithPlaceHolder::insertFromMimeData(const QMimeData *source)
{
    QString text = source->text();
    if (text.startsWith(u'\n'))
        return;
    for (const QChar lineBreak :
        {QChar(u'\n'), QChar(u'\r'), QChar(QChar::LineSeparator), QChar(QChar::ParagraphSeparator)})
        text.replace(lineBreak, u' ');
    text.truncate(longestTitle);
    textCursor().insertText(text);
    ensureCursorVisible();
}

void ZLTextViewWithPlaceHolder::resizeEvent(QResizeEvent *event)
{
    QTextEdit::resizeEvent(event);
    updateGeometry();
}

int ZLTextViewWithPlaceHolder::textHeight() const
{
    return qRound(document()->size().height());
}

QSize ZLTextViewWithPlaceHolder::sizeHint() const
{
    constexpr int mostLines = 5; // a longer title scrolls
    const int margins = qRound(2 * document()->documentMargin());
    const int line = fontMetrics().lineSpacing();
    return {200, qBound(line + margins, textHeight(), mostLines * line + margins)};
}
