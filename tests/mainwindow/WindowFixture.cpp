#include "WindowFixture.h"

#include <QLabel>

WindowFixture::WindowFixture()
    : defaults(folder.filePath(u"preferences.ini"_qs))
    , keychain(std::make_unique<FakeKeychain>(secrets))
{
    reachability.reachable = false; // no sync unless a test asks for one
}

void WindowFixture::seedPost(const QString &alias, const ZLWordpressPost &post)
{
    ZLWordpressPost written(post);
    m_nextDate = m_nextDate.addSecs(-60);
    written.updatedAt = m_nextDate;
    if (written.id.isEmpty())
        written.id = QString::number(m_nextId -= 60);
    const QString path = files.postPathForBlogURL(alias, written.id);
    QVERIFY(written.saveAtPath(path + u"/post.zalmo"_qs).has_value());
}

void WindowFixture::seedPosts(const QStringList &titles)
{
    seedAccount(u"Ada"_qs, blog.url());
    for (const QString &title : titles) {
        ZLWordpressPost post;
        post.title = title;
        post.content = u"<p>Text</p>"_qs;
        post.status = ZLWordpressPost::Publish;
        post.createdAt = QDateTime::currentDateTimeUtc().addDays(-1);
        seedPost(u"Ada"_qs, post);
    }
}

void WindowFixture::launch()
{
    app = std::make_unique<ZLAppDelegate>(
        ZLPlatform{files, defaults, keychain, reachability, notifications, workspace, clock, network});
    window = std::make_unique<ZLMainWindow>(*app);
    app->setWindows(window->windows());
    app->applicationDidFinishLaunching();
    app->goOnline();
}

void WindowFixture::show()
{
    window->show();
    window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window.get()));
}

LocalPostPtr WindowFixture::row(const QString &title) const
{
    for (const LocalPostPtr &row : window->postListViewController().allPosts()) {
        if (row->title == title)
            return row;
    }
    return nullptr;
}

QString WindowFixture::textOf(const QString &label) const
{
    const auto *found = find<QLabel>(label);
    return found ? found->text() : QString();
}
