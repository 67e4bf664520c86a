#pragma once

#include <QStringList>
#include <QUrl>
#include <chrono>

class QMimeData;
class QWidget;

/// The view in which the editor page runs, as the program sees it. It is made by the EditorEngine.
class EditorView {
public:
    enum class Edit { Undo, Redo, Cut, Copy, Paste, SelectAll };

    virtual ~EditorView() = default;
    virtual QWidget *widget() = 0; ///< this object

    virtual void edit(Edit command) = 0;
    /// Lets the page show these files; addresses of other schemes are passed over.
    virtual void allowLocalImages(const QStringList &addresses) = 0;
    virtual void setBlogURL(const QUrl &url) = 0; ///< see ComposePage
    /// Hands pictures of the clipboard or a drag to the program. False: it holds something else.
    virtual bool offerPictures(const QMimeData *data) = 0;
    /// After too many crashes in a row the page stays away until there is other content for it.
    virtual void loadIfGivenUp() = 0;
    virtual void endHungProcess() = 0; ///< the page is then loaded anew
    /// The processor time that the page's process has had; zero when that cannot be told.
    virtual std::chrono::milliseconds processorTime() const = 0;
};
