#include "WindowFixture.h"
#include "mainwindow/PostContextMenu.h"
#include "support/Files.h"

namespace {

QStringList titles(const QMenu &menu)
{
    QStringList titles;
    for (const QAction *action : menu.actions())
        titles.append(action->isSeparator() ? u"-"_qs : action->text() + (action->isEnabled() ? u""_qs : u" (off)"_qs));
    return titles;
}

QAction *item(const QMenu &menu, const QString &title)
{
    for (QAction *action : menu.actions()) {
        if (action->text() == title)
            return action;
    }
    return nullptr;
}

} // namespace

class ContextMenuTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void namesTheActions_data()
    {
        const TestTable<int, bool, bool, QString, QString> row({"status", "published", "linked", "publish", "save"});
        row("published", 0, true, false, "Update", "Move to drafts");
        row("published, changed", 4, true, false, "Update", "Move to drafts");
        row("published, linked", 0, true, true, "Update", "Move to Evernote");
        row("new", 3, false, false, "Publish", "Save as Draft");
        row("new, linked", 3, false, true, "Publish", "Save to Evernote");
        row("draft", 1, false, false, "Publish", "Update Draft");
        row("draft, linked", 1, false, true, "Publish", "Update to Evernote ");
        row("draft, changed", 4, false, false, "Publish", "Update Draft");
        row("note", 7, false, true, "Publish", "Update to Evernote ");
        row("conflict", 5, false, false, "Publish", "Save as Draft");
    }

    void namesTheActions()
    {
        QFETCH(int, status);
        QFETCH(bool, published);
        QFETCH(bool, linked);
        QFETCH(QString, publish);
        QFETCH(QString, save);
        WindowFixture f;
        f.seedPosts({});
        f.launch();
        if (linked)
            f.app->currentBlog().selectedAccount()->evernote = std::make_shared<Evernote>();
        auto post = std::make_shared<ZLLocalPostRepresentation>();
        post->status = status;
        post->published = published;
        const PostContextMenu menu(f.app->environment(), f.app->currentBlog(), post, nullptr);
        // With one blog there is none to copy to, and this post has no address yet.
        QCOMPARE(titles(menu),
            QStringList({u"New Post"_qs, u"-"_qs, publish, u"Delete"_qs, save, u"-"_qs, u"View on Browser (off)"_qs,
                u"Get Link (off)"_qs}));
    }

    void offersTheLinkOfAPublicPost()
    {
        WindowFixture f;
        f.seedPosts({});
        f.launch();
        auto post = std::make_shared<ZLLocalPostRepresentation>();
        post->postURL = QUrl(u"http://blog.test/?p=1"_qs);
        const PostContextMenu menu(f.app->environment(), f.app->currentBlog(), post, nullptr);
        item(menu, u"View on Browser"_qs)->trigger();
        QCOMPARE(f.workspace.opened, QList<QUrl>{post->postURL});
        item(menu, u"Get Link"_qs)->trigger();
        QCOMPARE(f.workspace.copied, QList<QUrl>{post->postURL});
        QCOMPARE(f.notifications.delivered.size(), 1);
        QCOMPARE(f.notifications.delivered[0].title, u"Successfully copied link to clipboard."_qs);

        f.workspace.clipboardWorks = false;
        item(menu, u"Get Link"_qs)->trigger();
        QCOMPARE(f.notifications.delivered.size(), 1);
    }

    void copiesToAnotherBlog()
    {
        WindowFixture f;
        f.seedPosts({});
        ZLWordpressPost post;
        post.id = u"940"_qs;
        post.title = u"Here"_qs;
        post.content = u"<p>Text</p>"_qs;
        post.status = ZLWordpressPost::Publish;
        post.createdAt = QDateTime::currentDateTimeUtc().addDays(-1);
        post.URL = u"http://blog.test/here"_qs;
        post.slug = u"here"_qs;
        post.authorId = u"7"_qs;
        post.featuredImageId = u"88"_qs;
        post.featuredImageURL = u"http://blog.test/picture.png"_qs;
        f.seedPost(u"Ada"_qs, post);
        f.seedAccount(u"Tom & Eve"_qs, f.blog.url());
        f.launch();
        f.list().delegate = &f.compose;
        const QString here = f.files.postPathForBlogURL(u"Ada"_qs, u"940"_qs) + u"/post.zalmo"_qs;
        QCOMPARE(f.row(u"Here"_qs)->localFile.toLocalFile(), here);
        const QByteArray original = contentsOf(here);

        const std::unique_ptr<QMenu> menu(f.list().menuForRow(0));
        const QMenu *blogs = item(*menu, u"Copy to Blog"_qs)->menu();
        QCOMPARE(titles(*blogs), QStringList{u"Tom && Eve"_qs});
        blogs->actions().first()->trigger();

        QCOMPARE(f.app->currentBlog().blogName(), u"Tom & Eve"_qs);
        QTRY_COMPARE(f.compose.journal, QStringList({u"load Here"_qs, u"clean undo"_qs}));
        const LocalPostPtr copy = f.row(u"Here"_qs);
        QCOMPARE(copy->status, int(ZLLocalPostRepresentation::New));
        const auto document = ZLDocument::open(copy->localFile);
        QVERIFY(document.has_value());
        const PostFields &info = (*document)->post;
        QCOMPARE(info.status, int(PostFields::New));
        QCOMPARE(info.id.size(), 8);
        QVERIFY(copy->localFile.toLocalFile().endsWith(u"/p%1/post.zalmo"_qs.arg(info.id)));
        // What only the other blog can make sense of stays there.
        QCOMPARE(info.URL + info.slug + info.authorId + info.featuredImageId + info.featuredImageURL, QString());
        QVERIFY(!info.createdAt.isValid());
        QCOMPARE(contentsOf(here), original);
    }

    void saysWhenACopyFails()
    {
        WindowFixture f;
        f.seedPosts({u"Here"_qs});
        f.seedAccount(u"Other"_qs, f.blog.url());
        f.launch();
        QVERIFY(QDir().mkpath(f.files.blogPath(u"Other"_qs)));
        QVERIFY(QFile(f.files.blogPath(u"Other"_qs) + u"/posts"_qs).open(QIODevice::WriteOnly));
        const std::unique_ptr<QMenu> menu(f.list().menuForRow(0));
        item(*menu, u"Copy to Blog"_qs)->menu()->actions().first()->trigger();
        QTRY_COMPARE(f.textOf(u"alertMessage"_qs), u"The post could not be copied."_qs);
        QCOMPARE(f.app->currentBlog().blogName(), u"Ada"_qs);
    }
};

static const RegisteredTest<ContextMenuTest> registered;

#include "ContextMenuTest.moc"
