#include "mainwindow/ZLPrompts.h"

#include "mainwindow/ConflictSheet.h"
#include "mainwindow/ConnectionSheets.h"
#include "mainwindow/ZLGetStartedWindowController.h"
#include "widgets/ZLAlertSheet.h"
#include "widgets/ZLSheetHost.h"

#include <QCoroFuture>

ZLPrompts::ZLPrompts(ZLSheetHost &host)
    : m_host(host)
{
}

template <class Sheet>
void ZLPrompts::beginQuestion(Sheet *sheet)
{
    connect(sheet, &Sheet::answered, &m_host, [host = &m_host, sheet] {
        host->endSheet(sheet);
        sheet->deleteLater();
    });
    m_host.beginSheet(sheet);
}

// Alerts

ZLAlertSheet *ZLPrompts::beginAlert(
    const QString &message, const QString &informativeText, const QStringList &buttons, int defaultButton)
{
    auto *alert = new ZLAlertSheet(message, informativeText, buttons, defaultButton);
    beginQuestion(alert);
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
    const int index = co_await beginAlert(message, informativeText, buttons, defaultButton)->answer();
    co_return index;
}

QCoro::Task<ConflictAnswer> ZLPrompts::askAboutConflict(ConflictSides sides)
{
    auto *sheet = new ConflictSheet(sides);
    connect(sheet, &ConflictSheet::answered, &m_host, [host = &m_host, sheet] {
        host->endSheet(sheet);
        sheet->deleteLater();
    });
    m_host.beginSheet(sheet);
    const ConflictAnswer given = co_await sheet->answer();
    co_return given;
}

// Connecting a blog

QCoro::Task<std::optional<QString>> ZLPrompts::askForBlogURL(QString typed, bool canCancel)
{
    auto *sheet = new ZLIntroWindowController(typed, canCancel);
    const QFuture<std::optional<QString>> answer = sheet->answer();
    beginQuestion(sheet);
    const std::optional<QString> address = co_await answer;
    co_return address;
}

QCoro::Task<std::optional<Login>> ZLPrompts::askForLogin(LoginQuestion question)
{
    auto *sheet = new ZLWordpressLoginWindow(question);
    const QFuture<std::optional<Login>> answer = sheet->answer();
    beginQuestion(sheet);
    const std::optional<Login> login = co_await answer;
    co_return login;
}

void ZLPrompts::showConnecting(const QString &host, std::function<void()> cancel)
{
    m_cancelConnecting = std::move(cancel);
    if (!m_connecting) {
        m_connecting = new ZLConnectingSheet;
        connect(m_connecting, &ZLConnectingSheet::didClickCancel, this, [this] {
            if (const auto cancelConnecting = std::exchange(m_cancelConnecting, nullptr))
                cancelConnecting();
        });
    }
    m_connecting->setHost(host);
    m_host.beginSheet(m_connecting);
}

void ZLPrompts::hideConnecting()
{
    m_cancelConnecting = nullptr;
    if (m_connecting)
        m_host.endSheet(m_connecting);
}

void ZLPrompts::showBlogIsConnectedSheet(const QString &title)
{
    if (!m_connected)
        m_connected = new ZLBlogIsConnectedSheet;
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
