#include "PostFolder.h"

#include "model/PostFile.h"
#include "model/ZLDocument.h"

#include <csignal>
#include <functional>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

static const QByteArray longBody = QByteArray("some words ").repeated(100000);

/// Runs the work in a process of its own; gives its id.
static pid_t inChild(const std::function<int()> &work)
{
    const pid_t child = fork();
    if (child == 0) {
        alarm(60); // or it would go on for ever when this process is stopped in between
        _exit(work());
    }
    return child;
}

/// Saving, while the world ends around it. The work is done in processes of its own.
class TestSaving : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void leavesTheOldFileOrTheNewWhenKilled()
    {
        const PostFolder folder;
        FileText text;
        text.content = longBody;
        for (int round = 0; round < 12; ++round) {
            const QUrl url = folder.write(text.bytes());
            const pid_t child = inChild([&] {
                const DocumentPtr document = *ZLDocument::open(url);
                for (int number = 0;; ++number) {
                    document->post.title = QString::number(number);
                    if (!document->saveDocument())
                        return 1;
                }
            });
            // From the moment that it saves at all, a little longer each time.
            QTRY_VERIFY_WITH_TIMEOUT(!folder.read().contains("<title>Title</title>"), 20000);
            QTest::qWait(round * 3);
            QCOMPARE(kill(child, SIGKILL), 0);
            int status = 0;
            QCOMPARE(waitpid(child, &status, 0), child);
            QVERIFY(WIFSIGNALED(status));
            const PostFile file = PostFile::fromData(folder.read());
            QVERIFY(file.isWhole);
            QCOMPARE(file.storedContent.size(), longBody.size());
        }
    }

    void keepsTheOldFileOnAFullDisk()
    {
        const PostFolder folder;
        const QByteArray before = FileText().bytes();
        const QUrl url = folder.write(before);
        const pid_t child = inChild([&] {
            // A disk that takes no more than this looks the same from here.
            signal(SIGXFSZ, SIG_IGN);
            const rlimit limit{4096, 4096};
            if (setrlimit(RLIMIT_FSIZE, &limit) != 0)
                return 1;
            const DocumentPtr document = *ZLDocument::open(url);
            document->post.content = QString::fromUtf8(longBody);
            const Result<void> saved = document->saveDocument();
            if (saved || !saved.error().description.contains(url.toLocalFile()))
                return 2;
            return document->hasUnautosavedChanges() && document->post.content.size() == longBody.size() ? 0 : 3;
        });
        int status = 0;
        QCOMPARE(waitpid(child, &status, 0), child);
        QVERIFY(WIFEXITED(status));
        QCOMPARE(WEXITSTATUS(status), 0);
        QCOMPARE(folder.read(), before);
        QCOMPARE(QDir(folder.path(u"."_qs)).entryList(QDir::Files | QDir::Hidden), QStringList{u"post.zalmo"_qs});
    }
};

static const RegisteredTest<TestSaving> registered;
#include "TestSaving.moc"
