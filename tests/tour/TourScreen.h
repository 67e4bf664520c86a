#pragma once

#include "compose/ComposePage.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QTest>
#include <QTextEdit>
#include <QToolButton>
#include <QWebEngineView>

/// A step that did not hold, in words.
class TourFailure : public std::runtime_error {
public:
    explicit TourFailure(const QString &what)
        : std::runtime_error(what.toStdString())
    {
    }
};

inline void require(bool holds, const QString &otherwise)
{
    if (!holds)
        throw TourFailure(otherwise);
}

/// The program's windows as a person sees and touches them: found by their object names, driven by input events.
class TourScreen {
public:
    TourScreen(QWidget &window, const QString &pictures)
        : m_window(window)
        , m_pictures(pictures)
    {
    }

    QWidget &window() { return m_window; }
    void activate()
    {
        // A display without a window manager gives the focus to nobody by itself.
        m_window.activateWindow();
        waitFor("the window to be active", [this] { return m_window.isActiveWindow(); });
    }
    /// Saves a picture of the window under this name; gives the file.
    QString screenshot(const QString &name)
    {
        QTest::qWait(500); // fades and the page's own painting
        const QString file = m_pictures + '/' + name + ".png";
        m_window.grab().save(file);
        return file;
    }

    /// Waits until the condition holds; fails with `what` after the limit, or at once when an alert shows.
    void waitFor(const QString &what, const std::function<bool()> &condition, int milliseconds = 20000)
    {
        QElapsedTimer clock;
        for (clock.start(); !condition(); QTest::qWait(50)) {
            if (const QString alert = alertText(); !alert.isNull())
                throw TourFailure(what + ": an alert says “" + alert + "”");
            if (clock.elapsed() > milliseconds)
                throw TourFailure(what + ": not within " + QString::number(milliseconds / 1000) + " s");
        }
    }
    /// The visible widget of this name; waits for it.
    QWidget *widget(const QString &name, int milliseconds = 10000)
    {
        waitFor(
            name + " to show", [&] { return isVisible(name); }, milliseconds);
        for (QWidget *widget : m_window.findChildren<QWidget *>(name))
            if (widget->isVisible())
                return widget;
        throw TourFailure(name + " vanished");
    }
    bool isVisible(const QString &name)
    {
        const QList<QWidget *> all = m_window.findChildren<QWidget *>(name);
        return std::any_of(all.begin(), all.end(), [](QWidget *widget) { return widget->isVisible(); });
    }
    void waitUntilGone(const QString &name)
    {
        waitFor(name + " to go", [&] { return !isVisible(name); });
    }

    void click(const QString &button)
    {
        QWidget *target = widget(button);
        waitFor(button + " to be enabled", [target] { return target->isEnabled(); });
        QTest::mouseClick(target, Qt::LeftButton);
    }
    void type(const QString &field, const QString &text) ///< replaces what the field holds
    {
        QWidget *target = widget(field);
        target->setFocus();
        QTest::keyClick(target, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(target, text);
        require(textOf(target).isNull() || textOf(target) == text,
            field + " holds “" + textOf(target) + "” and not what was typed");
    }
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) ///< where the focus is
    {
        QWidget *target = m_window.focusWidget();
        QTest::keyClick(target ? target : &m_window, Qt::Key(key), modifiers);
    }
    void shortcut(const QString &sequence) ///< of the main window's menu
    {
        const QKeySequence wanted(sequence);
        for (QAction *action : m_window.findChildren<QAction *>())
            if (action->shortcuts().contains(wanted) && action->isEnabled())
                return action->trigger();
        throw TourFailure("no menu command answers to " + sequence);
    }
    void chooseCommand(const QString &action) ///< the same by its object name
    {
        auto *command = m_window.findChild<QAction *>(action);
        require(command && command->isEnabled(), "the menu offers no " + action);
        command->trigger();
    }
    void chooseBlog(int index) ///< in the selector
    {
        auto *selector = qobject_cast<QToolButton *>(widget("blogSelector"));
        QAction *blog = selector->menu()->actions().value(index);
        require(blog, "the selector has no blog " + QString::number(index));
        blog->trigger();
    }
    /// Fills the sheets for a blog, and waits until it is connected.
    void connectTo(const QString &url, const QString &user, const QString &password)
    {
        type("blogURLField", url);
        press(Qt::Key_Return);
        type("usernameField", user);
        type("passwordField", password);
        press(Qt::Key_Return);
        widget("blogIsConnectedSheet", 20000);
    }

