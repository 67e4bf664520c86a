#include "wordpress/ServiceFixture.h"

#include <QTest>
#include <QThreadPool>

namespace {
QString line(const char *what, const QString &details = {})
{
    return details.isEmpty() ? QString::fromLatin1(what) : QString::fromLatin1(what) + QLatin1Char(' ') + details;
}

QString titleOf(const PostPtr &post)
{
    return post ? post->title : QStringLiteral("nothing");
}
} // namespace

void RecordingDelegate::didReconnectAccount(ZLWordpressService *, const AccountPtr &account)
{
    journal.append(line("reconnected", account ? account->name : QString()));
}

void RecordingDelegate::didGetTaxonomies(ZLWordpressService *, const QList<ZLTaxonomy> &list)
{
    taxonomies = list;
    journal.append(line("got taxonomies"));
}

void RecordingDelegate::didSyncBlogWithName(ZLWordpressService *, const QString &name)
{
    journal.append(line("synced", name));
}

void RecordingDelegate::didFailToUploadPost(ZLWordpressService *, const PostPtr &post)
{
    journal.append(line("upload failed:", titleOf(post)));
    if (onFailure)
        onFailure();
}

void RecordingDelegate::didFailToPerformRequest(ZLWordpressService *, int type, const ZLError &failure)
{
    error = failure;
    journal.append(QStringLiteral("request %1 failed: %2 %3").arg(type).arg(failure.domain).arg(failure.code));
    if (onFailure)
        onFailure();
}

void RecordingDelegate::didGetPosts(ZLWordpressService *, const QList<PostPtr> &list)
{
    posts = list;
    journal.append(line("got posts"));
}

void RecordingDelegate::didPublishPost(ZLWordpressService *, const PostPtr &post, const PostPtr &original)
{
    remote = post;
    journal.append(line("published", titleOf(original)));
}

void RecordingDelegate::didUpdatePost(ZLWordpressService *, const PostPtr &post)
{
    journal.append(line("updated", titleOf(post)));
}

void RecordingDelegate::didPublishDraftPost(ZLWordpressService *, const PostPtr &post)
{
    journal.append(line("published draft", titleOf(post)));
}

void RecordingDelegate::didDeletePost(ZLWordpressService *, const PostPtr &post)
{
    journal.append(line("deleted", titleOf(post)));
}

void RecordingDelegate::didUploadImage(ZLWordpressService *, const QUrl &url)
{
    journal.append(line("uploaded", url.toString()));
}

void RecordingDelegate::didCreateCategory(ZLWordpressService *, const QString &name)
{
    journal.append(line("created category", name));
}

void RecordingDelegate::didGetProfile(ZLWordpressService *, const XMLRPCValue &value)
{
    struct_ = value;
    journal.append(line("got profile"));
}

void RecordingDelegate::didGetUserBlogs(ZLWordpressService *, const XMLRPCValue &value)
{
    struct_ = value;
    journal.append(line("got blogs"));
}

void RecordingDelegate::didGetBlogOptions(ZLWordpressService *, const XMLRPCValue &value)
{
    struct_ = value;
    journal.append(line("got options"));
}

void RecordingDelegate::makePreviewTemplateForPost(const PostPtr &post)
{
    remote = post;
    journal.append(line("preview of", titleOf(post)));
}

void RecordingDelegate::didSendBodyData(ZLWordpressService *, const PostPtr &, float fraction)
{
    progress.append(fraction);
}

ServiceFixture::ServiceFixture()
    : account(environment.addAccount(blog.user, blog.password, blog.url(), QStringLiteral("Ada")))
    , service(makeService(account))
{
    environment.network.addHost(blog.host(), blog);
    auto *notifications = &environment.notifications;
    const auto note = [this](const char *what) {
        return [this, what](const PostPtr &post) { journal().append(line(what, titleOf(post))); };
    };
    QObject::connect(notifications, &ZLNotifications::didPublishPost, note("note: published"));
    QObject::connect(notifications, &ZLNotifications::didUpdatePost, note("note: updated"));
    QObject::connect(notifications, &ZLNotifications::syncingContentPostStatus, note("note: content"));
    QObject::connect(notifications, &ZLNotifications::syncingImagesPostStatus, note("note: image"));
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
    post->id = QStringLiteral("q7Tz0kLm");
    post->title = title;
    post->content = content;
    return post;
}
