#pragma once

#include "editor/ZLEditorPage.h"
#include "engine/ZLEditorWebView.h"
#include "platform/ZLFileManager.h"
#include "support/TestClasses.h"

#include <QStringList>
#include <QTemporaryDir>
#include <memory>

/// The editor page in the real engine, with what a test does to it.
class PageFixture {
public:
    PageFixture();
    [[nodiscard]] bool start();

    /// Loads a body as the compose screen does, and waits until it is there.
    void load(const QString &stored);
    void loadAgain(const QString &stored); ///< as another text of the same post
    /// The same without a wait.
    void beginToLoad(
        const QString &stored, int owner = 1, ComposePage::Loading loading = ComposePage::Loading::NewPost);
    QString body(); ///< the answer of getBodyContent; null when there is none
    QVariant evaluate(const QString &script); ///< in the page's own world
    void select(const QString &text); ///< its first occurrence in the text of the page
    void putCursorBehind(const QString &text);
    void type(const QString &text); ///< real key events, which the page has had on return
    void typeOn(const QString &text); ///< the same without a wait
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, int times = 1);
    QString copyPicture(const QString &name); ///< into the cache folder; its file:// address as content has it

    QTemporaryDir home;
    ZLFileManager files;
    ZLEditorPage page;
    std::unique_ptr<ZLEditorWebView> view;
    QStringList reports;
};
