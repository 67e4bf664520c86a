#include "editor/EditorScheme.h"

#include <QWebEngineUrlScheme>

void EditorScheme::registerScheme()
{
    if (QWebEngineUrlScheme::schemeByName(name).name() == name)
        return;
    QWebEngineUrlScheme scheme(name);
    scheme.setSyntax(QWebEngineUrlScheme::Syntax::Host);
    // Modules are fetched in CORS mode, which only schemes with this flag may serve.
    scheme.setFlags(QWebEngineUrlScheme::SecureScheme | QWebEngineUrlScheme::CorsEnabled);
    QWebEngineUrlScheme::registerScheme(scheme);
}

QUrl EditorScheme::pageUrl()
{
    return QUrl(QStringLiteral("zalmo://editor/index.html"));
}
