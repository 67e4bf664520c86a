#pragma once

#include <QWebEngineUrlRequestInterceptor>

/// Lets the editor page have its own files and pictures, and nothing else.
class EditorRequestFilter : public QWebEngineUrlRequestInterceptor {
    Q_OBJECT
public:
    using QWebEngineUrlRequestInterceptor::QWebEngineUrlRequestInterceptor;
    void interceptRequest(QWebEngineUrlRequestInfo &info) override;
};
