#include "wordpress/Tests.h"

#include <QCoreApplication>
#include <QTest>

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    int failed = 0;
    for (const auto &make : {makeServiceTest, makePublishingTest, makeUploadTest, makePostSyncTest,
             makeTaxonomySyncTest, makePostFieldMapsTest, makePostParametersTest, makeContentConversionTest,
             makeMediaTest, makeDownloadTest}) {
        const std::unique_ptr<QObject> test = make();
        failed += QTest::qExec(test.get(), argc, argv);
    }
    return failed;
}
