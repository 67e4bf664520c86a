#include "WindowFixture.h"
#include "mainwindow/PostContextMenu.h"
#include "support/Files.h"

namespace {

QStringList titles(const QMenu &menu)
{
    QStringList titles;
    for (const QAction *action : menu.actions())
        titles.append(action->isSeparator() ? "-" : action->text() + (action->isEnabled() ? "" : " (off)"));
    return titles;
}

QAction *item(const QMenu &menu, const QString &title)
{
    const QList<QAction *> all = menu.actions();
    const auto found = std::find_if(all.begin(), all.end(), [&](QAction *action) { return action->text() == title; });
    return found == all.end() ? nullptr : *found;
}

} // namespace

class ContextMenuTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void namesTheActions_data()
    {
        const TestTable<int, bool, QString, QString> row; // status, whether it is public, titles of Publish and Save
        row("published", 0, true, "Update", "Move to drafts");
        row("new", 3, false, "Publish", "Save as Draft");
        row("draft", 1, false, "Publish", "Update Draft");
        row("draft, changed", 4, false, "Publish", "Update Draft");
        row("conflict", 5, false, "Publish", "Save as Draft");
    }

    void namesTheActions()
    {
        const auto [status, published, publish, save] = testRow<int, bool, QString, QString>();
        WindowFixture f;
        f.seedPosts({});
        f.launch();
        auto post = std::make_shared<ZLLocalPostRepresentation>();
        post->status = status;
        post->published = published;
        // With one blog there is none to copy to, and this post has no address yet.
        QCOMPARE(titles(PostContextMenu(f.app->environment(), f.app->currentBlog(), post, nullptr)),
            QStringList({"New Post", "-", publish, "Delete", save, "-", "View on Browser (off)", "Get Link (off)"}));
    }

    void offersTheLinkOfAPublicPost()
    {
        WindowFixture f;
        f.seedPosts({});
        f.launch();
        auto post = std::make_shared<ZLLocalPostRepresentation>();
        post->postURL = QUrl("http://blog.test/?p=1");
        const PostContextMenu menu(f.app->environment(), f.app->currentBlog(), post, nullptr);
        item(menu, "View on Browser")->trigger();
        QCOMPARE(f.workspace.opened, QList<QUrl>{post->postURL});
        for (const bool works : {true, false}) { // the clipboard
            f.workspace.clipboardWorks = works;
            item(menu, "Get Link")->trigger();
            QCOMPARE(f.workspace.copied, QList<QUrl>{post->postURL});
            QCOMPARE(f.notifications.delivered.size(), 1);
        }
        QCOMPARE(f.notifications.delivered[0].title, "Successfully copied link to clipboard.");
    }

    void copiesToAnotherBlog()
    {
        WindowFixture f;
        f.seedPosts({});
        ZLWordpressPost post;
        post.id = "940";
        post.title = "Here";
        post.status = ZLWordpressPost::Publish;
        post.createdAt = QDateTime::currentDateTimeUtc();
        post.URL = post.slug = post.authorId = post.featuredImageId = post.featuredImageURL = "of the blog";
        f.seedPost("Ada", post);
        f.seedAccount("Tom & Eve", f.blog.url());
        f.launch();
        f.list().delegate = &f.compose;
        const QString here = f.row("Here")->localFile.toLocalFile();
        const QByteArray original = contentsOf(here);

        const std::unique_ptr<QMenu> menu(f.list().menuForRow(0));
        const QMenu *blogs = item(*menu, "Copy to Blog")->menu();
        QCOMPARE(titles(*blogs), QStringList("Tom && Eve"));
        blogs->actions().first()->trigger();

        QCOMPARE(f.app->currentBlog().blogName(), "Tom & Eve");
        QTRY_COMPARE(f.compose.journal, QStringList({"load Here", "clean undo"}));
        const LocalPostPtr copy = f.row("Here");
        QCOMPARE(copy->status, int(ZLLocalPostRepresentation::New));
        const PostFields info = ZLDocument::open(copy->localFile).value()->post;
        QCOMPARE(info.status, int(PostFields::New));
        QCOMPARE(info.id.size(), 8);
        QVERIFY(copy->localFile.toLocalFile().endsWith("/p" + info.id + "/post.zalmo"));
        // What only the other blog can make sense of stays there.
        QCOMPARE(info.URL + info.slug + info.authorId + info.featuredImageId + info.featuredImageURL, QString());
        QVERIFY(!info.createdAt.isValid());
        QCOMPARE(contentsOf(here), original);
    }

    void saysWhenACopyFails()
    {
        WindowFixture f;
        f.seedPosts({"Here"});
        f.seedAccount("Other", f.blog.url());
        f.launch();
        writeFile(f.files.blogPath("Other") + "/posts"); // a file where the folder belongs
        const std::unique_ptr<QMenu> menu(f.list().menuForRow(0));
        item(*menu, "Copy to Blog")->menu()->actions().first()->trigger();
        QTRY_COMPARE(f.textOf("alertMessage"), "The post could not be copied.");
        QCOMPARE(f.app->currentBlog().blogName(), "Ada");
    }
};

static const RegisteredTest<ContextMenuTest> registered;

#include "ContextMenuTest.moc"
