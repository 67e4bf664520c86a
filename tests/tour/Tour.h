#pragma once

#include "TourBlog.h"
#include "TourScreen.h"

#include <QDir>
#include <QStringList>

/// What the tour is given on its command line.
struct TourOptions {
    QUrl url;
    QString user;
    QString password;
    QString out;
    QStringList steps;
    QUrl second; ///< another blog, with the same name and user
    QString control; ///< the program that takes the first blog's web server away and starts it again,
    QString folder; ///< which knows it by this folder
};

/// A walk through the program's main job against a real blog. Each step drives the windows as a person would, then
/// looks at the blog and the disk by itself. What does not hold ends the step with a sentence.
class Tour {
public:
    Tour(const TourOptions &options, TourScreen &screen, const QString &dataHome);

    static QStringList allSteps();
    /// Runs the steps in order, prints a JSON line for each; true when all held.
    bool run();

private:
    void connectBlog();
    void checkList();
    void openAll();
    void writeNew();
    void publishPicture();
    void updateBlockPost();
    void saveDraft();
    void deletePost();
    void answerConflicts();
    void updatePrivate();
    void useTwoBlogs();
    void publishOffline();

    void connectTo(const QUrl &blog, bool isFirst);
    void addWords(const QString &title, const QString &words);
    QString newPostOnBlog(const QString &title, const QString &status);
    void copyToOtherBlog(const QString &title);
    void switchBlog(const char *onOrOff);

    /// Runs one step; its failure, or an empty text.
    QString failureOf(const QString &step);
    void refreshList();
    void startNewPost();
    void chooseFile(const QString &path); ///< in the open panel
    XMLRPCValue publishAndFind(const QString &title);
    void checkFileInStep(const XMLRPCValue &post, const QString &status);
    QString postFile(const QString &id) const;
    QString title(const QString &words) const;

    TourOptions m_options;
    TourScreen &m_screen;
    TourBlog m_blog;
    QString m_dataHome;
    QString m_stamp; ///< tells this run's posts from those of an earlier one
    QString m_toDelete; ///< title of the post that the last step takes away
};
