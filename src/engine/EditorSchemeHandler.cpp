#include "engine/EditorSchemeHandler.h"

#include "engine/EditorScheme.h"
#include "engine/LocalMedia.h"

#include <QBuffer>
#include <QCryptographicHash>
#include <QFile>
#include <QMimeDatabase>
#include <QWebEngineUrlRequestJob>

namespace {
/// The page with the channel's own script, which comes with Qt, in it, and its digest in the content policy.
QByteArray pageWithChannel()
{
    QFile page(QStringLiteral(":/editor/index.html"));
    QFile channel(QStringLiteral(":/qtwebchannel/qwebchannel.js"));
    if (!page.open(QIODevice::ReadOnly) || !channel.open(QIODevice::ReadOnly))
        return {};
    const QByteArray code = channel.readAll();
    const QByteArray digest = QCryptographicHash::hash(code, QCryptographicHash::Sha256).toBase64();
    return page.readAll().replace("CHANNEL_DIGEST", "'sha256-" + digest + '\'').replace("CHANNEL_CODE", code);
}
} // namespace

EditorSchemeHandler::EditorSchemeHandler(const LocalMedia &media, QObject *parent)
    : QWebEngineUrlSchemeHandler(parent)
    , m_media(media)
{
}

void EditorSchemeHandler::requestStarted(QWebEngineUrlRequestJob *job)
{
    const QUrl url = job->requestUrl();
    if (job->requestMethod() != "GET")
        return job->fail(QWebEngineUrlRequestJob::RequestDenied);
    if (url == EditorScheme::pageUrl())
        return servePage(job);
    if (url.host() == u"media") {
        const QString file = m_media.fileForAddress(url);
        if (!file.isEmpty())
            return serve(job, file, QMimeDatabase().mimeTypeForFile(file).name().toLatin1());
    }
    job->fail(QWebEngineUrlRequestJob::UrlNotFound);
}

void EditorSchemeHandler::servePage(QWebEngineUrlRequestJob *job)
{
    auto *page = new QBuffer(job);
    page->setData(pageWithChannel());
    page->open(QIODevice::ReadOnly);
    job->reply("text/html; charset=utf-8", page);
}

void EditorSchemeHandler::serve(QWebEngineUrlRequestJob *job, const QString &path, const QByteArray &type)
{
    auto *file = new QFile(path, job);
    if (!file->open(QIODevice::ReadOnly))
        return job->fail(QWebEngineUrlRequestJob::UrlNotFound);
    job->reply(type, file);
}
