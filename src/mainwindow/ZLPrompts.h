#pragma once

#include "app/Prompts.h"

#include <QObject>
#include <QPointer>

class ZLAlertSheet;
class ZLBlogIsConnectedSheet;
class ZLConnectingSheet;
class ZLGetStartedWindowController;
class ZLSheetHost;

/// Alerts, questions and sheets of the main window. Sheets are made when they are first shown.
class ZLPrompts : public QObject, public Prompts {
    Q_OBJECT
public:
    explicit ZLPrompts(ZLSheetHost &host);

    void alert(const QString &message, const QString &informativeText = {}) override;
    void alertWithError(const ZLError &error) override;
    QCoro::Task<int> ask(QString message, QString informativeText, QStringList buttons, int defaultButton = 0) override;
    QCoro::Task<ConflictAnswer> askAboutConflict(ConflictSides sides) override;

    QCoro::Task<std::optional<QString>> askForBlogURL(QString typed, bool canCancel) override;
    QCoro::Task<std::optional<Login>> askForLogin(LoginQuestion question) override;
    void showConnecting(const QString &host, std::function<void()> cancel) override;
    void hideConnecting() override;
    void showBlogIsConnectedSheet(const QString &title) override;
    void closeBlogIsConnectedSheet() override;
    void showGetStartedPanel() override;

private:
    ZLAlertSheet *beginAlert(
        const QString &message, const QString &informativeText, const QStringList &buttons, int defaultButton = 0);
    /// Shows a sheet that answers once and then goes.
    template <class Sheet>
    void beginQuestion(Sheet *sheet);

    ZLSheetHost &m_host;
    QStringList m_openAlerts; ///< what they say, so that the same failure is not said twice at a time
    QPointer<ZLConnectingSheet> m_connecting;
    QPointer<ZLBlogIsConnectedSheet> m_connected;
    QPointer<ZLGetStartedWindowController> m_getStarted;
    std::function<void()> m_cancelConnecting;
};
