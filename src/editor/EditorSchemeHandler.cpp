#include "editor/EditorSchemeHandler.h"

#include "editor/LocalMedia.h"

#include <QFile>
#include <QHash>
#include <QMimeDatabase>
#include <QWebEngineUrlRequestJob>

namespace {
QByteArray typeOfResource(const QString &path)
{
    static const QHash<QString, QByteArray> types{
        {QStringLiteral("html"), "text/html; charset=utf-8"},
        {QStringLiteral("css"), "text/css; charset=utf-8"},
        {QStringLiteral("js"), "text/javascript; charset=utf-8"},
        {QStringLiteral("svg"), "image/svg+xml"},
    };
    return types.value(path.section(u'.', -1));
}

QString resourceFor(const QString &path)
{
    if (path == u"/qwebchannel.js")
        return QStringLiteral(":/qtwebchannel/qwebchannel.js");
    return QStringLiteral(":/editor/page") + path;
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
    if (url.host() == u"editor")
        return serve(job, resourceFor(url.path()), typeOfResource(url.path()));
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
    if (type.isEmpty() || !file->open(QIODevice::ReadOnly))
        return job->fail(QWebEngineUrlRequestJob::UrlNotFound);
    job->reply(type, file);
}
