#include "widgets/ZLTokenField.h"

#include "widgets/ZLTokenEditor.h"
#include "widgets/ZLTokenView.h"

#include <QApplication>
#include <QKeyEvent>
#include <QScrollBar>

namespace {
constexpr int gap = 6;
constexpr int editorWidth = 180;
constexpr int mostRows = 2;
} // namespace

ZLTokenField::ZLTokenField(const QString &placeHolder, QWidget *parent)
    : QScrollArea(parent)
    , m_placeHolder(placeHolder)
    , m_rows(new QWidget)
    , m_editor(new ZLTokenEditor(m_rows))
{
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWidget(m_rows);
    m_rows->setAutoFillBackground(false);
    viewport()->setAutoFillBackground(false);
    setFocusProxy(m_editor);
    viewport()->setCursor(Qt::IBeamCursor);
    m_rows->setCursor(Qt::IBeamCursor);
    m_rows->setFocusProxy(m_editor);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget *, QWidget *now) {
        if (now && m_rows->isAncestorOf(now))
            bringIntoSight(now);
    });
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    m_editor->setAccessibleName(placeHolder);
    connect(m_editor, &ZLTokenEditor::committed, this, &ZLTokenField::addToken);
    connect(m_editor, &ZLTokenEditor::didTakeFocus, this, &ZLTokenField::didTakeFocus);
    connect(m_editor, &ZLTokenEditor::deletePrevious, this, [this] {
        if (!m_views.isEmpty())
            removeView(m_views.last());
    });
    connect(m_editor, &ZLTokenEditor::moveToPrevious, this, [this] { move(nullptr, -1); });
    updatePlaceHolder();
}

void ZLTokenField::setCompletions(std::function<QStringList(const QString &)> completions)
{
    m_editor->setCompletions(std::move(completions));
}

void ZLTokenField::hideCompletions()
{
    m_editor->hideCompletions();
}

void ZLTokenField::commit()
{
    m_editor->commit();
}

int ZLTokenField::rowHeight() const
{
    return m_editor->sizeHint().height();
}

QStringList ZLTokenField::tokens() const
{
    QStringList tokens;
    for (const ZLTokenView *view : m_views)
        tokens.append(view->token());
    const QString typed = m_editor->text().trimmed();
    if (!typed.isEmpty() && !tokens.contains(typed))
        tokens.append(typed);
    return tokens;
}

void ZLTokenField::setTokens(const QStringList &tokens)
{
    for (ZLTokenView *view : std::as_const(m_views))
        view->deleteLater();
    m_views.clear();
    for (const QString &token : tokens)
        insertView(token);
    updatePlaceHolder();
    arrange();
    verticalScrollBar()->setValue(0);
    if (m_editor->hasFocus())
        bringIntoSight(m_editor);
}

void ZLTokenField::forgetTypedText()
{
    m_editor->reset();
}

void ZLTokenField::insertView(const QString &token)
{
    auto *view = new ZLTokenView(token, m_rows);
    m_views.append(view);
    connect(view, &ZLTokenView::removed, this, [this, view] { removeView(view); });
    connect(view, &ZLTokenView::editRequested, this, [this, view] { editView(view); });
    connect(view, &ZLTokenView::moveRequested, this, [this, view](int step) { move(view, step); });
    QWidget::setTabOrder(view, m_editor);
    view->show();
}

void ZLTokenField::addToken(const QString &token)
{
    const bool isThere = std::any_of(
        m_views.cbegin(), m_views.cend(), [&token](const ZLTokenView *view) { return view->token() == token; });
    if (isThere)
        return;
    insertView(token);
    tokensChanged();
}

void ZLTokenField::removeView(ZLTokenView *view)
{
    const bool hadFocus = view->hasFocus();
    m_views.removeOne(view);
    view->hide();
    view->deleteLater();
    if (hadFocus)
        m_editor->setFocus();
    tokensChanged();
}

void ZLTokenField::editView(ZLTokenView *view)
{
    m_editor->commit();
    const QString token = view->token();
    m_views.removeOne(view);
    view->hide();
    view->deleteLater();
    m_editor->setText(token);
    m_editor->setFocus();
    m_editor->selectAll();
    tokensChanged();
}

void ZLTokenField::move(ZLTokenView *from, int step)
{
    const qsizetype start = from ? m_views.indexOf(from) : m_views.size();
    const qsizetype target = start + step;
    if (target >= m_views.size())
        m_editor->setFocus();
    else if (target >= 0)
        m_views[target]->setFocus();
}

void ZLTokenField::tokensChanged()
{
    updatePlaceHolder();
    arrange();
    if (m_editor->hasFocus())
        bringIntoSight(m_editor);
    Q_EMIT tokensDidChange();
}

void ZLTokenField::updatePlaceHolder()
{
    m_editor->setPlaceholderText(m_views.isEmpty() ? m_placeHolder : QString());
}

int ZLTokenField::layOut(int width, bool apply) const
{
    const int rowHeight = this->rowHeight();
    int x = 0;
    int row = 0;
    const auto place = [&](QWidget *widget, QSize size) {
        if (x > 0 && x + size.width() > width) {
            x = 0;
            ++row;
        }
        const int y = row * (rowHeight + gap) + (rowHeight - size.height()) / 2;
        if (apply)
            widget->setGeometry(x, y, qMin(size.width(), width), size.height());
        x += size.width() + gap;
    };
    for (ZLTokenView *view : m_views)
        place(view, view->sizeHint());
    place(m_editor, {qMax(editorWidth, width - x), rowHeight});
    return row + 1;
}

void ZLTokenField::bringIntoSight(QWidget *widget)
{
    ensureWidgetVisible(widget, 0, rowHeight()); // it looks at the text cursor alone
}

int ZLTokenField::heightOfRows(int rows) const
{
    return rows * (rowHeight() + gap) - gap;
}

void ZLTokenField::arrange()
{
    const bool scrolls = layOut(width(), false) > mostRows;
    const int width = this->width() - (scrolls ? verticalScrollBar()->sizeHint().width() : 0);
    m_rows->resize(width, heightOfRows(layOut(width, true)));
    updateGeometry();
}

int ZLTokenField::heightForWidth(int width) const
{
    return heightOfRows(qMin(mostRows, layOut(width, false)));
}

QSize ZLTokenField::sizeHint() const
{
    return {400, heightForWidth(qMax(width(), editorWidth))};
}

QSize ZLTokenField::minimumSizeHint() const
{
    return {editorWidth, heightForWidth(qMax(width(), editorWidth))};
}

void ZLTokenField::resizeEvent(QResizeEvent *event)
{
    QScrollArea::resizeEvent(event);
    arrange();
}

void ZLTokenField::keyPressEvent(QKeyEvent *event)
{
    // Assistive programs type at the field as a whole. What the editor has no use for comes back here and goes on up.
    if (m_isForwarding)
        return event->ignore();
    m_isForwarding = true;
    QCoreApplication::sendEvent(m_editor, event);
    m_isForwarding = false;
}

void ZLTokenField::mousePressEvent(QMouseEvent *)
{
    m_editor->setFocus();
}
