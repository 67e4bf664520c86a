#include "TestClasses.h"

#include <QCoreApplication>
#include <QTest>

std::vector<MakeTest> &testClasses()
{
    static std::vector<MakeTest> classes;
    return classes;
}

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    int failures = 0;
    for (const MakeTest make : testClasses())
        failures += QTest::qExec(make().get(), argc, argv);
    return failures;
}
