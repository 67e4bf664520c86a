#pragma once

#include "editor/LocalMedia.h"

#include <QElapsedTimer>
#include <QStringList>
#include <QUrl>
#include <QWebEngineView>
#include <chrono>
#include <memory>

class EditorEnginePage;
class EditorRequestFilter;
class QMimeData;
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

    /// Lets the page show these files; addresses of other schemes are passed over.
    void allowLocalImages(const QStringList &addresses);
    void setBlogURL(const QUrl &url); ///< see ComposePage
    /// Hands pictures of the clipboard or a drag to the program. False: it holds something else.
    bool offerPictures(const QMimeData *data);
    void load();
    /// After too many crashes in a row the page stays away until there is other content for it.
    void loadIfGivenUp();
    void endHungProcess(); ///< the page is then loaded anew
    /// The processor time that the page's process has had; zero when that cannot be told.
    std::chrono::milliseconds processorTime() const;

protected:
    void contextMenuEvent(QContextMenuEvent *event) override;
    void changeEvent(QEvent *event) override;
    void childEvent(QChildEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void renderProcessTerminated();
    void applyPalette();
    bool isOfProgram(const QKeyEvent &event) const;

    ZLEditorPage &m_page;
    LocalMedia m_media;
    std::unique_ptr<QWebEngineProfile> m_profile;
    EditorRequestFilter *m_filter; ///< of the profile
    std::unique_ptr<QWebChannel> m_channel;
    std::unique_ptr<EditorEnginePage> m_enginePage; ///< after its profile, so that it goes first
    int m_crashes = 0;
    QElapsedTimer m_firstCrash;
};
