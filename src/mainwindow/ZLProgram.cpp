#include "mainwindow/ZLProgram.h"

#include "mainwindow/ComposeArea.h"
#include "mainwindow/ZLMainWindow.h"
#include "widgets/ZLTheme.h"

#include <QApplication>
#include <QEvent>
#include <QFontDatabase>
#include <QPointer>
#include <QTimer>
#include <QWindow>

namespace {
/// A window that starts minimised is not painted for now; the launch must not wait for that.
constexpr int longestWaitForPaintMs = 1000;
/// In which they are painted, and the web engine begins.
constexpr int timeForRowsMs = 100;
/// A page that hangs must not keep the program open.
constexpr int longestWaitForPageMs = 2000;

ZLTheme::Scheme schemeFor(DesktopColorScheme::Preference preference)
{
    switch (preference) {
    case DesktopColorScheme::Dark:
        return ZLTheme::Scheme::Dark;
    case DesktopColorScheme::Light:
        return ZLTheme::Scheme::Light;
    case DesktopColorScheme::NoPreference:
        break;
    }
    return ZLTheme::Scheme::System;
}
} // namespace

void ZLProgram::prepare()
{
    QApplication::setAttribute(Qt::AA_ShareOpenGLContexts); // for the web engine, which comes later
    QApplication::setApplicationName(u"zalmo"_qs);
    QApplication::setApplicationDisplayName(u"Zalmo"_qs);
    QApplication::setApplicationVersion(QStringLiteral(ZALMO_VERSION));
    QGuiApplication::setDesktopFileName(u"com.zalmo.Zalmo"_qs);
}

ZLProgram::ZLProgram()
    : m_fonts(std::async(std::launch::async, [] { QFontDatabase::families(); }))
    , m_files(ZLFileManager::forUser())
    , m_instance(m_files.applicationSupportDirectory())
    , m_isFirst(m_instance.acquire())
    , m_defaults(m_files.applicationSupportDirectory() + u"/preferences.ini"_qs)
    , m_keychain(makeSystemKeychain())
    , m_controller(platform())
{
    if (m_isFirst)
        m_controller.currentBlog().readPostsAhead();
    m_window = std::make_unique<ZLMainWindow>(m_controller);
    connect(&m_colorScheme, &DesktopColorScheme::didChange, this,
        [](DesktopColorScheme::Preference preference) { ZLTheme::apply(*qApp, schemeFor(preference)); });
    connect(
        &m_instance, &SingleInstance::wasAskedToComeToFront, &m_controller, &ZLAppDelegate::showMainApplicationWindow);
    m_controller.setWindows(m_window->windows());
    m_window->installEventFilter(this);
    connect(qApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
        if (state != Qt::ApplicationActive)
            m_controller.applicationDidResignActive();
    });
}

ZLProgram::~ZLProgram() = default;

ZLPlatform ZLProgram::platform()
{
    return {m_files, m_defaults, m_keychain, *makeSystemReachability(this), *makeSystemNotificationCenter(this),
        m_workspace, m_clock, m_network};
}

bool ZLProgram::start()
{
    if (!m_isFirst)
        return false;
    m_window->winId(); // makes the handle, which hears of the first exposure
    m_window->windowHandle()->installEventFilter(this);
    m_window->show();
    QTimer::singleShot(longestWaitForPaintMs, this, &ZLProgram::launchOnce);
    return true;
}

bool ZLProgram::eventFilter(QObject *watched, QEvent *event)
{
    if (!m_isLaunched && event->type() == QEvent::Expose && watched == m_window->windowHandle())
        QTimer::singleShot(0, this, &ZLProgram::launchOnce); // the window is painted first
    if (watched == m_window.get() && event->type() == QEvent::Close) {
        // The window's button, the menu and the end of the session all come along here.
        event->ignore();
        quit();
        return true;
    }
    return QObject::eventFilter(watched, event);
}

void ZLProgram::launchOnce()
{
    if (std::exchange(m_isLaunched, true))
        return;
    m_controller.applicationDidFinishLaunching();
    QTimer::singleShot(timeForRowsMs, &m_controller, &ZLAppDelegate::goOnline);
    if (m_controller.currentBlog().accounts().isEmpty())
        m_controller.connection().newAccount();
}

void ZLProgram::quit()
{
    if (std::exchange(m_isCommitting, true))
        return;
    const auto finish = [self = QPointer(this)] {
        if (self && std::exchange(self->m_isCommitting, false))
            self->terminate();
    };
    QTimer::singleShot(longestWaitForPageMs, this, finish);
    m_window->composeArea().controller().commitEditing().then(finish);
}

QCoro::Task<void> ZLProgram::terminate()
{
    const QPointer<ZLProgram> self(this);
    const bool mayQuit = co_await m_controller.applicationShouldTerminate();
    if (self && mayQuit)
        QCoreApplication::exit();
}
