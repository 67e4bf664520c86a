#include "wordpress/ServiceFixture.h"

#include <QThreadPool>

ServiceFixture::ServiceFixture()
    : account(environment.addAccount(blog.user, blog.password, blog.url(), u"Ada"_qs))
    , service(makeService(account))
{
    environment.network.addHost(blog.host(), blog);
    auto *notifications = &environment.notifications;
    const auto note = [this](const char *what) {
        return [this, what](const PostPtr &post) { delegate.note(u"note: "_qs + QLatin1String(what), post); };
    };
    QObject::connect(notifications, &ZLNotifications::didPublishPost, note("published"));
    QObject::connect(notifications, &ZLNotifications::didUpdatePost, note("updated"));
    QObject::connect(notifications, &ZLNotifications::syncingContentPostStatus, note("content"));
    QObject::connect(notifications, &ZLNotifications::syncingImagesPostStatus, note("image"));
}

ServicePtr ServiceFixture::makeService(const AccountPtr &of)
{
    auto made = std::make_shared<ZLWordpressService>(of, environment.serviceEnvironment());
    made->delegate = &delegate;
    return made;
}

void ServiceFixture::settle()
{
    // A reply may start another call, and each crosses workers: quiet means that nothing moved for some turns.
    for (int quiet = 0; quiet < 20; ++quiet) {
        const int calls = int(blog.calls.size());
        const int lines = int(journal().size());
        QThreadPool::globalInstance()->waitForDone();
        environment.connections.parsingQueue().waitForDone();
        QTest::qWait(1);
        if (calls != blog.calls.size() || lines != journal().size())
            quiet = 0;
    }
}

PostPtr ServiceFixture::post(const QString &title, const QString &content)
{
    auto post = std::make_shared<ZLWordpressPost>();
    post->id = u"q7Tz0kLm"_qs;
    post->title = title;
    post->content = content;
    return post;
}
