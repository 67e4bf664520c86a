#pragma once

#include <QUrl>
#include <QWebEngineUrlRequestInterceptor>

/// Lets the editor page have its own files and pictures, and nothing else. A post cannot make the program knock at
/// doors of this computer and its network: pictures from there are the blog's own or are not shown.
class EditorRequestFilter : public QWebEngineUrlRequestInterceptor {
    Q_OBJECT
public:
    using QWebEngineUrlRequestInterceptor::QWebEngineUrlRequestInterceptor;
    void interceptRequest(QWebEngineUrlRequestInfo &info) override;
    void setBlogURL(const QUrl &url) { m_blogURL = url; }

private:
    bool mayFetchPicture(const QUrl &url) const;
    QUrl m_blogURL;
};
