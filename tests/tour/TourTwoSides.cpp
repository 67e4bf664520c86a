#include "Tour.h"

#include "support/Files.h"

#include <QApplication>
#include <QFileInfo>
#include <QMenu>
#include <QProcess>
#include <QTest>

// The steps in which somebody else has a hand: another writer on the blog, another blog, a network that is gone.

namespace {

/// An answer to the question about a conflict, and what it makes of the two versions.
struct Answer {
    const char *name;
    const char *card;
    const char *button;
    const char *kept; ///< word of the version that is the post from then on
    const char *copied; ///< word of the version in the copy; null: there is none
};

constexpr Answer answers[] = {
    {"local", "conflictLocalCard", "conflictChooseButton", "mine", nullptr},
    {"remote", "conflictRemoteCard", "conflictChooseButton", "theirs", nullptr},
    {"both, local", "conflictLocalCard", "conflictKeepBothButton", "mine", "theirs"},
    {"both, remote", "conflictRemoteCard", "conflictKeepBothButton", "theirs", "mine"},
};

QString blogWithWords(const QString &words)
{
    return "<!-- wp:paragraph -->\n<p>Base " + words + "</p>\n<!-- /wp:paragraph -->";
}

} // namespace

/// Adds words to the end of a post of the list.
void Tour::addWords(const QString &title, const QString &words)
{
    m_screen.clickRow(title);
    m_screen.waitFor("“" + title + "” to open", [&] { return m_screen.shownTitle() == title; });
    m_screen.waitForPage("Base");
    m_screen.focusPage();
    m_screen.pressInPage(Qt::Key_End, Qt::ControlModifier);
    m_screen.typeInPage(' ' + words);
    m_screen.waitForPage(words);
}

QString Tour::newPostOnBlog(const QString &title, const QString &status)
{
    const QString id =
        m_blog.newPost({{"post_title", title}, {"post_content", blogWithWords({})}, {"post_status", status}});
    if (id.isEmpty())
        throw TourFailure("the blog takes no post: " + m_blog.lastError());
    return id;
}

void Tour::answerConflicts()
{
    QHash<QString, QString> ids;
    for (const Answer &answer : answers)
        ids.insert(answer.name, newPostOnBlog(title(QString("Conflict, ") + answer.name), "publish"));
    refreshList();
    for (const Answer &answer : answers)
        addWords(title(QString("Conflict, ") + answer.name), "mine");
    startNewPost();
    QTest::qWait(1100); // the blog's dates have whole seconds
    for (const QString &id : ids)
        m_blog.call("wp.editPost", {id, XMLRPCStruct{{"post_content", blogWithWords("theirs")}}});
    refreshList();
    for (const Answer &answer : answers) {
        const QString shown = title(QString("Conflict, ") + answer.name);
        const QString file = postFile(ids[answer.name]);
        m_screen.clickRow(shown);
        m_screen.click("conflictNotNowButton");
        m_screen.waitFor("the question to go", [this] { return !m_screen.isVisible("conflictSheet"); });
        QTest::qWait(100); // the answer comes on a later turn of the event loop
        // Whatever is done with the post, the question comes first.
        m_screen.shortcut("Ctrl+Return");
        m_screen.widget("conflictSheet");
        m_screen.screenshot(QString("conflict-") + answer.card);
        m_screen.click(answer.card);
        m_screen.click(answer.button);
        m_screen.waitFor("the answer to be carried out", [&] {
            return !m_screen.isVisible("conflictSheet") && !QFile::exists(QFileInfo(file).path() + "/conflict.zalmo");
        });
        m_screen.waitForPage(answer.kept);
        const QByteArray copy = contentsOf(QFileInfo(file).path() + "/conflict-solved.zalmo");
        m_screen.waitFor("the file", [&] { return contentsOf(file).contains(answer.kept); });
        if (answer.copied ? !copy.contains(answer.copied) : !copy.isEmpty())
            throw TourFailure(QString(answer.name) + ": the copy holds “" + copy + "”");
    }
    // What the writer chose goes to the blog when he says so.
    const QString chosen = title("Conflict, local");
    m_screen.clickRow(chosen);
    m_screen.waitFor("“" + chosen + "” to open", [&] { return m_screen.shownTitle() == chosen; });
    m_screen.waitForPage("mine");
    const QString body = publishAndFind(chosen)[u"post_content"].string();
    if (!body.contains("mine") || body.contains("theirs"))
        throw TourFailure("the blog has this body: " + body);
}

