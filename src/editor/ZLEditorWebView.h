#pragma once

#include "editor/LocalMedia.h"

#include <QElapsedTimer>
#include <QStringList>
#include <QWebEngineView>
#include <functional>
#include <memory>

class EditorEnginePage;
class QWebChannel;
class QWebEngineProfile;
class ZLEditorPage;

/// The view in which the editor page runs. Making it starts the web engine, so it is made after the first paint.
/// EditorScheme::registerScheme() must have been called before the application object was made.
class ZLEditorWebView : public QWebEngineView {
    Q_OBJECT
public:
    /// `page` outlives the view. Pictures below `cacheFolder` can be shown.
    ZLEditorWebView(ZLEditorPage &page, const QString &cacheFolder, QWidget *parent = nullptr);
    ~ZLEditorWebView() override;

    /// Runs a text as a script where it reaches neither the page's objects nor its elements; `done` follows in any
    /// case, unless the view goes away.
    void evaluateInIsolation(const QString &text, std::function<void()> done);
    /// Lets the page show these files; addresses of other schemes are passed over.
    void allowLocalImages(const QStringList &addresses);
    void load();
    /// After too many crashes in a row the page stays away until there is other content for it.
    void loadIfGivenUp();
    void endHungProcess(); ///< the page is then loaded anew

protected:
    void contextMenuEvent(QContextMenuEvent *event) override;
    void changeEvent(QEvent *event) override;
    void childEvent(QChildEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void renderProcessTerminated();
    void applyPalette();

    ZLEditorPage &m_page;
    LocalMedia m_media;
    std::unique_ptr<QWebEngineProfile> m_profile;
    std::unique_ptr<QWebChannel> m_channel;
    std::unique_ptr<EditorEnginePage> m_enginePage; ///< after its profile, so that it goes first
    int m_evaluation = 0; ///< its number while one runs, another otherwise
    QStringList m_endlessTexts;
    int m_crashes = 0;
    QElapsedTimer m_firstCrash;
};
