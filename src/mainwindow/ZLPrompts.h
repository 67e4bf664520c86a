#pragma once

#include "app/Prompts.h"

#include <QObject>
#include <QPointer>

class ZLAppDelegate;
class ZLAlertSheet;
class ZLBlogIsConnectedSheet;
class ZLConnectingSheet;
class ZLGetStartedWindowController;
class ZLIntroWindowController;
class ZLSheetHost;
class ZLWordpressLoginErrorWindow;
class ZLWordpressLoginWindow;

/// Alerts, questions and sheets of the main window. Sheets are made when they are first shown.
class ZLPrompts : public QObject, public Prompts {
    Q_OBJECT
public:
    ZLPrompts(ZLAppDelegate &app, ZLSheetHost &host);

    void alert(const QString &message, const QString &informativeText = {}) override;
    void alertWithError(const ZLError &error) override;
    QCoro::Task<int> ask(QString message, QString informativeText, QStringList buttons, int defaultButton = 0) override;

    void showIntro() override;
    bool isShowingIntroWindow() const override;
    void showLoginSheet(ZLWordpressService *service, const QString &username, const QString &blogName) override;
    bool isLoginSheetVisible() const override;
    void closeLoginSheet() override;
    void showLoginErrorSheet(const QString &username, const QString &password, const QString &blogName) override;
    void closeLoginErrorSheet() override;
    void clearLoginFields() override;
    void showBlogIsConnectedSheet(const QString &title) override;
    void closeBlogIsConnectedSheet() override;
    void showGetStartedPanel() override;
    void showConnecting(const QString &blogURL) override;
    void hideConnecting() override;

private:
    ZLAlertSheet *beginAlert(
        const QString &message, const QString &informativeText, const QStringList &buttons, int defaultButton = 0);
    ZLIntroWindowController *intro();
    ZLWordpressLoginWindow *loginSheet();
    ZLWordpressLoginErrorWindow *loginErrorSheet();
    ZLConnectingSheet *connectingSheet();

    ZLAppDelegate &m_app;
    ZLSheetHost &m_host;
    QStringList m_openAlerts; ///< what they say, so that the same failure is not said twice at a time
    QPointer<ZLIntroWindowController> m_intro;
    QPointer<ZLWordpressLoginWindow> m_login;
    QPointer<ZLWordpressLoginErrorWindow> m_loginError;
    QPointer<ZLConnectingSheet> m_connecting;
    QPointer<ZLBlogIsConnectedSheet> m_connected;
    QPointer<ZLGetStartedWindowController> m_getStarted;
    bool m_loginHasService = false;
};
