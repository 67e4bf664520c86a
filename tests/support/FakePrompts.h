#pragma once

#include "app/Prompts.h"

#include <QCoroFuture>
#include <QPromise>
#include <QStringList>

/// Shows nothing, answers as the test says, and keeps a journal of what the user would have seen.
class FakePrompts : public Prompts {
public:
    /// A sheet that stays until the test answers it, for nothing or with what the user typed.
    template <class Typed>
    class Sheet {
    public:
        Sheet() = default;
        Sheet(const Sheet &) = delete;
        Sheet &operator=(const Sheet &) = delete;
        ~Sheet()
        {
            if (m_shown)
                answer({}); // as when the window dies
        }
        bool isShown() const { return m_shown != nullptr; }
        QFuture<std::optional<Typed>> begin()
        {
            m_shown = std::make_unique<QPromise<std::optional<Typed>>>();
            m_shown->start();
            return m_shown->future();
        }
        void answer(const std::optional<Typed> &typed)
        {
            const auto shown = std::exchange(m_shown, nullptr);
            shown->addResult(typed);
            shown->finish();
        }

    private:
        std::unique_ptr<QPromise<std::optional<Typed>>> m_shown;
    };

    void alert(const QString &message, const QString &text) override
    {
        journal.append(u"alert: "_qs + message);
        details.append(text);
    }
    void alertWithError(const ZLError &error) override { journal.append(u"error: "_qs + error.description); }
    QCoro::Task<int> ask(QString message, QString informativeText, QStringList buttons, int defaultButton) override
    {
        journal.append(u"ask: "_qs + message + u" ["_qs + buttons.join(u'|') + u']');
        details.append(informativeText);
        const int answer = answers.isEmpty() ? defaultButton : answers.takeFirst();
        co_return answer < buttons.size() ? answer : defaultButton; // what is not offered cannot be pressed
    }

    QCoro::Task<ConflictAnswer> askAboutConflict(ConflictSides sides) override
    {
        journal.append(u"conflict: %1 | %2"_qs.arg(sides.local.title, sides.remote.title));
        if (whileAsking)
            whileAsking();
        co_return conflictAnswers.isEmpty() ? ConflictAnswer::NotNow : conflictAnswers.takeFirst();
    }

    QCoro::Task<std::optional<QString>> askForBlogURL(QString typed, bool canCancel) override
    {
        journal.append(typed.isEmpty() ? u"intro"_qs : u"intro: "_qs + typed);
        introCanCancel = canCancel;
        const auto answer = intro.begin();
        co_return co_await answer;
    }
    QCoro::Task<std::optional<Login>> askForLogin(LoginQuestion question) override
    {
        const QStringList kinds{u"login"_qs, u"login refused"_qs, u"login error"_qs};
        journal.append(u"%1: %2/%3@%4%5"_qs.arg(kinds[question.reason], question.username, question.password,
            question.blogName, question.blogName.isEmpty() ? question.host : u" on "_qs + question.host));
        if (!logins.isEmpty())
            co_return logins.takeFirst();
        const auto answer = login.begin();
        co_return co_await answer;
    }
    void showConnecting(const QString &, std::function<void()> cancel) override
    {
        isConnecting = true;
        cancelConnecting = std::move(cancel);
    }
    void hideConnecting() override
    {
        isConnecting = false;
        cancelConnecting = nullptr;
    }
    void showBlogIsConnectedSheet(const QString &title) override { journal.append(u"connected: "_qs + title); }
    void closeBlogIsConnectedSheet() override { journal.append(u"connected closes"_qs); }
    void showGetStartedPanel() override { journal.append(u"get started"_qs); }
    QStringList takeJournal() { return std::exchange(journal, {}); }

    QStringList journal;
    QStringList details; ///< the informative texts of alerts and questions
    QList<int> answers;
    QList<ConflictAnswer> conflictAnswers;
    std::function<void()> whileAsking; ///< what happens while the sheet is up
    Sheet<QString> intro;
    bool introCanCancel = false;
    Sheet<Login> login;
    QList<Login> logins; ///< typed into the next login sheets
    bool isConnecting = false;
    std::function<void()> cancelConnecting;
};
