#pragma once

#include "editor/EditorView.h"
#include "engine/LocalMedia.h"

#include <QElapsedTimer>
#include <QWebEngineView>
#include <memory>

class EditorEnginePage;
class EditorRequestFilter;
class QWebChannel;
class QWebEngineProfile;
class ZLEditorPage;

/// The view in which the editor page runs. Making it starts the web engine, so it is made after the first paint.
/// EditorScheme::registerScheme() must have been called before.
class ZLEditorWebView : public QWebEngineView, public EditorView {
    Q_OBJECT
public:
    /// `page` outlives the view. Pictures below `cacheFolder` can be shown.
    ZLEditorWebView(ZLEditorPage &page, const QString &cacheFolder, QWidget *parent = nullptr);
    ~ZLEditorWebView() override;

    QWidget *widget() override { return this; }
    void edit(Edit command) override;
    void allowLocalImages(const QStringList &addresses) override;
    void setBlogURL(const QUrl &url) override;
    bool offerPictures(const QMimeData *data) override;
    void loadIfGivenUp() override;
    void endHungProcess() override;
    std::chrono::milliseconds processorTime() const override;

protected:
    void contextMenuEvent(QContextMenuEvent *event) override;
    void changeEvent(QEvent *event) override;
    void childEvent(QChildEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void load();
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
