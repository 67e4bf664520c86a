#pragma once

#include "app/Prompts.h"
#include "widgets/ZLSheet.h"

#include <QFuture>
#include <QPromise>

class QLineEdit;
class ZLSpinner;
class ZLTextField;

// The sheets on the way from a blog's address to a connected blog.

/// Asks for the address of a blog.
class ZLIntroWindowController : public ZLSheet {
    Q_OBJECT
public:
    /// It can be left without an answer once there is a blog.
    ZLIntroWindowController(const QString &typed, bool canCancel);
    ~ZLIntroWindowController() override;

    QFuture<std::optional<QString>> answer() { return m_answer.future(); }

Q_SIGNALS:
    void answered();

protected:
    void didPressEscape() override;

private:
    void finish(const std::optional<QString> &answer);

    QLineEdit *m_blogURL;
    bool m_canCancel;
    QPromise<std::optional<QString>> m_answer;
};

/// Asks for user name and password, also after a login that was refused or not complete.
class ZLWordpressLoginWindow : public ZLSheet {
    Q_OBJECT
public:
    explicit ZLWordpressLoginWindow(const LoginQuestion &question);
    ~ZLWordpressLoginWindow() override;

    QFuture<std::optional<Login>> answer() { return m_answer.future(); }

Q_SIGNALS:
    void answered();

protected:
    void didPressReturn() override; ///< goes on to the password while there is none
    void didPressEscape() override;

private:
    void finish(const std::optional<Login> &answer);

    ZLTextField *m_username;
    ZLTextField *m_password;
    QPromise<std::optional<Login>> m_answer;
};

/// A connection is being tried.
class ZLConnectingSheet : public ZLSheet {
    Q_OBJECT
public:
    ZLConnectingSheet();
    void setHost(const QString &host);

Q_SIGNALS:
    void didClickCancel();

protected:
    void didPressEscape() override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    ZLSpinner *m_spinner;
};

/// Says for a moment that the blog is connected.
class ZLBlogIsConnectedSheet : public ZLSheet {
    Q_OBJECT
public:
    ZLBlogIsConnectedSheet();
    void setBlogTitle(const QString &title);
};
