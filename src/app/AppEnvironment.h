#pragma once

#include "app/BlogSelector.h"
#include "app/ComposeScreen.h"
#include "app/PostList.h"
#include "app/Prompts.h"
#include "app/ZLPlatform.h"
#include "app/ZLWindows.h"
#include "model/ZLDocumentController.h"
#include "model/ZLNotifications.h"
#include "platform/Reachability.h"
#include "platform/ZLClock.h"
#include "platform/ZLDefaults.h"
#include "platform/ZLFileManager.h"
#include "platform/ZLKeychain.h"
#include "platform/ZLLog.h"
#include "platform/ZLTelemetry.h"
#include "platform/ZLUserNotificationCenter.h"
#include "platform/ZLWorkspace.h"
#include "wordpress/ZLWordpressService.h"

/// What every collaborator of the controller may use.
struct AppEnvironment {
    explicit AppEnvironment(const ZLPlatform &platform)
        : platform(platform)
        , telemetry(platform.defaults, platform.network)
    {
    }

    ZLPlatform platform;
    ZLWindows windows;
    ZLNotifications notifications;
    ZLDocumentController documents;
    ZLTelemetry telemetry;
};

/// The current blog, as its collaborators know it. `selectedAccount` and `blogName` name an account from the first
/// connected blog on.
struct CurrentBlogState {
    QList<AccountPtr> accounts; ///< in the order of the store
    AccountPtr selectedAccount;
    QString blogName; ///< the alias, which names the blog's folder

    /// The current account's preferences, or null.
    const AccountPreferences *preferences() const
    {
        return selectedAccount ? selectedAccount->preferences.get() : nullptr;
    }
};