    // the post list
    QStringList rowTitles()
    {
        const QAbstractItemModel *rows = rowList()->model();
        QStringList titles;
        for (int row = 0; row < rows->rowCount(); ++row)
            titles.append(rows->index(row, 0).data().toString());
        return titles;
    }
    void clickRow(const QString &title)
    {
        const QPoint place = rowRect(title).center();
        QTest::mouseClick(rowList()->viewport(), Qt::LeftButton, {}, place);
    }
    void openRowMenu(const QString &title) ///< which is the active popup then
    {
        const QPoint place = rowRect(title).center();
        QAbstractItemView *list = rowList();
        QContextMenuEvent event(QContextMenuEvent::Mouse, place, list->viewport()->mapToGlobal(place));
        QCoreApplication::sendEvent(list->viewport(), &event);
        waitFor("the row's menu", [] { return QApplication::activePopupWidget(); });
    }

    // the editor page
    QString shownTitle() { return textOf(widget("titleField")); }
    void focusPage() ///< by Tab from the title
    {
        QWidget *title = widget("titleField");
        title->setFocus();
        QTest::keyClick(title, Qt::Key_Tab);
    }
    void pressInPage(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(page()->focusProxy(), Qt::Key(key), modifiers);
    }
    void typeInPage(const QString &text)
    {
        QWidget *target = page()->focusProxy();
        for (const QChar character : text)
            if (character == u'\n')
                QTest::keyClick(target, Qt::Key_Return);
            else
                QTest::keyClicks(target, QString(character));
    }
    /// What the page would send to the blog.
    QString bodyContent()
    {
        ComposePage *contract = nullptr;
        waitFor("the editor page", [&] { return (contract = m_window.findChild<ComposePage *>()); });
        struct Answer {
            std::optional<QString> content;
            bool isHere = false;
        };
        const auto answer = std::make_shared<Answer>(); // it may come when nobody waits for it any more
        contract->getBodyContent().then([answer](std::optional<QString> content) {
            *answer = {std::move(content), true};
        });
        waitFor("the page's answer", [&] { return answer->isHere; });
        require(answer->content.has_value(), "the page gave no content");
        return *answer->content;
    }
    void waitForPage(const QString &words) ///< until the page holds these words
    {
        QString shown;
        try {
            waitFor("the page to show “" + words + "”", [&] { return (shown = bodyContent()).contains(words); });
        } catch (const TourFailure &failure) {
            throw TourFailure(QString::fromStdString(failure.what()) + "; it shows “" + shown + "”");
        }
    }
    void waitForButton(const QString &toolTip) ///< until it shows that it is on
    {
        waitFor("the button “" + toolTip + "” to be on", [&] {
            const auto buttons = m_window.findChildren<QAbstractButton *>();
            return std::any_of(buttons.begin(), buttons.end(),
                [&](QAbstractButton *button) { return button->toolTip().startsWith(toolTip) && button->isChecked(); });
        });
    }

    /// The text of the alert on the screen; null when there is none, or one that was expected, which it dismisses.
    QString alertText()
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
    void expectAlert(const QString &containing) { m_expectedAlerts.append(containing); }
    /// Takes the alert off the screen and gives its text; null when there is none.
    QString dismissAlert()
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

private:
    static QString textOf(QWidget *field)
    {
        if (auto *line = qobject_cast<QLineEdit *>(field))
            return line->text();
        auto *text = qobject_cast<QTextEdit *>(field);
        return text ? text->toPlainText() : QString();
    }
    QAbstractItemView *rowList() { return qobject_cast<QAbstractItemView *>(widget("postList")); }
    QRect rowRect(const QString &title)
    {
        const auto row = int(rowTitles().indexOf(title));
        require(row >= 0, "the list has no row “" + title + "”");
        QAbstractItemView *list = rowList();
        const QModelIndex index = list->model()->index(row, 0);
        list->scrollTo(index);
        return list->visualRect(index);
    }
    QWebEngineView *page()
    {
        auto *view = m_window.findChild<QWebEngineView *>();
        require(view, "the editor page is not there");
        return view;
    }
    QWidget &m_window;
    QString m_pictures;
    QStringList m_expectedAlerts;
};
