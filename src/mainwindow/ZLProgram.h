#pragma once

#include "app/ZLAppDelegate.h"
#include "mainwindow/DesktopWorkspace.h"
#include "platform/DesktopColorScheme.h"
#include "platform/NetworkAccess.h"
#include "platform/SingleInstance.h"

#include <QObject>
#include <future>

class ZLMainWindow;

/// The whole program but for the application object and its event loop: the platform, the controller and the window,
/// and what starts and ends them. Made after the application object, on the directories of the user who runs it.
class ZLProgram : public QObject {
    Q_OBJECT
public:
    /// What must be said before the application object is made.
    static void prepare();

    ZLProgram();
    ~ZLProgram() override;

    /// Shows the window; the launch follows its first paint. False: another program of this user is running, and
    /// comes to the front instead.
    bool start();
    ZLMainWindow &window() { return *m_window; }
    ZLAppDelegate &controller() { return m_controller; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    ZLPlatform platform();
    void launchOnce();
    /// Ends the program as soon as what was typed is in its document.
    void quit();
    /// Saves, asks when that fails, and ends the event loop unless the user wants to stay.
    QCoro::Task<void> terminate();

    std::future<void> m_fonts; ///< being looked up while the rest is made
    ZLFileManager m_files;
    SingleInstance m_instance;
    bool m_isFirst; ///< of this user's programs
    ZLDefaults m_defaults;
    ZLKeychain m_keychain;
    NetworkAccess m_network;
    DesktopWorkspace m_workspace;
    DesktopColorScheme m_colorScheme;
    ZLClock m_clock;
    ZLAppDelegate m_controller;
    std::unique_ptr<ZLMainWindow> m_window;
    bool m_isLaunched = false;
    bool m_isCommitting = false;
};