void Tour::updatePrivate()
{
    const QString shown = title("A private post");
    const QString id = newPostOnBlog(shown, "private");
    refreshList();
    addWords(shown, "whispered");
    m_screen.click("publishButton");
    m_screen.waitFor(
        "the blog to have it", [&] { return m_blog.post(id)[u"post_content"].string().contains("whispered"); });
    m_screen.waitFor("the upload to end", [this] { return !m_screen.isVisible("uploadOverlay"); });
    if (const QString status = m_blog.post(id)[u"post_status"].string(); status != "private")
        throw TourFailure("a private post became “" + status + "”");
}

void Tour::copyToOtherBlog(const QString &title)
{
    m_screen.openRowMenu(title);
    auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    for (QAction *item : menu ? menu->actions() : QList<QAction *>()) {
        if (!item->menu())
            continue;
        QAction *blog = item->menu()->actions().value(0);
        menu->close();
        if (blog)
            return blog->trigger();
    }
    throw TourFailure("the row's menu offers no other blog");
}

void Tour::useTwoBlogs()
{
    TourBlog second(m_options.second, m_options.user, m_options.password);
    const QString copied = title("Copied"), crossed = title("Crossed");
    newPostOnBlog(copied, "publish");
    refreshList();
    m_screen.chooseCommand("newBlogMenuItem");
    connectTo(m_options.second, false);
    if (QDir(m_dataHome + "/zalmo/accounts").entryList(QDir::Dirs | QDir::NoDotAndDotDot).size() != 2)
        throw TourFailure("two blogs of one name have not two folders");
    m_screen.chooseBlog(0);
    m_screen.waitFor("the first blog", [&] { return m_screen.rowTitles().contains(copied); });

    copyToOtherBlog(copied);
    m_screen.chooseBlog(1);
    m_screen.waitFor("the copy", [&] { return m_screen.rowTitles().contains(copied); });
    m_screen.clickRow(copied);
    m_screen.waitForPage("Base");
    m_screen.click("publishButton");
    m_screen.waitFor("the second blog to have the copy", [&] { return !second.postWithTitle(copied).isAbsent(); });
    m_screen.waitFor("the upload to end", [this] { return !m_screen.isVisible("uploadOverlay"); });

    // The upload goes on to the blog that it began on.
    startNewPost();
    m_screen.type("titleField", crossed);
    m_screen.press(Qt::Key_Tab);
    m_screen.typeInPage("On its way.");
    m_screen.click("publishButton");
    m_screen.waitFor("the upload to begin", [this] { return m_screen.isVisible("uploadOverlay"); });
    m_screen.chooseBlog(0);
    m_screen.waitFor("the second blog to have it", [&] { return !second.postWithTitle(crossed).isAbsent(); });
    if (!m_blog.postWithTitle(crossed).isAbsent())
        throw TourFailure("the post went to the other blog");
    m_screen.waitFor("the first blog", [&] { return m_screen.rowTitles().contains(copied); });
}

void Tour::switchBlog(const char *onOrOff)
{
    if (QProcess::execute(m_options.control, {onOrOff, m_options.folder}) != 0)
        throw TourFailure(QString("the demo blog does not go ") + onOrOff);
}

void Tour::publishOffline()
{
    const QString shown = title("Written without a network");
    startNewPost();
    m_screen.type("titleField", shown);
    m_screen.press(Qt::Key_Tab);
    m_screen.typeInPage("Kept here.");
    m_screen.waitForPage("Kept here.");
    switchBlog("offline");
    m_screen.click("publishButton");
    m_screen.waitFor("the failure to be told", [this] {
        const QString alert = m_screen.dismissAlert();
        return alert.contains("127.0.0.1") || alert.contains("Harbour");
    });
    m_screen.screenshot("offline-failed");
    const QString body = m_screen.bodyContent();
    switchBlog("online");
    if (!body.contains("Kept here.") || m_screen.shownTitle() != shown)
        throw TourFailure("the text is gone from the screen");
    publishAndFind(shown);
    int found = 0;
    for (const XMLRPCValue &post : m_blog.posts())
        found += post[u"post_title"].string() == shown;
    if (found != 1)
        throw TourFailure("the blog has the post " + QString::number(found) + " times");
}
