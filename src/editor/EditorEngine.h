#pragma once

#include "editor/EditorView.h"

#include <QtPlugin>
#include <future>

class ZLEditorPage;

/// The web engine, in a module of its own: to load it takes as long as all else up to the first rows, so it comes
/// behind them.
class EditorEngine {
public:
    virtual ~EditorEngine() = default;
    /// `page` outlives the view. Pictures below `cacheFolder` can be shown.
    virtual EditorView *makeView(ZLEditorPage &page, const QString &cacheFolder) = 0;

    /// Has the module loaded on a thread, so that load() need not wait for all of it.
    static std::future<void> loadAhead();
    /// Loads the module; null, with a line in the log, when it is not there or does not fit.
    static EditorEngine *load();
};
Q_DECLARE_INTERFACE(EditorEngine, "com.zalmo.EditorEngine")
