#pragma once

#include "tour/TourScreen.h"

#include <QRandomGenerator>
#include <QUrl>

class ZLProgram;

/// Uses the program's windows at random, as a hasty writer would, and prints a line for each word once it is seen on
/// the screen: "seen WORD". Words that the writer is about to throw away are told before: "forfeit WORD".
/// "writing" says that the blogs are connected.
class RandomWriter {
public:
    struct Blog {
        QString url;
        QString user;
        QString password;
    };

    RandomWriter(ZLProgram &program, TourScreen &screen, const QList<Blog> &blogs, quint32 seed);

    /// Connects what is not connected yet, and logs in where a password is asked for.
    void connectBlogs();
    /// Goes on until somebody ends the process.
    [[noreturn]] void write();
    /// Uses nothing any more; what still waits after this many seconds, or an empty text.
    QString settle(int seconds);

private:
    void act();
    void typeWord();
    void writeNewPost();
    void openAnyPost();
    void deletePost();
    void changeBlog();
    void answerSheet();
    void logIn();
    void connectBlog(const Blog &blog);

    bool chance(int percent) { return m_random.bounded(100) < percent; }
    QString nextWord();
    bool isWaiting(); ///< an upload or a sync shows
    bool isFree(); ///< nothing stands before the editor
    void pause(int least, int most);
    static void say(const char *what, const QString &word);

    ZLProgram &m_program;
    TourScreen &m_screen;
    QList<Blog> m_blogs;
    QRandomGenerator m_random;
    QString m_stamp;
    int m_words = 0;
};
