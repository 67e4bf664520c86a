#pragma once

#include <QWebEnginePage>

/// The engine's page, held to the one document that it is for: it never navigates, opens no window, asks for nothing.
class EditorEnginePage : public QWebEnginePage {
    Q_OBJECT
public:
    EditorEnginePage(QWebEngineProfile *profile, QObject *parent);

protected:
    bool acceptNavigationRequest(const QUrl &url, NavigationType type, bool isMainFrame) override;
    QWebEnginePage *createWindow(WebWindowType type) override;
    QStringList chooseFiles(FileSelectionMode mode, const QStringList &oldFiles, const QStringList &types) override;
    void javaScriptAlert(const QUrl &origin, const QString &text) override;
    bool javaScriptConfirm(const QUrl &origin, const QString &text) override;
    bool javaScriptPrompt(
        const QUrl &origin, const QString &text, const QString &defaultValue, QString *result) override;
    void javaScriptConsoleMessage(
        JavaScriptConsoleMessageLevel level, const QString &message, int line, const QString &source) override;
};
