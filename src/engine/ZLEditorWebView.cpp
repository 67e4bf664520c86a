#include "engine/ZLEditorWebView.h"

#include "editor/ZLEditorPage.h"
#include "engine/EditorEnginePage.h"
#include "engine/EditorRequestFilter.h"
#include "engine/EditorScheme.h"
#include "engine/EditorSchemeHandler.h"
#include "platform/ZLLog.h"

#include <QAction>
#include <QBuffer>
#include <QChildEvent>
#include <QContextMenuEvent>
#include <QDragEnterEvent>
#include <QImage>
#include <QMenu>
#include <QMimeData>
#include <QMimeDatabase>
#include <QTimer>
#include <QWebChannel>
#include <QWebEngineCookieStore>
#include <QWebEngineProfile>
#include <QWebEngineScript>
#include <QWebEngineSettings>
#include <algorithm>
#include <array>
#include <csignal>
#include <ctime>

namespace {
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

bool isPicture(const QUrl &file)
{
    return file.isLocalFile() && QMimeDatabase().mimeTypeForFile(file.toLocalFile()).name().startsWith(u"image/");
}

/// The picture files that a drag or the clipboard holds; empty when it also holds others.
QList<QUrl> pictureFiles(const QMimeData *data)
{
    const QList<QUrl> files = data->urls();
    return std::all_of(files.begin(), files.end(), isPicture) ? files : QList<QUrl>();
}
} // namespace

ZLEditorWebView::ZLEditorWebView(ZLEditorPage &page, const QString &cacheFolder, QWidget *parent)
    : QWebEngineView(parent)
    , m_page(page)
    , m_profile(std::make_unique<QWebEngineProfile>()) // without a name, so off the record
    , m_filter(new EditorRequestFilter(m_profile.get()))
    , m_channel(std::make_unique<QWebChannel>())
    , m_enginePage(std::make_unique<EditorEnginePage>(m_profile.get(), nullptr))
{
    m_media.allowFolder(cacheFolder);
    m_profile->installUrlSchemeHandler(EditorScheme::name, new EditorSchemeHandler(m_media, m_profile.get()));
    m_profile->setUrlRequestInterceptor(m_filter);
    m_profile->cookieStore()->setCookieFilter([](const QWebEngineCookieStore::FilterRequest &) { return false; });
    configure(*m_enginePage->settings());
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

void ZLEditorWebView::endHungProcess()
{
    ZLLog(QStringLiteral("the editor page hangs; starting it anew"));
    if (const qint64 pid = m_enginePage->renderProcessPid(); pid > 0)
        ::kill(pid_t(pid), SIGKILL);
}

std::chrono::milliseconds ZLEditorWebView::processorTime() const
{
    clockid_t clock{};
    timespec time{};
    const qint64 pid = m_enginePage->renderProcessPid();
    if (pid <= 0 || ::clock_getcpuclockid(pid_t(pid), &clock) != 0 || ::clock_gettime(clock, &time) != 0)
        return {};
    using namespace std::chrono;
    return seconds(time.tv_sec) + duration_cast<milliseconds>(nanoseconds(time.tv_nsec));
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

void ZLEditorWebView::edit(Edit command)
{
    static constexpr std::array actions{QWebEnginePage::Undo, QWebEnginePage::Redo, QWebEnginePage::Cut,
        QWebEnginePage::Copy, QWebEnginePage::Paste, QWebEnginePage::SelectAll};
    triggerPageAction(actions[size_t(command)]);
}

void ZLEditorWebView::setBlogURL(const QUrl &url)
{
    m_filter->setBlogURL(url);
}

bool ZLEditorWebView::offerPictures(const QMimeData *data)
{
    if (const QList<QUrl> files = pictureFiles(data); !files.isEmpty()) {
        Q_EMIT m_page.picturesOffered(files);
        return true;
    }
    const QImage image = data->hasUrls() ? QImage() : qvariant_cast<QImage>(data->imageData());
    QByteArray png;
    QBuffer buffer(&png);
    if (image.isNull() || !buffer.open(QIODevice::WriteOnly) || !image.save(&buffer, "PNG"))
        return false;
    Q_EMIT m_page.pictureOffered(png);
    return true;
}

void ZLEditorWebView::dragEnterEvent(QDragEnterEvent *event)
{
    // The page itself would take the files for something to show in its place.
    if (event->source() || pictureFiles(event->mimeData()).isEmpty())
        return QWebEngineView::dragEnterEvent(event);
    event->acceptProposedAction();
}

void ZLEditorWebView::dragMoveEvent(QDragMoveEvent *event)
{
    if (event->source() || pictureFiles(event->mimeData()).isEmpty())
        return QWebEngineView::dragMoveEvent(event);
    event->acceptProposedAction();
}

void ZLEditorWebView::dropEvent(QDropEvent *event)
{
    if (event->source() || pictureFiles(event->mimeData()).isEmpty())
        return QWebEngineView::dropEvent(event);
    event->acceptProposedAction();
    offerPictures(event->mimeData());
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
    if (watched != focusProxy())
        return QWebEngineView::eventFilter(watched, event);
    static constexpr std::array input{QEvent::KeyPress, QEvent::KeyRelease, QEvent::InputMethod,
        QEvent::MouseButtonPress, QEvent::MouseMove, QEvent::MouseButtonRelease, QEvent::MouseButtonDblClick};
    const bool isInput = std::find(input.begin(), input.end(), event->type()) != input.end();
    if (isInput && m_page.calls().keepsBack(watched, *event))
        return true;
    if (event->type() == QEvent::ShortcutOverride && isOfProgram(*static_cast<QKeyEvent *>(event))) {
        event->ignore();
        return true;
    }
    return QWebEngineView::eventFilter(watched, event);
}

/// Whether a command of the window has these keys. The engine takes some of them for editing keys of its own (Control
/// and K deletes to the end of the line there); those of the clipboard and of undo mean the same to both.
bool ZLEditorWebView::isOfProgram(const QKeyEvent &event) const
{
    static constexpr std::array sameForBoth{QKeySequence::Copy, QKeySequence::Cut, QKeySequence::Paste,
        QKeySequence::SelectAll, QKeySequence::Undo, QKeySequence::Redo};
    if (!(event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)))
        return false;
    const QKeySequence keys(event.keyCombination());
    if (std::any_of(sameForBoth.begin(), sameForBoth.end(), [&event](auto key) { return event.matches(key); }))
        return false;
    const QList<QAction *> commands = window()->findChildren<QAction *>();
    return std::any_of(commands.begin(), commands.end(),
        [&keys](const QAction *command) { return command->isEnabled() && command->shortcuts().contains(keys); });
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
