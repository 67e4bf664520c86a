#include "widgets/ZLTokenEditor.h"

#include "widgets/ZLTheme.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QKeyEvent>
#include <QListView>
#include <QScrollBar>
#include <QStringListModel>

namespace {
constexpr int shortestSearch = 3; // the "#" of a tag counts
constexpr int sideSpace = 12; // beside a completion
} // namespace

ZLTokenEditor::ZLTokenEditor(QWidget *parent)
    : QLineEdit(parent)
    , m_model(new QStringListModel(this))
{
    setFrame(false);
    setAcceptDrops(false);
    setDragEnabled(false);
    auto *completer = new QCompleter(m_model, this);
    completer->setCompletionMode(QCompleter::PopupCompletion); // the one mode in which none is chosen at first
    completer->setCaseSensitivity(Qt::CaseInsensitive);
    setCompleter(completer);
    connect(this, &QLineEdit::textEdited, this, &ZLTokenEditor::textWasEdited);
    auto *list = static_cast<QListView *>(completer->popup());
    list->setFrameStyle(QFrame::Box | QFrame::Plain);
    list->installEventFilter(this);
    // Queued: the field takes the completion as its text first, and would have it again after the commit. Not a
    // connection to the field: it ends all that it has with its completer whenever it loses the focus.
    connect(
        completer, qOverload<const QString &>(&QCompleter::activated), completer,
        [this](const QString &chosen) { commitText(chosen); }, Qt::QueuedConnection);
}

void ZLTokenEditor::hideCompletions()
{
    completer()->popup()->hide();
}

bool ZLTokenEditor::isCompletionChosen() const
{
    const QAbstractItemView *popup = completer()->popup();
    return popup->isVisible() && popup->currentIndex().isValid();
}

void ZLTokenEditor::textWasEdited(const QString &text)
{
    // A pasted list becomes tokens up to its last comma.
    const qsizetype comma = text.lastIndexOf(u',');
    if (comma >= 0) {
        const QString rest = text.mid(comma + 1).trimmed();
        const QStringList tokens = text.left(comma).split(u',');
        for (const QString &token : tokens)
            commitText(token);
        setText(rest);
    }
    const QString typed = this->text();
    const bool isLongEnough = typed.size() >= shortestSearch;
    m_model->setStringList(isLongEnough && m_completions ? m_completions(typed) : QStringList());
    if (m_model->stringList().isEmpty())
        hideCompletions();
    else
        fitCompletions();
}

/// The list would be as wide as the field.
void ZLTokenEditor::fitCompletions()
{
    QAbstractItemView *list = completer()->popup();
    int width = 0;
    for (const QString &completion : m_model->stringList())
        width = qMax(width, list->fontMetrics().horizontalAdvance(completion));
    QPalette colors = palette();
    colors.setColor(QPalette::WindowText, ZLTheme::edge(colors)); // of the frame
    list->setPalette(colors);
    list->setMaximumWidth(width + list->verticalScrollBar()->sizeHint().width() + 2 * sideSpace);
}

/// Above the field where the list would leave the window: the completer minds the screen alone.
bool ZLTokenEditor::eventFilter(QObject *watched, QEvent *event)
{
    auto *list = qobject_cast<QListView *>(watched);
    const bool isPlaced = event->type() == QEvent::Move || event->type() == QEvent::Resize;
    if (list && isPlaced && list->geometry().bottom() > window()->geometry().bottom())
        list->move(list->x(), mapToGlobal(QPoint()).y() - list->height());
    return QLineEdit::eventFilter(watched, event);
}

void ZLTokenEditor::reset()
{
    setText({}); // clear() would let Undo bring it back, also into another post
}

void ZLTokenEditor::commit()
{
    commitText(text());
}

void ZLTokenEditor::commitText(const QString &text)
{
    hideCompletions();
    reset();
    const QString token = text.trimmed();
    if (!token.isEmpty())
        Q_EMIT committed(token);
}

bool ZLTokenEditor::event(QEvent *event)
{
    if (event->type() == QEvent::KeyPress) {
        auto *key = static_cast<QKeyEvent *>(event);
        const bool commits = key->key() == Qt::Key_Tab && key->modifiers() == Qt::NoModifier && !text().isEmpty();
        if (commits && isCompletionChosen()) {
            key->ignore(); // the completer takes it
            return true;
        }
        if (commits) {
            commit();
            return true;
        }
    }
    return QLineEdit::event(event);
}

void ZLTokenEditor::keyPressEvent(QKeyEvent *event)
{
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool isPlain = !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
    if (isReturn && isPlain && isCompletionChosen()) {
        event->ignore();
        return;
    }
    if (isPlain && (isReturn || event->text() == u",")) {
        commit();
        return;
    }
    if (event->key() == Qt::Key_Backspace && text().isEmpty())
        return Q_EMIT deletePrevious();
    if (event->key() == Qt::Key_Left && cursorPosition() == 0 && !hasSelectedText())
        return Q_EMIT moveToPrevious();
    QLineEdit::keyPressEvent(event);
}

void ZLTokenEditor::focusInEvent(QFocusEvent *event)
{
    QLineEdit::focusInEvent(event);
    if (event->reason() != Qt::PopupFocusReason)
        Q_EMIT didTakeFocus();
}

void ZLTokenEditor::focusOutEvent(QFocusEvent *event)
{
    QLineEdit::focusOutEvent(event);
    if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason)
        commit();
}
