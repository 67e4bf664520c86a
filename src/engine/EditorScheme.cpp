#include "engine/EditorScheme.h"

#include <QWebEngineUrlScheme>

void EditorScheme::registerScheme()
{
    if (QWebEngineUrlScheme::schemeByName(name).name() == name)
        return;
    QWebEngineUrlScheme scheme(name);
    scheme.setSyntax(QWebEngineUrlScheme::Syntax::Host);
    scheme.setFlags(QWebEngineUrlScheme::SecureScheme);
    QWebEngineUrlScheme::registerScheme(scheme);
}

QUrl EditorScheme::pageUrl()
{
    return QUrl(QStringLiteral("zalmo://editor/index.html"));
}
