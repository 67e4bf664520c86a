#include "compose/SendFlow.h"

#include "text/BlankContent.h"

#include <QPointer>

SendFlow::SendFlow(ComposeHost &host, ComposePage &page, ComposeView &view, Prompts &prompts, PostOnScreen &screen)
    : m_host(host)
    , m_page(page)
    , m_view(view)
    , m_prompts(prompts)
    , m_screen(screen)
{
}

QCoro::Task<void> SendFlow::publish()
{
    const QPointer<SendFlow> self(this);
    const std::optional<QString> content = co_await takeContent();
    if (!self || !content)
        co_return;
    const bool isPublished = m_screen.post()->status == ZLWordpressPost::Publish;
    if (!isPublished && !hasTitle() && m_host.boolForKey(QStringLiteral("warnUntitled"))) {
        QCoro::Task<bool> asking =
            ask(QStringLiteral("Do you want to publish an untitled article?"), {}, QStringLiteral("Ok"));
        const bool wanted = co_await asking;
        if (!self || !wanted)
            co_return;
    }
    const bool can = co_await canSend();
    if (!self || !can)
        co_return;
    const PostPtr post = co_await takePost(); // what was typed during a login, too
    if (!post)
        co_return;
    // A draft whose date lies ahead is scheduled for it, as the button says.
    if (!isPublished && !isInFuture(*post, m_host.now()))
        post->createdAt = m_host.now();
    if (isPublished)
        co_return send(post, Upload::Update);
    if (post->status != ZLWordpressPost::Draft)
        co_return send(post, Upload::NewPost);
    post->status = ZLWordpressPost::Publish;
    post->blogStatus.clear(); // it waits for no review any more
    send(post, Upload::PublishDraft);
}

QCoro::Task<void> SendFlow::save()
{
    const QPointer<SendFlow> self(this);
    const bool can = co_await canSend();
    if (!self || !can)
        co_return;
    const PostPtr post = co_await takePost();
    if (!post)
        co_return;
    if (post->status == ZLWordpressPost::Draft)
        co_return send(post, Upload::Update);
    post->createdAt = m_host.now();
    post->status = ZLWordpressPost::Draft;
    send(post, Upload::NewPost);
}

QCoro::Task<void> SendFlow::moveToDrafts()
{
    const QPointer<SendFlow> self(this);
    const bool can = co_await canSend();
    if (!self || !can)
        co_return;
    const bool wanted = co_await ask(QStringLiteral("Move this post to the drafts?"),
        QStringLiteral("Visitors of the blog will no longer find it. Its date stays, and \"Publish\" brings it back."),
        QStringLiteral("Move to Drafts"));
    if (!self || !wanted)
        co_return;
    const PostPtr post = co_await takePost();
    if (!post)
        co_return;
    post->status = ZLWordpressPost::Draft;
    post->blogStatus.clear();
    send(post, Upload::Update);
}

void SendFlow::follow(const Upload &upload)
{
    m_sent = upload.post();
    m_sentKind = upload.kind();
}

QCoro::Task<void> SendFlow::sendAgain()
{
    const PostPtr before = m_sent;
    const Upload::Kind kind = m_sentKind;
    const PostPtr post = co_await takePost();
    if (!post || post->title != before->title || post->storedContent != before->storedContent)
        co_return; // what was written since is sent by a press of its own
    post->status = before->status;
    post->blogStatus = before->blogStatus;
    post->createdAt = before->createdAt;
    send(post, kind);
}

QCoro::Task<std::optional<QString>> SendFlow::takeContent()
{
    const QPointer<SendFlow> self(this);
    const int generation = m_screen.generation();
    m_view.commitTokens();
    std::optional<QString> content = co_await m_page.getBodyContent();
    if (!self || generation != m_screen.generation())
        co_return std::nullopt;
    if (!content) {
        m_prompts.alert(QStringLiteral("The editor is not ready."),
            QStringLiteral("Nothing was sent. Please try again in a moment."));
    } else if (!hasTitle() && BlankContent::is(*content)) {
        m_prompts.alert(QStringLiteral("Nothing here. Post title and content are empty."));
        content.reset();
    }
    co_return content;
}

QCoro::Task<bool> SendFlow::ask(QString message, QString informativeText, QString button)
{
    const QPointer<SendFlow> self(this);
    const int generation = m_screen.generation();
    QCoro::Task<int> asking = m_prompts.ask(message, informativeText, {button, QStringLiteral("Cancel")});
    const int answer = co_await asking;
    co_return self &&answer == 0 && generation == m_screen.generation();
}

bool SendFlow::hasTitle() const
{
    return !m_view.title().trimmed().isEmpty();
}

QCoro::Task<bool> SendFlow::canSend()
{
    const QPointer<SendFlow> self(this);
    const int generation = m_screen.generation();
    if (!m_host.isReachable()) {
        m_prompts.alert(QStringLiteral("You're offline"),
            QStringLiteral("You need to connect to the Internet to send your post to the blog. "
                           "What you have written is kept on this computer."));
        co_return false;
    }
    const bool isLoggedIn = co_await m_host.logIn();
    co_return self &&isLoggedIn &&generation == m_screen.generation();
}

QCoro::Task<PostPtr> SendFlow::takePost()
{
    const QPointer<SendFlow> self(this);
    const std::optional<QString> content = co_await takeContent();
    co_return self &&content ? storedPost(*content) : nullptr;
}

PostPtr SendFlow::storedPost(const QString &content)
{
    m_screen.setContent(content);
    if (const Result<void> stored = m_screen.becomeStored(); !stored) {
        m_prompts.alertWithError(stored.error());
        return nullptr;
    }
    return m_screen.postToSend(content);
}

void SendFlow::send(const PostPtr &post, Upload::Kind kind)
{
    Q_EMIT didBegin(m_host.upload(post, kind));
}
