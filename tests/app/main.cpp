#include "Tests.h"

#include <QCoreApplication>
#include <QTest>

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    LaunchTest launch;
    ConnectionTest connection;
    FailuresTest failures;
    BlogChangeTest blogChange;
    SyncRoundsTest syncRounds;
    OutcomesTest outcomes;
    SavingTest saving;
    int failed = 0;
    for (QObject *test :
        std::initializer_list<QObject *>{&launch, &connection, &failures, &blogChange, &syncRounds, &outcomes, &saving})
        failed += QTest::qExec(test, argc, argv);
    return failed;
}
