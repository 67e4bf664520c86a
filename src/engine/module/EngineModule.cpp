#include "editor/EditorEngine.h"
#include "engine/EditorScheme.h"
#include "engine/ZLEditorWebView.h"

class EngineModule : public QObject, public EditorEngine {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.zalmo.EditorEngine")
    Q_INTERFACES(EditorEngine)

public:
    EditorView *makeView(ZLEditorPage &page, const QString &cacheFolder) override
    {
        EditorScheme::registerScheme();
        return new ZLEditorWebView(page, cacheFolder);
    }
};

#include "EngineModule.moc"
