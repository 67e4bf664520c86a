#pragma once

#include "mainwindow/ZLMainWindow.h"
#include "mainwindow/ZLProgram.h"
#include "tour/TourScreen.h"
#include "widgets/ZLSheetHost.h"

#include <QRandomGenerator>
#include <QRegularExpression>
#include <cstdio>

/// Uses the program's windows at random, as a hasty writer would, and prints a line for each word once it is seen on
/// the screen: "seen WORD". Words that the writer is about to throw away are told before: "forfeit WORD".
/// "writing" says that the blogs are connected.
class RandomWriter {
public:
    /// The addresses are those of pretended blogs.
    RandomWriter(ZLProgram &program, TourScreen &screen, const QStringList &blogs, quint32 seed)
        : m_program(program)
        , m_screen(screen)
        , m_blogs(blogs)
        , m_random(seed)
        , m_stamp(QString::number(seed, 36))
    {
    }

    /// Connects what is not connected yet, and logs in where a password is asked for.
    void connectBlogs()
    {
        m_screen.expectAlert("keychain");
        for (const QString &blog : m_blogs) {
            const auto accounts = m_program.controller().currentBlog().accounts();
            if (std::any_of(
                    accounts.begin(), accounts.end(), [&](const auto &account) { return account->url == blog; }))
                continue;
            for (int turn = 0; turn < 20 && !m_screen.isVisible("introSheet") && !isFree(); ++turn) {
                answerSheet(); // the login of a blog that is there already
                pause(300, 500);
            }
            if (!m_screen.isVisible("introSheet"))
                m_screen.chooseCommand("newBlogMenuItem");
            m_screen.connectTo(blog, "ada", "secret");
            m_screen.press(Qt::Key_Return);
        }
    }
    /// Goes on until somebody ends the process.
    [[noreturn]] void write()
    {
        say("writing", m_stamp);
        for (;;) {
            try {
                act();
            } catch (const TourFailure &) {
                // Somebody came between: an alert, a sheet, another post. That is what this is about.
            }
            pause(20, 400);
        }
    }
    /// Uses nothing any more; what still waits after this many seconds, or an empty text.
    QString settle(int seconds)
    {
        for (int turn = 0; turn < seconds * 5; ++turn) {
            QTest::qWait(200);
            try {
                if (!isFree() && !m_screen.isVisible("uploadOverlay"))
                    answerSheet();
                else if (!m_screen.isVisible("syncBar") && !m_screen.isVisible("uploadOverlay"))
                    return {};
            } catch (const TourFailure &) {
                // an alert: the next turn answers it
            }
        }
        return m_screen.isVisible("syncBar") ? "the sync bar" : "an upload";
    }

private:
    /// The words that the writer made, wherever they stand.
    static QStringList wordsIn(const QString &text)
    {
        static const QRegularExpression word("word[0-9a-z]+x");
        QStringList found;
        for (auto match = word.globalMatch(text); match.hasNext();)
            found.append(match.next().captured());
        return found;
    }
    void act()
    {
        if (!isFree())
            return answerSheet();
        switch (m_random.bounded(100)) {
        case 0 ... 49:
            return typeWord();
        case 50 ... 57:
            return writeNewPost();
        case 58 ... 72: {
            const QStringList titles = m_screen.rowTitles();
            return m_screen.clickRow(titles.value(m_random.bounded(int(titles.size()))));
        }
        case 73 ... 80:
            return m_screen.click("publishButton");
        case 81 ... 86:
            return m_screen.click("saveButton");
        case 87 ... 90:
            return m_screen.shortcut("F5");
        case 91 ... 93:
            return m_screen.chooseBlog(m_random.bounded(int(m_blogs.size())));
        case 94:
            return deletePost();
        case 95 ... 96:
            return m_screen.shortcut("Ctrl+B");
        default:
            return m_screen.shortcut("Ctrl+S");
        }
    }
    void typeWord()
    {
        const QString word = nextWord();
        m_screen.focusPage();
        m_screen.pressInPage(Qt::Key_End, Qt::ControlModifier);
        if (chance(20))
            m_screen.typeInPage("\n");
        m_screen.typeInPage(' ' + word);
        if (chance(30))
            return; // and on to something else, at once
        m_screen.waitFor(
            "the word", [&] { return m_screen.bodyContent().contains(word); }, 5000);
        say("seen", word);
    }
    void writeNewPost()
    {
        m_screen.shortcut("Ctrl+N");
        pause(0, 600);
        if (!isFree() || !m_screen.shownTitle().isEmpty())
            return;
        const QString word = nextWord();
        m_screen.type("titleField", "A post called " + word);
        m_screen.waitFor(
            "its row", [&] { return m_screen.rowTitles().join(' ').contains(word); }, 5000);
        say("seen", word);
    }
    void deletePost()
    {
        const auto shown = [this] { return wordsIn(m_screen.shownTitle() + ' ' + m_screen.bodyContent()); };
        const QStringList doomed = shown();
        m_screen.click("deleteButton");
        m_screen.widget("confirmDeleteButton", 2000);
        for (const QString &word : shown() + doomed)
            say("forfeit", word);
        m_screen.click("confirmDeleteButton");
    }
    void answerSheet()
    {
        if (m_screen.isVisible("uploadOverlay")) {
            if (chance(3))
                m_screen.click("cancelUploadButton");
        } else if (m_screen.isVisible("loginSheet") || m_screen.isVisible("loginErrorSheet")) {
            m_screen.type("passwordField", "secret");
            m_screen.press(Qt::Key_Return);
        } else {
            // Escape is the safe answer to every question.
            m_screen.press(Qt::Key_Escape);
        }
    }

    bool chance(int percent) { return m_random.bounded(100) < percent; }
    QString nextWord() { return "word" + m_stamp + 'n' + QString::number(++m_words) + 'x'; }
    bool isFree() ///< nothing stands before the editor
    {
        const auto hosts = m_screen.window().findChildren<ZLSheetHost *>();
        const bool hasSheet =
            std::any_of(hosts.begin(), hosts.end(), [](ZLSheetHost *host) { return host->attachedSheet(); });
        return !hasSheet && !m_screen.isVisible("uploadOverlay") && !m_screen.isVisible("deleteAlert");
    }
    void pause(int least, int most) { QTest::qWait(m_random.bounded(least, most)); }
    static void say(const char *what, const QString &word)
    {
        std::printf("%s %s\n", what, qPrintable(word));
        std::fflush(stdout);
    }

    ZLProgram &m_program;
    TourScreen &m_screen;
    QStringList m_blogs;
    QRandomGenerator m_random;
    QString m_stamp;
    int m_words = 0;
};
