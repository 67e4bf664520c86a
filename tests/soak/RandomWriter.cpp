#include "RandomWriter.h"

#include "mainwindow/ZLMainWindow.h"
#include "mainwindow/ZLProgram.h"
#include "widgets/ZLSheetHost.h"

#include <QAction>
#include <QRegularExpression>
#include <QTest>
#include <cstdio>

namespace {

constexpr int patienceMs = 15000;

/// The words that the writer made, wherever they stand.
QStringList wordsIn(const QString &text)
{
    static const QRegularExpression word("word[0-9a-z]+x");
    QStringList found;
    for (auto match = word.globalMatch(text); match.hasNext();)
        found.append(match.next().captured());
    return found;
}

} // namespace

RandomWriter::RandomWriter(ZLProgram &program, TourScreen &screen, const QList<Blog> &blogs, quint32 seed)
    : m_program(program)
    , m_screen(screen)
    , m_blogs(blogs)
    , m_random(seed)
    , m_stamp(QString::number(seed, 36))
{
}

QString RandomWriter::nextWord()
{
    return "word" + m_stamp + 'n' + QString::number(++m_words) + 'x';
}

void RandomWriter::say(const char *what, const QString &word)
{
    std::printf("%s %s\n", what, qPrintable(word));
    std::fflush(stdout);
}

void RandomWriter::pause(int least, int most)
{
    QTest::qWait(m_random.bounded(least, most));
}

bool RandomWriter::isWaiting()
{
    return m_screen.isVisible("syncBar") || m_screen.isVisible("uploadOverlay");
}

bool RandomWriter::isFree()
{
    const auto hosts = m_screen.window().findChildren<ZLSheetHost *>();
    const bool hasSheet =
        std::any_of(hosts.begin(), hosts.end(), [](ZLSheetHost *host) { return host->attachedSheet(); });
    return !hasSheet && !m_screen.isVisible("uploadOverlay") && !m_screen.isVisible("deleteAlert");
}

void RandomWriter::connectBlogs()
{
    m_screen.expectAlert("keychain");
    for (const Blog &blog : m_blogs) {
        const auto accounts = m_program.controller().currentBlog().accounts();
        const bool isThere = std::any_of(
            accounts.begin(), accounts.end(), [&blog](const AccountPtr &account) { return account->url == blog.url; });
        if (!isThere)
            connectBlog(blog);
    }
}

void RandomWriter::connectBlog(const Blog &blog)
{
    for (int turn = 0; turn < 20 && !m_screen.isVisible("introSheet") && !isFree(); ++turn) {
        answerSheet(); // the login of a blog that is there already
        pause(300, 500);
    }
    if (!m_screen.isVisible("introSheet"))
        m_screen.window().findChild<QAction *>("newBlogMenuItem")->trigger();
    m_screen.type("blogURLField", blog.url);
    m_screen.press(Qt::Key_Return);
    m_screen.type("usernameField", blog.user);
    m_screen.type("passwordField", blog.password);
    m_screen.press(Qt::Key_Return);
    m_screen.waitFor(
        "the blog to be connected", [this] { return m_screen.isVisible("blogIsConnectedSheet"); }, patienceMs);
    m_screen.press(Qt::Key_Return);
}

void RandomWriter::write()
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

void RandomWriter::act()
{
    if (!isFree())
        return answerSheet();
    switch (const int what = m_random.bounded(100); what) {
    case 0 ... 49:
        return typeWord();
    case 50 ... 57:
        return writeNewPost();
    case 58 ... 72:
        return openAnyPost();
    case 73 ... 80:
        return m_screen.click("publishButton");
    case 81 ... 86:
        return m_screen.click("saveButton");
    case 87 ... 90:
        return m_screen.shortcut("F5");
    case 91 ... 93:
        return changeBlog();
    case 94:
        return deletePost();
    case 95 ... 96:
        return m_screen.shortcut("Ctrl+B");
    default:
        return m_screen.shortcut("Ctrl+S");
    }
}

void RandomWriter::typeWord()
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

void RandomWriter::writeNewPost()
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

void RandomWriter::openAnyPost()
{
    const QStringList titles = m_screen.rowTitles();
    if (!titles.isEmpty())
        m_screen.clickRow(titles[m_random.bounded(int(titles.size()))]);
}

void RandomWriter::deletePost()
{
    const auto shown = [this] { return wordsIn(m_screen.shownTitle() + ' ' + m_screen.bodyContent()); };
    const QStringList doomed = shown();
    m_screen.click("deleteButton");
    m_screen.widget("confirmDeleteButton", 2000);
    for (const QString &word : shown() + doomed)
        say("forfeit", word);
    m_screen.click("confirmDeleteButton");
}

void RandomWriter::changeBlog()
{
    m_program.controller().currentBlog().selectorDidChange(1 + m_random.bounded(int(m_blogs.size())));
}

void RandomWriter::logIn()
{
    m_screen.type("passwordField", m_blogs.first().password);
    m_screen.press(Qt::Key_Return);
}

void RandomWriter::answerSheet()
{
    if (m_screen.isVisible("uploadOverlay")) {
        if (chance(3))
            m_screen.click("cancelUploadButton");
    } else if (m_screen.isVisible("loginSheet") || m_screen.isVisible("loginErrorSheet")) {
        logIn();
    } else {
        // Escape is the safe answer to every question.
        m_screen.press(Qt::Key_Escape);
    }
}

QString RandomWriter::settle(int seconds)
{
    for (int turn = 0; turn < seconds * 5; ++turn) {
        QTest::qWait(200);
        try {
            if (!isFree() && !m_screen.isVisible("uploadOverlay"))
                answerSheet();
            else if (!isWaiting())
                return {};
        } catch (const TourFailure &) {
            // an alert: the next turn answers it
        }
    }
    return m_screen.isVisible("syncBar") ? "the sync bar" : "an upload";
}
