#pragma once

#include "widgets/ZLSheet.h"

class QLineEdit;
class ZLSpinner;
class ZLTextField;

// The sheets on the way from a blog's address to a connected blog.

/// Asks for the address of a blog.
class ZLIntroWindowController : public ZLSheet {
    Q_OBJECT
public:
    ZLIntroWindowController();
    /// Whether it can be left without an answer, which makes sense once there is a blog.
    void setCanCancel(bool canCancel);
    QString blogURL() const;
    void clear();

Q_SIGNALS:
    void didClickConnect();
    void didClickCancel();

protected:
    void didPressEscape() override;

private:
    QLineEdit *m_blogURL;
    QPushButton *m_cancel;
};

/// Asks for user name and password: the login sheet, and the sheet after a refused login.
class ZLWordpressLoginWindow : public ZLSheet {
    Q_OBJECT
public:
    ZLWordpressLoginWindow();

    void setBlogName(const QString &blogName);
    void setFields(const QString &username, const QString &password);
    void focusFirstEmptyField();
    QString username() const;
    QString password() const;

Q_SIGNALS:
    void didClickLogin();
    void didClickCancel();
    void didEndEditingPassword(); ///< Return in the password field

protected:
    void setTexts(const QString &icon, ZLIconView::Tone tone, const QString &heading, const QString &text);
    void didPressReturn() override;
    void didPressEscape() override;

private:
    QString m_text;
    ZLTextField *m_username;
    ZLTextField *m_password;
};

/// The same after a login that was refused or not complete.
class ZLWordpressLoginErrorWindow : public ZLWordpressLoginWindow {
    Q_OBJECT
public:
    ZLWordpressLoginErrorWindow();
};

/// A connection is being tried.
class ZLConnectingSheet : public ZLSheet {
    Q_OBJECT
public:
    ZLConnectingSheet();
    void setBlogURL(const QString &blogURL);

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
