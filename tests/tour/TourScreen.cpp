#include "TourScreen.h"

#include "compose/ComposePage.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QTest>
#include <QTextEdit>
#include <QToolButton>
#include <QWebEngineView>

namespace {

constexpr int turn = 50; // ms between two looks

QString textOf(QWidget *field)
{
    if (auto *line = qobject_cast<QLineEdit *>(field))
        return line->text();
    if (auto *plain = qobject_cast<QPlainTextEdit *>(field))
        return plain->toPlainText();
    auto *rich = qobject_cast<QTextEdit *>(field);
    return rich ? rich->toPlainText() : QString();
}

} // namespace

void TourScreen::activate()
{
    // A display without a window manager gives the focus to nobody by itself.
    m_window.activateWindow();
    waitFor("the window to be active", [this] { return m_window.isActiveWindow(); });
}

QString TourScreen::screenshot(const QString &name)
{
    QTest::qWait(500); // fades and the page's own painting
    const QString file = m_pictures + '/' + name + ".png";
    m_window.grab().save(file);
    return file;
}

void TourScreen::waitFor(const QString &what, const std::function<bool()> &condition, int milliseconds)
{
    QElapsedTimer clock;
    for (clock.start(); !condition(); QTest::qWait(turn)) {
        if (const QString alert = alertText(); !alert.isNull())
            throw TourFailure(what + ": an alert says “" + alert + "”");
        if (clock.elapsed() > milliseconds)
            throw TourFailure(what + ": not within " + QString::number(milliseconds / 1000) + " s");
    }
}

bool TourScreen::isVisible(const QString &name)
{
    const QList<QWidget *> all = m_window.findChildren<QWidget *>(name);
    return std::any_of(all.begin(), all.end(), [](QWidget *widget) { return widget->isVisible(); });
}

QWidget *TourScreen::widget(const QString &name, int milliseconds)
{
    waitFor(
        name + " to show", [&] { return isVisible(name); }, milliseconds);
    for (QWidget *widget : m_window.findChildren<QWidget *>(name))
        if (widget->isVisible())
            return widget;
    throw TourFailure(name + " vanished");
}

void TourScreen::click(const QString &button)
{
    QWidget *target = widget(button);
    waitFor(button + " to be enabled", [target] { return target->isEnabled(); });
    QTest::mouseClick(target, Qt::LeftButton);
}

void TourScreen::type(const QString &field, const QString &text)
{
    QWidget *target = widget(field);
    target->setFocus();
    QTest::keyClick(target, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(target, text);
    if (!textOf(target).isNull() && textOf(target) != text)
        throw TourFailure(field + " holds “" + textOf(target) + "” and not what was typed");
}

void TourScreen::press(int key, Qt::KeyboardModifiers modifiers)
{
    QWidget *target = m_window.focusWidget();
    QTest::keyClick(target ? target : &m_window, Qt::Key(key), modifiers);
}

void TourScreen::shortcut(const QString &sequence)
{
    const QKeySequence wanted(sequence);
    for (QAction *action : m_window.findChildren<QAction *>())
        if (action->shortcuts().contains(wanted) && action->isEnabled())
            return action->trigger();
    throw TourFailure("no menu command answers to " + sequence);
}

QStringList TourScreen::rowTitles()
{
    auto *list = qobject_cast<QAbstractItemView *>(widget("postList"));
    QStringList titles;
    for (int row = 0; row < list->model()->rowCount(); ++row)
        titles.append(list->model()->index(row, 0).data().toString());
    return titles;
}

void TourScreen::chooseCommand(const QString &action)
{
    auto *command = m_window.findChild<QAction *>(action);
    if (!command || !command->isEnabled())
        throw TourFailure("the menu offers no " + action);
    command->trigger();
}

void TourScreen::chooseBlog(int index)
{
    auto *selector = qobject_cast<QToolButton *>(widget("blogSelector"));
    QAction *blog = selector->menu()->actions().value(index);
    if (!blog)
        throw TourFailure("the selector has no blog " + QString::number(index));
    blog->trigger();
}

void TourScreen::clickRow(const QString &title)
{
    const QRect place = rowRect(title);
    auto *list = qobject_cast<QAbstractItemView *>(widget("postList"));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place.center());
}

