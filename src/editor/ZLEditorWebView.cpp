#include "editor/ZLEditorWebView.h"

#include "editor/EditorEnginePage.h"
#include "editor/EditorRequestFilter.h"
#include "editor/EditorScheme.h"
#include "editor/EditorSchemeHandler.h"
#include "editor/ZLEditorPage.h"
#include "platform/ZLLog.h"

#include <QChildEvent>
#include <QContextMenuEvent>
#include <QFile>
#include <QMenu>
#include <QTimer>
#include <QWebChannel>
#include <QWebEngineProfile>
#include <QWebEngineScript>
#include <QWebEngineScriptCollection>
#include <QWebEngineSettings>
#include <csignal>

namespace {
// A body that is a script without an end ("for (;;);") would hang the page for ever.
constexpr int evaluationLimitMs = 8000;
// A post that ends the page's process each time it is shown must not do so for ever.
constexpr int mostCrashes = 4;
constexpr qint64 crashWindowMs = 60'000;

void configure(QWebEngineSettings &settings)
{
    settings.setAttribute(QWebEngineSettings::PluginsEnabled, false);
    settings.setAttribute(QWebEngineSettings::LocalContentCanAccessFileUrls, false);
    settings.setAttribute(QWebEngineSettings::LocalContentCanAccessRemoteUrls, false);
    settings.setAttribute(QWebEngineSettings::LocalStorageEnabled, false);
    settings.setAttribute(QWebEngineSettings::JavascriptCanOpenWindows, false);
    settings.setAttribute(QWebEngineSettings::JavascriptCanAccessClipboard, false);
    settings.setAttribute(QWebEngineSettings::FullScreenSupportEnabled, false);
    settings.setAttribute(QWebEngineSettings::ErrorPageEnabled, false);
    settings.setAttribute(QWebEngineSettings::NavigateOnDropEnabled, false);
    settings.setAttribute(QWebEngineSettings::FocusOnNavigationEnabled, false);
    settings.setAttribute(QWebEngineSettings::ScreenCaptureEnabled, false);
}

/// Takes the page's elements out of the isolated world before anything is evaluated there.
QWebEngineScript isolationScript()
{
    QFile file(QStringLiteral(":/editor/isolation.js"));
    file.open(QIODevice::ReadOnly);
    QWebEngineScript script;
    script.setName(QStringLiteral("isolation"));
    script.setSourceCode(QString::fromUtf8(file.readAll()));
    script.setInjectionPoint(QWebEngineScript::DocumentCreation);
    script.setWorldId(QWebEngineScript::ApplicationWorld);
    return script;
}
} // namespace

ZLEditorWebView::ZLEditorWebView(ZLEditorPage &page, const QString &cacheFolder, QWidget *parent)
    : QWebEngineView(parent)
    , m_page(page)
    , m_profile(std::make_unique<QWebEngineProfile>()) // without a name, so off the record
    , m_channel(std::make_unique<QWebChannel>())
    , m_enginePage(std::make_unique<EditorEnginePage>(m_profile.get(), nullptr))
{
    m_media.allowFolder(cacheFolder);
    m_profile->installUrlSchemeHandler(EditorScheme::name, new EditorSchemeHandler(m_media, m_profile.get()));
    m_profile->setUrlRequestInterceptor(new EditorRequestFilter(m_profile.get()));
    configure(*m_enginePage->settings());
    m_enginePage->scripts().insert(isolationScript());
    m_channel->registerObject(QStringLiteral("Bridge"), &page.bridge());
    m_channel->registerObject(QStringLiteral("Calls"), &page.calls());
    m_enginePage->setWebChannel(m_channel.get(), QWebEngineScript::MainWorld);
    connect(
        m_enginePage.get(), &QWebEnginePage::renderProcessTerminated, this, &ZLEditorWebView::renderProcessTerminated);
    page.setView(this);
    setPage(m_enginePage.get());
    applyPalette();
    load();
}

ZLEditorWebView::~ZLEditorWebView()
{
    m_page.pageIsGone();
    m_page.setView(nullptr);
}

void ZLEditorWebView::load()
{
    m_enginePage->load(EditorScheme::pageUrl());
}

void ZLEditorWebView::evaluateInIsolation(const QString &text, std::function<void()> done)
{
    if (m_endlessTexts.contains(text))
        return done();
    const int evaluation = ++m_evaluation;
    const auto finished = [view = QPointer(this), evaluation, done = std::move(done)](const QVariant &) {
        if (!view || view->m_evaluation != evaluation)
            return;
        ++view->m_evaluation;
        done();
    };
    m_enginePage->runJavaScript(text, QWebEngineScript::ApplicationWorld, finished);
    QTimer::singleShot(evaluationLimitMs, this, [this, evaluation, text] {
        if (m_evaluation != evaluation)
            return;
        m_endlessTexts << text; // it is not evaluated again
        endHungProcess();
    });
}

void ZLEditorWebView::endHungProcess()
{
    ZLLog(QStringLiteral("the editor page hangs; starting it anew"));
    if (const qint64 pid = m_enginePage->renderProcessPid(); pid > 0)
        ::kill(pid_t(pid), SIGKILL);
}

void ZLEditorWebView::allowLocalImages(const QStringList &addresses)
{
    for (const QString &address : addresses) {
        const QString file = LocalMedia::fileForContentAddress(QUrl(address));
        if (!file.isEmpty())
            m_media.allowFile(file);
    }
}

void ZLEditorWebView::renderProcessTerminated()
{
    ZLLog(QStringLiteral("the editor page's process ended; loading the page anew"));
    ++m_evaluation;
    m_page.pageIsGone();
    if (!m_firstCrash.isValid() || m_firstCrash.hasExpired(crashWindowMs)) {
        m_firstCrash.start();
        m_crashes = 0;
    }
    if (++m_crashes <= mostCrashes)
        QTimer::singleShot(0, this, &ZLEditorWebView::load);
    else
        m_page.pageIsGivenUp();
}

void ZLEditorWebView::loadIfGivenUp()
{
    if (m_crashes <= mostCrashes)
        return;
    m_crashes = 0;
    load();
}

void ZLEditorWebView::contextMenuEvent(QContextMenuEvent *event)
{
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (const auto action : {QWebEnginePage::Cut, QWebEnginePage::Copy, QWebEnginePage::Paste})
        menu->addAction(m_enginePage->action(action));
    menu->popup(event->globalPos());
}

void ZLEditorWebView::changeEvent(QEvent *event)
{
    QWebEngineView::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && m_enginePage)
        applyPalette();
}

void ZLEditorWebView::childEvent(QChildEvent *event)
{
    QWebEngineView::childEvent(event);
    if (event->added())
        event->child()->installEventFilter(this); // one of them takes the keys
}

bool ZLEditorWebView::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == focusProxy() && (event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease))
        m_page.calls().keyWasSent();
    return QWebEngineView::eventFilter(watched, event);
}

void ZLEditorWebView::applyPalette()
{
    const auto color = [this](QPalette::ColorRole role) { return palette().color(QPalette::Active, role); };
    m_enginePage->setBackgroundColor(color(QPalette::Base));
    m_page.setTheme({
        {QStringLiteral("paper"), color(QPalette::Base).name()},
        {QStringLiteral("ink"), color(QPalette::Text).name()},
        {QStringLiteral("accent"), color(QPalette::Highlight).name()},
        {QStringLiteral("link"), color(QPalette::Link).name()},
        {QStringLiteral("dark"), color(QPalette::Base).lightness() < 128},
    });
}
