#pragma once

#include "app/Prompts.h"
#include "wordpress/ZLWordpressService.h"

#include <QStringList>

/// Shows nothing, answers as the test says, and keeps a journal of what the user would have seen.
class FakePrompts : public Prompts {
public:
    void alert(const QString &message, const QString &) override { journal.append(u"alert: "_qs + message); }
    void alertWithError(const ZLError &error) override { journal.append(u"error: "_qs + error.description); }
    QCoro::Task<int> ask(QString message, QString informativeText, QStringList buttons, int defaultButton) override
    {
        journal.append(u"ask: "_qs + message + u" ["_qs + buttons.join(u'|') + u']');
        details.append(informativeText);
        co_return answers.isEmpty() ? defaultButton : answers.takeFirst();
    }

    void showIntro() override
    {
        isIntroShown = true;
        journal.append(u"intro"_qs);
    }
    bool isShowingIntroWindow() const override { return isIntroShown; }
    void showLoginSheet(ZLWordpressService *, const QString &username, const QString &blogName) override
    {
        isLoginShown = true;
        journal.append(u"login: %1@%2"_qs.arg(username, blogName));
    }
    bool isLoginSheetVisible() const override { return isLoginShown; }
    void closeLoginSheet() override { isLoginShown = false; }
    void showLoginErrorSheet(const QString &username, const QString &password, const QString &blogName) override
    {
        journal.append(u"login error: %1/%2@%3"_qs.arg(username, password, blogName));
    }
    void closeLoginErrorSheet() override { }
    void clearLoginFields() override { }
    void showBlogIsConnectedSheet(const QString &title) override { journal.append(u"connected: "_qs + title); }
    void closeBlogIsConnectedSheet() override { journal.append(u"connected closes"_qs); }
    void showGetStartedPanel() override { journal.append(u"get started"_qs); }
    void showConnecting(const QString &) override { isConnecting = true; }
    void hideConnecting() override { isConnecting = false; }

    /// The intro closes before it tells what was typed.
    void closeIntro() { isIntroShown = false; }
    QStringList takeJournal() { return std::exchange(journal, {}); }

    QStringList journal;
    QStringList details; ///< the informative texts of questions
    QList<int> answers;
    bool isIntroShown = false;
    bool isLoginShown = false;
    bool isConnecting = false;
};
