#pragma once

#include "platform/ZLError.h"

#include <QCoroTask>
#include <QString>

class ZLWordpressService;

/// Alerts, questions and sheets of the main window. Nothing here waits: answers come by the tasks, or, for the sheets
/// of connecting a blog, as calls of BlogConnectionSheetsDelegate.
class Prompts {
public:
    virtual ~Prompts() = default;
    /// An alert with one "Ok" button.
    virtual void alert(const QString &message, const QString &informativeText = {}) = 0;
    virtual void alertWithError(const ZLError &error) = 0;
    /// An alert with buttons; the task gives the index of the one pressed, or -1 when the window died. Return presses
    /// the default button.
    virtual QCoro::Task<int> ask(
        QString message, QString informativeText, QStringList buttons, int defaultButton = 0) = 0;

    virtual void showIntro() = 0; ///< asks for a blog's address; answered by connectToBlogURL()
    virtual bool isShowingIntroWindow() const = 0;
    /// The login sheet: for a new blog when `service` is null, else to log in again.
    virtual void showLoginSheet(ZLWordpressService *service, const QString &username, const QString &blogName) = 0;
    virtual bool isLoginSheetVisible() const = 0;
    virtual void closeLoginSheet() = 0;
    /// The sheet after a refused login; fields are filled with what was tried.
    virtual void showLoginErrorSheet(const QString &username, const QString &password, const QString &blogName) = 0;
    virtual void closeLoginErrorSheet() = 0;
    virtual void clearLoginFields() = 0;
    virtual void showBlogIsConnectedSheet(const QString &title) = 0;
    virtual void closeBlogIsConnectedSheet() = 0;
    virtual void showGetStartedPanel() = 0;
    /// A connection is being tried: the window shows that it waits, and lets the user give up.
    virtual void showConnecting(const QString &blogURL) = 0;
    virtual void hideConnecting() = 0;
};
