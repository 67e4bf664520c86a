#pragma once

class QNetworkAccessManager;
class Reachability;
class ZLClock;
class ZLDefaults;
class ZLFileManager;
class ZLKeychain;
class ZLUserNotificationCenter;
class ZLWorkspace;

/// What the application stands on: made by main(), faked by tests, outlives the controller.
struct ZLPlatform {
    ZLFileManager &files;
    ZLDefaults &defaults;
    ZLKeychain &keychain;
    Reachability &reachability;
    ZLUserNotificationCenter &notificationCenter;
    ZLWorkspace &workspace;
    ZLClock &clock;
    QNetworkAccessManager &network;
};
