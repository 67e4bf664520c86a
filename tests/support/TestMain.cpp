#include "support/TestClasses.h"

#include <QCoreApplication>

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    return runTests(argc, argv);
}
