#pragma once

#include <QWebEngineUrlSchemeHandler>

class LocalMedia;

/// Serves the editor page from the program's resources (zalmo://editor/) and local pictures (zalmo://media/).
class EditorSchemeHandler : public QWebEngineUrlSchemeHandler {
    Q_OBJECT
public:
    explicit EditorSchemeHandler(const LocalMedia &media, QObject *parent = nullptr);
    void requestStarted(QWebEngineUrlRequestJob *job) override;

private:
    static void servePage(QWebEngineUrlRequestJob *job);
    void serve(QWebEngineUrlRequestJob *job, const QString &path, const QByteArray &type);
    const LocalMedia &m_media;
};
