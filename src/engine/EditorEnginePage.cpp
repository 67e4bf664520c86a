#include "engine/EditorEnginePage.h"

#include "engine/EditorScheme.h"
#include "platform/ZLLog.h"

EditorEnginePage::EditorEnginePage(QWebEngineProfile *profile, QObject *parent)
    : QWebEnginePage(profile, parent)
{
    connect(this, &QWebEnginePage::featurePermissionRequested, this,
        [this](const QUrl &origin, Feature feature) { setFeaturePermission(origin, feature, PermissionDeniedByUser); });
}

bool EditorEnginePage::acceptNavigationRequest(const QUrl &url, NavigationType type, bool isMainFrame)
{
    // Only the view's own load() arrives as typed; a link, a script or a form never does.
    return isMainFrame && type == NavigationTypeTyped && url == EditorScheme::pageUrl();
}

QWebEnginePage *EditorEnginePage::createWindow(WebWindowType)
{
    return nullptr;
}

QStringList EditorEnginePage::chooseFiles(FileSelectionMode, const QStringList &, const QStringList &)
{
    return {};
}

void EditorEnginePage::javaScriptAlert(const QUrl &, const QString &) { }

bool EditorEnginePage::javaScriptConfirm(const QUrl &, const QString &)
{
    return false;
}

bool EditorEnginePage::javaScriptPrompt(const QUrl &, const QString &, const QString &, QString *)
{
    return false;
}

void EditorEnginePage::javaScriptConsoleMessage(
    JavaScriptConsoleMessageLevel level, const QString &message, int line, const QString &source)
{
    // Messages from anywhere but our own script may quote the post's text, which has no place in the log.
    if (level == ErrorMessageLevel && source.startsWith(u"zalmo://editor/") && source.endsWith(u".js"))
        ZLLog(QStringLiteral("editor page: %1 (%2:%3)").arg(message, source).arg(line));
}
