#pragma once

#include "model/ConflictSides.h"
#include "platform/ZLError.h"

#include <QCoroTask>
#include <QString>
#include <functional>
#include <optional>

/// What a login sheet shows.
struct LoginQuestion {
    QString blogName; ///< empty while the blog is not connected
    QString host; ///< of the blog that gets the password
    QString username;
    QString password; ///< what was tried; selected, so that typing replaces it
    enum Reason {
        Wanted,
        StoredRefused, ///< the blog does not take the login that was known
        TypedRefused, ///< the blog did not take what was typed, or a field was left empty
    };
    Reason reason = Wanted;
};

/// What the writer wants of a post that changed both here and on the blog. Where both are kept, the other version
/// becomes a copy of its own.
enum class ConflictAnswer { NotNow, ChooseLocal, ChooseRemote, KeepBothLocal, KeepBothRemote };

/// A user name and a password, as they were typed.
struct Login {
    QString username;
    QString password;

    bool isComplete() const { return !username.isEmpty() && !password.isEmpty(); }
};

/// Alerts, questions and sheets of the main window. Nothing here waits: answers come by the tasks, which give nothing
/// (for a question: -1) when the user cancels or the window dies. Several at a time queue.
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
    virtual QCoro::Task<ConflictAnswer> askAboutConflict(ConflictSides sides) = 0;

    /// Asks for the address of a blog to connect; `typed` stands in the field.
    virtual QCoro::Task<std::optional<QString>> askForBlogURL(QString typed, bool canCancel) = 0;
    /// The login sheet. Return and its button give the same answer.
    virtual QCoro::Task<std::optional<Login>> askForLogin(LoginQuestion question) = 0;
    /// A blog is being asked: the window shows that it waits, and lets the user give up, which calls `cancel`.
    virtual void showConnecting(const QString &host, std::function<void()> cancel) = 0;
    virtual void hideConnecting() = 0;
    virtual void showBlogIsConnectedSheet(const QString &title) = 0;
    virtual void closeBlogIsConnectedSheet() = 0;
    virtual void showGetStartedPanel() = 0;
};
