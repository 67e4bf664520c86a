#include "mainwindow/ConnectionSheets.h"

#include "app/BlogNames.h"
#include "widgets/ZLSpinner.h"
#include "widgets/ZLTextField.h"
#include "widgets/ZLTheme.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

/// On one line of the sheet.
static QString elided(const QWidget &sheet, const QString &text, Qt::TextElideMode mode)
{
    constexpr int margins = 64;
    return sheet.fontMetrics().elidedText(text, mode, sheet.width() - margins);
}

/// The end of a host says whose it is.
static QString elidedHost(const QWidget &sheet, const QString &host)
{
    return elided(sheet, host, Qt::ElideLeft);
}

ZLIntroWindowController::ZLIntroWindowController(const QString &typed, bool canCancel)
    : m_blogURL(new QLineEdit(typed, this))
    , m_canCancel(canCancel)
{
    m_answer.start();
    setObjectName(u"introSheet"_qs);
    setIcon(u"sheet_blog"_qs);
    setHeading(tr("Connect your blog"));
    setText(tr("Type the address of your WordPress blog. Zalmo brings its posts here, and sends back what you write."));
    m_blogURL->setObjectName(u"blogURLField"_qs);
    m_blogURL->setPlaceholderText(u"https://yourblog.com"_qs);
    m_blogURL->setAccessibleName(tr("Address of your blog"));
    m_blogURL->setInputMethodHints(Qt::ImhUrlCharactersOnly | Qt::ImhNoPredictiveText);
    m_blogURL->selectAll();
    addContent(m_blogURL);
    setInitialFirstResponder(m_blogURL);
    connect(addButton(tr("Connect")), &QPushButton::clicked, this, [this] { finish(m_blogURL->text()); });
    if (canCancel)
        connect(addButton(tr("Cancel")), &QPushButton::clicked, this, [this] { finish(std::nullopt); });
}

ZLIntroWindowController::~ZLIntroWindowController()
{
    finish(std::nullopt);
}

void ZLIntroWindowController::didPressEscape()
{
    if (m_canCancel)
        finish(std::nullopt);
}

void ZLIntroWindowController::finish(const std::optional<QString> &answer)
{
    if (!m_answer.future().isRunning())
        return;
    m_answer.addResult(answer);
    m_answer.finish();
    Q_EMIT answered();
}

ZLWordpressLoginWindow::ZLWordpressLoginWindow(const LoginQuestion &question)
    : m_username(new ZLTextField(tr("Username"), this))
    , m_password(new ZLTextField(tr("Password"), this))
{
    m_answer.start();
    setObjectName(question.reason == LoginQuestion::Wanted ? u"loginSheet"_qs : u"loginErrorSheet"_qs);
    m_username->textField()->setObjectName(u"usernameField"_qs);
    m_password->textField()->setObjectName(u"passwordField"_qs);
    m_password->setSecure();
    ZLTextField::alignTextFields({m_username, m_password});
    m_username->setStringValue(question.username);
    m_password->setStringValue(question.password);
    m_password->textField()->selectAll();

    // The host first: a blog chooses its name, and could call itself another blog and that one's host.
    const QString name = elided(*this, BlogNames::oneLine(question.blogName), Qt::ElideRight);
    const QString host = elidedHost(*this, question.host);
    const QString blog = name.isEmpty() ? host : host + u'\n' + name;
    if (question.reason == LoginQuestion::Wanted) {
        setIcon(u"sheet_login"_qs, ZLTheme::accent);
        setHeading(tr("Log in to your blog"));
        setText(blog);
    } else {
        setIcon(u"sheet_warning"_qs, ZLTheme::warning);
        setHeading(question.reason == LoginQuestion::StoredRefused ? tr("The stored password was refused")
                                                                   : tr("That login does not work"));
        setText(tr("Check your username and password for\n%1").arg(blog));
    }
    addContent(m_username);
    addContent(m_password);
    setInitialFirstResponder((question.username.isEmpty() ? m_username : m_password)->textField());
    connect(addButton(tr("Log In")), &QPushButton::clicked, this, [this] {
        finish(Login{m_username->stringValue(), m_password->stringValue()});
    });
    connect(addButton(tr("Cancel")), &QPushButton::clicked, this, [this] { finish(std::nullopt); });
}

ZLWordpressLoginWindow::~ZLWordpressLoginWindow()
{
    finish(std::nullopt);
}

void ZLWordpressLoginWindow::didPressReturn()
{
    if (m_username->textField()->hasFocus() && m_password->stringValue().isEmpty())
        m_password->textField()->setFocus();
    else
        ZLSheet::didPressReturn();
}

void ZLWordpressLoginWindow::didPressEscape()
{
    finish(std::nullopt);
}

void ZLWordpressLoginWindow::finish(const std::optional<Login> &answer)
{
    if (!m_answer.future().isRunning())
        return;
    m_answer.addResult(answer);
    m_answer.finish();
    Q_EMIT answered();
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

void ZLConnectingSheet::setHost(const QString &host)
{
    setText(elidedHost(*this, host));
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