void TourScreen::openRowMenu(const QString &title)
{
    const QPoint place = rowRect(title).center();
    auto *list = qobject_cast<QAbstractItemView *>(widget("postList"));
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, list->viewport()->mapToGlobal(place));
    QCoreApplication::sendEvent(list->viewport(), &event);
    waitFor("the row's menu", [] { return QApplication::activePopupWidget(); });
}

QRect TourScreen::rowRect(const QString &title)
{
    auto *list = qobject_cast<QAbstractItemView *>(widget("postList"));
    const auto row = int(rowTitles().indexOf(title));
    if (row < 0)
        throw TourFailure("the list has no row “" + title + "”");
    const QModelIndex index = list->model()->index(row, 0);
    list->scrollTo(index);
    return list->visualRect(index);
}

QString TourScreen::shownTitle()
{
    return textOf(widget("titleField"));
}

QWebEngineView *TourScreen::page()
{
    auto *view = m_window.findChild<QWebEngineView *>();
    if (!view)
        throw TourFailure("the editor page is not there");
    return view;
}

void TourScreen::focusPage()
{
    QWidget *title = widget("titleField");
    title->setFocus();
    QTest::keyClick(title, Qt::Key_Tab);
}

void TourScreen::pressInPage(int key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(page()->focusProxy(), Qt::Key(key), modifiers);
}

void TourScreen::typeInPage(const QString &text)
{
    QWidget *target = page()->focusProxy();
    for (const QChar character : text)
        if (character == u'\n')
            QTest::keyClick(target, Qt::Key_Return);
        else
            QTest::keyClicks(target, QString(character));
}

QString TourScreen::bodyContent()
{
    ComposePage *contract = nullptr;
    waitFor("the editor page", [&] { return (contract = m_window.findChild<ComposePage *>()); });
    struct Answer {
        std::optional<QString> content;
        bool isHere = false;
    };
    const auto answer = std::make_shared<Answer>(); // it may come when nobody waits for it any more
    contract->getBodyContent().then([answer](std::optional<QString> content) { *answer = {std::move(content), true}; });
    waitFor("the page's answer", [&] { return answer->isHere; });
    if (!answer->content)
        throw TourFailure("the page gave no content");
    return *answer->content;
}

void TourScreen::waitForPage(const QString &words)
{
    QString shown;
    try {
        waitFor("the page to show “" + words + "”", [&] { return (shown = bodyContent()).contains(words); });
    } catch (const TourFailure &failure) {
        throw TourFailure(QString::fromStdString(failure.what()) + "; it shows “" + shown + "”");
    }
}

void TourScreen::waitForButton(const QString &toolTip)
{
    waitFor("the button “" + toolTip + "” to be on", [&] {
        const auto buttons = m_window.findChildren<QAbstractButton *>();
        return std::any_of(buttons.begin(), buttons.end(),
            [&](QAbstractButton *button) { return button->toolTip().startsWith(toolTip) && button->isChecked(); });
    });
}

QString TourScreen::alertText()
{
    for (QLabel *label : m_window.findChildren<QLabel *>("alertMessage")) {
        if (!label->isVisible())
            continue;
        const QString text = label->text();
        const bool isExpected = std::any_of(m_expectedAlerts.begin(), m_expectedAlerts.end(),
            [&text](const QString &part) { return text.contains(part); });
        if (!isExpected)
            return text;
        dismissAlert();
    }
    return {};
}

QString TourScreen::dismissAlert()
{
    for (QLabel *label : m_window.findChildren<QLabel *>("alertMessage")) {
        if (!label->isVisible())
            continue;
        QStringList texts;
        for (QLabel *part : label->parentWidget()->findChildren<QLabel *>())
            texts.append(part->text());
        if (auto *button = label->parentWidget()->findChild<QAbstractButton *>())
            QTest::mouseClick(button, Qt::LeftButton);
        return texts.join(' ');
    }
    return {};
}

void TourScreen::expectAlert(const QString &containing)
{
    m_expectedAlerts.append(containing);
}
