#include "TestPage.h"

#include "editor/EditorScheme.h"

#include <QApplication>
#include <QTest>

int main(int argc, char **argv)
{
    EditorScheme::registerScheme();
    QApplication application(argc, argv);
    int failures = 0;
    for (const auto &make : testsOfThePage()) {
        const std::unique_ptr<QObject> test = make();
        // ZALMO_TEST_CLASS picks one class, since the names of test functions on the command line count for all.
        const QByteArray only = qgetenv("ZALMO_TEST_CLASS");
        if (only.isEmpty() || only == test->metaObject()->className())
            failures += QTest::qExec(test.get(), argc, argv);
    }
    return failures;
}
