#include "editor/EditorEngine.h"

#include "platform/ZLLog.h"

#include <QPluginLoader>

std::future<void> EditorEngine::loadAhead()
{
    return std::async(std::launch::async, [] { QPluginLoader(QStringLiteral(ZALMO_ENGINE_MODULE)).load(); });
}

EditorEngine *EditorEngine::load()
{
    QPluginLoader module(QStringLiteral(ZALMO_ENGINE_MODULE));
    auto *engine = qobject_cast<EditorEngine *>(module.instance());
    if (!engine)
        ZLLog(module.errorString());
    return engine;
}
