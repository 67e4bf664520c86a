#pragma once

#include <QObject>

class ButtonsTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void showTheTable_data();
    void showTheTable();
    void areOffForASolvedConflict();
    void areThoseOfABlankPost();
};

class OverlayTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void saysHeadingAndStep_data();
    void saysHeadingAndStep();
    void followsThePost();
    void showsTheStepsOfItsPostOnly();
    void goesWhenTheUploadFails_data();
    void goesWhenTheUploadFails();
    void cancelsTheRecordThatWasSent();
    void takesTheReturnedPost();
    void staysForAnotherObjectUntilTheListReloads();
    void findsAPostWithoutAnIdByItsTitle();
};

class LoadingTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void showsThePost();
    void leavesTheFileAsItIs();
    void isWonByTheLast();
    void keepsThePostBeforeWhenTheFileIsGone();
    void runsTheAction_data();
    void runsTheAction();
    void saysAConflict();
    void goesBlank();
    void readsThePostAgainAfterASync_data();
    void readsThePostAgainAfterASync();
    void leavesTheScreenAloneWhenASyncBroughtNothing_data();
    void leavesTheScreenAloneWhenASyncBroughtNothing();
    void letsTheChosenPostWinOverASync();
    void bringsTheContentBackAfterACrash();
    void followsTheRebuiltList();
};

class EditingTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void writesToTheFile_data();
    void writesToTheFile();
    void opensTheFileAgain_data();
    void opensTheFileAgain();
    void givesABlankPostItsFile_data();
    void givesABlankPostItsFile();
    void needsABlogForThat();
    void saysWhenThatFails();
    void goesIntoThePostThatWasEdited();
    void keepsTheTextWhenTheDiskFails();
    void tellsWhetherANewPostIsNeeded_data();
    void tellsWhetherANewPostIsNeeded();
    void linksTheSelection_data();
    void linksTheSelection();
};

class SaveTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void sendsThePost_data();
    void sendsThePost();
    void sendsABlankPostThatWasJustTyped();
    void refusesAnEmptyPost();
    void staysNewUntilTheBlogHasIt();
};

class PublishTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void sendsThePost_data();
    void sendsThePost();
    void sendsTheStoredTitleBack();
    void asksAboutAMissingTitle_data();
    void asksAboutAMissingTitle();
    void refusesAnEmptyPost();
    void saysSoFirst();
};

class UploadGuardsTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void needANetwork_data();
    void needANetwork();
    void ignoreASecondPress();
    void ignoreAPressDuringTheUpload();
    void dropAnAnswerForAnotherPost();
    void sayWhenThePageGivesNoAnswer();
    void outliveTheScreen();
    void findTheUploadAgain();
};

class DeleteTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void asksFirst_data();
    void asksFirst();
    void deletes_data();
    void deletes();
    void isAboutThePostOfTheQuestion();
};

class MediaTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void insertsACopy_data();
    void insertsACopy();
    void leavesThePostAloneWithoutAFile();
};
