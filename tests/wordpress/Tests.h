#pragma once

#include <QObject>
#include <memory>

std::unique_ptr<QObject> makeServiceTest();
std::unique_ptr<QObject> makePublishingTest();
std::unique_ptr<QObject> makeUploadTest();
std::unique_ptr<QObject> makePostSyncTest();
std::unique_ptr<QObject> makeTaxonomySyncTest();
std::unique_ptr<QObject> makePostFieldMapsTest();
std::unique_ptr<QObject> makePostParametersTest();
std::unique_ptr<QObject> makeContentConversionTest();
std::unique_ptr<QObject> makeMediaTest();
std::unique_ptr<QObject> makeDownloadTest();
