#pragma once

#include <QObject>

class PostListTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void selects_data();
    void selects();
    void followsAMovedFile();
    void opensANewPost();
    void leavesADeletedPost_data();
    void leavesADeletedPost();
    void keepsTheRowCurrentWhileTyping_data();
    void keepsTheRowCurrentWhileTyping();
    void searches();
    void showsSomethingForEveryRow_data();
    void showsSomethingForEveryRow();
    void refreshesOnlyOnline();
};

class ContextMenuTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void namesTheActions_data();
    void namesTheActions();
    void offersTheLinkOfAPublicPost();
    void copiesToAnotherBlog();
};

class MainWindowTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void validatesTheMenu_data();
    void validatesTheMenu();
    void hasNoShortcutTwice();
    void givesWhatIsTypedAtOnceToTheNewPost();
    void growsByThePostList();
    void comesBackNarrow();
    void standsInAColumnInFullScreen_data();
    void standsInAColumnInFullScreen();
    void switchesBlogs();
};

class SheetsTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void connectsABlogByKeyboard();
    void cancelsAnIntroOnlyWhenThereIsABlog();
    void returnInThePasswordFieldIsANewConnection();
    void givesUpConnecting();
    void answersAlerts_data();
    void answersAlerts();
    void showsAlertsBeforeSheets();
    void keepsTheButtonOfALongAlert();
    void keepsTheFocusInside();
};
