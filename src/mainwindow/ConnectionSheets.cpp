#include "mainwindow/ConnectionSheets.h"

#include "widgets/ZLSpinner.h"
#include "widgets/ZLTextField.h"
#include "widgets/ZLTheme.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

/// An address has no blanks to break at; one that is too long loses its middle.
static QString elided(const QWidget &sheet, const QString &address)
{
    constexpr int margins = 64;
    return sheet.fontMetrics().elidedText(address, Qt::ElideMiddle, sheet.width() - margins);
}

ZLIntroWindowController::ZLIntroWindowController()
    : m_blogURL(new QLineEdit(this))
{
    setObjectName(u"introSheet"_qs);
    setIcon(u"sheet_blog"_qs);
    setHeading(tr("Connect your blog"));
    setText(tr("Type the address of your WordPress blog. Zalmo brings your posts and pages here, and sends back what "
               "you write."));
    m_blogURL->setObjectName(u"blogURLField"_qs);
    m_blogURL->setPlaceholderText(u"https://yourblog.com"_qs);
    m_blogURL->setAccessibleName(tr("Address of your blog"));
    m_blogURL->setInputMethodHints(Qt::ImhUrlCharactersOnly | Qt::ImhNoPredictiveText);
    addContent(m_blogURL);
    setInitialFirstResponder(m_blogURL);
    connect(addButton(tr("Connect")), &QPushButton::clicked, this, &ZLIntroWindowController::didClickConnect);
    m_cancel = addButton(tr("Cancel"));
    connect(m_cancel, &QPushButton::clicked, this, &ZLIntroWindowController::didClickCancel);
}

void ZLIntroWindowController::setCanCancel(bool canCancel)
{
    m_cancel->setVisible(canCancel);
}

void ZLIntroWindowController::clear()
{
    m_blogURL->clear();
}

QString ZLIntroWindowController::blogURL() const
{
    return m_blogURL->text();
}

void ZLIntroWindowController::didPressEscape()
{
    if (!m_cancel->isHidden())
        Q_EMIT didClickCancel();
}

ZLWordpressLoginWindow::ZLWordpressLoginWindow()
    : m_username(new ZLTextField(tr("Username"), this))
    , m_password(new ZLTextField(tr("Password"), this))
{
    setObjectName(u"loginSheet"_qs);
    m_username->textField()->setObjectName(u"usernameField"_qs);
    m_password->textField()->setObjectName(u"passwordField"_qs);
    m_password->setSecure();
    ZLTextField::alignTextFields({m_username, m_password});
    setTexts(u"sheet_login"_qs, ZLTheme::accent, tr("Log in to your blog"), u"%1"_qs);
    addContent(m_username);
    addContent(m_password);
    setInitialFirstResponder(m_username->textField());
    connect(addButton(tr("Log In")), &QPushButton::clicked, this, &ZLWordpressLoginWindow::didClickLogin);
    connect(addButton(tr("Cancel")), &QPushButton::clicked, this, &ZLWordpressLoginWindow::didClickCancel);
}

void ZLWordpressLoginWindow::setTexts(
    const QString &icon, ZLIconView::Tone tone, const QString &heading, const QString &text)
{
    setIcon(icon, tone);
    setHeading(heading);
    m_text = text;
    setText(text);
}

void ZLWordpressLoginWindow::setBlogName(const QString &blogName)
{
    setText(m_text.arg(elided(*this, blogName)));
}

void ZLWordpressLoginWindow::setFields(const QString &username, const QString &password)
{
    m_username->setStringValue(username);
    m_password->setStringValue(password);
}

void ZLWordpressLoginWindow::focusFirstEmptyField()
{
    setInitialFirstResponder((username().isEmpty() ? m_username : m_password)->textField());
}

QString ZLWordpressLoginWindow::username() const
{
    return m_username->stringValue();
}
QString ZLWordpressLoginWindow::password() const
{
    return m_password->stringValue();
}

void ZLWordpressLoginWindow::didPressReturn()
{
    if (m_password->textField()->hasFocus())
        Q_EMIT didEndEditingPassword();
    else
        ZLSheet::didPressReturn();
}

void ZLWordpressLoginWindow::didPressEscape()
{
    Q_EMIT didClickCancel();
}

ZLWordpressLoginErrorWindow::ZLWordpressLoginErrorWindow()
{
    setObjectName(u"loginErrorSheet"_qs);
    setTexts(u"sheet_warning"_qs, ZLTheme::warning, tr("That login does not work"),
        tr("Check your username and password for\n%1"));
}

ZLConnectingSheet::ZLConnectingSheet()
    : m_spinner(new ZLSpinner(36))
{
    setObjectName(u"connectingSheet"_qs);
    setHeading(tr("Connecting to your blog…"));
    auto *row = new QWidget(this);
    auto *middle = new QHBoxLayout(row);
    middle->setContentsMargins(0, ZLTheme::spacing, 0, 0);
    middle->addWidget(m_spinner);
    addContent(row);
    QPushButton *cancel = addButton(tr("Cancel"), false); // a second Return must not give up
    connect(cancel, &QPushButton::clicked, this, &ZLConnectingSheet::didClickCancel);
    setInitialFirstResponder(this);
}

void ZLConnectingSheet::setBlogURL(const QString &blogURL)
{
    setText(elided(*this, blogURL));
}

void ZLConnectingSheet::didPressEscape()
{
    Q_EMIT didClickCancel();
}

void ZLConnectingSheet::showEvent(QShowEvent *)
{
    m_spinner->startAnimation();
}
void ZLConnectingSheet::hideEvent(QHideEvent *)
{
    m_spinner->stopAnimation();
}

ZLBlogIsConnectedSheet::ZLBlogIsConnectedSheet()
{
    setObjectName(u"blogIsConnectedSheet"_qs);
    setIcon(u"sheet_success"_qs, ZLTheme::good);
    setHeading(tr("Your blog is connected"));
}

void ZLBlogIsConnectedSheet::setBlogTitle(const QString &title)
{
    setText(title);
}
