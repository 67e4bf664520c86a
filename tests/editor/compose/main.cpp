#include "Tests.h"

#include <QCoreApplication>
#include <QTest>

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    ButtonsTest buttons;
    OverlayTest overlay;
    LoadingTest loading;
    EditingTest editing;
    SaveTest save;
    PublishTest publish;
    UploadGuardsTest guards;
    DeleteTest deleting;
    MediaTest media;
    int failed = 0;
    for (QObject *test : std::initializer_list<QObject *>{
             &buttons, &overlay, &loading, &editing, &save, &publish, &guards, &deleting, &media})
        failed += QTest::qExec(test, argc, argv);
    return failed;
}
