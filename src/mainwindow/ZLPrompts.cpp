#include "mainwindow/ZLPrompts.h"

#include "app/ZLAppDelegate.h"
#include "mainwindow/ConnectionSheets.h"
#include "mainwindow/ZLGetStartedWindowController.h"
#include "widgets/ZLAlertSheet.h"
#include "widgets/ZLSheetHost.h"

#include <QCoroFuture>

ZLPrompts::ZLPrompts(ZLAppDelegate &app, ZLSheetHost &host)
    : m_app(app)
    , m_host(host)
{
}

// Alerts

ZLAlertSheet *ZLPrompts::beginAlert(
    const QString &message, const QString &informativeText, const QStringList &buttons, int defaultButton)
{
    auto *alert = new ZLAlertSheet(message, informativeText, buttons, defaultButton);
    connect(alert, &ZLAlertSheet::answered, &m_host, [host = &m_host, alert] {
        host->endSheet(alert);
        alert->deleteLater();
    });
    m_host.beginSheet(alert);
    return alert;
}

void ZLPrompts::alert(const QString &message, const QString &informativeText)
{
    // Several requests of one sync fail in the same way.
    const QString said = message + u'\n' + informativeText;
    if (m_openAlerts.contains(said))
        return;
    m_openAlerts.append(said);
    ZLAlertSheet *alert = beginAlert(message, informativeText, {tr("Ok")});
    connect(alert, &ZLAlertSheet::answered, this, [this, said] { m_openAlerts.removeOne(said); });
}

void ZLPrompts::alertWithError(const ZLError &error)
{
    alert(error.description);
}

QCoro::Task<int> ZLPrompts::ask(QString message, QString informativeText, QStringList buttons, int defaultButton)
{
    const QFuture<int> answer = beginAlert(message, informativeText, buttons, defaultButton)->answer();
    const int index = co_await answer;
    co_return index;
}

// The address of a blog

ZLIntroWindowController *ZLPrompts::intro()
{
    if (!m_intro) {
        m_intro = new ZLIntroWindowController;
        connect(m_intro, &ZLIntroWindowController::didClickConnect, this, [this] {
            m_host.endSheet(m_intro);
            m_app.connectToBlogURL(m_intro->blogURL());
        });
        connect(m_intro, &ZLIntroWindowController::didClickCancel, this, [this] {
            m_host.endSheet(m_intro);
            m_app.didPressedCancelButtonFromIntro();
        });
    }
    return m_intro;
}

void ZLPrompts::showIntro()
{
    intro()->setCanCancel(m_app.numberOfConnectedAccounts() > 0);
    m_host.beginSheet(m_intro);
}

bool ZLPrompts::isShowingIntroWindow() const
{
    return m_intro && m_host.isAttached(m_intro);
}

// Login

ZLWordpressLoginWindow *ZLPrompts::loginSheet()
{
    if (m_login)
        return m_login;
    m_login = new ZLWordpressLoginWindow;
    connect(m_login, &ZLWordpressLoginWindow::didClickLogin, this, [this] {
        if (m_loginHasService)
            m_app.didReconnectFromLoginSheet(m_login->username(), m_login->password());
        else
            m_app.didEntryUsernameAndPassword(m_login->username(), m_login->password());
    });
    // Return here takes the road of a new blog even on a sheet that has a service. Intended was the login button's.
    connect(m_login, &ZLWordpressLoginWindow::didEndEditingPassword, this,
        [this] { m_app.didEntryUsernameAndPassword(m_login->username(), m_login->password()); });
    connect(m_login, &ZLWordpressLoginWindow::didClickCancel, this, [this] { m_app.didPressedCancelButton(); });
    return m_login;
}

void ZLPrompts::showLoginSheet(ZLWordpressService *service, const QString &username, const QString &blogName)
{
    m_loginHasService = service != nullptr;
    loginSheet()->setBlogName(blogName);
    m_login->setFields(username, {});
    m_login->focusFirstEmptyField();
    m_host.beginSheet(m_login);
}

bool ZLPrompts::isLoginSheetVisible() const
{
    return m_login && m_host.isAttached(m_login);
}

void ZLPrompts::closeLoginSheet()
{
    if (m_login)
        m_host.endSheet(m_login);
    m_loginHasService = false;
}

ZLWordpressLoginErrorWindow *ZLPrompts::loginErrorSheet()
{
    if (m_loginError)
        return m_loginError;
    m_loginError = new ZLWordpressLoginErrorWindow;
    const auto entered = [this] {
        m_app.didEntryUsernameAndPasswordFromWrongSheet(m_loginError->username(), m_loginError->password());
    };
    connect(m_loginError, &ZLWordpressLoginWindow::didClickLogin, this, entered);
    connect(m_loginError, &ZLWordpressLoginWindow::didEndEditingPassword, this, entered);
    connect(m_loginError, &ZLWordpressLoginWindow::didClickCancel, this,
        [this] { m_app.didPressedCancelButtonFromWrongSheet(); });
    return m_loginError;
}

void ZLPrompts::showLoginErrorSheet(const QString &username, const QString &password, const QString &blogName)
{
    loginErrorSheet()->setBlogName(blogName);
    m_loginError->setFields(username, password);
    m_loginError->focusFirstEmptyField();
    m_host.beginSheet(m_loginError);
}

void ZLPrompts::closeLoginErrorSheet()
{
    if (m_loginError)
        m_host.endSheet(m_loginError);
}

void ZLPrompts::clearLoginFields()
{
    if (m_login)
        m_login->setFields({}, {});
    if (m_loginError)
        m_loginError->setFields({}, {});
}

// Waiting and done

ZLConnectingSheet *ZLPrompts::connectingSheet()
{
    if (!m_connecting) {
        m_connecting = new ZLConnectingSheet;
        connect(m_connecting, &ZLConnectingSheet::didClickCancel, this, [this] { m_app.cancelConnecting(); });
    }
    return m_connecting;
}

void ZLPrompts::showConnecting(const QString &blogURL)
{
    connectingSheet()->setBlogURL(blogURL);
    m_host.beginSheet(m_connecting);
}

void ZLPrompts::hideConnecting()
{
    if (m_connecting)
        m_host.endSheet(m_connecting);
}

void ZLPrompts::showBlogIsConnectedSheet(const QString &title)
{
    if (!m_connected)
        m_connected = new ZLBlogIsConnectedSheet;
    if (m_intro)
        m_intro->clear(); // the next blog has another address
    m_connected->setBlogTitle(title);
    m_host.beginSheet(m_connected);
}

void ZLPrompts::closeBlogIsConnectedSheet()
{
    if (m_connected)
        m_host.endSheet(m_connected);
}

void ZLPrompts::showGetStartedPanel()
{
    if (!m_getStarted) {
        m_getStarted = new ZLGetStartedWindowController;
        connect(
            m_getStarted, &ZLGetStartedWindowController::didClickDone, this, [this] { m_host.endSheet(m_getStarted); });
    }
    m_host.beginSheet(m_getStarted);
}
