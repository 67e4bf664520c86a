#include "engine/EditorSchemeHandler.h"

#include "engine/EditorScheme.h"
#include "engine/LocalMedia.h"

#include <QFile>
#include <QMimeDatabase>
#include <QWebEngineUrlRequestJob>

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
        return serve(job, QStringLiteral(":/editor/index.html"), "text/html; charset=utf-8");
    if (url.host() == u"media") {
        const QString file = m_media.fileForAddress(url);
        if (!file.isEmpty())
            return serve(job, file, QMimeDatabase().mimeTypeForFile(file).name().toLatin1());
    }
    job->fail(QWebEngineUrlRequestJob::UrlNotFound);
}

void EditorSchemeHandler::serve(QWebEngineUrlRequestJob *job, const QString &path, const QByteArray &type)
{
    auto *file = new QFile(path, job);
    if (!file->open(QIODevice::ReadOnly))
        return job->fail(QWebEngineUrlRequestJob::UrlNotFound);
    job->reply(type, file);
}
