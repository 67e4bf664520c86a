#pragma once

#include <QRect>
#include <QString>
#include <QStringList>
#include <functional>
#include <stdexcept>

class QWidget;
class QWebEngineView;
class QAbstractButton;
class QAbstractItemView;

/// A step that did not hold, in words.
class TourFailure : public std::runtime_error {
public:
    explicit TourFailure(const QString &what)
        : std::runtime_error(what.toStdString())
    {
    }
};

/// The program's windows as a person sees and touches them: found by their object names, driven by input events.
class TourScreen {
public:
    TourScreen(QWidget &window, const QString &pictures)
        : m_window(window)
        , m_pictures(pictures)
    {
    }

    QWidget &window() { return m_window; }
    void activate();
    /// Saves a picture of the window under this name; gives the file.
    QString screenshot(const QString &name);

    /// Waits until the condition holds; fails with `what` after the limit, or at once when an alert shows.
    void waitFor(const QString &what, const std::function<bool()> &condition, int milliseconds = 20000);
    /// The visible widget of this name; waits for it.
    QWidget *widget(const QString &name, int milliseconds = 10000);
    bool isVisible(const QString &name);

    void click(const QString &button);
    void type(const QString &field, const QString &text); ///< replaces what the field holds
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier); ///< where the focus is
    void shortcut(const QString &sequence); ///< of the main window's menu
    void chooseCommand(const QString &action); ///< the same by its object name
    void chooseBlog(int index); ///< in the selector

    // the post list
    QStringList rowTitles();
    void clickRow(const QString &title);
    void openRowMenu(const QString &title); ///< which is the active popup then

    // the editor page
    QString shownTitle();
    void focusPage(); ///< by Tab from the title
    void pressInPage(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void typeInPage(const QString &text);
    /// What the page would send to the blog.
    QString bodyContent();
    void waitForPage(const QString &words); ///< until the page holds these words
    void waitForButton(const QString &toolTip); ///< until it shows that it is on

    /// The text of the alert on the screen; null when there is none, or one that was expected, which it dismisses.
    QString alertText();
    void expectAlert(const QString &containing);
    /// Takes the alert off the screen and gives its text; null when there is none.
    QString dismissAlert();

private:
    QRect rowRect(const QString &title);
    QWebEngineView *page();
    QWidget &m_window;
    QString m_pictures;
    QStringList m_expectedAlerts;
};
