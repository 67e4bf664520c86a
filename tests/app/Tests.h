#pragma once

#include <QObject>

class LaunchTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void withoutAccountsAsksForABlogOnlyWhenTheWindowComesUp();
    void takesTheSelectedAccount();
    void opensPostsWhileTheKeychainIsLocked();
    void decidesOnTheLogin_data();
    void decidesOnTheLogin();
    void completesMissingPreferences();
    void keepsOneSelectedAccount();
    void startsTheOwedRoundWhenTheConnectionComesBack();
    void goesOnWithoutAStore();
    void saysOnceThatThereIsNoKeychain();
};

class ConnectionTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void checksTheAddress_data();
    void checksTheAddress();
    void savesTheAccountAndFetchesTheBlog();
    void readsTheOptions_data();
    void readsTheOptions();
    void announcesAndRunsTheFirstRunChainOnce();
    void findsOldPostsAgain();
    void returnsToTheErrorSheetUntilTheLoginHolds();
    void replyThatIsNoDictionary();
    void givingUpReturnsToTheEarlierBlog();
    void goesToTheBlogThatAnswers();
    void removesAnAccount_data();
    void removesAnAccount();
    void removesTheLastAccount();
    void fetchesTheIcon_data();
    void fetchesTheIcon();
};

class FailuresTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void answersByTypeAndCode_data();
    void answersByTypeAndCode();
    void connecting_data();
    void connecting();
    void oneLoginSheetForManyFailures();
    void logsInAgain();
    void cancelledLoginForgetsThePassword();
    void helpOpensAnArticle();
};

class BlogChangeTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void bySelector();
    void toTheSameBlogDoesNothing();
    void keepsANewPostOnTheScreen();
    void byProgramKeepsTheService();
    void aliasIsShown();
    void searchesPostsAndTerms();
};

class SyncRoundsTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void bringsPostsPagesAndTerms();
    void whoTakesPart_data();
    void whoTakesPart();
    void offlineSkipsAllButLoopback();
    void stopEndsARoundThatWaitsForEver();
    void keepsBothSidesOfAConflict();
    void takesUnsavedTextOfTheOpenDocument();
};

class OutcomesTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void publishes_data();
    void publishes();
    void publishesADraftOfTheBlog();
    void updates_data();
    void updates();
    void staysSilentWhenNotAllowed();
    void comesHomeToItsOwnBlog();
    void sendsNothingToAnotherBlog_data();
    void sendsNothingToAnotherBlog();
    void takesANewPostAlongToAnotherBlog();
    void cancelReachesTheServiceOfTheEarlierBlog();
    void losesNothingWhenTheMoveFails();
    void listIsRebuiltMeanwhile();
    void createsNewPosts();
    void deletes();
};

class SavingTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void saysAFailureOncePerStreak();
    void asksBeforeQuittingWithUnsavedText_data();
    void asksBeforeQuittingWithUnsavedText();
    void quitsWhateverTheAnswerWhenTheStoreFails();
};
