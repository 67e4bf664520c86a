#include "engine/EditorScheme.h"
#include "support/TestClasses.h"

#include <QApplication>

int main(int argc, char **argv)
{
    EditorScheme::registerScheme();
    QApplication application(argc, argv);
    return runTests(argc, argv);
}
