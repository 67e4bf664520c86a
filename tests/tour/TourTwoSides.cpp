#include "Tour.h"

#include <QApplication>
#include <QMenu>
#include <QProcess>

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

QString blockWith(const QString &words)
{
    return "<!-- wp:paragraph -->\n<p>Base " + words + "</p>\n<!-- /wp:paragraph -->";
}

} // namespace

/// Adds words to the end of a post of the list.
void Tour::addWords(const QString &title, const QString &words)
{
    openPost(title, "Base");
    m_screen.focusPage();
    m_screen.pressInPage(Qt::Key_End, Qt::ControlModifier);
    m_screen.typeInPage(' ' + words);
    m_screen.waitForPage(words);
}

void Tour::answerConflicts()
{
    QHash<QString, QString> ids;
    const auto titleOf = [this](const Answer &answer) { return title(QString("Conflict, ") + answer.name); };
    for (const Answer &answer : answers)
        ids.insert(answer.name, m_blog.newPost(titleOf(answer), blockWith({}), "publish"));
    refreshList();
    for (const Answer &answer : answers)
        addWords(titleOf(answer), "mine");
    startNewPost();
    QTest::qWait(1100); // the blog's dates have whole seconds
    for (const QString &id : ids)
        m_blog.call("wp.editPost", {id, XMLRPCStruct{{"post_content", blockWith("theirs")}}});
    refreshList();
    for (const Answer &answer : answers) {
        const QString file = postFile(ids[answer.name]), folder = QFileInfo(file).path();
        m_screen.clickRow(titleOf(answer));
        m_screen.click("conflictNotNowButton");
        m_screen.waitUntilGone("conflictSheet");
        QTest::qWait(100); // the answer comes on a later turn of the event loop
        // Whatever is done with the post, the question comes first.
        m_screen.shortcut("Ctrl+Return");
        m_screen.click(answer.card);
        m_screen.screenshot(QString("conflict-") + answer.card);
        m_screen.click(answer.button);
        m_screen.waitFor("the answer to be carried out",
            [&] { return !m_screen.isVisible("conflictSheet") && !QFile::exists(folder + "/conflict.zalmo"); });
        m_screen.waitForPage(answer.kept);
        m_screen.waitFor("the file", [&] { return contentsOf(file).contains(answer.kept); });
        const QByteArray copy = contentsOf(folder + "/conflict-solved.zalmo");
        require(answer.copied ? copy.contains(answer.copied) : copy.isEmpty(),
            QString(answer.name) + ": the copy holds “" + copy + "”");
    }
    // What the writer chose goes to the blog when he says so.
    const QString chosen = title("Conflict, local");
    openPost(chosen, "mine");
    const QString body = publishAndFind(chosen)[u"post_content"].string();
    require(body.contains("mine") && !body.contains("theirs"), "the blog has this body: " + body);
}

void Tour::updatePrivate()
{
    const QString shown = title("A private post");
    const QString id = m_blog.newPost(shown, blockWith({}), "private");
    refreshList();
    addWords(shown, "whispered");
    upload("publishButton");
    const XMLRPCValue post = m_blog.post(id);
    require(post[u"post_content"].string().contains("whispered"), "the update is not on the blog");
    require(
        post[u"post_status"].string() == "private", "a private post became “" + post[u"post_status"].string() + "”");
}

void Tour::copyToOtherBlog(const QString &title)
{
    m_screen.openRowMenu(title);
    auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    for (QAction *item : menu ? menu->actions() : QList<QAction *>()) {
        if (!item->menu())
            continue;
        QAction *blog = item->menu()->actions().first();
        menu->close();
        return blog->trigger();
    }
    throw TourFailure("the row's menu offers no other blog");
}

void Tour::useTwoBlogs()
{
    TourBlog second(m_options.second, m_options.user, m_options.password);
    const QString copied = title("Copied"), crossed = title("Crossed");
    const auto waitForBlog = [&](TourBlog &blog, const QString &post) {
        m_screen.waitFor("the blog to have “" + post + "”", [&] { return !blog.postWithTitle(post).isAbsent(); });
    };
    const auto waitForRow = [&] {
        m_screen.waitFor("the row “" + copied + "”", [&] { return m_screen.rowTitles().contains(copied); });
    };
    m_blog.newPost(copied, blockWith({}), "publish");
    refreshList();
    m_screen.chooseCommand("newBlogMenuItem");
    connectTo(m_options.second);
    require(accountFolders().size() == 2, "two blogs of one name have not two folders");
    m_screen.chooseBlog(0);
    waitForRow();

    copyToOtherBlog(copied);
    m_screen.chooseBlog(1);
    waitForRow();
    openPost(copied, "Base");
    upload("publishButton");
    waitForBlog(second, copied);

    // The upload goes on to the blog that it began on.
    writePost(crossed, "On its way.");
    m_screen.click("publishButton");
    m_screen.widget("uploadOverlay");
    m_screen.chooseBlog(0);
    waitForBlog(second, crossed);
    require(m_blog.postWithTitle(crossed).isAbsent(), "the post went to the other blog");
    waitForRow();
}

void Tour::publishOffline()
{
    const auto switchBlog = [this](const char *onOrOff) {
        require(QProcess::execute(m_options.control, {onOrOff, m_options.folder}) == 0,
            QString("the demo blog does not go ") + onOrOff);
    };
    const QString shown = title("Written without a network");
    writePost(shown, "Kept here.");
    m_screen.waitForPage("Kept here.");
    switchBlog("offline");
    m_screen.click("publishButton");
    m_screen.waitFor("the failure to be told", [this] {
        const QString alert = m_screen.dismissAlert();
        return alert.contains("127.0.0.1") || alert.contains("Harbour");
    });
    const QString body = m_screen.bodyContent();
    switchBlog("online");
    require(body.contains("Kept here.") && m_screen.shownTitle() == shown, "the text is gone from the screen");
    publishAndFind(shown);
    const XMLRPCArray posts = m_blog.posts();
    const auto found = std::count_if(
        posts.begin(), posts.end(), [&](const XMLRPCValue &post) { return post[u"post_title"].string() == shown; });
    require(found == 1, "the blog has the post " + QString::number(found) + " times");
}
