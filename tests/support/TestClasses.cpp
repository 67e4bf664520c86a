#include "support/TestClasses.h"

std::vector<MakeTest> &testClasses()
{
    static std::vector<MakeTest> classes;
    return classes;
}

int runTests(int argc, char **argv)
{
    int failures = 0;
    for (const MakeTest make : testClasses())
        failures += QTest::qExec(make().get(), argc, argv);
    return failures;
}
